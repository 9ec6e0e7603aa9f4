#include "module/video_card/direct3d/math_operations/math_op_float.h"

#include "core/test_result.h"
#include "module/video_card/direct3d/math_operations/almost_equal.h"

#include <span>

namespace vexil::module::video_card {

using core::TestResult;

DirectComputeMathOpFloat::DirectComputeMathOpFloat(std::int32_t mode, ComShared<ID3D11Device> device,
                                                   ComShared<ID3D11DeviceContext> context)
    : DirectComputeMathOp(std::move(device), std::move(context)) {
    prepare(mode);
}

std::uint8_t DirectComputeMathOpFloat::execute(std::int32_t mode, ID3D11ComputeShader* shader,
                                               ID3D11ComputeShader* dotShader) {
    if (mode != standardMode && mode != advancedMode) {
        return TestResult::Passed;
    }
    const auto result = runOperations(shader);
    return mode == advancedMode && result == TestResult::Passed ? runDotProducts(dotShader) : result;
}

std::uint8_t DirectComputeMathOpFloat::runOperations(ID3D11ComputeShader* shader) {
    return runTable(shader, table_, [this](std::size_t element, float result) {
        const auto row = element / table_.valuesPerRow;
        return almostEqual(result, table_.expected[element], fields_.absoluteTolerance[row],
                           fields_.relativeTolerance[row], fields_.maxUlps[row]);
    });
}

template <typename Vector>
StructuredContent DirectComputeMathOpFloat::dotContent(const Vector& vector) const {
    const auto fields = std::as_bytes(std::span(&fields_, 1));
    const auto begin = reinterpret_cast<const std::byte*>(&vector) - fields.data();
    const auto bytes = fields_.dotRowCount * fields_.dotValuesPerRow * sizeof(Vector);
    return {fields.subspan(static_cast<std::size_t>(begin), bytes), sizeof(Vector)};
}

std::uint8_t DirectComputeMathOpFloat::runDotProducts(ID3D11ComputeShader* dotShader) {
    const auto& vectors = fields_.vectors;
    const StructuredContent inputs[] = {dotContent(vectors.vec2A), dotContent(vectors.vec2B),
                                        dotContent(vectors.vec3A), dotContent(vectors.vec3B),
                                        dotContent(vectors.vec4A), dotContent(vectors.vec4B)};
    // The output starts out with numbers that are no dot products, unlike that of the table.
    const auto output = contentOf(std::span(table_.input0).first(dotProducts));
    const auto isRight = [this](std::size_t product, float result) {
        return almostEqual(result, dotProductsExpected[product], fields_.dotAbsoluteTolerance[product],
                           fields_.dotRelativeTolerance[product], fields_.dotMaxUlps[product]);
    };
    return run(dotShader, {inputs, output, fields_.dotRowCount}, eachElement<float>(isRight));
}

void DirectComputeMathOpFloat::prepareStandard() {
    table_.load(standardFloatRows);
    for (std::size_t row = 0; row < standardFloatRows.size(); ++row) {
        fields_.maxUlps[row] = 0;
        fields_.absoluteTolerance[row] = 0;
        fields_.relativeTolerance[row] = 0;
    }
}

void DirectComputeMathOpFloat::prepareAdvanced() {
    table_.load(advancedFloatRows);
    for (std::size_t row = 0; row < rows; ++row) {
        fields_.maxUlps[row] = advancedFloatTolerances[row].maxUlps;
        fields_.absoluteTolerance[row] = advancedFloatTolerances[row].absolute;
        fields_.relativeTolerance[row] = advancedFloatTolerances[row].relative;
    }
    fields_.vectors = dotProductVectors;
    for (std::size_t product = 0; product < dotProducts; ++product) {
        fields_.dotMaxUlps[product] = dotProductTolerances[product].maxUlps;
        fields_.dotAbsoluteTolerance[product] = dotProductTolerances[product].absolute;
        fields_.dotRelativeTolerance[product] = dotProductTolerances[product].relative;
    }
}

} // namespace vexil::module::video_card
