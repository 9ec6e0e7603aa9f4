#include "host/platform/console.h"

#include <windows.h>

#include <initializer_list>

namespace vexil::host::platform {

namespace {

HANDLE handleOf(Stream stream) {
    return GetStdHandle(stream == Stream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

} // namespace

void prepareConsole() {
    SetConsoleOutputCP(CP_UTF8);
    for (const auto stream : {Stream::Output, Stream::Error}) {
        DWORD mode = 0;
        if (GetConsoleMode(handleOf(stream), &mode) != 0) {
            SetConsoleMode(handleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
        }
    }
    // A library that cannot be loaded is answered with a line, not with a box that waits for a click.
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

bool isTerminal(Stream stream) {
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0 && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

unsigned terminalWidth() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(handleOf(Stream::Output), &info) != 0) {
        return static_cast<unsigned>(info.srWindow.Right - info.srWindow.Left + 1);
    }
    return 80;
}

unsigned terminalHeight() {
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleScreenBufferInfo(handleOf(Stream::Output), &info) != 0) {
        return static_cast<unsigned>(info.srWindow.Bottom - info.srWindow.Top + 1);
    }
    return 24;
}

bool terminalShowsUtf8() { return GetConsoleOutputCP() == CP_UTF8; }

} // namespace vexil::host::platform
