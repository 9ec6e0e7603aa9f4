#pragma once

#include "core/shared_api.h"
#include "core/vxk_service.h"

#include <memory>

namespace vexil::driver_service {

/// The service of this platform's stand-in.
[[nodiscard]] std::unique_ptr<VXKService> makeService();

} // namespace vexil::driver_service

extern "C" {
/// A new service, or null where it cannot be made.
VEXIL_SHARED_API VXKService* CreateVXKService();
/// Does nothing for null.
VEXIL_SHARED_API void DestroyVXKService(VXKService* service);
}
