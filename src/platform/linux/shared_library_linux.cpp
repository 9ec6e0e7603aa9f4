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

constexpr std::string_view pathVariable = "LD_LIBRARY_PATH";

/// The value of the variable as the process started, when the loader read it; a host may have changed it.
std::string readPathAtStart() {
    std::ifstream environment("/proc/self/environ", std::ios::binary);
    for (std::string entry; std::getline(environment, entry, '\0');) {
        if (entry.starts_with(pathVariable) && entry.substr(pathVariable.size()).starts_with('=')) {
            return entry.substr(pathVariable.size() + 1);
        }
    }
    return {};
}

/// The loader reads an empty or relative element of a path as the working directory.
bool holdsWorkingDirectory(std::string_view path) {
    if (path.empty()) {
        return false;
    }
    for (;;) {
        const auto end = path.find_first_of(":;");
        if (isWorkingDirectory(path.substr(0, end))) {
            return true;
        }
        if (end == std::string_view::npos) {
            return false;
        }
        path.remove_prefix(end + 1);
    }
}

bool loaderPathHoldsWorkingDirectory() {
    static const auto atStart = readPathAtStart();
    // Also as it is now: a program that shows a title may have written over what it started with.
    const char* now = std::getenv(pathVariable.data());
    return holdsWorkingDirectory(atStart) || (now != nullptr && holdsWorkingDirectory(now));
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

void* openLibraryPath(const std::string& path) {
    // Without a slash it is a bare name to the loader, though it may hold another system's separator.
    return path.find('/') == std::string::npos ? nullptr : dlopen(path.c_str(), mode);
}

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
