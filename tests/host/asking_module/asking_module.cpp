#include "host/asking_module/asking_module.h"

#include "host/fake_module/fake_tests.h"
#include "module/video_card/catalogue.h"
#include "utils/interaction/input_request.h"
#include "utils/interaction/legacy_context.h"
#include "utils/interaction/request_input.h"
#include "utils/interaction/widget_wrapper_with_callable.h"
#include "utils/parameters/test_parameter_duration_timeout.h"
#include "utils/parameters/test_parameter_load.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <QtWidgets/QWidget>

#include <chrono>
#include <csignal>
#include <thread>

namespace vexil::host::tests {

namespace {

using core::TestResult;

class AskingTest : public core::Test {
public:
    explicit AskingTest(std::int32_t id) : Test(module::video_card::catalogueDescriptor(id)) {
        addParameter(&duration_);
        addParameter(&load_);
    }
    [[nodiscard]] bool isSupported(core::Device*, std::shared_ptr<core::Device>) const override {
        return true;
    }

protected:
    static void say(core::TestReporter& reporter, const char* key, const std::string& value) {
        reporter.report({0, std::string(key) + ": " + value});
    }

private:
    utils::TestParameterDurationTimeout duration_;
    utils::TestParameterLoad load_;
};

/// Test 5: opens a question box, sends its process an interrupt, and waits for the answer.
class InterruptedQuestion final : public AskingTest {
public:
    using AskingTest::AskingTest;

    std::uint8_t execute(const core::TestRunArguments& arguments) override {
        utils::legacy::Context context(&arguments);
        InputRequest request;
        request.title = "APPLICATION_NAME";
        request.text = "ESC_INSTRUCTION";
        request.type = 1;
        request.result = 9;
        request.context = &context;
        std::chrono::steady_clock::time_point interruptedAt;
        std::thread user([&interruptedAt] {
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            interruptedAt = std::chrono::steady_clock::now();
            std::raise(SIGINT);
        });
        utils::requestInput(request, *arguments.reporter);
        const auto answeredAt = std::chrono::steady_clock::now();
        user.join();
        say(*arguments.reporter, said::answer, std::to_string(request.result));
        const auto late = std::chrono::duration_cast<std::chrono::milliseconds>(answeredAt - interruptedAt);
        say(*arguments.reporter, said::stoppedAfter, std::to_string(late.count()));
        return *arguments.cancelRequested != 0 ? TestResult::NotCompleted : TestResult::Passed;
    }
};

/// Test 21: shows a widget that needs no display, twice.
class ShownWidget final : public AskingTest {
public:
    using AskingTest::AskingTest;

    std::uint8_t execute(const core::TestRunArguments& arguments) override {
        for (int slice = 0; slice < 2; ++slice) {
            if (show(arguments) != 4) {
                return TestResult::NotCompleted;
            }
        }
        return TestResult::Passed;
    }

private:
    static std::uint32_t show(const core::TestRunArguments& arguments) {
        auto& reporter = *arguments.reporter;
        utils::WidgetWrapperWithCallable widget(
            std::make_unique<utils::legacy::Context>(&arguments),
            [&reporter](QWidget* parent, utils::InputRequestCloser*, std::int32_t) {
                const bool onGui = QThread::currentThread() == QCoreApplication::instance()->thread();
                say(reporter, said::thread, onGui ? "gui" : "worker");
                say(reporter, said::parent,
                    parent == nullptr ? "none" : parent->accessibleName().toStdString());
                say(reporter, said::title, QCoreApplication::translate("VIDEO_CARD", "CANCEL").toStdString());
                return std::uint32_t{4};
            });
        InputRequest request;
        request.type = 3;
        request.widget = &widget;
        utils::requestInput(request, reporter);
        return request.result;
    }
};

} // namespace

std::unique_ptr<core::Test> AskingModule::createTest(std::int32_t id) const {
    switch (id) {
    case 5:
        return std::make_unique<InterruptedQuestion>(id);
    case 21:
        return std::make_unique<ShownWidget>(id);
    default:
        return FakeModule::createTest(id);
    }
}

} // namespace vexil::host::tests
