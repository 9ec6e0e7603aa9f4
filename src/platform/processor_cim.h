#pragma once

#include "system/cim/cim.h"

#include <memory>

namespace vexil::platform {

/// The platform's CIM client. Where a simulated machine brought a processor of its own, the client tells of
/// that one when it is asked for the caption of "Win32_Processor", and passes everything else on.
[[nodiscard]] std::unique_ptr<system::Cim> makeProcessorCim();

} // namespace vexil::platform
