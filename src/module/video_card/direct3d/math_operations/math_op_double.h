#pragma once

#include "module/video_card/direct3d/math_operations/double_tolerances.h"
#include "module/video_card/direct3d/math_operations/math_op.h"

namespace vexil::module::video_card {

/// Operations on doubles. A card without them cannot create the shaders; nothing is dispatched then, and the
/// output still holds the expected values.
class DirectComputeMathOpDouble final : public DirectComputeMathOp {
public:
    DirectComputeMathOpDouble(std::int32_t mode, ComShared<ID3D11Device> device,
                              ComShared<ID3D11DeviceContext> context);

    std::uint8_t execute(std::int32_t mode, ID3D11ComputeShader* shader,
                         ID3D11ComputeShader* dotShader) override;
    std::uint8_t runOperations(ID3D11ComputeShader* shader) override;
    std::uint8_t runDotProducts(ID3D11ComputeShader* dotShader) override;
    void prepareStandard() override;
    void prepareAdvanced() override;

private:
    MathOpTable<double> table_;
    DoubleTolerances tolerances_;
};

} // namespace vexil::module::video_card
