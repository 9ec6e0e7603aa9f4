#pragma once

#include "core/module.h"

#include <filesystem>
#include <memory>

namespace vexil::host {

/// The loaded module: opened as the suite opens it, through its two exports, and given back and unloaded at
/// the end. Whatever came from the module (tests, weak references to devices, the dispatcher) must be gone
/// before.
class ModuleLibrary {
public:
    /// Throws `HostError` with a line that names the file: a usage error for a file that the user named, else
    /// an internal one.
    ModuleLibrary(const std::filesystem::path& file, bool namedByUser);
    ModuleLibrary(const ModuleLibrary&) = delete;
    ModuleLibrary& operator=(const ModuleLibrary&) = delete;
    ~ModuleLibrary() = default;

    [[nodiscard]] core::Module& module() const { return *module_; }

private:
    struct CloseLibrary {
        void operator()(void* library) const;
    };
    struct DestroyModule {
        void (*destroy)(core::Module*);
        void operator()(core::Module* module) const { destroy(module); }
    };

    std::unique_ptr<void, CloseLibrary> library_;
    std::unique_ptr<core::Module, DestroyModule> module_;
};

} // namespace vexil::host
