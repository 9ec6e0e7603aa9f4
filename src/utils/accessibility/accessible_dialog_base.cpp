#include "utils/accessibility/accessible_dialog_base.h"

#include "utils/accessibility/accessible_dialog_interface.h"
#include "utils/accessibility/desktop_probes.h"
#include "utils/accessibility/dialog_environment.h"
#include "utils/accessibility/high_contrast_style.h"
#include "utils/accessibility/recolored_pictures.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QTimer>

#include <algorithm>
#include <chrono>

namespace vexil::utils::accessibility {

namespace {

/// Windows' indices of the system colours that the rewrite uses.
namespace system_color {
constexpr int background = 1;
constexpr int windowText = 8;
constexpr int highlight = 13;
constexpr int highlightText = 14;
constexpr int buttonFace = 15;
constexpr int grayText = 17;
constexpr int buttonText = 18;
constexpr int infoText = 23;
} // namespace system_color

HighContrastStyle styleOf(const std::vector<QColor>& colors) {
    const auto name = [&colors](int index) {
        const auto place = std::ranges::find(systemColorIndices, index) - systemColorIndices.begin();
        return colors.at(static_cast<std::size_t>(place)).name().toStdString();
    };
    return {
        .desktopColor = name(system_color::background),
        .faceColor = name(system_color::buttonFace),
        .buttonTextColor = name(system_color::buttonText),
        .disabledColor = name(system_color::grayText),
        .infoTextColor = name(system_color::infoText),
        .highlightColor = name(system_color::highlight),
        .highlightTextColor = name(system_color::highlightText),
        .textColor = name(system_color::windowText),
    };
}

} // namespace

AccessibleDialogBase::AccessibleDialogBase(QWidget* parent)
    : QDialog(parent), filter_(std::make_unique<event_filters::HighContrastEventFilter>()) {
    provideAccessibleInterfaces();
    filter_->readSystemColors(systemColors_);
    QCoreApplication::instance()->installNativeEventFilter(filter_.get());
    connect(filter_.get(), &event_filters::HighContrastEventFilter::themeChanged, this,
            &AccessibleDialogBase::onThemeChanged);
    setAttribute(Qt::WA_TranslucentBackground);

    setStyleSheet(QString::fromStdString(dialogEnvironment().stylesheet()));
    baseStyleSheet_ = styleSheet();
    if (isHighContrastOn()) {
        applyHighContrast();
    }
}

AccessibleDialogBase::~AccessibleDialogBase() = default;

void AccessibleDialogBase::onThemeChanged() {
    QTimer::singleShot(std::chrono::milliseconds(100), this, &AccessibleDialogBase::followTheme);
}

void AccessibleDialogBase::followTheme() {
    if (isHighContrastOn()) {
        applyHighContrast();
    } else {
        setStyleSheet(baseStyleSheet_);
    }
}

void AccessibleDialogBase::applyHighContrast() {
    filter_->readSystemColors(systemColors_);
    const auto style = styleOf(systemColors_);
    auto rules = parseStyleSheet(baseStyleSheet_.toStdString());
    for (auto& rule : rules) {
        recolorPictures(rule, style.textColor, *this);
    }
    for (auto& rule : rules) {
        applyHighContrastRules(rule, style);
    }
    setStyleSheet(QString::fromStdString(serializeStyleSheet(rules)));
}

} // namespace vexil::utils::accessibility
