#include "system/win_module.h"

#include "platform/shared_library.h"

namespace vexil::system {

namespace {

class PlatformLibraryCalls final : public LibraryCalls {
public:
    void* openTrusted(const std::string& name) override { return platform::openTrustedLibrary(name); }
    void* openPath(const std::string& path) override { return platform::openLibraryPath(path); }
    std::optional<std::string> systemFolder() override { return platform::systemLibraryFolder(); }
    char separator() override { return platform::pathSeparator(); }
};

bool isBareName(const std::string& name) { return name.find_first_of("\\/") == std::string::npos; }

} // namespace

void* findLibrary(LibraryCalls& calls, const std::string& name) {
    if (void* library = calls.openTrusted(name)) {
        return library;
    }
    if (!isBareName(name)) {
        return calls.openPath(name);
    }
    const auto folder = calls.systemFolder();
    return folder ? calls.openPath(*folder + calls.separator() + name) : nullptr;
}

void* loadedOrFound(Module& loader, const std::string& name) {
    if (isBareName(name)) {
        if (void* loaded = platform::loadedLibrary(name)) {
            return loaded;
        }
    }
    return loader.load(name.c_str(), 1);
}

} // namespace vexil::system

void* WinModule::load(const char* name, std::uint32_t) {
    vexil::system::PlatformLibraryCalls calls;
    return vexil::system::findLibrary(calls, name);
}

void* WinModule::resolve(void* library, const char* symbol) {
    return vexil::platform::librarySymbol(library, symbol);
}

void WinModule::release(void* library) { vexil::platform::closeLibrary(library); }

Module* getModule() {
    static Module* module = nullptr;
    if (module == nullptr) {
        module = new WinModule;
    }
    return module;
}
