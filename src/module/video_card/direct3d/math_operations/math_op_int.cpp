#include "module/video_card/direct3d/math_operations/math_op_int.h"

#include "core/test_result.h"
#include "module/video_card/direct3d/math_operations/int_tables.h"

namespace vexil::module::video_card {

DirectComputeMathOpInt::DirectComputeMathOpInt(std::int32_t mode, ComShared<ID3D11Device> device,
                                               ComShared<ID3D11DeviceContext> context)
    : DirectComputeMathOp(std::move(device), std::move(context)) {
    prepare(mode);
}

std::uint8_t DirectComputeMathOpInt::execute(std::int32_t, ID3D11ComputeShader* shader,
                                             ID3D11ComputeShader*) {
    return runOperations(shader);
}

std::uint8_t DirectComputeMathOpInt::runOperations(ID3D11ComputeShader* shader) {
    return runTable(shader, table_, [this](std::size_t element, std::int32_t result) {
        return static_cast<double>(result) == static_cast<double>(table_.expected[element]);
    });
}

std::uint8_t DirectComputeMathOpInt::runDotProducts(ID3D11ComputeShader*) { return core::TestResult::Passed; }

void DirectComputeMathOpInt::prepareStandard() { table_.load(standardIntRows); }

void DirectComputeMathOpInt::prepareAdvanced() { table_.load(advancedIntRows); }

} // namespace vexil::module::video_card
