#include "utils/accessibility/high_contrast_style.h"

#include <gtest/gtest.h>

#include <ostream>

namespace vexil::utils::accessibility {
namespace {

/// Each colour under its own name, so that a wrong one shows.
const HighContrastStyle names = {"desktop",  "face",      "buttonText",    "disabled",
                                 "infoText", "highlight", "highlightText", "text"};

const StyleProperties buttonProperties = {
    {"color", "buttonText"}, {"background-color", "face"}, {"border", "1px solid buttonText"}};
const StyleProperties hoverProperties = {
    {"color", "face"}, {"background-color", "highlight"}, {"border", "none"}};

StyleProperties operator+(StyleProperties properties, const StyleProperties& more) {
    for (const auto& [name, value] : more) {
        properties[name] = value;
    }
    return properties;
}

const StyleProperties focusFrame = {
    {"border", "2px solid"}, {"outline-style", "none"}, {"border-color", "highlight"}};

struct Row {
    std::string selector;
    StyleProperties before;
    StyleProperties after;

    friend std::ostream& operator<<(std::ostream& stream, const Row& row) { return stream << row.selector; }
};

class HighContrastRules : public testing::TestWithParam<Row> {};

TEST_P(HighContrastRules, PutsTheUsersColoursIn) {
    StyleRule rule{GetParam().selector, GetParam().before};
    applyHighContrastRules(rule, names);
    EXPECT_EQ(rule.selector, GetParam().selector);
    EXPECT_EQ(rule.properties, GetParam().after);
}

const StyleProperties ground = {{"background-color", "desktop"}};
const StyleProperties framed = {{"border-radius", "4px"}, {"border", "1px solid text"}};
const StyleProperties warned = {{"border-color", "text"}};
const StyleProperties value = {
    {"color", "highlightText"}, {"background-color", "face"}, {"border", "1px solid face"}};

const Row widgetRows[] = {
    {"QWidget#some_area",
     {{"color", "red"}, {"margin", "3px"}},
     {{"background-color", "desktop"}, {"color", "red"}, {"margin", "3px"}}},
    {"QWidget#camera_barcode_test_information_message_container", {}, ground + warned},
    {"QWidget#camera_barcode_test_warning_container", {}, ground + warned},
    {"QWidget#border_widget", {{"border-radius", "10px"}}, ground + framed},
    {"QWidget#display_interactive_widget_card", {}, ground + framed},
    {"QWidget", {{"color", "red"}}, {{"color", "red"}}},
    {"QDialog QWidget#border_widget", {}, {}},
};
const Row labelRows[] = {
    {"QLabel#a", {}, {{"color", "text"}}},
    {"QLabel#a:disabled", {}, {{"color", "disabled"}}},
    {"QLabel#a:selected", {}, {{"color", "highlightText"}}},
    {"QLabel#a:active", {}, {{"color", "infoText"}}},
    {"QLabel#a:focus", {}, focusFrame + StyleProperties{{"color", "text"}}},
    {"QLabel#a:disabled:focus", {}, focusFrame + StyleProperties{{"color", "disabled"}}},
    {"QLabel", {{"color", "red"}}, {{"color", "red"}}},
};
const Row buttonRows[] = {
    {"QPushButton", {}, buttonProperties},
    {"QPushButton#a",
     {{"color", "red"}, {"padding", "2px"}},
     buttonProperties + StyleProperties{{"padding", "2px"}}},
    {"QPushButton#a:hover", {}, hoverProperties},
    {"QPushButton#a:disabled", {}, buttonProperties},
    {"QPushButton#x_header_close",
     {{"animation", "fade"}, {"border-style", "solid"}},
     buttonProperties + StyleProperties{{"border-radius", "14px"}}},
    {"QPushButton#x_header_close:hover",
     {{"animation", "fade"}, {"border-style", "solid"}},
     hoverProperties + StyleProperties{{"border-radius", "14px"}}},
    {"QPushButton[objectName*=\"button\"]", {{"border-color", "red"}}, buttonProperties},
    {"QPushButton#a", {{"border-color", "red"}}, buttonProperties + StyleProperties{{"border-color", "red"}}},
    {"QPushButton#a:focus", {}, buttonProperties + focusFrame + StyleProperties{{"border-radius", "8px"}}},
    {"QPushButton[objectName*=\"button\"]:focus",
     {{"border-color", "red"}},
     buttonProperties + focusFrame + StyleProperties{{"border-radius", "8px"}}},
    {"QPushButton#x_header_close:focus",
     {},
     buttonProperties + focusFrame + StyleProperties{{"border-radius", "8px"}}},
    {"QPushButton#a:hover:focus",
     {},
     hoverProperties + focusFrame + StyleProperties{{"border-radius", "8px"}}},
};
const Row valueRows[] = {
    {"QSpinBox#a", {}, value},       {"QComboBox#a", {{"color", "red"}}, value},
    {"QRadioButton#a", {}, value},   {"QLCDNumber#a", {}, value},
    {"QStackedWidget#a", {}, value}, {"QSpinBox", {}, {}},
    {"QScrollBar:vertical", {}, {}}, {"", {}, {}},
};

INSTANTIATE_TEST_SUITE_P(Widgets, HighContrastRules, testing::ValuesIn(widgetRows));
INSTANTIATE_TEST_SUITE_P(Labels, HighContrastRules, testing::ValuesIn(labelRows));
INSTANTIATE_TEST_SUITE_P(Buttons, HighContrastRules, testing::ValuesIn(buttonRows));
INSTANTIATE_TEST_SUITE_P(Values, HighContrastRules, testing::ValuesIn(valueRows));

} // namespace
} // namespace vexil::utils::accessibility
