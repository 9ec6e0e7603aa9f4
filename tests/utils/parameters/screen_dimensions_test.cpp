#include "module/video_card/test_parameter_screen_dimensions.h"

#include <gtest/gtest.h>

namespace vexil::module::video_card {
namespace {

constexpr platform::DesktopRectangle fullHd{0, 0, 1920, 1080};

std::string rangeFor(const platform::DesktopRectangle& desktop) {
    return TestParameterScreenDimensions(desktop).description().range;
}

void expectSize(const TestParameterScreenDimensions& parameter, int width, int height, bool fullScreen) {
    EXPECT_EQ(parameter.width(), width);
    EXPECT_EQ(parameter.height(), height);
    EXPECT_EQ(parameter.isFullScreen(), fullScreen);
}

TEST(ScreenDimensionsParameter, OffersTheSizesThatFitTheDesktop) {
    EXPECT_EQ(rangeFor(fullHd), "[400x400|1024x768|1280x1024|1920x1080|FULL_SCREEN]");
    EXPECT_EQ(rangeFor({0, 0, 3840, 2160}), "[400x400|1024x768|1280x1024|1920x1080|3840x2160|FULL_SCREEN]");
    EXPECT_EQ(rangeFor({0, 0, 1919, 1080}), "[400x400|1024x768|1280x1024|FULL_SCREEN]");
    EXPECT_EQ(rangeFor({0, 0, 1920, 1023}), "[400x400|1024x768|FULL_SCREEN]");
    EXPECT_EQ(rangeFor({0, 0, 399, 400}), "[FULL_SCREEN]");
}

TEST(ScreenDimensionsParameter, ComparesWithTheDesktopsRightAndBottomEdge) {
    EXPECT_EQ(rangeFor({-1920, -1080, 1024, 768}), "[400x400|1024x768|FULL_SCREEN]");
}

TEST(ScreenDimensionsParameter, OffersTheFullScreenOnAnyDesktopOfThisMachine) {
    const std::string range = TestParameterScreenDimensions().description().range;
    EXPECT_EQ(range.front(), '[');
    EXPECT_TRUE(range.ends_with("FULL_SCREEN]")) << range;
}

TEST(ScreenDimensionsParameter, AcceptsEverySizeWhateverTheDesktopIs) {
    const TestParameterScreenDimensions parameter({0, 0, 10, 10});
    for (const char* text : {"400x400", "1024x768", "1280x1024", "1920x1080", "3840x2160", "FULL_SCREEN"}) {
        EXPECT_TRUE(parameter.isValid(text)) << text;
    }
}

TEST(ScreenDimensionsParameter, RefusesEverythingElse) {
    const TestParameterScreenDimensions parameter(fullHd);
    for (const char* text : {"400X400", "1024X768", "800x600", "full_screen", "", " 400x400", "400x4000",
                             "1024x768|400x400", "1024x768\n"}) {
        EXPECT_FALSE(parameter.isValid(text)) << text;
    }
}

TEST(ScreenDimensionsParameter, BeginsWith400By400) {
    expectSize(TestParameterScreenDimensions(fullHd), 400, 400, false);
}

TEST(ScreenDimensionsParameter, TakesASize) {
    TestParameterScreenDimensions parameter(fullHd);
    parameter.setValue("1024x768");
    expectSize(parameter, 1024, 768, false);
    parameter.setValue("1280x1024");
    expectSize(parameter, 1280, 1024, false);
    parameter.setValue("1920x1080");
    expectSize(parameter, 1920, 1080, false);
    parameter.setValue("3840x2160");
    expectSize(parameter, 3840, 2160, false);
}

TEST(ScreenDimensionsParameter, Returns400By400WithACapitalXOnly) {
    TestParameterScreenDimensions parameter(fullHd);
    parameter.setValue("1920x1080");
    parameter.setValue("400x400");
    expectSize(parameter, 1920, 1080, false);
    parameter.setValue("400X400");
    expectSize(parameter, 400, 400, false);
}

TEST(ScreenDimensionsParameter, KeepsItsSizeForAnyOtherText) {
    TestParameterScreenDimensions parameter(fullHd);
    parameter.setValue("1280x1024");
    for (const char* text : {"1024X768", "800x600", ""}) {
        parameter.setValue(text);
        expectSize(parameter, 1280, 1024, false);
    }
}

TEST(ScreenDimensionsParameter, FillsTheScreenWithoutASizeOfItsOwn) {
    TestParameterScreenDimensions parameter(fullHd);
    parameter.setValue("FULL_SCREEN");
    expectSize(parameter, 0, 0, true);
    parameter.setValue("1024x768");
    expectSize(parameter, 1024, 768, false);
}

TEST(ScreenDimensionsParameter, LeavesTheFullScreenForAnyOtherText) {
    TestParameterScreenDimensions parameter(fullHd);
    parameter.setValue("FULL_SCREEN");
    parameter.setValue("400x400");
    expectSize(parameter, 0, 0, false);
}

TEST(ScreenDimensionsParameter, DoesNotKeepTheText) {
    class Open final : public TestParameterScreenDimensions {
    public:
        using TestParameterScreenDimensions::TestParameterScreenDimensions;
        [[nodiscard]] const std::string& value() const { return value_; }
    };
    Open parameter(fullHd);
    parameter.setValue("1024x768");
    EXPECT_EQ(parameter.value(), "400x400");
}

} // namespace
} // namespace vexil::module::video_card
