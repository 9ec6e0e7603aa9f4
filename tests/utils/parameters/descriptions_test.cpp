#include "module/video_card/test_parameter_screen_dimensions.h"
#include "utils/parameters/test_parameter_burn_in.h"
#include "utils/parameters/test_parameter_duration_timeout.h"
#include "utils/parameters/test_parameter_infinite.h"
#include "utils/parameters/test_parameter_load.h"

#include <gtest/gtest.h>
#include <ostream>

namespace vexil::core {

static bool operator==(const TestParameterDescription& a, const TestParameterDescription& b) {
    return a.key == b.key && a.name == b.name && a.description == b.description &&
           a.defaultValue == b.defaultValue && a.type == b.type && a.flags == b.flags && a.range == b.range;
}

static void PrintTo(const TestParameterDescription& d, std::ostream* out) {
    *out << d.key << ", " << d.name << ", " << d.description << ", " << d.defaultValue << ", " << d.type
         << ", " << d.flags << ", " << d.range;
}

} // namespace vexil::core

namespace {

using vexil::core::TestParameterDescription;

TEST(TestParameters, DescribeThemselvesAsHostsKnowThem) {
    using namespace vexil::utils;
    EXPECT_EQ(TestParameterDurationTimeout().description(),
              (TestParameterDescription{"DURATION", "DURATION_(MINUTES)",
                                        "DEFINES_THE_TEST_DURATION_IN_MINUTES.", "5", 2, 0, "[1:9999]"}));
    EXPECT_EQ(TestParameterBurnIn().description(),
              (TestParameterDescription{"BURN_IN", "BURN_IN_MODE", "BURN_IN_MODE_DESCRIPTION", "FALSE", 0, 4,
                                        "[TRUE:FALSE]"}));
    EXPECT_EQ(TestParameterInfinite().description(),
              (TestParameterDescription{"INFINITE", "INFINITE", "INFINITE_DESCRIPTION", "FALSE", 0, 4,
                                        "[TRUE:FALSE]"}));
    EXPECT_EQ(
        TestParameterLoad().description(),
        (TestParameterDescription{"LOAD", "LOAD_LEVEL", "LOAD_LEVEL_DESCRIPTION", "100", 2, 4, "[1:100]"}));
    EXPECT_EQ(
        vexil::module::video_card::TestParameterScreenDimensions({0, 0, 1920, 1080}).description(),
        (TestParameterDescription{"WINDOW_SIZE", "WINDOW_SCREEN_SIZE", "WINDOW_SIZE_DESCRIPTION", "400x400",
                                  3, 0, "[400x400|1024x768|1280x1024|1920x1080|FULL_SCREEN]"}));
}

} // namespace
