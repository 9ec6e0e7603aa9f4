#include "utils/accessibility/generic_input_dialog.h"

#include "core/message_keys.h"
#include "utils/accessibility/desktop_probes.h"
#include "utils/accessibility/dialog_environment.h"
#include "utils/accessibility/dpi.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QScrollArea>

#include <algorithm>
#include <array>

namespace vexil::utils::accessibility {

namespace {

constexpr auto windowFlagsOfBox =
    Qt::Dialog | Qt::FramelessWindowHint | Qt::MSWindowsFixedSizeDialogHint | Qt::WindowStaysOnTopHint;
static_assert(windowFlagsOfBox.toInt() == 264451);

constexpr std::uint32_t closedAnswer = 0;
constexpr std::uint16_t keypadOne = 97; // VK_NUMPAD1

struct AnswerButton {
    int id;
    std::uint32_t answer;
    std::uint32_t type; ///< of the request that shows it
    const char* objectName;
    const std::string* key;
};

constexpr std::array answerButtons = {
    AnswerButton{0, 1, 0, "generic_input_button_ok", &keys::ok},
    AnswerButton{0, 1, 1, "generic_input_button_ok", &keys::ok},
    AnswerButton{1, 2, 1, "generic_input_button_cancel", &keys::cancel},
    AnswerButton{2, 3, 2, "generic_input_button_yes", &keys::yes},
    AnswerButton{3, 4, 2, "generic_input_button_no", &keys::no},
};

/// By the request's kind.
constexpr std::array iconNames = {
    "generic_input_question_icon", "generic_input_information_icon", "generic_input_information_icon",
    "generic_input_warning_icon",  "generic_input_error_icon",       "generic_input_question_icon",
};

QString translate(const std::string& context, const std::string& key) {
    return key.empty() ? QString() : QCoreApplication::translate(context.c_str(), key.c_str());
}

} // namespace

GenericInputDialog::GenericInputDialog(InputRequest& request, const std::string& context, QWidget* parent)
    : AccessibleDialogBase(parent), request_(&request), context_(context) {
    form_.setUp(*this);
    setWindowFlags(windowFlagsOfBox);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    request_->result = closedAnswer;
    if (request.kind < iconNames.size()) {
        form_.icon->setObjectName(iconNames[request.kind]);
    }
    setTexts();
    addButtons();
    connect(form_.headerClose, &QPushButton::clicked, this, &GenericInputDialog::OnClose);
    connect(&group_, &QButtonGroup::idClicked, this, &GenericInputDialog::OnAnswer);

    const Dpi* dpi = Dpi::instance();
    form_.layOut(
        *this, [dpi](QSize size) { return dpi == nullptr ? size : dpi->scaledSize(size); },
        screen()->availableSize());
    const bool readerRuns = isScreenReaderRunning();
    if (readerRuns) {
        form_.headerLabel->setFocusPolicy(Qt::StrongFocus);
        form_.instructionLabel->setFocusPolicy(Qt::StrongFocus);
    }
    setUpTabOrder();
    if (!readerRuns) {
        setUpFocus();
    }
}

int GenericInputDialog::exec() {
    auto& desktop = dialogEnvironment().desktop();
    // A process that is not in front may come there once the user has touched a key.
    desktop.sendKey(keypadOne, platform::KeyMotion::press);
    desktop.bringForward(*this);
    return AccessibleDialogBase::exec();
}

void GenericInputDialog::OnClose() { answer(closedAnswer); }

void GenericInputDialog::OnAnswer(int id) {
    const auto button = std::ranges::find(answerButtons, id, &AnswerButton::id);
    answer(button == answerButtons.end() ? closedAnswer : button->answer);
}

void GenericInputDialog::answer(std::uint32_t value) {
    request_->result = value;
    close();
}

void GenericInputDialog::setTexts() {
    const QString title = translate(context_, request_->title);
    const QString message = translate(context_, request_->text);
    form_.setTexts(title, message);
    form_.headerClose->setAccessibleName(translate(context_, keys::closePopUp));
    setWindowTitle(title);
    setAccessibleName(title);
    setAccessibleDescription(message);
}

void GenericInputDialog::addButtons() {
    for (const auto& row : answerButtons) {
        if (row.type == request_->type) {
            QPushButton* button = form_.addButton(row.objectName, translate(context_, *row.key));
            group_.addButton(button, row.id);
            focusableButtons_.push_back(button);
        }
    }
}

void GenericInputDialog::setUpTabOrder() {
    std::vector<QWidget*> order = {form_.headerLabel, form_.instructionScroll, form_.instructionLabel};
    order.insert(order.end(), focusableButtons_.begin(), focusableButtons_.end());
    order.push_back(form_.headerClose);
    std::erase_if(order, [](const QWidget* widget) { return widget->focusPolicy() == Qt::NoFocus; });
    for (std::size_t i = 1; i < order.size(); ++i) {
        setTabOrder(order[i - 1], order[i]);
    }
}

void GenericInputDialog::setUpFocus() {
    for (QWidget* widget : form_.footer->findChildren<QWidget*>()) {
        if (widget->objectName() == "generic_input_button_ok" ||
            widget->objectName() == "generic_input_button_yes") {
            widget->setFocus();
        }
    }
}

void GenericInputDialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape) {
        answer(closedAnswer);
        return;
    }
    const auto focused = std::ranges::find_if(focusableButtons_, &QWidget::hasFocus);
    if (focused == focusableButtons_.end()) {
        setUpFocus();
        return;
    }
    const auto place = static_cast<std::size_t>(focused - focusableButtons_.begin());
    const auto count = focusableButtons_.size();
    if (event->key() == Qt::Key_Up) {
        focusableButtons_[(place + count - 1) % count]->setFocus(Qt::BacktabFocusReason);
    } else if (event->key() == Qt::Key_Down) {
        focusableButtons_[(place + 1) % count]->setFocus(Qt::TabFocusReason);
    }
}

void GenericInputDialog::mousePressEvent(QMouseEvent* event) {
    const QPoint point = event->position().toPoint();
    const QRect header(form_.header->mapTo(this, QPoint(0, 0)), form_.header->size());
    if (header.contains(point) && !form_.headerClose->underMouse()) {
        dragging_ = true;
        pressPoint_ = point;
        setCursor(Qt::ClosedHandCursor);
    }
}

void GenericInputDialog::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_) {
        move(event->globalPosition().toPoint() - pressPoint_);
    }
}

void GenericInputDialog::mouseReleaseEvent(QMouseEvent*) {
    dragging_ = false;
    unsetCursor();
}

} // namespace vexil::utils::accessibility
