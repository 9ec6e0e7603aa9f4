#include "system/win_module.h"

/// Ends with 0 if the named library can be loaded, with 1 if it cannot.
int main(int count, char** arguments) {
    return count == 2 && getModule()->load(arguments[1], 1) != nullptr ? 0 : 1;
}
