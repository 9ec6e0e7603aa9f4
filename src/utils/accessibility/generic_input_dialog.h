#pragma once

#include "utils/accessibility/accessible_dialog_base.h"
#include "utils/accessibility/generic_input_form.h"
#include "utils/interaction/input_request.h"

#include <QtCore/QPoint>
#include <QtWidgets/QButtonGroup>

#include <string>
#include <vector>

namespace vexil::utils::accessibility {

/// The question box: an icon, a title, a message and up to two buttons. It can be dragged by its header and
/// worked by the keyboard alone.
class GenericInputDialog : public AccessibleDialogBase {
    Q_OBJECT
public:
    /// `request` outlives the dialog and takes the answer. Its texts are translated in `context`.
    GenericInputDialog(InputRequest& request, const std::string& context, QWidget* parent = nullptr);

    /// Comes forward, and returns when the dialog is closed.
    int exec() override;

public slots:
    void OnClose();
    /// Takes the id of a button: 0 OK, 1 Cancel, 2 Yes, 3 No.
    void OnAnswer(int id);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void answer(std::uint32_t value);
    void setTexts();
    void addButtons();
    void setUpTabOrder();
    void setUpFocus();

    InputRequest* request_;
    QButtonGroup group_;
    GenericInputForm form_;
    bool dragging_ = false;
    QPoint pressPoint_;
    std::string context_;
    std::vector<QWidget*> focusableButtons_; ///< in tab order
};

} // namespace vexil::utils::accessibility
