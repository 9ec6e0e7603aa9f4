#include "utils/parameters/test_parameter_burn_in.h"
#include "utils/parameters/test_parameter_infinite.h"

#include <gtest/gtest.h>

namespace vexil::utils {
namespace {

template <typename Parameter>
class SwitchParameter : public testing::Test {};

using Switches = testing::Types<TestParameterBurnIn, TestParameterInfinite>;
TYPED_TEST_SUITE(SwitchParameter, Switches);

TYPED_TEST(SwitchParameter, AcceptsItsTwoTextsInCapitalsOnly) {
    const TypeParam parameter;
    EXPECT_TRUE(parameter.isValid("TRUE"));
    EXPECT_TRUE(parameter.isValid("FALSE"));
    for (const char* text : {"true", "True", "false", "1", "0", "", "TRUE ", " FALSE", "YES"}) {
        EXPECT_FALSE(parameter.isValid(text)) << text;
    }
}

TYPED_TEST(SwitchParameter, IsOffUntilItIsSet) {
    TypeParam parameter;
    EXPECT_FALSE(parameter.enabled());
    parameter.setValue("TRUE");
    EXPECT_TRUE(parameter.enabled());
    parameter.setValue("FALSE");
    EXPECT_FALSE(parameter.enabled());
}

TYPED_TEST(SwitchParameter, KeepsItsValueWhenTheNewOneIsInvalid) {
    TypeParam parameter;
    parameter.setValue("TRUE");
    parameter.setValue("false");
    EXPECT_TRUE(parameter.enabled());
}

TYPED_TEST(SwitchParameter, TurnsAnInvalidValueIntoFalse) {
    class Broken final : public TypeParam {
    public:
        Broken() { this->value_ = "true"; }
        [[nodiscard]] const std::string& value() const { return this->value_; }
    };
    Broken parameter;
    EXPECT_FALSE(parameter.enabled());
    EXPECT_EQ(parameter.value(), "FALSE");
}

} // namespace
} // namespace vexil::utils
