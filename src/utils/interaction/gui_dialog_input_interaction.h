#pragma once

#include "utils/interaction/gui_input_interaction.h"
#include "utils/interaction/input_request.h"

#include <string>

namespace vexil::utils {

/// A question with texts and buttons, asked in a `GenericInputDialog`.
class GuiDialogInputInteraction final : public GuiInputInteraction {
public:
    /// `title` is the context that the texts are translated in. `request` takes the answer, and must live
    /// until the question has been answered.
    GuiDialogInputInteraction(std::string title, InputRequest& request, bool suppressed, bool modal);

    void present() override;

private:
    /// Whether the question is of a sort that is answered with 1 where nobody needs to be asked.
    [[nodiscard]] bool answersItself() const;
    /// On the GUI thread. A stop of the test closes the dialog within a second.
    void show();

    std::string title_;
    InputRequest* request_;
};

} // namespace vexil::utils
