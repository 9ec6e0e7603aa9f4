#include "module/video_card/direct3d/math_operations/math_op_double.h"

#include "core/test_result.h"
#include "module/video_card/direct3d/math_operations/almost_equal.h"
#include "module/video_card/direct3d/math_operations/double_tables.h"

namespace vexil::module::video_card {

DirectComputeMathOpDouble::DirectComputeMathOpDouble(std::int32_t mode, ComShared<ID3D11Device> device,
                                                     ComShared<ID3D11DeviceContext> context)
    : DirectComputeMathOp(std::move(device), std::move(context)) {
    prepare(mode);
}

std::uint8_t DirectComputeMathOpDouble::execute(std::int32_t, ID3D11ComputeShader* shader,
                                                ID3D11ComputeShader*) {
    return runOperations(shader);
}

std::uint8_t DirectComputeMathOpDouble::runOperations(ID3D11ComputeShader* shader) {
    return runTable(shader, table_, [this](std::size_t element, double result) {
        return almostEqual(result, table_.expected[element], tolerances_.absoluteOf(element),
                           tolerances_.relativeOf(element), tolerances_.maxUlpsOf(element));
    });
}

std::uint8_t DirectComputeMathOpDouble::runDotProducts(ID3D11ComputeShader*) {
    return core::TestResult::Passed;
}

void DirectComputeMathOpDouble::prepareStandard() {
    table_.load(standardDoubleRows);
    for (std::size_t row = 0; row < standardDoubleRows.size(); ++row) {
        tolerances_.maxUlps[row] = 0;
        tolerances_.absolute[row] = 0;
        tolerances_.relative[row] = 0;
    }
}

void DirectComputeMathOpDouble::prepareAdvanced() {
    table_.load(advancedDoubleRows);
    tolerances_.maxUlps = advancedDoubleMaxUlps;
    tolerances_.absolute = {};
    tolerances_.relative = {};
}

} // namespace vexil::module::video_card
