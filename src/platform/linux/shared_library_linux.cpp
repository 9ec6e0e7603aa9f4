#include "platform/shared_library.h"

#include <dlfcn.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace vexil::platform {

namespace {

constexpr int mode = RTLD_NOW | RTLD_LOCAL;

std::filesystem::path ownFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&ownFolder), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    std::error_code error;
    const auto path = std::filesystem::canonical(info.dli_fname, error);
    return error ? std::filesystem::path{} : path.parent_path();
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
    const auto own = ownFolder();
    if (!own.empty()) {
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
