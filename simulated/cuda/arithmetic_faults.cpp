#include "simulated/cuda/arithmetic_faults.h"

#include <bit>
#include <limits>

namespace vexil::simulated::cuda {

namespace {

std::uint32_t wrongBits(std::uint32_t right, CudaWrongValue value, bool isFloat) {
    switch (value) {
    case CudaWrongValue::OneMore:
        // A whole one for either type: more than any tolerance of a test forgives.
        return isFloat ? std::bit_cast<std::uint32_t>(std::bit_cast<float>(right) * 1.01F + 1.0F) : right + 1;
    case CudaWrongValue::Negated:
        return isFloat ? right ^ 0x80000000U : 0 - right;
    case CudaWrongValue::NaN:
        return std::bit_cast<std::uint32_t>(std::numeric_limits<float>::quiet_NaN());
    case CudaWrongValue::Infinity:
        return std::bit_cast<std::uint32_t>(std::numeric_limits<float>::infinity());
    case CudaWrongValue::Zero:
        break;
    }
    return 0;
}

} // namespace

void spoilResults(const std::vector<CudaWrongOperation>& faults, std::string_view kernel, std::uint32_t* out,
                  std::uint32_t rows, std::uint32_t columns) {
    for (const auto& fault : faults) {
        if (fault.kernel != kernel) {
            continue;
        }
        for (std::uint32_t row = 0; row < rows; ++row) {
            for (std::uint32_t column = 0; column < columns && (!fault.row || *fault.row == row); ++column) {
                std::uint32_t& element = out[row * columns + column];
                element = wrongBits(element, fault.value, kernel.ends_with("float"));
            }
        }
    }
}

} // namespace vexil::simulated::cuda
