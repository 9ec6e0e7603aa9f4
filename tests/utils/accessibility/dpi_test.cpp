#include "utils/accessibility/dpi.h"

#include "support/fake_desktop.h"
#include "support/fake_shcore.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>

#include <gtest/gtest.h>

#include <array>

namespace vexil::utils::accessibility {
namespace {

class DpiTest : public testing::Test {
protected:
    DpiTest() { environment.fakeLoader = &loader; }

    static std::int32_t screenDpi() {
        return static_cast<std::int32_t>(QGuiApplication::screens().first()->logicalDotsPerInchX());
    }

    test::FakeShcore library;
    test::FakeShcoreLoader loader{library};
    test::FakeDialogEnvironment environment;
};

TEST(DpiTable, ReducesAResolutionToItsStep) {
    struct Row {
        std::int32_t dpi;
        DpiValues values;
    };
    constexpr Row rows[] = {
        {0, {96, 96}},     {96, {96, 96}},    {119, {96, 96}},   {120, {120, 120}}, {143, {120, 120}},
        {144, {144, 144}}, {167, {144, 144}}, {168, {168, 168}}, {191, {168, 168}}, {192, {192, 192}},
        {215, {192, 192}}, {216, {192, 216}}, {239, {192, 216}}, {240, {192, 240}}, {287, {192, 240}},
        {288, {192, 288}}, {300, {192, 288}}, {335, {192, 288}}, {336, {192, 336}}, {1000, {192, 336}},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(reduceDpi(row.dpi), row.values) << row.dpi;
    }
}

TEST(DpiTable, FitsTheReferenceIntoTheScreen) {
    EXPECT_EQ(fittedSize({1920, 1080}, 96), QSize(800, 600));
    EXPECT_EQ(fittedSize({1920, 1080}, 120), QSize(1000, 750));
    EXPECT_EQ(fittedSize({1920, 1080}, 144), QSize(1200, 900));
    EXPECT_EQ(fittedSize({1920, 1080}, 192), QSize(1600, 1080)) << "no higher than the screen";
    EXPECT_EQ(fittedSize({1024, 768}, 192), QSize(1024, 768)) << "no wider than the screen";
    EXPECT_EQ(fittedSize({1600, 1200}, 192), QSize(1600, 1200)) << "as wide as the screen";
}

TEST(DpiTable, TakesAScreenForNoSmallerThanTheReference) {
    EXPECT_EQ(fittedSize({640, 480}, 96), QSize(800, 600));
    EXPECT_EQ(fittedSize({640, 480}, 192), QSize(800, 600));
}

TEST(DpiTable, ScalesASizeByItsShareOfTheReference) {
    EXPECT_EQ(scaledSize({1024, 768}, {400, 300}), QSize(512, 384));
    EXPECT_EQ(scaledSize({800, 600}, {123, 45}), QSize(123, 45));
    EXPECT_EQ(scaledSize({1024, 768}, {1, 1}), QSize(1, 1));
    EXPECT_EQ(scaledSize({1000, 750}, {7, 7}), QSize(8, 8)) << "truncated";
}

TEST_F(DpiTest, AsksForThePrimaryMonitorAndGivesTheLibraryBack) {
    environment.fakeDesktop.primary = reinterpret_cast<void*>(std::uintptr_t{7});
    EXPECT_EQ(primaryMonitorDpi(), 157) << "that of this monitor, and the horizontal one";
    EXPECT_EQ(library.calls,
              (std::vector<std::string>{"load shcore.dll 1", "awareness 2", "dpi type 0", "release"}));
}

TEST_F(DpiTest, DoesWithoutTheCallForAwareness) {
    library.hasAwareness = false;
    EXPECT_EQ(primaryMonitorDpi(), 150);
}

TEST_F(DpiTest, FallsBackToTheFirstScreenOfQt) {
    library.answer = -1;
    EXPECT_EQ(primaryMonitorDpi(), screenDpi());
    library.answer = 0;
    library.hasDpi = false;
    EXPECT_EQ(primaryMonitorDpi(), screenDpi());
    EXPECT_EQ(library.calls.back(), "release");
}

TEST_F(DpiTest, ReleasesNothingThatWasNotLoaded) {
    library.there = false;
    EXPECT_EQ(primaryMonitorDpi(), screenDpi());
    EXPECT_EQ(library.calls, (std::vector<std::string>{"load shcore.dll 1"}));
}

TEST_F(DpiTest, IsNotThereWithoutATopLevelWidget) { EXPECT_EQ(Dpi::instance(), nullptr); }

TEST_F(DpiTest, IsOneHiddenChildOfTheFirstTopLevelWidget) {
    QWidget window;
    Dpi* dpi = Dpi::instance();
    ASSERT_NE(dpi, nullptr);
    EXPECT_EQ(Dpi::instance(), dpi);
    EXPECT_EQ(dpi->parentWidget(), &window);
    window.show();
    EXPECT_FALSE(dpi->isVisible());
}

TEST_F(DpiTest, BelongsToTheFirstOfSeveralTopLevelWidgets) {
    const std::array<QWidget, 3> windows;
    QWidget* first = QApplication::topLevelWidgets().constFirst();
    ASSERT_NE(Dpi::instance(), nullptr);
    EXPECT_EQ(Dpi::instance()->parentWidget(), first);
}

TEST_F(DpiTest, IsMadeAnewAfterItsWindowTookItAlong) {
    {
        const QWidget window;
        ASSERT_NE(Dpi::instance(), nullptr);
    }
    EXPECT_EQ(Dpi::instance(), nullptr);
    library.dpi = 300;
    const QWidget window;
    ASSERT_NE(Dpi::instance(), nullptr);
    EXPECT_EQ(Dpi::instance()->logicalDpi(), 192);
    EXPECT_EQ(Dpi::instance()->physicalDpi(), 288);
}

TEST_F(DpiTest, AnswersTheFourMetricsOfResolutionWithTheLogicalOne) {
    library.dpi = 240;
    QWidget window;
    const Dpi& dpi = *Dpi::instance();
    EXPECT_EQ(dpi.logicalDpiX(), 192);
    EXPECT_EQ(dpi.logicalDpiY(), 192);
    EXPECT_EQ(dpi.physicalDpiX(), 192);
    EXPECT_EQ(dpi.physicalDpiY(), 192);
    EXPECT_EQ(dpi.physicalDpi(), 240) << "a field of its own";
    QWidget other(&window);
    other.resize(dpi.size());
    EXPECT_EQ(dpi.QPaintDevice::width(), other.QPaintDevice::width());
    EXPECT_EQ(dpi.QPaintDevice::depth(), other.QPaintDevice::depth());
}

TEST_F(DpiTest, FitsDialogsToTheFirstScreen) {
    library.dpi = 192;
    const QWidget window;
    const QSize fitted = fittedSize(QGuiApplication::screens().first()->size(), 192);
    EXPECT_EQ(Dpi::instance()->fitToScreen(), fitted);
    EXPECT_EQ(Dpi::instance()->scaledSize({400, 300}), scaledSize(fitted, {400, 300}));
}

TEST_F(DpiTest, AsksForEachMonitorThatIsAScreen) {
    const QRect place = QGuiApplication::screens().first()->geometry();
    const auto handle = [](std::uintptr_t value) { return reinterpret_cast<void*>(value); };
    environment.fakeDesktop.monitorList = {
        {handle(1), place.left() + 5000, place.top(), place.left() + 6000, place.top() + 700},
        {handle(20), place.left(), place.top(), place.left() + place.width(), place.top() + place.height()},
    };
    const auto values = monitorDpis();
    ASSERT_EQ(values.size(), static_cast<std::size_t>(QGuiApplication::screens().size()));
    EXPECT_EQ(values[0].screen, QGuiApplication::screens().first());
    EXPECT_EQ(values[0].dpi, 170) << "not reduced to a step";
    EXPECT_EQ(firstMonitorDpi(), 170);
}

TEST_F(DpiTest, FallsBackForAMonitorThatCannotBeAsked) {
    EXPECT_EQ(firstMonitorDpi(), screenDpi());
    const QRect place = QGuiApplication::screens().first()->geometry();
    environment.fakeDesktop.monitorList = {
        {nullptr, place.left(), place.top(), place.left() + place.width(), place.top() + place.height()}};
    library.answer = -1;
    EXPECT_EQ(firstMonitorDpi(), screenDpi());
}

} // namespace
} // namespace vexil::utils::accessibility
