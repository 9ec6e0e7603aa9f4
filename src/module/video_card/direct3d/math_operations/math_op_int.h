#pragma once

#include "module/video_card/direct3d/math_operations/math_op.h"

namespace vexil::module::video_card {

/// Operations on 32-bit signed integers. Nothing but the expected number is right.
class DirectComputeMathOpInt final : public DirectComputeMathOp {
public:
    DirectComputeMathOpInt(std::int32_t mode, ComShared<ID3D11Device> device,
                           ComShared<ID3D11DeviceContext> context);

    std::uint8_t execute(std::int32_t mode, ID3D11ComputeShader* shader,
                         ID3D11ComputeShader* dotShader) override;
    std::uint8_t runOperations(ID3D11ComputeShader* shader) override;
    std::uint8_t runDotProducts(ID3D11ComputeShader* dotShader) override;
    void prepareStandard() override;
    void prepareAdvanced() override;

private:
    MathOpTable<std::int32_t> table_;
};

} // namespace vexil::module::video_card
