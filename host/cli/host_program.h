#pragma once

#include "host/cli/terminal.h"
#include "host/core/direct3d_need.h"
#include "host/core/gui.h"
#include "host/core/run_log.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

namespace vexil::host {

/// What the program has around it. Tests put their own in its place.
struct HostEnvironment {
    std::ostream& out;
    std::ostream& err;
    TerminalTraits terminal;
    std::filesystem::path programFolder; ///< module, languages, scenarios and stand-ins stand here
    std::string userLanguage;            ///< "de_DE"
    std::string operatingSystem;
    unsigned hardwareThreads = 0; ///< 0: unknown
    bool hasDisplayController = false;
    const volatile std::uint8_t& cancel; ///< non-zero stops the run
    Gui& gui;                            ///< lent to the tests that need it
    Direct3dProbe direct3dProbe = missingDirect3dLibrary;
    std::function<LogPlace()> logPlace = systemLogPlace;
};

/// The program, from its arguments (without its name) to its exit code. Every error is one line on `err`.
[[nodiscard]] int runHost(const std::vector<std::string>& arguments, const HostEnvironment& environment);

} // namespace vexil::host
