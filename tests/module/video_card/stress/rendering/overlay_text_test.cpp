#include "module/video_card/stress/rendering/overlay_text.h"

#include <gtest/gtest.h>

#include <bit>
#include <cstdint>

namespace vexil::module::video_card {
namespace {

const OverlayLabels labels{L"Frames", L"Load", L"Heat"};

TEST(OverlayText, HasALineForEachValidValueInThisOrder) {
    EXPECT_EQ(statisticsText(labels, {57.4F, true, 48, true, 95, true}),
              L"Frames: 57\nLoad: 95%\nHeat: 48\u00B0C\n");
}

TEST(OverlayText, HasOneLineWhereOnlyTheFrameRateIsValid) {
    EXPECT_EQ(statisticsText(labels, {57.6F, true, 48, false, 95, false}), L"Frames: 58\n");
}

TEST(OverlayText, HasOneLineWhereOnlyTheTemperatureIsValid) {
    EXPECT_EQ(statisticsText(labels, {57, false, 48, true, 95, false}), L"Heat: 48\u00B0C\n");
}

TEST(OverlayText, IsEmptyWithoutAnyValue) { EXPECT_EQ(statisticsText(labels, {}), L""); }

TEST(OverlayText, ShowsTwoHyphensForATemperatureBelowOne) {
    for (const std::int64_t temperature : {0, -1, -300}) {
        EXPECT_EQ(statisticsText(labels, {0, false, temperature, true, 0, false}), L"Heat: --\u00B0C\n");
    }
    EXPECT_EQ(statisticsText(labels, {0, false, 1, true, 0, false}), L"Heat: 1\u00B0C\n");
}

TEST(OverlayText, ShowsNoDecimalsNorExponents) {
    EXPECT_EQ(statisticsText(labels, {12345678.0F, true, 0, false, 0, false}), L"Frames: 12345678\n");
    EXPECT_EQ(statisticsText(labels, {0, true, 0, false, 18446744073709551615ULL, true}),
              L"Frames: 0\nLoad: 18446744073709551615%\n");
}

TEST(OverlaySizes, At96DotsPerInchAre14PointsAnd20Pixels) {
    EXPECT_EQ(instructionSizes(96).pointSize, 14);
    EXPECT_EQ(instructionSizes(96).pixelSize, 20);
}

TEST(OverlaySizes, At144DotsPerInchAre14PointsAnd18Pixels) {
    EXPECT_EQ(instructionSizes(144).pointSize, 14);
    EXPECT_EQ(instructionSizes(144).pixelSize, 18);
}

TEST(OverlaySizes, FollowTheFormulaAtOtherResolutions) {
    EXPECT_EQ(instructionSizes(120).pointSize, 14); // 1800 / 124
    EXPECT_FLOAT_EQ(instructionSizes(120).pixelSize, 1800.0F / 96);
    EXPECT_EQ(instructionSizes(192).pointSize, 14); // 2880 / 196
    EXPECT_FLOAT_EQ(instructionSizes(192).pixelSize, 2880.0F / 168);
}

TEST(OverlayFonts, AreLatoInTheirWeightsAndWidths) {
    const auto statistics = statisticsFont(96);
    EXPECT_EQ(std::wstring(statistics.family), L"Lato");
    EXPECT_EQ(statistics.weight, 900);
    EXPECT_EQ(statistics.stretch, 5);
    EXPECT_FLOAT_EQ(statistics.pixelSize, 96 * 0.22222222F);
    const auto instruction = instructionFont(20);
    EXPECT_EQ(std::wstring(instruction.family), L"Lato");
    EXPECT_EQ(instruction.weight, 600);
    EXPECT_EQ(instruction.stretch, 4);
    EXPECT_EQ(instruction.pixelSize, 20);
}

TEST(OverlayColors, OfTheInstructionHaveTheseBits) {
    for (const float channel : {instructionColor.red, instructionColor.green, instructionColor.blue}) {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(channel), 0x3F219CE0U);
    }
    EXPECT_EQ(instructionColor.alpha, 1.0F);
}

} // namespace
} // namespace vexil::module::video_card
