#include "support/virtual_display.h"

#include <csignal>
#include <cstdlib>
#include <string>
#include <sys/prctl.h>
#include <unistd.h>

namespace vexil::tests {

namespace {

constexpr const char* screen = "1280x1024x24";

/// The number that the server writes when it is ready.
std::string readNumber(int pipe) {
    std::string number;
    char digit = 0;
    while (read(pipe, &digit, 1) == 1 && digit != '\n') {
        number += digit;
    }
    return number;
}

} // namespace

bool provideDisplay() {
    const char* display = std::getenv("DISPLAY");
    if (display != nullptr && *display != '\0') {
        return true;
    }
    int ends[2];
    if (pipe(ends) != 0) {
        return false;
    }
    if (fork() == 0) {
        prctl(PR_SET_PDEATHSIG, SIGTERM);
        close(ends[0]);
        const std::string descriptor = std::to_string(ends[1]);
        execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", screen, "-nolisten", "tcp",
               nullptr);
        _exit(127);
    }
    close(ends[1]);
    const std::string number = readNumber(ends[0]);
    close(ends[0]);
    if (number.empty()) {
        return false;
    }
    setenv("DISPLAY", (":" + number).c_str(), 1);
    return true;
}

} // namespace vexil::tests
