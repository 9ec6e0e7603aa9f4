#include "host/platform/console.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <cstring>

#include <langinfo.h>

namespace vexil::host::platform {

void prepareConsole() {
    // Only the character set is taken from the environment: numbers keep their point in every language.
    std::setlocale(LC_CTYPE, "");
}

bool isTerminal(Stream stream) {
    const int descriptor = stream == Stream::Output ? STDOUT_FILENO : STDERR_FILENO;
    if (isatty(descriptor) == 0) {
        return false;
    }
    const char* kind = std::getenv("TERM");
    return kind != nullptr && *kind != '\0' && std::strcmp(kind, "dumb") != 0;
}

unsigned terminalWidth() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0) {
        return size.ws_col;
    }
    return 80;
}

unsigned terminalHeight() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_row > 0) {
        return size.ws_row;
    }
    return 24;
}

bool terminalShowsUtf8() { return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0; }

} // namespace vexil::host::platform
