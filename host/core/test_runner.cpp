#include "host/core/test_runner.h"

#include "core/test.h"
#include "host/core/test_task.h"

#include <utility>

namespace vexil::host {

namespace {

/// How often the elapsed time is shown anew while a test says nothing.
constexpr std::chrono::milliseconds idleInterval{100};

} // namespace

TestRunner::TestRunner(std::shared_ptr<core::DiagnosticDispatcher> dispatcher, Settings settings)
    : dispatcher_(std::move(dispatcher)), settings_(std::move(settings)) {}

TestRun TestRunner::run(const Card& card, core::Test& test, const Watch& watch) {
    TestRun run;
    run.testId = test.id();
    run.name = test.descriptor().name;
    run.startedAt = std::chrono::system_clock::now();

    const auto execution = std::make_shared<core::TestExecution>();
    execution->device = card.device;
    execution->scope = core::TestExecution::ownDevice;
    execution->test = &test;
    if (!dispatcher_->canStart(execution)) {
        run.error = "the dispatcher holds the card for another run";
        return run;
    }

    const auto start = std::chrono::steady_clock::now();
    const auto elapsed = [&] {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start);
    };
    const auto taskWatch = std::make_shared<TaskWatch>();
    RunReporter reporter([&taskWatch] { taskWatch->news(); }, settings_.interact);
    dispatcher_->started(execution);
    dispatcher_->execute(std::make_unique<TestTask>(
        test,
        core::TestRunArguments{card.device, settings_.cancelRequested, &reporter, settings_.systemEvents},
        taskWatch));
    std::optional<TaskEnd> end;
    while (!(end = taskWatch->wait(idleInterval))) {
        if (watch) {
            watch(reporter, elapsed());
        }
    }
    dispatcher_->finished(execution);

    run.duration = elapsed();
    run.result = end->result;
    run.error = std::move(end->error);
    run.messages = reporter.messages();
    run.progress = reporter.progress();
    return run;
}

} // namespace vexil::host
