#include "host/cli/host_main.h"

#include "host/cli/host_program.h"
#include "host/cli/loaded_gui.h"
#include "host/platform/console.h"
#include "host/platform/display_controllers.h"
#include "host/platform/process.h"

#include <iostream>
#include <thread>

namespace {

volatile std::uint8_t cancelRequested = 0;

vexil::host::TerminalTraits describeTerminal() {
    using namespace vexil::host;
    TerminalTraits traits;
    traits.interactive = platform::isTerminal(platform::Stream::Output);
    traits.utf8 = platform::terminalShowsUtf8();
    if (traits.interactive) {
        traits.width = platform::terminalWidth();
        traits.height = platform::terminalHeight();
        const auto noColour = platform::environmentVariable("NO_COLOR");
        traits.colours = !noColour || noColour->empty();
    }
    return traits;
}

} // namespace

int vexilHostMain(int count, char** values) {
    namespace platform = vexil::host::platform;
    platform::prepareConsole();
    platform::cancelOnInterrupt(cancelRequested);
    vexil::host::LoadedGui gui(platform::programFolder());
    const vexil::host::HostEnvironment environment{
        .out = std::cout,
        .err = std::cerr,
        .terminal = describeTerminal(),
        .programFolder = platform::programFolder(),
        .userLanguage = platform::userLanguage(),
        .operatingSystem = platform::operatingSystem(),
        .hardwareThreads = std::thread::hardware_concurrency(),
        .hasDisplayController = platform::hasDisplayController(),
        .cancel = cancelRequested,
        .gui = gui,
    };
    return vexil::host::runHost(platform::commandLineArguments(count, values), environment);
}
