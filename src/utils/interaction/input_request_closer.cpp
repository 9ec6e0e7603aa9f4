#include "utils/interaction/input_request_closer.h"

#include <QtWidgets/QDialog>

namespace vexil::utils {

InputRequestCloser::InputRequestCloser() {
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &InputRequestCloser::close);
}

void InputRequestCloser::closeAfter(std::chrono::milliseconds delay, QDialog& dialog, int code) {
    dialog_ = &dialog;
    code_ = code;
    timer_.start(delay);
}

void InputRequestCloser::close() {
    if (dialog_) {
        dialog_->done(code_);
    }
}

} // namespace vexil::utils
