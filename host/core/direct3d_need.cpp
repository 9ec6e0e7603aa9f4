#include "host/core/direct3d_need.h"

#include "platform/library_names.h"
#include "platform/shared_library.h"

#include <algorithm>
#include <array>

namespace vexil::host {

namespace {

constexpr std::array<std::int32_t, 7> direct3dTests = {1, 3, 17, 18, 4, 5, 21};

} // namespace

std::optional<std::string> missingDirect3dLibrary() {
    for (const char* name : {vexil::platform::dxgiLibrary(), vexil::platform::direct3dLibrary()}) {
        void* library = vexil::platform::openTrustedLibrary(name);
        if (library == nullptr) {
            return name;
        }
        vexil::platform::closeLibrary(library);
    }
    return std::nullopt;
}

bool needsDirect3d(std::int32_t testId) {
    return std::ranges::find(direct3dTests, testId) != direct3dTests.end();
}

} // namespace vexil::host
