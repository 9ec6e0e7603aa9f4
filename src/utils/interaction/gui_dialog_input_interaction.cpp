#include "utils/interaction/gui_dialog_input_interaction.h"

#include "utils/accessibility/generic_input_dialog.h"
#include "utils/interaction/gui_thread.h"
#include "utils/interaction/stop_watch.h"

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>

#include <utility>

namespace vexil::utils {

GuiDialogInputInteraction::GuiDialogInputInteraction(std::string title, InputRequest& request,
                                                     bool suppressed, bool modal)
    : GuiInputInteraction(suppressed, modal), title_(std::move(title)), request_(&request) {}

bool GuiDialogInputInteraction::answersItself() const {
    if (modal_ && !suppressed_) {
        return false;
    }
    const auto type = request_->type;
    const auto kind = request_->kind;
    return (type == 0 && kind == 1) || (type == 0 && kind == 2 && !modal_) || (type == 1 && kind == 5);
}

void GuiDialogInputInteraction::present() {
    if (answersItself()) {
        request_->result = 1;
        return;
    }
    runOnGuiThread([this] { show(); });
}

void GuiDialogInputInteraction::show() {
    // Its parent may go while the dialog is open, and takes the dialog along.
    const QPointer<accessibility::GenericInputDialog> dialog =
        new accessibility::GenericInputDialog(*request_, title_, QApplication::activeWindow());
    const StopWatch stop(request_->context, [&dialog] {
        if (dialog) {
            dialog->close();
        }
    });
    dialog->ensurePolished();
    bringForward(*dialog);
    dialog->exec();
    delete dialog;
    result_ = request_->result;
}

} // namespace vexil::utils
