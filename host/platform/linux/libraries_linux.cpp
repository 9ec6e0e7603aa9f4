#include "host/platform/libraries.h"

#include <dlfcn.h>

namespace vexil::host::platform {

namespace {

void* open(const std::filesystem::path& file, int scope, std::string& reason) {
    // A bare name would be looked for in the loader's own path instead of where it was found.
    void* library = dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | scope);
    if (library == nullptr) {
        const char* text = dlerror();
        reason = text == nullptr ? "unknown reason" : text;
    }
    return library;
}

} // namespace

const char* moduleFileName() { return "libvxe_module_video_card.so"; }

void* openModule(const std::filesystem::path& file, std::string& reason) {
    return open(file, RTLD_LOCAL, reason);
}

void* openForProcess(const std::filesystem::path& file, std::string& reason) {
    return open(file, RTLD_GLOBAL, reason);
}

const char* hostProgramFileName() { return "libvxe-host-program.so"; }

void* symbolOf(void* library, const char* name) { return dlsym(library, name); }

bool isLibraryFileName(const std::string& name) {
    return name.ends_with(".so") || name.find(".so.") != std::string::npos;
}

} // namespace vexil::host::platform
