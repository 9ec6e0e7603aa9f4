// Draws the question box in every combination that users meet, writes pictures of it into the folder of the
// first argument, and checks in their pixels what an eye would: that texts can be read and that the focus can
// be seen. The resolution is the display's: the environment says which, before the program starts.
#include "support/fake_desktop.h"
#include "support/key_translator.h"
#include "utils/accessibility/dpi.h"
#include "utils/accessibility/generic_input_dialog.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <vector>

namespace {

using namespace vexil;
using utils::accessibility::GenericInputDialog;

QDir folder;

struct Icon {
    const char* name;
    std::uint32_t kind;
    const char* title;
    const char* message;
};

constexpr std::array icons = {
    Icon{"question", 0, "Start the stress test?",
         "The card works at full load for ten minutes. Its fans become loud, and other programs may be slow "
         "to answer."},
    Icon{"information", 1, "Nothing to do", "The card was tested a minute ago, and passed."},
    Icon{"warning", 3, "The card is hot",
         "It stands at 91 °C. Let it cool down for a few minutes, and see whether its fans turn freely, "
         "before you "
         "start a test that heats it further."},
    Icon{"error", 4, "The test could not be finished", "The driver was reset while the test was running."},
};
constexpr std::array buttonNames = {"ok", "ok_cancel", "yes_no"};

struct Mode {
    const char* name;
    std::function<void(test::FakeDesktop&)> use;
};

const std::array modes = {
    Mode{"light", [](test::FakeDesktop&) {}},
    Mode{"contrast_dark_on_light", [](test::FakeDesktop& desktop) { desktop.useDarkOnLight(); }},
    Mode{"contrast_light_on_dark", [](test::FakeDesktop& desktop) { desktop.useLightOnDark(); }},
};

QString dpiName() { return QString::number(QGuiApplication::primaryScreen()->logicalDotsPerInchX()) + "dpi"; }

/// On a desktop's grey, since the corners are transparent.
QImage pictureOf(GenericInputDialog& dialog) {
    const QImage content = dialog.grab().toImage();
    QImage picture(content.size() + QSize(32, 32), QImage::Format_RGB32);
    picture.fill(QColor("#7b8794"));
    QPainter(&picture).drawImage(16, 16, content);
    return picture;
}

void show(GenericInputDialog& dialog) {
    QCursor::setPos(0, 0);
    dialog.show();
    dialog.activateWindow();
    QElapsedTimer clock;
    for (clock.start(); !dialog.isActiveWindow() && clock.elapsed() < 5000;) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    ASSERT_TRUE(dialog.isActiveWindow());
    QCoreApplication::processEvents();
}

void pointAt(QPoint place) {
    QCursor::setPos(place);
    QElapsedTimer clock;
    for (clock.start(); clock.elapsed() < 100;) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    }
}

double luminance(QRgb color) {
    const auto part = [](int value) {
        const double share = value / 255.0;
        return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(qRed(color)) + 0.7152 * part(qGreen(color)) + 0.0722 * part(qBlue(color));
}

/// Of the lightest and the darkest pixel inside the widget, as web guidelines count contrast.
double contrastIn(const QImage& picture, const QWidget& widget, const QWidget& dialog) {
    const QRect place(widget.mapTo(&dialog, QPoint(16, 16)), widget.size());
    const QImage part = picture.copy(place.adjusted(6, 6, -6, -6));
    double lightest = 0;
    double darkest = 1;
    for (int y = 0; y < part.height(); ++y) {
        for (int x = 0; x < part.width(); ++x) {
            lightest = std::max(lightest, luminance(part.pixel(x, y)));
            darkest = std::min(darkest, luminance(part.pixel(x, y)));
        }
    }
    return (lightest + 0.05) / (darkest + 0.05);
}

void expectNothingClipped(const QWidget& dialog) {
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
        const QRect room = label->rect().adjusted(4, 4, -4, -4); // inside of the frame
        const QRect text = label->fontMetrics().boundingRect(QRect(0, 0, room.width(), 1 << 20),
                                                             Qt::TextWordWrap, label->text());
        EXPECT_GE(room.height(), text.height()) << label->objectName().toStdString();
        EXPECT_GE(room.width(), text.width()) << label->objectName().toStdString();
    }
    for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
        EXPECT_GE(button->width(), button->fontMetrics().horizontalAdvance(button->text()) + 8)
            << button->objectName().toStdString();
        EXPECT_TRUE(dialog.rect().contains(QRect(button->mapTo(&dialog, QPoint(0, 0)), button->size())));
    }
}

void expectReadable(const QImage& picture, const GenericInputDialog& dialog) {
    for (const char* name : {"generic_input_header_label", "generic_input_instruction_label"}) {
        EXPECT_GE(contrastIn(picture, *dialog.findChild<QWidget*>(name), dialog), 7.0) << name;
    }
    for (const QPushButton* button : dialog.findChildren<QPushButton*>()) {
        EXPECT_GE(contrastIn(picture, *button, dialog), 4.5) << button->objectName().toStdString();
    }
}

/// The picture changes where the focus goes, and around the button that had it.
void expectVisibleFocus(GenericInputDialog& dialog, const QImage& before) {
    QWidget* first = dialog.focusWidget();
    ASSERT_NE(first, nullptr);
    QWidget* close = dialog.findChild<QWidget*>("generic_input_header_close");
    close->setFocus(Qt::TabFocusReason);
    QCoreApplication::processEvents();
    const QImage after = pictureOf(dialog);
    for (const QWidget* widget : {first, close}) {
        const QRect place(widget->mapTo(&dialog, QPoint(16, 16)), widget->size());
        EXPECT_NE(before.copy(place), after.copy(place)) << widget->objectName().toStdString();
    }
    first->setFocus(Qt::TabFocusReason);
}

/// All pictures of a mode on one sheet, for eyes.
QImage sheetOf(const std::vector<QImage>& pictures) {
    const int columns = static_cast<int>(buttonNames.size());
    QSize cell;
    for (const auto& picture : pictures) {
        cell = cell.expandedTo(picture.size());
    }
    const int rows = (static_cast<int>(pictures.size()) + columns - 1) / columns;
    QImage sheet(cell.width() * columns, cell.height() * rows, QImage::Format_RGB32);
    sheet.fill(QColor("#7b8794"));
    QPainter painter(&sheet);
    for (int i = 0; i < static_cast<int>(pictures.size()); ++i) {
        painter.drawImage(i % columns * cell.width(), i / columns * cell.height(),
                          pictures[static_cast<std::size_t>(i)]);
    }
    return sheet;
}

TEST(DialogScreens, EveryIconWithEveryButton) {
    const test::KeyTranslator texts(
        "VIDEO_CARD",
        {{"OK", "OK"}, {"CANCEL", "Cancel"}, {"YES", "Yes"}, {"NO", "No"}, {"CLOSE_POP_UP", "Close"}});
    for (const auto& mode : modes) {
        test::FakeDialogEnvironment environment;
        mode.use(environment.fakeDesktop);
        std::vector<QImage> pictures;
        for (const auto& icon : icons) {
            for (std::uint32_t type = 0; type < buttonNames.size(); ++type) {
                const QString name =
                    QString("%1_%2_%3_%4.png").arg(mode.name, dpiName(), icon.name, buttonNames.at(type));
                SCOPED_TRACE(name.toStdString());
                InputRequest request;
                request.title = icon.title;
                request.text = icon.message;
                request.kind = icon.kind;
                request.type = type;
                GenericInputDialog dialog(request, "VIDEO_CARD");
                show(dialog);
                const QImage picture = pictureOf(dialog);
                ASSERT_TRUE(picture.save(folder.filePath(name)));
                expectNothingClipped(dialog);
                expectReadable(picture, dialog);
                expectVisibleFocus(dialog, picture);
                pictures.push_back(picture);
            }
        }
        ASSERT_TRUE(
            sheetOf(pictures).save(folder.filePath(QString("sheet_%1_%2.png").arg(mode.name, dpiName()))));
    }
}

TEST(DialogScreens, GrowWithTheResolutionAsFarAsTheScreenAllows) {
    struct Row {
        int dpi;
        QSize size; ///< of 440 by 300 on the reference screen
    };
    // The screen is 1280 wide, so that 192 dots an inch are no more than 1.6 times the reference.
    constexpr std::array rows = {Row{96, {440, 300}}, Row{144, {660, 450}}, Row{192, {704, 480}}};
    const auto dpi = static_cast<int>(QGuiApplication::primaryScreen()->logicalDotsPerInchX());
    const auto row = std::ranges::find(rows, dpi, &Row::dpi);
    ASSERT_NE(row, rows.end()) << dpi;
    test::FakeDialogEnvironment environment;
    InputRequest request;
    const GenericInputDialog dialog(request, "VIDEO_CARD");
    EXPECT_EQ(utils::accessibility::Dpi::instance()->scaledSize({440, 300}), row->size);
    EXPECT_EQ(dialog.width(), row->size.width());
    const auto* icon = dialog.findChild<QWidget*>("generic_input_question_icon");
    ASSERT_NE(icon, nullptr);
    EXPECT_EQ(icon->width(), 40 * row->size.height() / 300);
}

TEST(DialogScreens, TextsThatAreTooLong) {
    const test::KeyTranslator texts("VIDEO_CARD", {{"YES", "Ja, den Belastungstest jetzt beginnen"},
                                                   {"NO", "Nein, die Karte zuerst abkühlen lassen"}});
    std::string message;
    for (int i = 0; i < 120; ++i) {
        message += "The record of the test says more than a screen can hold. ";
    }
    const std::string path = "/a/folder/" + std::string(160, 'x') + "/report.json cannot be written.";
    for (const auto& mode : modes) {
        test::FakeDialogEnvironment environment;
        mode.use(environment.fakeDesktop);
        std::vector<QImage> pictures;
        for (const auto& [title, text] :
             {std::pair(std::string("A title that takes more than one line, since it says "
                                    "everything that the message should have said"),
                        path),
              std::pair(std::string("Read this"), message)}) {
            InputRequest request;
            request.title = title;
            request.text = text;
            request.kind = 3;
            request.type = 2;
            GenericInputDialog dialog(request, "VIDEO_CARD");
            show(dialog);
            const QImage picture = pictureOf(dialog);
            expectNothingClipped(dialog);
            expectReadable(picture, dialog);
            EXPECT_LE(dialog.height(), dialog.screen()->availableSize().height());
            EXPECT_LE(dialog.width(), dialog.screen()->availableSize().width());
            pictures.push_back(picture);
        }
        ASSERT_TRUE(
            sheetOf(pictures).save(folder.filePath(QString("long_%1_%2.png").arg(mode.name, dpiName()))));
    }
}

TEST(DialogScreens, FocusOnTheTextsForAScreenReader) {
    const test::KeyTranslator texts("VIDEO_CARD", {{"OK", "OK"}});
    for (const auto& mode : modes) {
        test::FakeDialogEnvironment environment;
        mode.use(environment.fakeDesktop);
        environment.fakeDesktop.narrator = true;
        InputRequest request;
        request.title = icons[0].title;
        request.text = icons[0].message;
        GenericInputDialog dialog(request, "VIDEO_CARD");
        show(dialog);
        std::vector<QImage> pictures = {pictureOf(dialog)};
        for (const char* name : {"generic_input_instruction_label", "generic_input_button_ok"}) {
            dialog.findChild<QWidget*>(name)->setFocus(Qt::TabFocusReason);
            QCoreApplication::processEvents();
            pictures.push_back(pictureOf(dialog));
        }
        expectNothingClipped(dialog);
        EXPECT_NE(pictures[0], pictures[1]);
        EXPECT_NE(pictures[1], pictures[2]);
        EXPECT_NE(pictures[2], pictures[0]);
        ASSERT_TRUE(
            sheetOf(pictures).save(folder.filePath(QString("reader_%1_%2.png").arg(mode.name, dpiName()))));
    }
}

TEST(DialogScreens, StatesOfTheControls) {
    const test::KeyTranslator texts("VIDEO_CARD", {{"OK", "OK"}, {"CANCEL", "Cancel"}});
    for (const auto& mode : modes) {
        test::FakeDialogEnvironment environment;
        mode.use(environment.fakeDesktop);
        std::vector<QImage> pictures;
        InputRequest request;
        request.title = "States of the controls";
        request.text = "Focus on Cancel; focus on the cross; the pointer over each; pressed; disabled.";
        request.type = 1;
        GenericInputDialog dialog(request, "VIDEO_CARD");
        show(dialog);
        auto* ok = dialog.findChild<QPushButton*>("generic_input_button_ok");
        auto* cancel = dialog.findChild<QPushButton*>("generic_input_button_cancel");
        auto* close = dialog.findChild<QPushButton*>("generic_input_header_close");
        const auto take = [&] {
            QCoreApplication::processEvents();
            pictures.push_back(pictureOf(dialog));
        };
        for (QPushButton* button : {cancel, close}) {
            button->setFocus(Qt::TabFocusReason);
            take();
        }
        ok->setFocus(Qt::TabFocusReason);
        for (QPushButton* button : {ok, cancel, close}) {
            pointAt(button->mapToGlobal(button->rect().center()));
            take();
            pointAt(QPoint(0, 0));
            button->setDown(true);
            take();
            button->setDown(false);
        }
        ok->setEnabled(false);
        cancel->setEnabled(false);
        take();
        ASSERT_TRUE(
            sheetOf(pictures).save(folder.filePath(QString("states_%1_%2.png").arg(mode.name, dpiName()))));
        std::sort(pictures.begin(), pictures.end(), [](const QImage& a, const QImage& b) {
            return std::lexicographical_compare(a.constBits(), a.constBits() + a.sizeInBytes(), b.constBits(),
                                                b.constBits() + b.sizeInBytes());
        });
        if (mode.name == std::string("light")) { // the user's colours have no more than the hovered state
            EXPECT_EQ(std::adjacent_find(pictures.begin(), pictures.end()), pictures.end())
                << "two states look the same";
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    folder = QDir(argc > 1 ? argv[1] : ".");
    if (!folder.mkpath(".")) {
        return 2;
    }
    return RUN_ALL_TESTS();
}
