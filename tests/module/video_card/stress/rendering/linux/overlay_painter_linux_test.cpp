#include "../painted_overlay.h"

#include "platform/linux/overlay_painter/overlay_text_shaders.h"
#include "support/shader_folder.h"

#include <QGuiApplication>

#include <exception>

// What only the painter with shaders of its own has.
namespace vexil::tests {
namespace {

TEST(OverlayShaders, BelongToTheSourcesBesideThem) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(OverlayShaders, HaveOneSourceEach) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

TEST(OverlayShaders, StandInTheProgramAsTheyAreInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"overlay_text.vs.dxbc", platform::shaders::overlayTextVertexShader},
                                     {"overlay_text.ps.dxbc", platform::shaders::overlayTextPixelShader}});
}

TEST(OverlayWithoutAnApplication, CannotBeMade) {
    ASSERT_EQ(qGuiApp, nullptr);
    EXPECT_THROW(static_cast<void>(platform::createOverlayPainter(nullptr, {})), std::exception);
}

TEST_F(OverlayPainterTest, PaintsATextAgainOnlyWhenNobodyHoldsIt) {
    const auto first = laidOut(L"Press Esc");
    EXPECT_EQ(laidOut(L"Press Esc"), first);
    EXPECT_NE(laidOut(L"Press Esc", {L"Lato", 900, 5, 21}), first);
    EXPECT_NE(laidOut(L"Press F1"), first);
}

} // namespace
} // namespace vexil::tests
