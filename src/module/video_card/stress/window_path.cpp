#include "module/video_card/stress/window_path.h"

#include "core/test_result.h"
#include "module/video_card/stress/stress_codes.h"
#include "module/video_card/stress/stress_status.h"
#include "module/video_card/stress/stress_test_dialog.h"
#include "module/video_card/test_parameter_screen_dimensions.h"
#include "utils/interaction/legacy_context.h"
#include "utils/interaction/request_input.h"
#include "utils/interaction/widget_wrapper_with_callable.h"

#include <algorithm>
#include <array>
#include <exception>
#include <memory>

namespace vexil::module::video_card {

using core::TestResult;

namespace {

struct WindowOutcome {
    std::uint32_t code;
    std::uint8_t status;
};

/// Every other code is that of a run which was not hindered.
constexpr std::array outcomes = {
    WindowOutcome{StressCode::NotShown, operationFailed},
    WindowOutcome{StressCode::Resized, operationFailed},
    WindowOutcome{StressCode::Differed, TestResult::Failed},
    WindowOutcome{StressCode::Left, TestResult::NotCompleted},
};

/// On the GUI thread.
std::uint32_t showDialog(const StressRun& run, const LoadController& loadController,
                         const TestParameterScreenDimensions& dimensions, QObject* eventFilter,
                         std::int32_t dpi) {
    try {
        StressTestDialog dialog(run, loadController, nullptr, eventFilter, dimensions,
                                static_cast<float>(static_cast<std::uint32_t>(dpi)));
        const utils::legacy::Context context(&run.arguments);
        dialog.attach(&context);
        return static_cast<std::uint32_t>(dialog.exec());
    } catch (const std::exception&) {
        return StressCode::Left;
    }
}

} // namespace

std::uint8_t statusOfWindow(std::uint32_t code) {
    const auto row = std::ranges::find(outcomes, code, &WindowOutcome::code);
    return row == outcomes.end() ? TestResult::Passed : row->status;
}

std::uint8_t runInWindow(const StressRun& run, const LoadController& loadController,
                         const TestParameterScreenDimensions& dimensions) {
    utils::WidgetWrapperWithCallable widget(
        std::make_unique<utils::legacy::Context>(&run.arguments),
        [&](QWidget*, utils::InputRequestCloser* closer, std::int32_t dpi) {
            return showDialog(run, loadController, dimensions, closer, dpi);
        });
    utils::legacy::Context context(&run.arguments);
    InputRequest request;
    request.widget = &widget;
    request.type = 3;
    request.context = &context;
    utils::requestInput(request, *run.arguments.reporter);
    return statusOfWindow(request.result);
}

} // namespace vexil::module::video_card
