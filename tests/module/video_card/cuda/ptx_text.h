#pragma once

#include "module/video_card/cuda/cuda_runtime.h"

#include <string>

namespace vexil::tests {

/// The text of a fat binary, by its place in the order of registration.
inline std::string ptxOf(std::size_t binary) {
    return module::video_card::CudaRuntime::instance().fatBinaries().at(binary)->image;
}

/// The declaration and the body of one kernel, empty if there is none.
inline std::string kernelText(const std::string& ptx, const std::string& name) {
    const auto begin = ptx.find(".entry " + name + "(");
    return begin == std::string::npos ? "" : ptx.substr(begin, ptx.find("\n}", begin) - begin);
}

} // namespace vexil::tests
