#pragma once

#include "core/library_loader.h"

#include <optional>
#include <string>

namespace vexil::system {

/// The steps that finding a library is made of; see `platform/shared_library.h`.
class LibraryCalls {
public:
    virtual ~LibraryCalls() = default;
    virtual void* openTrusted(const std::string& name) = 0;
    virtual void* openPath(const std::string& path) = 0;
    virtual std::optional<std::string> systemFolder() = 0;
    virtual char separator() = 0;
};

/// Finds a library without picking up a planted copy: a bare name is looked for in trusted folders and then,
/// by its full path, in the system folder; a name with "\" or "/" anywhere is a path and may be opened as
/// one. Null if it is nowhere.
[[nodiscard]] void* findLibrary(LibraryCalls& calls, const std::string& name);

/// The library that answers to a bare name in this process already, else the one that `loader` finds. So a
/// stand-in that the host loaded comes into its place, which the loader by itself may pass by.
[[nodiscard]] void* loadedOrFound(Module& loader, const std::string& name);

} // namespace vexil::system

/// The module's own loader, over the platform's. `flags` is taken and ignored.
class WinModule final : public Module {
public:
    void* load(const char* name, std::uint32_t flags) override;
    void* resolve(void* library, const char* symbol) override;
    void release(void* library) override;
};

/// The module-wide loader, made on the first request and never destroyed. There is no lock around the making:
/// the first request comes from the constructor of the device scanner, on the host's thread.
[[nodiscard]] Module* getModule();
