#include "host/platform/process.h"

#include <sys/utsname.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>
#include <system_error>

namespace vexil::host::platform {

namespace {

volatile std::uint8_t* cancelByte = nullptr;

extern "C" void interrupted(int) {
    if (*cancelByte != 0) {
        _exit(130);
    }
    *cancelByte = 1;
}

} // namespace

std::vector<std::string> commandLineArguments(int count, const char* const* values) {
    return {values + (count > 0 ? 1 : 0), values + count};
}

std::filesystem::path programFile() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() / "vxe-host" : program;
}

std::filesystem::path programFolder() { return programFile().parent_path(); }

void setEnvironmentVariable(const std::string& name, const std::string& value) {
    setenv(name.c_str(), value.c_str(), 1);
}

std::string userLanguage() {
    // The order in which the C library asks them.
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const auto value = environmentVariable(name);
        if (value && !value->empty()) {
            return value->substr(0, value->find_first_of(".@"));
        }
    }
    return {};
}

std::string operatingSystem() {
    constexpr std::string_view field = "PRETTY_NAME=\"";
    std::ifstream release("/etc/os-release");
    for (std::string line; std::getline(release, line);) {
        if (line.starts_with(field) && line.ends_with('"')) {
            return line.substr(field.size(), line.size() - field.size() - 1);
        }
    }
    utsname name{};
    return uname(&name) == 0 ? std::string(name.sysname) + ' ' + name.release : std::string("Linux");
}

void cancelOnInterrupt(volatile std::uint8_t& cancel) {
    cancelByte = &cancel;
    struct sigaction action {};
    action.sa_handler = interrupted;
    sigemptyset(&action.sa_mask);
    // A worker's system call that the signal meets goes on: stopping is the test's own decision.
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

} // namespace vexil::host::platform
