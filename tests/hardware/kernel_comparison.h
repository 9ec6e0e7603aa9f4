#pragma once

#include <cstdint>

namespace vexil::hardware {

/// Runs every memory kernel on the card over memory that is right and over memory that is not, and compares
/// what it left there, and the flag, with the plain walk on the host. The block is 20 MiB, so that the last
/// blocks of the second launch have nothing to do. Returns how many comparisons failed.
int compareKernels(std::int32_t device);

} // namespace vexil::hardware
