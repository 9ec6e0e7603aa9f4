#include "system/win_module.h"

#include <filesystem>

/// library_probe NAME [FOLDER]: ends with 0 if the named library can be loaded, from within the folder if one
/// is given, and with 1 if it cannot.
int main(int count, char** arguments) {
    if (count == 3) {
        std::filesystem::current_path(arguments[2]);
    }
    return count >= 2 && getModule()->load(arguments[1], 1) != nullptr ? 0 : 1;
}
