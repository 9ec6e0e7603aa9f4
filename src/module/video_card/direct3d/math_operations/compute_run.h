#pragma once

#include <d3d11.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace vexil::module::video_card {

/// What a structured buffer holds before the shader runs.
struct StructuredContent {
    std::span<const std::byte> bytes;
    UINT stride; ///< bytes of one element
};

/// One dispatch of a compute shader: what it reads, what it writes, and how many groups of it run.
struct ComputeRun {
    std::span<const StructuredContent> inputs; ///< for the slots t0, t1, ...
    StructuredContent output;                  ///< for the slot u0
    UINT groups;
};

/// Looks at what the shader left in the output buffer; false if a value is wrong.
using OutputCheck = std::function<bool(std::span<const std::byte> output)>;

/// Runs a shader, reads its output back and has it checked. `Passed`, `Failed` for a wrong value,
/// `NotCompleted` if the card would not create a resource or give the output back. With a null shader nothing
/// runs, and the output is what it was before.
[[nodiscard]] std::uint8_t runCompute(ID3D11Device& device, ID3D11DeviceContext& context,
                                      ID3D11ComputeShader* shader, const ComputeRun& run,
                                      const OutputCheck& isRight);

} // namespace vexil::module::video_card
