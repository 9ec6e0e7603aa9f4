#include "host/cli/commands.h"

#include "host/cli/progress_view.h"
#include "host/core/host_keys.h"
#include "host/core/logged_runs.h"
#include "host/core/report_file.h"
#include "host/core/value_text.h"

#include <fmt/format.h>

#include <algorithm>

namespace vexil::host {

namespace {

std::vector<ReportFile> prepareReports(const std::vector<std::string>& paths) {
    return {paths.begin(), paths.end()};
}

void explainNotOffered(const CommandContext& context, const std::vector<Card>& cards, const RunPlan& plan) {
    for (const auto& missing : plan.notOffered) {
        std::string names;
        for (const auto& name : missing.names) {
            names += (names.empty() ? "" : ", ") + context.language.text(name);
        }
        const auto& card = cards[missing.card];
        context.terminal.paragraph(fmt::format("{} {} {}: {}", context.language.text(card.record.name),
                                               describeId(card.record, context.language),
                                               context.language.text(keys::notOffered), names),
                                   0, Style::Dim);
    }
    if (std::ranges::any_of(plan.notOffered, &NotOffered::forLackOfDisplay)) {
        context.terminal.paragraph(context.language.text(keys::displayMissing), 0, Style::Dim);
    }
}

void showSummary(const CommandContext& context, const Report& report) {
    auto& terminal = context.terminal;
    const auto& language = context.language;
    const auto& runs = report.outcome.runs;
    std::size_t idWidth = columns(language.text(keys::card));
    std::size_t nameWidth = columns(language.text(keys::test));
    std::size_t resultWidth = columns(language.text(keys::result));
    for (const auto& run : runs) {
        idWidth = std::max(idWidth, columns(describeId(report.cards[run.card], language)));
        nameWidth = std::max(nameWidth, columns(language.text(run.name)));
        resultWidth = std::max(resultWidth, columns(language.text(resultKey(run.result))));
    }
    const std::size_t width = terminal.traits().width;
    const std::size_t others = idWidth + resultWidth + 20;
    nameWidth = std::min(nameWidth, width > others + 8 ? width - others : 8);

    terminal.line();
    terminal.line(terminal.paint(language.text(keys::summary), Style::Bold));
    if (!runs.empty()) {
        terminal.line("    " + terminal.paint(fit(language.text(keys::card), idWidth) + "  " +
                                                  fit(language.text(keys::test), nameWidth) + "  " +
                                                  fit(language.text(keys::result), resultWidth) + "  " +
                                                  language.text(keys::time),
                                              Style::Dim));
    }
    for (const auto& run : runs) {
        const auto style = resultStyle(run);
        terminal.line(
            fmt::format("  {} {}  {}  {}  {}", terminal.paint(resultMark(terminal, run), style),
                        fit(describeId(report.cards[run.card], language), idWidth),
                        fit(language.text(run.name), nameWidth),
                        terminal.paint(fit(language.text(resultKey(run.result)), resultWidth), style),
                        describeDuration(run.duration)));
    }
    const auto style = report.exitCode == ExitCode::AllPassed    ? Style::Good
                       : report.exitCode == ExitCode::CardFailed ? Style::Bad
                                                                 : Style::Warning;
    terminal.line();
    terminal.paragraph(language.text(verdictKey(report.exitCode)), 0, style);
    terminal.paragraph(describeCounts(report.outcome.summary, language), 0, Style::Dim);
}

/// Names each test for the window that stands behind it.
class NamedRuns final : public RunObserver {
public:
    NamedRuns(RunObserver& next, GuiSession& gui, const Language& language)
        : next_(next), gui_(gui), language_(language) {}

    void runStarted(std::size_t card, const core::TestDescriptor& test) override {
        gui_.showTest(language_.text(test.name));
        next_.runStarted(card, test);
    }
    void runProgress(std::uint8_t percent, std::chrono::duration<double> elapsed) override {
        next_.runProgress(percent, elapsed);
    }
    void runFinished(const TestRun& run) override { next_.runFinished(run); }

private:
    RunObserver& next_;
    GuiSession& gui_;
    const Language& language_;
};

bool anyNeeds(const RunPlan& plan, bool (*need)(std::int32_t testId)) {
    return std::ranges::any_of(plan.runs, [&](const PlannedRun& run) { return need(run.test->id()); });
}

/// Executes the plan: on this thread, or with the GUI on it where a test may need one.
PlanOutcome execute(const CommandContext& context, const Session& session, RunPlan& plan, RunLog* log) {
    const auto& cancel = context.environment.cancel;
    ProgressView progress(context.terminal, context.language, session.cards(), plan, cancel);
    LoggedRuns view(progress, log, session.cards(), session.module().nameKey(), context.language);
    const auto executeWith = [&](RunObserver& observer, const RunReporter::Interact& interact) {
        TestRunner runner(session.module().dispatcher(),
                          {&cancel, std::make_shared<core::SystemEventState>(), interact});
        return executePlan(plan, session.cards(), runner, context.options.failFast, cancel, observer);
    };
    if (!anyNeeds(plan, needsGui)) {
        return executeWith(view, {});
    }
    PlanOutcome outcome;
    context.environment.gui.run(
        anyNeeds(plan, needsDisplay), context.language, session.module().nameKey(), [&](GuiSession& gui) {
            NamedRuns observer(view, gui, context.language);
            outcome = executeWith(observer, [](core::InputInteraction& question) { question.ask(); });
        });
    return outcome;
}

/// Runs the plan, or says why nothing can run.
PlanOutcome runPlan(const CommandContext& context, const Session& session, RunPlan& plan, RunLog* log) {
    PlanOutcome outcome;
    if (plan.runs.empty()) {
        if (!session.cards().empty()) {
            context.terminal.paragraph(context.language.text(keys::nothingToRun), 0, Style::Warning);
        }
        return outcome;
    }
    if (!dispatcherHasWorker(context.environment.hardwareThreads)) {
        context.terminal.paragraph(context.language.text(keys::noWorker), 0, Style::Warning);
        outcome.summary.notRun = plan.runs.size();
        return outcome;
    }
    return execute(context, session, plan, log);
}

/// False if one could not be written: the verdict stands whatever becomes of its report.
bool writeReports(const CommandContext& context, const std::vector<ReportFile>& files, const Report& report) {
    bool allWritten = true;
    for (const auto& file : files) {
        try {
            file.write(report, context.language);
            context.terminal.line(context.language.text(keys::writtenTo) + ' ' + file.path());
        } catch (const HostError& error) {
            context.environment.err << "vxe-host: " << error.what() << std::endl;
            allWritten = false;
        }
    }
    return allWritten;
}

/// The log, if the user wants one and it can be written to.
std::optional<RunLog> openLog(const CommandContext& context) {
    std::optional<RunLog> log;
    if (context.options.log) {
        log.emplace(context.environment.logPlace());
        log->requireWritable();
    }
    return log;
}

/// False if some result is not in the log: like a report, it changes no verdict.
bool explainLog(const CommandContext& context, const std::optional<RunLog>& log) {
    if (!log) {
        return true;
    }
    const auto loss = log->loss();
    if (loss) {
        context.environment.err << "vxe-host: " << *loss << std::endl;
    } else {
        context.terminal.line(context.language.text(keys::loggedTo) + ' ' + log->place());
    }
    return !loss;
}

} // namespace

ExitCode runCommand(const CommandContext& context) {
    const auto files = prepareReports(context.options.reports);
    auto log = openLog(context);
    Report report;
    report.startedAt = std::chrono::system_clock::now();
    report.hostVersion = VEXIL_HOST_VERSION;
    report.operatingSystem = context.environment.operatingSystem;

    const auto session = openSession(context, true, true);
    explainScan(context, session);
    auto plan = planRuns(session.module(), session.cards(), context.options.request, context.language,
                         facilitiesOf(context, session));
    explainNotOffered(context, session.cards(), plan);

    report.machine = session.machine();
    report.module = identify(session.module());
    report.cards = session.records();
    report.live =
        readLiveValues(session.cards(), liveSources(session.module(), context.environment.hardwareThreads));
    report.outcome = runPlan(context, session, plan, log ? &*log : nullptr);
    report.exitCode = report.outcome.summary.exitCode();
    showSummary(context, report);
    const bool allReported = writeReports(context, files, report);
    const bool allWritten = explainLog(context, log) && allReported;
    const bool outranked =
        report.exitCode == ExitCode::CardFailed || report.exitCode == ExitCode::CleanupFailed;
    return allWritten || outranked ? report.exitCode : ExitCode::InternalError;
}

} // namespace vexil::host
