#include "support/virtual_display.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vexil::tests {

namespace {

/// The number that the server writes when it is ready.
std::string readNumber(int pipe) {
    std::string number;
    for (char digit = 0; read(pipe, &digit, 1) == 1 && digit != '\n';) {
        number += digit;
    }
    return number;
}

[[noreturn]] void becomeServer(int displayPipe, const std::string& geometry) {
    // A test program that dies takes its server along.
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
    const std::string descriptor = std::to_string(displayPipe);
    // The server takes the first number that is free.
    // Left to reset itself, the server begins anew after each last client, and refuses others meanwhile.
    execlp("Xvfb", "Xvfb", "-displayfd", descriptor.c_str(), "-screen", "0", geometry.c_str(), "-noreset",
           "-nolisten", "tcp", nullptr);
    _exit(127);
}

} // namespace

VirtualDisplay::VirtualDisplay(const std::string& geometry) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) {
        return;
    }
    server_ = fork();
    if (server_ == 0) {
        close(ends[0]);
        becomeServer(ends[1], geometry);
    }
    close(ends[1]);
    const auto number = readNumber(ends[0]);
    close(ends[0]);
    if (!number.empty()) {
        name_ = ':' + number;
    }
}

VirtualDisplay::~VirtualDisplay() {
    if (server_ > 0) {
        kill(server_, SIGTERM);
        waitpid(server_, nullptr, 0);
    }
}

} // namespace vexil::tests
