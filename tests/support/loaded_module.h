#pragma once

#include "core/module.h"
#include "platform/shared_library.h"

#include <stdexcept>
#include <string>

namespace vexil::tests {

/// The module as a host gets it: the library opened by its file, and its two exports.
class LoadedModule {
public:
    explicit LoadedModule(const std::string& file) : library_(platform::openLibraryPath(file)) {
        if (library_ == nullptr) {
            throw std::runtime_error("cannot load " + file);
        }
        create_ = reinterpret_cast<Create>(platform::librarySymbol(library_, "CreateModuleInstance"));
        destroy_ = reinterpret_cast<Destroy>(platform::librarySymbol(library_, "DestroyModuleInstance"));
    }
    LoadedModule(const LoadedModule&) = delete;
    LoadedModule& operator=(const LoadedModule&) = delete;
    ~LoadedModule() { platform::closeLibrary(library_); }

    [[nodiscard]] core::Module* create() const { return create_(); }
    void destroy(core::Module* module) const { destroy_(module); }

private:
    using Create = core::Module* (*)();
    using Destroy = void (*)(core::Module*);

    void* library_;
    Create create_ = nullptr;
    Destroy destroy_ = nullptr;
};

} // namespace vexil::tests
