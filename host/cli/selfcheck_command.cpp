#include "host/cli/commands.h"
#include "host/core/facilities.h"
#include "host/core/host_keys.h"
#include "host/core/self_check.h"
#include "host/core/value_text.h"
#include "host/platform/process.h"

#include <fmt/format.h>

#include <chrono>

namespace vexil::host {

namespace {

std::string describe(const CheckedOutcome& outcome, const Language& language) {
    if (!outcome.result) {
        return language.text(keys::notRunHere);
    }
    auto text = language.text(resultKey(*outcome.result));
    for (const auto& message : outcome.messages) {
        text += ", " + message;
    }
    return text;
}

std::string describe(const simulated::RequiredOutcome& required, const Language& language) {
    auto text = language.text(resultKey(required.result));
    for (const auto& message : required.messages) {
        text += ", " + message;
    }
    return text;
}

void show(const CommandContext& context, const CheckedOutcome& outcome) {
    auto& terminal = context.terminal;
    const auto& language = context.language;
    const bool good = outcome.asRequired();
    const auto style = good ? Style::Good : Style::Bad;
    const auto name = outcome.name.empty() ? fmt::format("{} {}", language.text(keys::test), outcome.test)
                                           : language.text(outcome.name);
    const auto result =
        outcome.result ? language.text(resultKey(*outcome.result)) : language.text(keys::notRunHere);
    terminal.line(fmt::format("  {} {}  {}  {}",
                              terminal.paint(terminal.glyph(good ? "✓" : "✗", good ? "+" : "x"), style),
                              fit(outcome.card, 4), fit(name, 52), terminal.paint(result, style)));
    if (!good) {
        terminal.paragraph(
            fmt::format("{}: {}", language.text(keys::required), describe(outcome.required, language)), 4,
            Style::Bad);
        terminal.paragraph(fmt::format("{}: {}", language.text(keys::got), describe(outcome, language)), 4,
                           Style::Bad);
    }
}

} // namespace

ExitCode selfCheckCommand(const CommandContext& context) {
    const auto started = std::chrono::steady_clock::now();
    const auto program = platform::programFile();
    const auto machines = selfCheckMachines(context.environment.programFolder);
    const Facilities facilities{std::nullopt, context.environment.gui.hasDisplay()};
    std::size_t asRequired = 0;
    std::size_t otherwise = 0;
    std::size_t leftOut = 0;
    for (auto machine : machines) {
        if (context.environment.cancel != 0) {
            break;
        }
        leftOut += leaveOutLacking(machine, facilities);
        if (machine.required.empty()) {
            continue;
        }
        context.terminal.line(context.terminal.paint(machine.scenario, Style::Bold));
        context.terminal.paragraph(machine.description, 2, Style::Dim);
        for (const auto& outcome : checkMachine(program, context.options.module, machine)) {
            ++(outcome.asRequired() ? asRequired : otherwise);
            show(context, outcome);
        }
    }
    const bool complete = context.environment.cancel == 0 && asRequired + otherwise > 0;
    const auto verdict = otherwise > 0 ? keys::selfCheckFailed
                         : complete    ? keys::selfCheckPassed
                                       : keys::verdictNone;
    context.terminal.line();
    context.terminal.paragraph(context.language.text(verdict), 0,
                               otherwise > 0 ? Style::Bad
                               : complete    ? Style::Good
                                             : Style::Warning);
    auto counts = fmt::format("{} {}, {} {}", asRequired, context.language.text(keys::countAsRequired),
                              otherwise, context.language.text(keys::countOtherwise));
    if (leftOut > 0) {
        context.terminal.paragraph(context.language.text(keys::displayMissing), 0, Style::Warning);
        counts += fmt::format(", {} {}", leftOut, context.language.text(keys::countNotRun));
    }
    context.terminal.paragraph(counts + ", " + describeDuration(std::chrono::steady_clock::now() - started),
                               0, Style::Dim);
    return otherwise > 0 ? ExitCode::CardFailed : complete ? ExitCode::AllPassed : ExitCode::NoVerdict;
}

} // namespace vexil::host
