#include "host/cli/host_program.h"

#include "host/cli/commands.h"
#include "host/core/host_keys.h"

#include <algorithm>
#include <exception>

namespace vexil::host {

namespace {

/// What a user has named may hold line feeds, and an error is one line.
int fail(const HostEnvironment& environment, ExitCode code, std::string line) {
    std::ranges::replace_if(
        line, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    environment.err << "vxe-host: " << line << std::endl;
    return static_cast<int>(code);
}

/// Lost output is no success, though a verdict on a card stands.
int tellWhetherWritten(const HostEnvironment& environment, ExitCode code) {
    environment.out.flush();
    const bool outranked = code == ExitCode::CardFailed || code == ExitCode::CleanupFailed;
    if (environment.out || outranked) {
        return static_cast<int>(code);
    }
    return fail(environment, ExitCode::InternalError, "the output cannot be written");
}

ExitCode dispatch(const Options& options, const HostEnvironment& environment) {
    const auto language =
        loadLanguage(environment.programFolder / "languages", options.language, environment.userLanguage);
    Terminal terminal(environment.out, environment.terminal);
    const CommandContext context{options, environment, language, terminal};
    switch (options.command) {
    case Command::Cards:
        return listCardsCommand(context);
    case Command::Tests:
        return listTestsCommand(context);
    case Command::SelfCheck:
        return selfCheckCommand(context);
    case Command::Monitor:
        return monitorCommand(context);
    case Command::Log:
        return options.clearLog ? clearLogCommand(context) : listLogCommand(context);
    default:
        return runCommand(context);
    }
}

} // namespace

int runHost(const std::vector<std::string>& arguments, const HostEnvironment& environment) {
    try {
        const auto parsed = parseArguments(arguments);
        if (!parsed.options) {
            environment.out << parsed.text;
            return tellWhetherWritten(environment, ExitCode::AllPassed);
        }
        return tellWhetherWritten(environment, dispatch(*parsed.options, environment));
    } catch (const HostError& error) {
        return fail(environment, error.code(), error.what());
    } catch (const std::exception& error) {
        return fail(environment, ExitCode::InternalError, error.what());
    }
}

Session openSession(const CommandContext& context, bool needsCard, bool announce) {
    const auto& options = context.options;
    const auto machine = chooseMachine(options.machine, needsCard, context.environment.hasDisplayController);
    if (announce) {
        const auto& language = context.language;
        context.terminal.line(machine.forLackOfCards ? language.text(keys::simulatedForLackOfCards)
                              : machine.simulated
                                  ? language.text(keys::simulatedMachine) + ": " + machine.scenario
                                  : language.text(keys::realMachine));
    }
    return {machine, context.environment.programFolder, options.module, context.environment.direct3dProbe};
}

Facilities facilitiesOf(const CommandContext& context, const Session& session) {
    return {session.missingDirect3d(), context.environment.gui.hasDisplay()};
}

void explainScan(const CommandContext& context, const Session& session) {
    if (session.cards().empty()) {
        context.terminal.paragraph(context.language.text(keys::noCards), 0, Style::Warning);
        return;
    }
    if (const auto& missing = session.missingDirect3d()) {
        context.terminal.paragraph(context.language.text(keys::direct3dMissing) + ": " + *missing, 0,
                                   Style::Warning);
    }
}

} // namespace vexil::host
