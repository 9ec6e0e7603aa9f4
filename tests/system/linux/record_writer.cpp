#include "platform/linux/cim/cim_linux.h"
#include "system/result_log.h"

#include <unistd.h>

#include <cstdlib>
#include <string>

namespace {

void say(const char* word, int serial) {
    const auto line = word + std::to_string(serial) + '\n';
    if (write(STDOUT_FILENO, line.data(), line.size()) < 0) {
        std::exit(3);
    }
}

} // namespace

/// record_writer FILE NAME FIRST END: writes records with the serials from FIRST up to END, and tells of each
/// before ("?7") and after ("=7"). Ends with 1 if one was not taken.
int main(int count, char** arguments) {
    if (count != 5) {
        return 2;
    }
    vexil::platform::LinuxCim cim("/", arguments[1]);
    vexil::system::ResultLog log(cim);
    const std::string name = arguments[2];
    const int end = std::atoi(arguments[4]);
    for (int serial = std::atoi(arguments[3]); serial < end; ++serial) {
        const auto number = std::to_string(serial);
        say("?", serial);
        // Every field tells the same, so that a record that is not whole shows.
        const auto status = log.append({0, name, number, "display " + number, "test " + number,
                                        "status " + number, "start " + number, "duration " + number});
        if (status != vexil::system::CimStatus::Success) {
            return 1;
        }
        say("=", serial);
    }
    return 0;
}
