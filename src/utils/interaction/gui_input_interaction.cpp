#include "utils/interaction/gui_input_interaction.h"

namespace vexil::utils {

void GuiInputInteraction::ask() {
    if (!suppressed_) {
        present();
    }
}

} // namespace vexil::utils
