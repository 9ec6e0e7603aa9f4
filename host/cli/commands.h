#pragma once

#include "host/cli/host_program.h"
#include "host/cli/options.h"
#include "host/core/exit_code.h"
#include "host/core/facilities.h"
#include "host/core/language.h"
#include "host/core/session.h"

namespace vexil::host {

/// What each command gets.
struct CommandContext {
    const Options& options;
    const HostEnvironment& environment;
    const Language& language;
    Terminal& terminal;
};

[[nodiscard]] ExitCode listCardsCommand(const CommandContext& context);
[[nodiscard]] ExitCode listTestsCommand(const CommandContext& context);
[[nodiscard]] ExitCode monitorCommand(const CommandContext& context);
[[nodiscard]] ExitCode listLogCommand(const CommandContext& context);
[[nodiscard]] ExitCode clearLogCommand(const CommandContext& context);
[[nodiscard]] ExitCode runCommand(const CommandContext& context);
[[nodiscard]] ExitCode selfCheckCommand(const CommandContext& context);

/// Opens the machine that the options choose. `announce` says in a line which one it is.
[[nodiscard]] Session openSession(const CommandContext& context, bool needsCard, bool announce);

/// What the tests of the session have beside its cards.
[[nodiscard]] Facilities facilitiesOf(const CommandContext& context, const Session& session);

/// Says what an empty or incomplete scan means.
void explainScan(const CommandContext& context, const Session& session);

} // namespace vexil::host
