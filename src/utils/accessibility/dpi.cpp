#include "utils/accessibility/dpi.h"

#include "utils/accessibility/dialog_environment.h"
#include "utils/accessibility/shcore_library.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <array>

namespace vexil::utils::accessibility {

namespace {

constexpr QSize referenceSize(800, 600);
constexpr double referenceDpi = 96.0;

struct DpiStep {
    std::int32_t from;
    DpiValues values;
};

constexpr std::array dpiSteps = {
    DpiStep{336, {192, 336}}, DpiStep{288, {192, 288}}, DpiStep{240, {192, 240}}, DpiStep{216, {192, 216}},
    DpiStep{192, {192, 192}}, DpiStep{168, {168, 168}}, DpiStep{144, {144, 144}}, DpiStep{120, {120, 120}},
};

Dpi* theInstance = nullptr;

QSize firstScreenSize() {
    const auto screens = QGuiApplication::screens();
    return screens.empty() ? referenceSize : screens.first()->size();
}

std::int32_t logicalDpiOf(const QScreen& screen) {
    return static_cast<std::int32_t>(screen.logicalDotsPerInchX());
}

/// In the pixels of the desktop, whatever Qt scales.
QRect nativeRectangle(const QScreen& screen) {
    return {screen.geometry().topLeft(), screen.geometry().size() * screen.devicePixelRatio()};
}

} // namespace

DpiValues reduceDpi(std::int32_t dpi) {
    const auto step = std::ranges::find_if(dpiSteps, [dpi](const DpiStep& row) { return dpi >= row.from; });
    return step == dpiSteps.end() ? DpiValues{96, 96} : step->values;
}

QSize fittedSize(QSize screen, std::int32_t logicalDpi) {
    const QSize room = screen.expandedTo(referenceSize);
    const double factor = logicalDpi / referenceDpi;
    const int wanted = static_cast<int>(referenceSize.width() * factor);
    const int width = std::min(wanted, room.width());
    return {width, std::min(width * referenceSize.height() / referenceSize.width(), room.height())};
}

QSize scaledSize(QSize fitted, QSize size) {
    return {fitted.width() * size.width() / referenceSize.width(),
            fitted.height() * size.height() / referenceSize.height()};
}

Dpi* Dpi::instance() {
    if (theInstance == nullptr) {
        const auto windows = QApplication::topLevelWidgets();
        if (!windows.isEmpty()) {
            theInstance = new Dpi(windows.first()); // which owns it
        }
    }
    return theInstance;
}

Dpi::Dpi(QWidget* parent) : QWidget(parent), values_(reduceDpi(primaryMonitorDpi())) {
    hide(); // or its window would show it along with its other children
}

Dpi::~Dpi() { theInstance = nullptr; }

QSize Dpi::fitToScreen() const { return fittedSize(firstScreenSize(), values_.logicalDpi); }

QSize Dpi::scaledSize(QSize reference) const { return accessibility::scaledSize(fitToScreen(), reference); }

int Dpi::metric(PaintDeviceMetric metric) const {
    switch (metric) {
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return values_.logicalDpi;
    default:
        return QWidget::metric(metric);
    }
}

std::int32_t primaryMonitorDpi() {
    auto& environment = dialogEnvironment();
    ShcoreLibrary shcore(*environment.loader());
    shcore.makeProcessPerMonitorAware();
    if (const auto dpi = shcore.dpiOf(environment.desktop().primaryMonitor())) {
        return *dpi;
    }
    const auto screens = QGuiApplication::screens();
    return screens.empty() ? static_cast<std::int32_t>(referenceDpi) : logicalDpiOf(*screens.first());
}

std::vector<ScreenDpi> monitorDpis() {
    auto& environment = dialogEnvironment();
    ShcoreLibrary shcore(*environment.loader());
    shcore.makeProcessPerMonitorAware();
    const auto monitors = environment.desktop().monitors();

    std::vector<ScreenDpi> values;
    for (QScreen* screen : QGuiApplication::screens()) {
        const auto monitor =
            std::ranges::find_if(monitors, [place = nativeRectangle(*screen)](const auto& candidate) {
                return place ==
                       QRect(QPoint(candidate.left, candidate.top),
                             QSize(candidate.right - candidate.left, candidate.bottom - candidate.top));
            });
        const auto dpi = monitor == monitors.end() ? std::nullopt : shcore.dpiOf(monitor->handle);
        values.push_back({screen, dpi.value_or(logicalDpiOf(*screen))});
    }
    return values;
}

std::int32_t firstMonitorDpi() {
    const auto values = monitorDpis();
    return values.empty() ? static_cast<std::int32_t>(referenceDpi) : values.front().dpi;
}

} // namespace vexil::utils::accessibility
