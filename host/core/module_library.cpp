#include "host/core/module_library.h"

#include "host/core/exit_code.h"
#include "host/core/utf8_path.h"
#include "host/platform/libraries.h"
#include "platform/shared_library.h"

namespace vexil::host {

namespace {

constexpr const char* createExport = "CreateModuleInstance";
constexpr const char* destroyExport = "DestroyModuleInstance";

[[noreturn]] void refuse(const std::filesystem::path& file, bool namedByUser, const std::string& reason) {
    throw HostError(namedByUser ? ExitCode::Usage : ExitCode::InternalError,
                    "the module '" + toUtf8(file) + "' cannot be loaded: " + reason);
}

} // namespace

void ModuleLibrary::CloseLibrary::operator()(void* library) const { vexil::platform::closeLibrary(library); }

ModuleLibrary::ModuleLibrary(const std::filesystem::path& file, bool namedByUser) {
    if (!fileExists(file)) {
        refuse(file, namedByUser, "there is no such file");
    }
    std::string reason;
    library_.reset(platform::openModule(file, reason));
    if (!library_) {
        refuse(file, namedByUser, reason);
    }
    const auto create =
        reinterpret_cast<core::Module* (*)()>(vexil::platform::librarySymbol(library_.get(), createExport));
    const auto destroy = reinterpret_cast<void (*)(core::Module*)>(
        vexil::platform::librarySymbol(library_.get(), destroyExport));
    if (create == nullptr || destroy == nullptr) {
        refuse(file, namedByUser,
               std::string("it does not export ") + (create == nullptr ? createExport : destroyExport));
    }
    core::Module* module = create();
    if (module == nullptr) {
        refuse(file, namedByUser, std::string(createExport) + " gave no module");
    }
    module_ = {module, DestroyModule{destroy}};
}

} // namespace vexil::host
