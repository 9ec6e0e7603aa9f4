#include "utils/interaction/request_input.h"

#include "core/message_keys.h"
#include "utils/interaction/gui_custom_input_interaction.h"
#include "utils/interaction/gui_dialog_input_interaction.h"

#include <memory>
#include <utility>

namespace vexil::utils {

namespace {

/// The type of a request whose widget draws the whole interaction.
constexpr std::uint32_t customType = 3;

/// Leaves its answer where it outlives the question: a host may keep what it is handed, or destroy it.
class AnsweringInteraction final : public GuiCustomInputInteraction {
public:
    AnsweringInteraction(AbstractWidgetWrapper& widget, std::shared_ptr<std::uint32_t> answer)
        : GuiCustomInputInteraction(widget, false, true), answer_(std::move(answer)) {}

    void present() override {
        GuiCustomInputInteraction::present();
        *answer_ = result();
    }

private:
    std::shared_ptr<std::uint32_t> answer_;
};

} // namespace

void requestInput(InputRequest& request, core::TestReporter& reporter) {
    std::unique_ptr<core::InputInteraction> interaction;
    if (request.widget == nullptr || request.type != customType) {
        interaction = std::make_unique<GuiDialogInputInteraction>(keys::moduleName, request, false, true);
        reporter.interact(interaction);
        return;
    }
    const auto answer = std::make_shared<std::uint32_t>(0);
    interaction = std::make_unique<AnsweringInteraction>(*request.widget, answer);
    reporter.interact(interaction);
    request.result = *answer;
}

} // namespace vexil::utils
