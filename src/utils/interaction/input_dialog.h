#pragma once

#include "utils/accessibility/accessible_dialog_base.h"

class TestContext;

namespace vexil::utils {

/// Base of the dialogs that a test draws itself: a window above all others that ends by itself or with its
/// test.
class InputDialog : public accessibility::AccessibleDialogBase {
public:
    /// `filter` sees the dialog's events first; it may be null, and must live as long as the dialog
    /// otherwise.
    explicit InputDialog(QWidget* parent = nullptr, QObject* filter = nullptr);

    /// A stop of the test that the context tells of ends `exec` within a second. Not owned; null for none.
    void attach(const TestContext* context) { context_ = context; }

    /// Shows the dialog until it is done or its test is stopped, and returns its result. A stop leaves the
    /// result as it was. A dialog that is destroyed meanwhile returns 0.
    int exec() override;

    /// Both end the dialog with the result that it has.
    void accept() override;
    void reject() override;

private:
    const TestContext* context_ = nullptr;
};

} // namespace vexil::utils
