#pragma once

#include "module/video_card/direct3d/com_shared.h"
#include "module/video_card/direct3d/math_operations/compute_run.h"
#include "module/video_card/direct3d/math_operations/math_op_row.h"

#include <d3d11.h>

#include <cstdint>
#include <cstring>
#include <span>
#include <utility>

namespace vexil::module::video_card {

/// The operations on one type of number: tables of operands and expected results, and the rule by which the
/// card's results are compared with them. A constructor prepares the table of its mode.
class DirectComputeMathOp {
public:
    static constexpr std::int32_t standardMode = 0;
    static constexpr std::int32_t advancedMode = 1;

    DirectComputeMathOp(ComShared<ID3D11Device> device, ComShared<ID3D11DeviceContext> context)
        : device_(std::move(device)), context_(std::move(context)) {}
    DirectComputeMathOp(const DirectComputeMathOp&) = delete;
    DirectComputeMathOp& operator=(const DirectComputeMathOp&) = delete;
    virtual ~DirectComputeMathOp() = default;

    // Each returns a `TestResult`: `Passed`, `Failed` for a wrong value, `NotCompleted` if the card refused
    // something. The shaders may be null; nothing runs then, and the output holds what it held before.
    virtual std::uint8_t execute(std::int32_t mode, ID3D11ComputeShader* shader,
                                 ID3D11ComputeShader* dotShader) = 0;
    /// One dispatch over the prepared table. Its output starts out with the expected values, so that a
    /// dispatch that writes nothing passes: cards without doubles rely on it.
    virtual std::uint8_t runOperations(ID3D11ComputeShader* shader) = 0;
    virtual std::uint8_t runDotProducts(ID3D11ComputeShader* dotShader) = 0;
    virtual void prepareStandard() = 0;
    virtual void prepareAdvanced() = 0;

protected:
    /// For the constructors of the derived classes; nothing for a mode that is neither.
    void prepare(std::int32_t mode) {
        if (mode == standardMode) {
            prepareStandard();
        } else if (mode == advancedMode) {
            prepareAdvanced();
        }
    }

    [[nodiscard]] std::uint8_t run(ID3D11ComputeShader* shader, const ComputeRun& what,
                                   const OutputCheck& isRight) const {
        return runCompute(*device_, *context_, shader, what, isRight);
    }

    /// `isRight(element, result)` judges one result; the first wrong one ends the comparison.
    template <typename T, typename IsRight>
    [[nodiscard]] std::uint8_t runTable(ID3D11ComputeShader* shader, const MathOpTable<T>& table,
                                        const IsRight& isRight) const {
        const StructuredContent inputs[] = {contentOf(table.input0), contentOf(table.input1),
                                            contentOf(table.input2)};
        return run(shader, {inputs, contentOf(table.expected), table.rowCount}, eachElement<T>(isRight));
    }

    template <typename T, typename IsRight>
    [[nodiscard]] static OutputCheck eachElement(const IsRight& isRight) {
        return [&isRight](std::span<const std::byte> output) {
            for (std::size_t i = 0; i * sizeof(T) < output.size(); ++i) {
                T result;
                std::memcpy(&result, output.data() + i * sizeof(T), sizeof(T));
                if (!isRight(i, result)) {
                    return false;
                }
            }
            return true;
        };
    }

    template <typename Values>
    [[nodiscard]] static StructuredContent contentOf(const Values& values) {
        return {std::as_bytes(std::span(values)), sizeof(values[0])};
    }

private:
    ComShared<ID3D11Device> device_;
    ComShared<ID3D11DeviceContext> context_;
};

} // namespace vexil::module::video_card
