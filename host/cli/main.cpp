#include "host/platform/libraries.h"
#include "host/platform/process.h"

#include <iostream>

namespace {

constexpr int internalError = 70;

} // namespace

/// Loads the program, which needs Qt and libraries of the suite. Linked to them itself, it would end without
/// a word where one is missing; so it can name it.
int main(int count, char** values) {
    namespace platform = vexil::host::platform;
    const auto file = platform::programFolder() / platform::hostProgramFileName();
    std::string reason;
    void* program = platform::openForProcess(file, reason);
    if (program == nullptr) {
        std::cerr << "vxe-host: the program cannot be started: " << reason << std::endl;
        return internalError;
    }
    const auto run = reinterpret_cast<int (*)(int, char**)>(platform::symbolOf(program, "vexilHostMain"));
    if (run == nullptr) {
        std::cerr << "vxe-host: " << file.string() << " is not the program's library" << std::endl;
        return internalError;
    }
    return run(count, values);
}
