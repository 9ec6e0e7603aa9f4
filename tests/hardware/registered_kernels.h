#pragma once

#include "module/video_card/cuda/cuda_runtime.h"

#include <string_view>

namespace vexil::hardware {

/// The key of a kernel that the tests have registered; null for a name that none of them has.
[[nodiscard]] inline const void* registeredKernel(std::string_view name) {
    for (const auto& binary : module::video_card::CudaRuntime::instance().fatBinaries()) {
        for (const auto& function : binary->functions) {
            if (name == function.name) {
                return function.key;
            }
        }
    }
    return nullptr;
}

} // namespace vexil::hardware
