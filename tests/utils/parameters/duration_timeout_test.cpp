#include "utils/parameters/number_text.h"
#include "utils/parameters/test_parameter_duration_timeout.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <stdexcept>

namespace vexil::utils {
namespace {

TEST(DurationParameter, AcceptsZeroAlthoughItsRangeBeginsAtOne) {
    const TestParameterDurationTimeout duration;
    EXPECT_TRUE(duration.isValid("0"));
    EXPECT_TRUE(duration.isValid("0.25"));
    EXPECT_TRUE(duration.isValid("-0"));
}

TEST(DurationParameter, AcceptsUpToItsUpperEnd) {
    const TestParameterDurationTimeout duration;
    EXPECT_TRUE(duration.isValid("9999"));
    EXPECT_FALSE(duration.isValid("9999.5"));
    EXPECT_FALSE(duration.isValid("inf"));
}

TEST(DurationParameter, RefusesWhatIsNegativeOrNoNumber) {
    const TestParameterDurationTimeout duration;
    for (const char* text : {"-1", "-0.5", "abc", "", " ", "x12"}) {
        EXPECT_FALSE(duration.isValid(text)) << text;
    }
}

TEST(DurationParameter, RefusesWhatNoFloatHolds) {
    const TestParameterDurationTimeout duration;
    EXPECT_FALSE(duration.isValid("1e99"));
    EXPECT_FALSE(duration.isValid("1e-99")) << "too small for a float is a range error as well";
}

TEST(DurationParameter, IgnoresTextAfterTheNumber) {
    TestParameterDurationTimeout duration;
    EXPECT_TRUE(duration.isValid("12abc"));
    duration.setValue("12abc");
    EXPECT_FLOAT_EQ(duration.minutes(), 12.0F);
}

TEST(DurationParameter, AcceptsWhatIsNeitherBelowNorAboveAnyNumber) {
    EXPECT_TRUE(TestParameterDurationTimeout().isValid("nan"));
}

TEST(DurationParameter, KeepsItsValueWhenTheNewOneIsInvalid) {
    TestParameterDurationTimeout duration;
    duration.setValue("garbage");
    EXPECT_FLOAT_EQ(duration.minutes(), 5.0F);
    duration.setValue("0.5");
    duration.setValue("-1");
    EXPECT_FLOAT_EQ(duration.minutes(), 0.5F);
}

TEST(DurationParameter, ReadsItsDefaultWhereTheValueIsNoNumber) {
    class Broken final : public TestParameterDurationTimeout {
    public:
        Broken() { value_ = "garbage"; }
    };
    EXPECT_FLOAT_EQ(Broken().minutes(), 5.0F);
}

TEST(NumberText, SaysWhatIsWrongWithAFloat) {
    const auto messageOf = [](const char* text) -> std::string {
        try {
            static_cast<void>(floatOf(text));
        } catch (const std::invalid_argument& error) {
            return std::string("invalid: ") + error.what();
        } catch (const std::out_of_range& error) {
            return std::string("range: ") + error.what();
        }
        return "";
    };
    EXPECT_EQ(messageOf("abc"), "invalid: invalid stof argument");
    EXPECT_EQ(messageOf("1e99"), "range: stof argument out of range");
}

TEST(NumberText, LeavesTheErrorNumberAlone) {
    errno = EINTR;
    EXPECT_THROW(static_cast<void>(floatOf("1e99")), std::out_of_range);
    EXPECT_EQ(errno, EINTR);
    errno = ERANGE;
    EXPECT_EQ(integerOf("7"), 7) << "an old range error is not this one's";
    EXPECT_FLOAT_EQ(floatOf("0.5"), 0.5F);
    EXPECT_EQ(errno, ERANGE);
}

} // namespace
} // namespace vexil::utils
