#pragma once

#include <cstdint>

namespace vexil::module::video_card {

// Launches an arithmetic kernel with one block an operation and one thread a value. The pointers are on the
// card.
void launchMathKernel(bool advanced, unsigned operations, unsigned values, const std::int32_t* a,
                      const std::int32_t* b, const std::int32_t* c, std::int32_t* out);
void launchMathKernel(bool advanced, unsigned operations, unsigned values, const float* a, const float* b,
                      const float* c, float* out);

} // namespace vexil::module::video_card
