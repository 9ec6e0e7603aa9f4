#include "platform/shared_library.h"

#include <dlfcn.h>

#include <array>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace vexil::platform {

namespace {

constexpr int mode = RTLD_NOW | RTLD_LOCAL;

/// The folder of what holds this code, by the kernel's list, which has full paths. The loader's own may be
/// relative, to a working directory of long ago.
std::filesystem::path findOwnFolder() {
    const auto place = reinterpret_cast<std::uintptr_t>(&findOwnFolder);
    std::ifstream ranges("/proc/self/maps");
    for (std::string line; std::getline(ranges, line);) {
        std::uintptr_t first = 0;
        std::uintptr_t end = 0;
        int path = 0;
        if (std::sscanf(line.c_str(), "%" SCNxPTR "-%" SCNxPTR " %*s %*s %*s %*s %n", &first, &end, &path) ==
                2 &&
            first <= place && place < end) {
            return std::filesystem::path(line.substr(static_cast<std::size_t>(path))).parent_path();
        }
    }
    return {};
}

bool isWorkingDirectory(std::string_view element) {
    std::error_code error;
    return element.empty() || element.front() != '/' ||
           std::filesystem::equivalent(element, std::filesystem::current_path(error), error);
}

/// The loader reads an empty or relative element of the path as the working directory.
bool loaderPathHoldsWorkingDirectory() {
    const char* variable = std::getenv("LD_LIBRARY_PATH");
    if (variable == nullptr || *variable == '\0') {
        return false;
    }
    std::string_view rest = variable;
    for (;;) {
        const auto end = rest.find_first_of(":;");
        if (isWorkingDirectory(rest.substr(0, end))) {
            return true;
        }
        if (end == std::string_view::npos) {
            return false;
        }
        rest.remove_prefix(end + 1);
    }
}

} // namespace

void* loadedLibrary(const std::string& name) { return dlopen(name.c_str(), mode | RTLD_NOLOAD); }

void* openTrustedLibrary(const std::string& name) {
    if (name.empty()) {
        return nullptr;
    }
    if (name.find('/') != std::string::npos) {
        return dlopen(name.c_str(), mode);
    }
    // A library that already answers to this name is the one meant, as with the system's loader on Windows.
    if (void* loaded = loadedLibrary(name)) {
        return loaded;
    }
    static const auto own = findOwnFolder();
    if (own.is_absolute()) {
        if (void* library = dlopen((own / name).c_str(), mode)) {
            return library;
        }
    }
    return loaderPathHoldsWorkingDirectory() ? nullptr : dlopen(name.c_str(), mode);
}

void* openLibraryPath(const std::string& path) { return dlopen(path.c_str(), mode); }

std::optional<std::string> systemLibraryFolder() {
    // Debian's folder first, then those of the other families.
    static constexpr std::array folders = {"/usr/lib/x86_64-linux-gnu", "/usr/lib64", "/lib64", "/usr/lib"};
    std::error_code error;
    for (const char* folder : folders) {
        if (std::filesystem::is_directory(folder, error)) {
            return folder;
        }
    }
    return std::nullopt;
}

char pathSeparator() { return '/'; }

void* librarySymbol(void* library, const char* symbol) {
    // A null handle would mean every library of the process.
    return library == nullptr ? nullptr : dlsym(library, symbol);
}

void closeLibrary(void* library) {
    if (library != nullptr) {
        dlclose(library);
    }
}

} // namespace vexil::platform
