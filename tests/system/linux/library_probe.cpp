#include "system/win_module.h"

#include <cstdlib>
#include <filesystem>
#include <string_view>

/// library_probe [--unset VARIABLE] NAME [FOLDER]: ends with 0 if the named library can be loaded, from
/// within the folder if one is given and without the variable, and with 1 if it cannot.
int main(int count, char** arguments) {
    int next = 1;
    if (count > 3 && std::string_view(arguments[1]) == "--unset") {
        unsetenv(arguments[2]);
        next = 3;
    }
    if (count > next + 1) {
        std::filesystem::current_path(arguments[next + 1]);
    }
    return count > next && getModule()->load(arguments[next], 1) != nullptr ? 0 : 1;
}
