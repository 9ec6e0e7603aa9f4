#include "host/core/direct3d_need.h"

#include "platform/library_names.h"
#include "system/win_module.h"

#include <algorithm>
#include <array>

namespace vexil::host {

namespace {

constexpr std::array<std::int32_t, 7> direct3dTests = {1, 3, 17, 18, 4, 5, 21};

} // namespace

std::optional<std::string> missingDirect3dLibrary() {
    // The module's own way of finding a library: what it finds is what counts.
    WinModule loader;
    for (const char* name : {vexil::platform::dxgiLibrary(), vexil::platform::direct3dLibrary()}) {
        void* library = loader.load(name, 0);
        if (library == nullptr) {
            return name;
        }
        loader.release(library);
    }
    return std::nullopt;
}

bool needsDirect3d(std::int32_t testId) {
    return std::ranges::find(direct3dTests, testId) != direct3dTests.end();
}

} // namespace vexil::host
