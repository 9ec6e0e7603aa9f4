#include "host/core/facilities.h"

#include "host/core/direct3d_need.h"

namespace vexil::host {

namespace {

constexpr std::int32_t stressTest = 5;
constexpr std::int32_t wireframeStressTest = 21;

} // namespace

bool needsGui(std::int32_t testId) { return testId == stressTest || testId == wireframeStressTest; }

bool needsDisplay(std::int32_t testId) { return testId == stressTest; }

std::optional<std::string> lackOf(std::int32_t testId, const Facilities& facilities) {
    if (facilities.missingDirect3d && needsDirect3d(testId)) {
        return "Direct3D, and '" + *facilities.missingDirect3d + "' cannot be loaded";
    }
    if (!facilities.display && needsDisplay(testId)) {
        return "a display for its window, and none can be reached";
    }
    return std::nullopt;
}

} // namespace vexil::host
