#pragma once

#include "utils/interaction/abstract_widget_wrapper.h"
#include "utils/interaction/gui_input_interaction.h"

namespace vexil::utils {

/// A question that a widget of the test's own shows, before the host's window.
class GuiCustomInputInteraction : public GuiInputInteraction {
public:
    /// `widget` must live until the question has been answered.
    GuiCustomInputInteraction(AbstractWidgetWrapper& widget, bool suppressed, bool modal);

    void present() override;

private:
    /// On the GUI thread.
    void show();

    AbstractWidgetWrapper* widget_;
};

} // namespace vexil::utils
