#pragma once

#include "simulated/scenario/cuda_section.h"

#include <string_view>
#include <vector>

namespace vexil::simulated::cuda {

/// Spoils the results that an arithmetic kernel has just stored at `out`, with one row of `columns` elements
/// a block.
void spoilResults(const std::vector<CudaWrongOperation>& faults, std::string_view kernel, std::uint32_t* out,
                  std::uint32_t rows, std::uint32_t columns);

} // namespace vexil::simulated::cuda
