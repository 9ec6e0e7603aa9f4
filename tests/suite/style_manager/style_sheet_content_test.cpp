#include "core/style_manager.h"
#include "support/fake_desktop.h"
#include "svg_icon_engine.h"
#include "utils/accessibility/generic_input_dialog.h"
#include "utils/accessibility/style_sheet.h"
#include "utils/accessibility/svg_recoloring.h"

#include <QtCore/QFile>
#include <QtGui/QFontDatabase>
#include <QtGui/QIcon>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace vexil {
namespace {

using namespace utils::accessibility;

std::vector<StyleRule> rules() { return parseStyleSheet(StyleManager::instance().Stylesheet()); }

std::string resource(const std::string& path) {
    QFile file(QString::fromStdString(path));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

std::vector<std::string> pictureValues() {
    std::vector<std::string> values;
    for (const auto& rule : rules()) {
        for (const auto& [name, value] : rule.properties) {
            if (name == "image" || name == "icon") {
                values.push_back(value);
            }
        }
    }
    return values;
}

TEST(StyleSheetContent, IsTheOneObjectsText) {
    EXPECT_EQ(&StyleManager::instance(), &StyleManager::instance());
    EXPECT_EQ(StyleManager::instance().Stylesheet(), StyleManager::instance().Stylesheet());
}

TEST(StyleSheetContent, HasNothingThatTheRewriteCannotRead) {
    const auto text = StyleManager::instance().Stylesheet();
    EXPECT_EQ(text.find("/*"), std::string::npos) << "a comment would become part of a selector";
    for (const auto& rule : rules()) {
        EXPECT_EQ(rule.selector.find(','), std::string::npos)
            << "rules look at how a selector begins: " << rule.selector;
        EXPECT_FALSE(rule.properties.empty()) << rule.selector;
    }
}

TEST(StyleSheetContent, KnowsEveryPartOfTheQuestionBox) {
    std::set<std::string> selectors;
    for (const auto& rule : rules()) {
        selectors.insert(rule.selector);
    }
    const test::FakeDialogEnvironment environment;
    for (std::uint32_t kind = 0; kind < 7; ++kind) {
        InputRequest request;
        request.kind = kind;
        request.type = kind % 3;
        const GenericInputDialog dialog(request, "");
        for (const QWidget* widget : dialog.findChildren<QWidget*>()) {
            const auto name = widget->objectName().toStdString();
            if (!name.starts_with("generic_input_") && name != "border_widget") {
                continue;
            }
            const bool known =
                std::ranges::any_of(selectors,
                                    [&](const auto& selector) { return selector.ends_with("#" + name); }) ||
                (name.starts_with("generic_input_button") &&
                 selectors.contains("QPushButton[objectName*=\"generic_input_button\"]"));
            EXPECT_TRUE(known) << name;
        }
    }
}

TEST(StyleSheetContent, ShowsFocusPointerPressAndDisabledStateOfEveryButton) {
    for (const std::string button :
         {"QPushButton[objectName*=\"generic_input_button\"]", "QPushButton#generic_input_button_ok",
          "QPushButton#generic_input_button_yes"}) {
        for (const char* state : {":focus", ":hover", ":pressed", ":disabled"}) {
            EXPECT_TRUE(std::ranges::any_of(
                rules(), [&](const auto& rule) { return rule.selector == button + state; }))
                << button << state;
        }
    }
}

TEST(StyleSheetContent, KeepsTheCrossUnderThePointerReadableInHighContrast) {
    test::FakeDialogEnvironment environment;
    environment.fakeDesktop.useDarkOnLight();
    InputRequest request;
    const GenericInputDialog dialog(request, "");
    for (const auto& rule : parseStyleSheet(dialog.styleSheet().toStdString())) {
        if (rule.selector.find("header_close") != std::string::npos) {
            const auto ground = rule.properties.find("background-color");
            ASSERT_NE(ground, rule.properties.end()) << rule.selector;
            EXPECT_EQ(ground->second, "#ffffff") << rule.selector << ": the picture is #000000";
        }
    }
}

TEST(StyleSheetContent, NamesPicturesThatStandAtTheRootOfTheResources) {
    const auto values = pictureValues();
    EXPECT_EQ(values.size(), 5U);
    for (const auto& value : values) {
        const auto path = quotedPath(value);
        ASSERT_TRUE(path.has_value()) << value;
        EXPECT_FALSE(resource(std::string(*path)).empty()) << value;
        EXPECT_EQ(svgBaseName(value).find('/'), std::string::npos)
            << "a copy of it could not be named: " << value;
    }
}

TEST(StyleSheetContent, HasPicturesOfOneColourWithHoles) {
    for (const auto& value : pictureValues()) {
        const auto svg = resource(std::string(*quotedPath(value)));
        const auto recolored = recolorSvg(svg, "#fedcba");
        EXPECT_NE(recolored, svg) << value;
        std::size_t colors = 0;
        for (auto place = recolored.find('#'); place != std::string::npos;
             place = recolored.find('#', place + 1)) {
            EXPECT_EQ(recolored.substr(place, 7), "#fedcba") << value;
            ++colors;
        }
        EXPECT_EQ(colors, 1U) << value;
    }
}

TEST(StyleSheetContent, BringsItsTypeface) {
    static_cast<void>(StyleManager::instance().Stylesheet());
    EXPECT_TRUE(QFontDatabase::families().contains("Lato"));
}

QColor pixel(const QImage& image, double x, double y) {
    return image.pixelColor(static_cast<int>(x * image.width()), static_cast<int>(y * image.height()));
}

TEST(SvgPicture, DrawsAShapeSharpAtAnySize) {
    const SvgPicture picture(QByteArray::fromStdString(resource(":/information.svg")));
    EXPECT_EQ(picture.size(), QSize(40, 40));
    for (const int size : {40, 60, 80, 400}) {
        const QImage image = picture.draw({size, size});
        EXPECT_EQ(image.size(), QSize(size, size));
        EXPECT_EQ(pixel(image, 0.02, 0.02).alpha(), 0) << "outside of the disc";
        EXPECT_EQ(pixel(image, 0.25, 0.5), QColor("#0a66c2"));
        EXPECT_EQ(pixel(image, 0.5, 0.6).alpha(), 0) << "the letter is a hole";
    }
}

TEST(SvgPicture, StandsInTheMiddleOfAPlaceOfAnotherShape) {
    const SvgPicture picture(QByteArray::fromStdString(resource(":/information.svg")));
    const QImage image = picture.draw({120, 40});
    EXPECT_EQ(image.pixelColor(10, 20).alpha(), 0);
    EXPECT_EQ(image.pixelColor(50, 20), QColor("#0a66c2"));
    EXPECT_EQ(image.pixelColor(110, 20).alpha(), 0);
}

TEST(SvgPicture, IsEmptyWithoutAPicture) {
    for (const char* text : {"", "no picture", "<svg/>", "<svg width='0' height='0'></svg>"}) {
        const SvgPicture picture{QByteArray(text)};
        EXPECT_TRUE(picture.isEmpty()) << text;
        EXPECT_EQ(picture.size(), QSize(0, 0));
        EXPECT_EQ(picture.draw({3, 3}).pixelColor(1, 1).alpha(), 0);
    }
}

TEST(SvgIconPlugin, IsWhatQtShowsAPictureWith) {
    const QIcon icon(":/warning.svg");
    const QPixmap pixmap = icon.pixmap(QSize(200, 200));
    ASSERT_EQ(pixmap.size(), QSize(200, 200)) << "larger than the file says, so not a bitmap of it";
    EXPECT_EQ(pixel(pixmap.toImage(), 0.5, 0.2), QColor("#b45309"));
    EXPECT_TRUE(QIcon(":/missing.svg").pixmap(QSize(20, 20)).isNull() ||
                pixel(QIcon(":/missing.svg").pixmap(QSize(20, 20)).toImage(), 0.5, 0.5).alpha() == 0);
}

TEST(SvgIconPlugin, ShowsTheIconOfTheQuestionBox) {
    const test::FakeDialogEnvironment environment;
    InputRequest request;
    request.kind = 4;
    GenericInputDialog dialog(request, "");
    dialog.show();
    auto* icon = dialog.findChild<QLabel*>("generic_input_error_icon");
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(pixel(icon->grab().toImage(), 0.2, 0.5), QColor("#c62828"));
}

} // namespace
} // namespace vexil
