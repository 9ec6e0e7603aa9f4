#include "platform/linux/kernel_graphics/drm_fdinfo.h"

#include <algorithm>
#include <charconv>

namespace vexil::platform {

namespace {

// The kernel's text format for the use of graphics by clients.
constexpr std::string_view driverKey = "drm-driver";
constexpr std::string_view addressKey = "drm-pdev";
constexpr std::string_view clientKey = "drm-client-id";
constexpr std::string_view capacityPrefix = "drm-engine-capacity-";
constexpr std::string_view timePrefix = "drm-engine-";
constexpr std::string_view cyclesPrefix = "drm-cycles-";
constexpr std::string_view totalCyclesPrefix = "drm-total-cycles-";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    const auto last = text.find_last_not_of(" \t");
    return first == std::string_view::npos ? std::string_view{} : text.substr(first, last - first + 1);
}

/// The number that the text begins with; a unit may follow.
std::optional<std::uint64_t> number(std::string_view text) {
    std::uint64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() ? std::optional(value) : std::nullopt;
}

void readEngineLine(DrmFdInfo& info, std::string_view key, std::uint64_t value) {
    const auto use = [&](std::string_view prefix) -> EngineUse& {
        return info.engines[std::string(key.substr(prefix.size()))];
    };
    if (key.starts_with(capacityPrefix)) {
        use(capacityPrefix).capacity = value == 0 ? 1 : value;
    } else if (key.starts_with(timePrefix)) {
        use(timePrefix).nanoseconds = value;
    } else if (key.starts_with(totalCyclesPrefix)) {
        use(totalCyclesPrefix).totalCycles = value;
    } else if (key.starts_with(cyclesPrefix)) {
        use(cyclesPrefix).cycles = value;
    }
}

} // namespace

std::optional<DrmFdInfo> parseDrmFdInfo(std::string_view text) {
    DrmFdInfo info;
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const auto colon = line.find(':');
        if (colon == std::string_view::npos) {
            continue;
        }
        const auto key = trimmed(line.substr(0, colon));
        const auto value = trimmed(line.substr(colon + 1));
        if (key == driverKey) {
            info.driver = value;
        } else if (key == addressKey) {
            info.pciAddress = value;
        } else if (const auto count = number(value); count && key == clientKey) {
            info.clientId = *count;
        } else if (count) {
            readEngineLine(info, key, *count);
        }
    }
    return info.driver.empty() ? std::nullopt : std::optional(std::move(info));
}

} // namespace vexil::platform
