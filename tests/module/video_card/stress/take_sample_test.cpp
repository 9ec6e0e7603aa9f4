#include "module/video_card/stress/take_sample.h"

#include "stress_fakes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace vexil::tests {
namespace {

using module::video_card::takeSample;

class StressSampling : public testing::Test {
protected:
    CardWithSensors card_;
    FakeRenderer renderer_;
};

TEST_F(StressSampling, TakesAllThreeValues) {
    renderer_.fps = 57.5F;
    const auto sample = takeSample(&renderer_, &card_.device);
    EXPECT_TRUE(sample.fpsValid && sample.temperatureValid && sample.usageValid);
    EXPECT_EQ(sample.fps, 57.5F);
    EXPECT_EQ(sample.temperature, 48);
    EXPECT_EQ(sample.usage, 95U);
}

TEST_F(StressSampling, IsEmptyWithoutRendererAndDevice) {
    const auto sample = takeSample(nullptr, nullptr);
    EXPECT_FALSE(sample.fpsValid || sample.temperatureValid || sample.usageValid);
    EXPECT_EQ(sample.fps, 0);
    EXPECT_EQ(sample.temperature, 0);
    EXPECT_EQ(sample.usage, 0U);
}

TEST_F(StressSampling, TakesAFrameRateThatIsANumberAndNotNegative) {
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float bad : {infinity, -infinity, std::nanf(""), -1.0F, -0.001F}) {
        renderer_.fps = bad;
        EXPECT_FALSE(takeSample(&renderer_, &card_.device).fpsValid) << bad;
    }
    for (const float good : {0.0F, 0.5F, 100000.0F}) {
        renderer_.fps = good;
        EXPECT_TRUE(takeSample(&renderer_, &card_.device).fpsValid) << good;
    }
}

TEST_F(StressSampling, TakesATemperatureOfZeroOrBelowForNone) {
    for (const std::int64_t celsius : {0, -1, -40}) {
        card_.values->temperature = celsius;
        const auto sample = takeSample(&renderer_, &card_.device);
        EXPECT_FALSE(sample.temperatureValid) << celsius;
        EXPECT_TRUE(sample.usageValid);
    }
    card_.values->temperature = 1;
    EXPECT_TRUE(takeSample(&renderer_, &card_.device).temperatureValid);
}

TEST_F(StressSampling, TakesAUsageOfZero) {
    card_.values->usage = 0;
    EXPECT_TRUE(takeSample(&renderer_, &card_.device).usageValid);
}

TEST_F(StressSampling, FollowsSensorsThatGoAndComeBack) {
    card_.values->temperature.reset();
    card_.values->usage.reset();
    auto sample = takeSample(&renderer_, &card_.device);
    EXPECT_FALSE(sample.temperatureValid || sample.usageValid);
    card_.values->temperature = 50;
    card_.values->usage = 10;
    sample = takeSample(&renderer_, &card_.device);
    EXPECT_TRUE(sample.temperatureValid && sample.usageValid);
}

} // namespace
} // namespace vexil::tests
