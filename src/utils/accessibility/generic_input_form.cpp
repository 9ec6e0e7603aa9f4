#include "utils/accessibility/generic_input_form.h"

#include "utils/accessibility/text_fitting.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QBoxLayout>
#include <QtWidgets/QDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>
#include <QtWidgets/QScrollBar>

#include <algorithm>

namespace vexil::utils::accessibility {

namespace {

/// In pixels of the reference screen.
namespace measure {
constexpr QSize dialog(440, 0);
constexpr QSize margin(24, 20);
constexpr QSize gap(16, 14);
constexpr QSize icon(40, 40);
constexpr QSize close(28, 28);
constexpr QSize button(104, 40);
constexpr QSize buttonPadding(24, 0);
constexpr QSize footerMargin(20, 12);
constexpr QSize footerGap(8, 0);
} // namespace measure

constexpr int borderWidth = 1; // of "border_widget"
constexpr int labelFrame = 4;  // around a text, where the focus of a screen reader shows, and its gap to it
constexpr int scrollFrame = 2; // around a message that scrolls, likewise

/// The cross leaves Up and Down to the dialog; a plain button would pass the focus on by itself.
class CloseButton : public QPushButton {
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
            event->ignore();
        } else {
            QPushButton::keyPressEvent(event);
        }
    }
};

QWidget* makeArea(QWidget* parent, const char* objectName) {
    auto* area = new QWidget(parent);
    area->setObjectName(objectName);
    area->setAttribute(Qt::WA_StyledBackground); // or a plain widget shows no border
    return area;
}

QLabel* makeLabel(QWidget* parent, const char* objectName) {
    auto* label = new QLabel(parent);
    label->setObjectName(objectName);
    label->setTextFormat(Qt::PlainText); // a translation is a text, whatever stands in it
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setIndent(0); // which would follow from the frame
    return label;
}

template <typename Layout>
Layout* makeLayout(QWidget* parent, const char* objectName) {
    auto* layout = new Layout(parent);
    layout->setObjectName(objectName);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    return layout;
}

/// `width` is that of the label, with its frame.
void showText(QLabel& label, const QString& text, int width) {
    label.ensurePolished();
    const QFontMetrics metrics(label.font());
    const int inside = width - 2 * labelFrame;
    const QString breakable = breakableText(text, metrics, inside);
    label.setText(breakable);
    label.setFixedHeight(wrappedHeight(breakable, metrics, inside) + 2 * labelFrame);
}

} // namespace

void GenericInputForm::setUp(QDialog& dialog) {
    dialog.setObjectName("generic_input_dialog_base");
    border = makeArea(&dialog, "border_widget");
    makeLayout<QVBoxLayout>(&dialog, "verticalLayout")->addWidget(border);
    auto* column = makeLayout<QVBoxLayout>(border, "verticalLayout_2");
    column->setContentsMargins(borderWidth, borderWidth, borderWidth, borderWidth);

    header = makeArea(border, "generic_input_widget_header");
    headerLabel = makeLabel(header, "generic_input_header_label");
    headerClose = new CloseButton(header);
    headerClose->setObjectName("generic_input_header_close");
    headerClose->setAutoDefault(false);
    auto* headerRow = makeLayout<QHBoxLayout>(header, "horizontalLayout");
    headerRow->addWidget(headerLabel, 1, Qt::AlignVCenter);
    headerRow->addWidget(headerClose, 0, Qt::AlignTop);
    column->addWidget(header);

    instruction = makeArea(border, "generic_input_widget_instruction");
    icon = new QLabel(instruction);
    icon->setObjectName("generic_input_icon");
    instructionScroll = new QScrollArea(instruction);
    instructionScroll->setObjectName("generic_input_instruction_scroll");
    instructionScroll->setFrameShape(QFrame::NoFrame);
    instructionScroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    instructionScroll->setWidgetResizable(true);
    auto* message = makeArea(nullptr, "generic_input_instruction_content");
    instructionLabel = makeLabel(message, "generic_input_instruction_label");
    makeLayout<QVBoxLayout>(message, "verticalLayout_3")->addWidget(instructionLabel, 0, Qt::AlignVCenter);
    instructionScroll->setWidget(message);
    auto* instructionRow = makeLayout<QHBoxLayout>(instruction, "horizontalLayout_2");
    instructionRow->addWidget(icon, 0, Qt::AlignTop);
    instructionRow->addWidget(instructionScroll, 1);
    column->addWidget(instruction, 1);

    fields = makeArea(border, "generic_input_widget_fields");
    makeLayout<QVBoxLayout>(fields, "verticalLayout_4");
    column->addWidget(fields);

    footer = makeArea(border, "generic_input_widget_footer");
    footerLayout = makeLayout<QHBoxLayout>(footer, "horizontalLayout_3");
    footerLayout->addStretch(1);
    column->addWidget(footer);
}

void GenericInputForm::setTexts(const QString& title, const QString& message) {
    title_ = title;
    message_ = message;
    // Without the marks that let long words break.
    headerLabel->setAccessibleName(title);
    instructionLabel->setAccessibleName(message);
}

QPushButton* GenericInputForm::addButton(const char* objectName, const QString& text) {
    auto* button = new QPushButton(text, footer);
    button->setObjectName(objectName);
    button->setAccessibleName(text);
    footerLayout->addWidget(button);
    return button;
}

void GenericInputForm::layOut(QDialog& dialog, const Scale& scale, QSize room) {
    const QSize margin = scale(measure::margin);
    const QSize gap = scale(measure::gap);
    const QSize footerMargin = scale(measure::footerMargin);
    const int footerGap = scale(measure::footerGap).width();

    // Buttons first: where their texts are long, the dialog grows.
    const auto buttons = footer->findChildren<QPushButton*>(Qt::FindDirectChildrenOnly);
    const auto count = static_cast<int>(buttons.size());
    const int footerRoom = room.width() - 2 * (borderWidth + footerMargin.width()) - (count - 1) * footerGap;
    int footerWidth = 2 * (borderWidth + footerMargin.width()) + std::max(count - 1, 0) * footerGap;
    for (QPushButton* button : buttons) {
        button->ensurePolished();
        const int padding = 2 * scale(measure::buttonPadding).width();
        button->setText(button->fontMetrics().elidedText(button->accessibleName(), Qt::ElideRight,
                                                         footerRoom / count - padding));
        button->setFixedSize(
            std::max(scale(measure::button).width(),
                     button->fontMetrics().horizontalAdvance(button->text()) + padding),
            std::max(scale(measure::button).height(), button->fontMetrics().height() * 3 / 2));
        footerWidth += button->width();
    }
    const int width = std::min(std::max(scale(measure::dialog).width(), footerWidth), room.width());
    const int inside = width - 2 * (borderWidth + margin.width());

    const QSize close = scale(measure::close);
    // The texts stand on the margins, their frames outside of them.
    header->layout()->setContentsMargins(margin.width() - labelFrame, margin.height(),
                                         margin.width() - close.width() / 4, 0);
    header->layout()->setSpacing(gap.width());
    headerClose->setFixedSize(close.height(), close.height());
    showText(*headerLabel, title_, inside + labelFrame + close.width() / 4 - close.height() - gap.width());

    const QSize iconSize = scale(measure::icon);
    instruction->layout()->setContentsMargins(margin.width(), gap.height(), margin.width(), margin.height());
    instruction->layout()->setSpacing(gap.width() - labelFrame - scrollFrame);
    icon->setFixedSize(iconSize.height(), iconSize.height());
    const int textWidth = inside - iconSize.height() - gap.width() + labelFrame - scrollFrame;
    showText(*instructionLabel, message_, textWidth);

    footerLayout->setContentsMargins(footerMargin.width(), footerMargin.height(), footerMargin.width(),
                                     footerMargin.height());
    footerLayout->setSpacing(footerGap);

    const int others = 2 * borderWidth + header->sizeHint().height() + gap.height() + margin.height() +
                       footer->sizeHint().height();
    const int wanted = std::max(instructionLabel->height() + 2 * scrollFrame, iconSize.height());
    const bool scrolls = others + wanted > room.height();
    if (scrolls) {
        const int bar = instructionScroll->verticalScrollBar()->sizeHint().width();
        showText(*instructionLabel, message_, textWidth - bar);
    }
    // What scrolls must be reached by the keyboard.
    instructionScroll->setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::NoFocus);
    instructionScroll->setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    instructionScroll->setFixedHeight(scrolls ? std::max(room.height() - others, iconSize.height()) : wanted);
    dialog.setFixedSize(width, others + instructionScroll->height());
}

} // namespace vexil::utils::accessibility
