#pragma once

#include <cstdint>

namespace vexil::hardware {

/// Prints how fast the card copies and fills a block of that size by itself, what a launch costs, and how
/// fast each kernel sweeps the block: in launches of 16 blocks as the tests make them, and in one launch over
/// all of it, which shows what the 16 blocks cost.
void timeKernels(std::int32_t device, std::uint32_t blockMiB);

/// Prints the same for other settings of the kernels.
void timeVariants(std::int32_t device, std::uint32_t blockMiB);

} // namespace vexil::hardware
