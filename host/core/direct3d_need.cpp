#include "host/core/direct3d_need.h"

#include "platform/direct3d_environment.h"
#include "platform/library_names.h"
#include "system/win_module.h"

#include <algorithm>
#include <array>

namespace vexil::host {

namespace {

constexpr std::array<std::int32_t, 7> direct3dTests = {1, 3, 17, 18, 4, 5, 21};

/// Looks in the module's own way: what that finds is what counts.
bool isThere(::Module& loader, const char* name) {
    void* library = system::loadedOrFound(loader, name);
    if (library == nullptr) {
        return false;
    }
    // A stand-in of a simulated machine works through the real library, and says whether it has one.
    const auto hasReal = reinterpret_cast<int (*)()>(loader.resolve(library, "VexilHasRealLibrary"));
    const bool found = hasReal == nullptr || hasReal() != 0;
    loader.release(library);
    return found;
}

} // namespace

std::optional<std::string> missingDirect3dLibrary() {
    if (const char* missing = vexil::platform::prepareDirect3D()) {
        return missing;
    }
    WinModule loader;
    for (const char* name : {vexil::platform::dxgiLibrary(), vexil::platform::direct3dLibrary()}) {
        if (!isThere(loader, name)) {
            return name;
        }
    }
    return std::nullopt;
}

bool needsDirect3d(std::int32_t testId) {
    return std::ranges::find(direct3dTests, testId) != direct3dTests.end();
}

} // namespace vexil::host
