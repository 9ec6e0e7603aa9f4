#include "utils/event_filters/high_contrast_event_filter.h"

#include "support/fake_desktop.h"
#include "utils/accessibility/desktop_probes.h"

#include <gtest/gtest.h>

namespace vexil::utils::event_filters {
namespace {

/// Windows' message record begins like this.
struct MessageRecord {
    void* window = nullptr;
    std::uint32_t number = 0;
    std::uint64_t rest[5] = {};
};

class HighContrastEventFilterTest : public testing::Test {
protected:
    bool send(const char* eventType, std::uint32_t number) {
        MessageRecord record;
        record.number = number;
        qintptr result = 0;
        return filter.nativeEventFilter(eventType, &record, &result);
    }

    test::FakeDialogEnvironment environment;
    HighContrastEventFilter filter;
    int signalCount = 0;
    QMetaObject::Connection connection =
        QObject::connect(&filter, &HighContrastEventFilter::themeChanged, [this] { ++signalCount; });
};

TEST_F(HighContrastEventFilterTest, TellsAChangeOfThemeAndKeepsItsMessage) {
    EXPECT_TRUE(send("windows_generic_MSG", 794));
    EXPECT_EQ(signalCount, 1);
}

TEST_F(HighContrastEventFilterTest, LetsOtherMessagesPass) {
    for (const std::uint32_t number : {0U, 793U, 795U, 26U}) {
        EXPECT_FALSE(send("windows_generic_MSG", number));
    }
    EXPECT_EQ(signalCount, 0);
}

TEST_F(HighContrastEventFilterTest, LetsOtherTypesOfEventsPass) {
    EXPECT_FALSE(send("xcb_generic_event_t", 794));
    EXPECT_FALSE(send("windows_dispatcher_MSG", 794));
    EXPECT_FALSE(send("", 794));
    EXPECT_EQ(signalCount, 0);
}

TEST_F(HighContrastEventFilterTest, TellsAChangeThatTheDesktopTellsItself) {
    environment.fakeDesktop.changeTheme();
    EXPECT_EQ(signalCount, 1);
}

TEST_F(HighContrastEventFilterTest, ReadsThirtyColoursAndNeverNumberTwentyFive) {
    std::vector<QColor> colors;
    filter.readSystemColors(colors);
    EXPECT_EQ(colors.size(), 30U);
    EXPECT_EQ(environment.fakeDesktop.readColors,
              (std::vector<int>{0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
                                15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 26, 27, 28, 29, 30}));
}

TEST_F(HighContrastEventFilterTest, FindsRedInTheLowByteAndMakesEveryColourOpaque) {
    environment.fakeDesktop.colors[8] = 0x00332211;
    environment.fakeDesktop.colors[30] = 0xFF0000FF;
    std::vector<QColor> colors(3);
    filter.readSystemColors(colors);
    EXPECT_EQ(colors.at(8), QColor(0x11, 0x22, 0x33, 255));
    EXPECT_EQ(colors.at(29), QColor(0xFF, 0, 0, 255)) << "the last place, since one number is left out";
}

TEST_F(HighContrastEventFilterTest, SeesHighContrastInTheLowestBitOfTheFlags) {
    auto& flags = environment.fakeDesktop.highContrast;
    for (const auto& [value, on] :
         {std::pair<std::uint32_t, bool>{1, true}, {0x7F, true}, {0, false}, {0x7E, false}}) {
        flags = value;
        EXPECT_EQ(accessibility::isHighContrastOn(), on) << value;
    }
}

TEST_F(HighContrastEventFilterTest, TakesADesktopThatDoesNotTellForOneWithoutHighContrast) {
    environment.fakeDesktop.highContrast.reset();
    EXPECT_FALSE(accessibility::isHighContrastOn());
}

TEST_F(HighContrastEventFilterTest, CountsNarratorAsAScreenReaderWhateverTheFlagSays) {
    auto& desktop = environment.fakeDesktop;
    for (const auto flag : {std::optional<bool>(), std::optional(false), std::optional(true)}) {
        for (const bool narrator : {false, true}) {
            desktop.readerFlag = flag;
            desktop.narrator = narrator;
            EXPECT_EQ(accessibility::isScreenReaderRunning(), narrator || flag == true);
        }
    }
}

} // namespace
} // namespace vexil::utils::event_filters
