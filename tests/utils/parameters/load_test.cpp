#include "utils/parameters/number_text.h"
#include "utils/parameters/test_parameter_load.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace vexil::utils {
namespace {

TEST(LoadParameter, AcceptsOneToAHundred) {
    const TestParameterLoad load;
    for (const char* text : {"1", "50", "100", " 100", "+7"}) {
        EXPECT_TRUE(load.isValid(text)) << text;
    }
    for (const char* text : {"0", "101", "-1", "-2147483648", "2147483647"}) {
        EXPECT_FALSE(load.isValid(text)) << text;
    }
}

TEST(LoadParameter, IgnoresTextAfterTheNumber) {
    TestParameterLoad load;
    EXPECT_TRUE(load.isValid("100%"));
    EXPECT_TRUE(load.isValid("7.9"));
    load.setValue("42%");
    EXPECT_EQ(load.percent(), 42);
}

TEST(LoadParameter, RefusesWhatIsNoNumberOrTooLong) {
    const TestParameterLoad load;
    for (const char* text : {"", "abc", "%100", "4294967297", "99999999999999999999"}) {
        EXPECT_FALSE(load.isValid(text)) << text;
    }
}

TEST(LoadParameter, ReadsDecimalOnly) {
    EXPECT_FALSE(TestParameterLoad().isValid("0x10")) << "the number ends before the x, at 0";
}

TEST(LoadParameter, KeepsItsValueWhenTheNewOneIsInvalid) {
    TestParameterLoad load;
    EXPECT_EQ(load.percent(), 100);
    load.setValue("0");
    EXPECT_EQ(load.percent(), 100);
    load.setValue("25");
    load.setValue("101");
    EXPECT_EQ(load.percent(), 25);
}

TEST(LoadParameter, ReadsItsDefaultWhereTheValueIsNoNumber) {
    class Broken final : public TestParameterLoad {
    public:
        Broken() { value_ = "garbage"; }
    };
    EXPECT_EQ(Broken().percent(), 100);
}

TEST(NumberText, SaysWhatIsWrongWithAnInteger) {
    const auto messageOf = [](const char* text) -> std::string {
        try {
            static_cast<void>(integerOf(text));
        } catch (const std::invalid_argument& error) {
            return std::string("invalid: ") + error.what();
        } catch (const std::out_of_range& error) {
            return std::string("range: ") + error.what();
        }
        return "";
    };
    EXPECT_EQ(messageOf("abc"), "invalid: invalid stoi argument");
    EXPECT_EQ(messageOf("2147483648"), "range: stoi argument out of range");
    EXPECT_EQ(messageOf("-2147483649"), "range: stoi argument out of range");
    EXPECT_EQ(integerOf("-2147483648"), INT32_MIN);
}

} // namespace
} // namespace vexil::utils
