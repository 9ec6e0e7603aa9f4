#include "platform/linux/kernel_graphics/known_adapters.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using platform::AdapterLuid;
using platform::KnownAdapters;
using platform::PciAddress;
using namespace std::chrono_literals;

constexpr PciAddress first{0, 1, 0, 0};
constexpr PciAddress second{0, 2, 0, 0};

class KnownAdaptersTest : public testing::Test {
protected:
    std::vector<AdapterLuid> present_{{first, {7, -1}}};
    int lists_ = 0;
    KnownAdapters::Time now_{1h};
    KnownAdapters adapters_{[this] {
                                ++lists_;
                                return present_;
                            },
                            [this] { return now_; }};
};

TEST_F(KnownAdaptersTest, AreListedOnceForWhatTheyKnow) {
    for (int i = 0; i < 3; ++i) {
        const auto luid = adapters_.luidOf(first);
        ASSERT_TRUE(luid);
        EXPECT_EQ(luid->lowPart, 7U);
        EXPECT_EQ(luid->highPart, -1);
        now_ += 1h;
    }
    EXPECT_EQ(lists_, 1);
}

TEST_F(KnownAdaptersTest, AreListedOnceInAMomentForWhatTheyDoNotKnow) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(adapters_.luidOf(second));
        now_ += 1s;
    }
    EXPECT_EQ(lists_, 1);
    EXPECT_TRUE(adapters_.luidOf(first)) << "what is known is known at any time";
}

TEST_F(KnownAdaptersTest, FindACardThatCameLater) {
    EXPECT_FALSE(adapters_.luidOf(second));
    present_ = {{second, {8, 0}}};
    now_ += KnownAdapters::moment - 1ns;
    EXPECT_FALSE(adapters_.luidOf(second));
    now_ += 1ns;
    EXPECT_TRUE(adapters_.luidOf(second));
    EXPECT_EQ(lists_, 2);
}

TEST_F(KnownAdaptersTest, CountTheMomentFromTheEndOfTheListing) {
    KnownAdapters slow(
        [this] {
            ++lists_;
            now_ += 30s;
            return present_;
        },
        [this] { return now_; });
    EXPECT_FALSE(slow.luidOf(second));
    EXPECT_FALSE(slow.luidOf(second));
    EXPECT_EQ(lists_, 1);
}

} // namespace
} // namespace vexil::tests
