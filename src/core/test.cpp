#include "core/test.h"

#include <utility>

namespace vexil::core {

Test::Test(TestDescriptor descriptor) : descriptor_(std::move(descriptor)) {}

void Test::addParameter(TestParameter* parameter) {
    parameters_.push_back({parameter->description().key, parameter});
}

} // namespace vexil::core
