#include "support/virtual_display.h"

#include <array>
#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vexil::tests {

VirtualDisplay::VirtualDisplay(const std::string& geometry) {
    std::array<int, 2> pipe{};
    if (::pipe(pipe.data()) != 0) {
        return;
    }
    const std::string displayFd = std::to_string(pipe[1]);
    // The server takes the first number that is free, and tells it when it is ready.
    std::array<const char*, 9> arguments = {"Xvfb",      "-displayfd", displayFd.c_str(),
                                            "-screen",   "0",          geometry.c_str(),
                                            "-nolisten", "tcp",        nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addclose(&actions, pipe[0]);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", 1, 0);
    const int spawned = posix_spawnp(&server_, "Xvfb", &actions, nullptr,
                                     const_cast<char* const*>(arguments.data()), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(pipe[1]);
    if (spawned != 0) {
        server_ = -1;
    } else {
        std::string number;
        for (char c = 0; read(pipe[0], &c, 1) == 1 && c != '\n';) {
            number += c;
        }
        if (!number.empty()) {
            name_ = ':' + number;
        }
    }
    close(pipe[0]);
}

VirtualDisplay::~VirtualDisplay() {
    if (server_ > 0) {
        kill(server_, SIGTERM);
        waitpid(server_, nullptr, 0);
    }
}

} // namespace vexil::tests
