#include "simulated/direct3d/own_folder.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace vexil::simulated {

std::string ownFolder() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&ownFolder), &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    std::error_code error;
    const auto path = std::filesystem::canonical(info.dli_fname, error);
    return error ? std::string() : path.parent_path().string();
}

} // namespace vexil::simulated
