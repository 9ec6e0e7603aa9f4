#include "utils/accessibility/high_contrast_style.h"

#include "utils/accessibility/text_pieces.h"

#include <array>

namespace vexil::utils::accessibility {

namespace {

/// Widgets with a value in them, which look like buttons pressed in.
constexpr std::array valueSelectors = {"QSpinBox#", "QComboBox#", "QRadioButton#", "QLCDNumber#",
                                       "QStackedWidget#"};

void applyWidgetRules(StyleRule& rule, const HighContrastStyle& style) {
    auto& [selector, properties] = rule;
    properties["background-color"] = style.desktopColor;
    if (contains(selector, "camera_barcode_test_information_message_container") ||
        contains(selector, "camera_barcode_test_warning_container")) {
        properties["border-color"] = style.textColor;
    }
    if (contains(selector, "border_widget") || contains(selector, "display_interactive_widget_card")) {
        properties["border-radius"] = "4px";
        properties["border"] = "1px solid " + style.textColor;
    }
}

const std::string& labelColor(std::string_view selector, const HighContrastStyle& style) {
    if (contains(selector, ":disabled")) {
        return style.disabledColor;
    }
    if (contains(selector, ":selected")) {
        return style.highlightTextColor;
    }
    return contains(selector, ":active") ? style.infoTextColor : style.textColor;
}

void applyFocusFrame(StyleProperties& properties, const HighContrastStyle& style) {
    properties["border"] = "2px solid";
    properties["outline-style"] = "none";
    properties["border-color"] = style.highlightColor;
}

void applyLabelRules(StyleRule& rule, const HighContrastStyle& style) {
    rule.properties["color"] = labelColor(rule.selector, style);
    if (contains(rule.selector, ":focus")) {
        applyFocusFrame(rule.properties, style);
    }
}

void applyButtonRules(StyleRule& rule, const HighContrastStyle& style) {
    auto& [selector, properties] = rule;
    const bool hover = contains(selector, ":hover");
    properties["color"] = hover ? style.faceColor : style.buttonTextColor;
    properties["background-color"] = hover ? style.highlightColor : style.faceColor;
    properties["border"] = hover ? "none" : "1px solid " + style.buttonTextColor;
    if (contains(selector, "header_close")) {
        properties["border-radius"] = "14px";
        properties.erase("animation");
        properties.erase("border-style");
    }
    if (contains(selector, "objectName*=")) {
        properties.erase("border-color");
    }
    if (contains(selector, ":focus")) {
        properties["border-radius"] = "8px";
        applyFocusFrame(properties, style);
    }
}

void applyValueRules(StyleRule& rule, const HighContrastStyle& style) {
    rule.properties["color"] = style.highlightTextColor;
    rule.properties["background-color"] = style.faceColor;
    rule.properties["border"] = "1px solid " + style.faceColor;
}

} // namespace

void applyHighContrastRules(StyleRule& rule, const HighContrastStyle& style) {
    const std::string_view selector = rule.selector;
    if (selector.starts_with("QWidget#")) {
        applyWidgetRules(rule, style);
    } else if (selector.starts_with("QLabel#")) {
        applyLabelRules(rule, style);
    } else if (selector.starts_with("QPushButton")) {
        applyButtonRules(rule, style);
    } else {
        for (const char* start : valueSelectors) {
            if (selector.starts_with(start)) {
                applyValueRules(rule, style);
            }
        }
    }
}

} // namespace vexil::utils::accessibility
