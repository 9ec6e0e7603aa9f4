#include "utils/accessibility/shcore_library.h"

namespace vexil::utils::accessibility {

namespace {

using SetProcessDpiAwareness = std::int32_t (*)(std::int32_t awareness);
using GetDpiForMonitor = std::int32_t (*)(void* monitor, std::int32_t type, std::uint32_t* x,
                                          std::uint32_t* y);

constexpr std::uint32_t loadFlags = 1; // what every caller of the suite's loader passes
constexpr std::int32_t perMonitorAware = 2;
constexpr std::int32_t effectiveDpi = 0;

} // namespace

ShcoreLibrary::ShcoreLibrary(Module& loader)
    : loader_(loader), library_(loader.load("shcore.dll", loadFlags)) {}

ShcoreLibrary::~ShcoreLibrary() {
    if (library_ != nullptr) {
        loader_.release(library_);
    }
}

void ShcoreLibrary::makeProcessPerMonitorAware() {
    if (library_ == nullptr) {
        return;
    }
    const auto set =
        reinterpret_cast<SetProcessDpiAwareness>(loader_.resolve(library_, "SetProcessDpiAwareness"));
    if (set != nullptr) {
        set(perMonitorAware);
    }
}

std::optional<std::int32_t> ShcoreLibrary::dpiOf(void* monitor) {
    if (library_ == nullptr) {
        return std::nullopt;
    }
    const auto get = reinterpret_cast<GetDpiForMonitor>(loader_.resolve(library_, "GetDpiForMonitor"));
    std::uint32_t x = 0;
    std::uint32_t y = 0;
    if (get == nullptr || get(monitor, effectiveDpi, &x, &y) != 0) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(x);
}

} // namespace vexil::utils::accessibility
