#include "host/core/value_text.h"

#include "host/core/host_keys.h"

#include <fmt/format.h>

#include <array>
#include <cctype>
#include <cmath>

namespace vexil::host {

namespace {

/// Never more than ten columns: 64 bits end at 16 EiB.
std::string describeBytes(double value) {
    constexpr std::array units = {"B", "KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    std::size_t unit = 0;
    while (value >= 1024.0 && unit + 1 < units.size()) {
        value /= 1024.0;
        ++unit;
    }
    return unit < 3 ? fmt::format("{:.0f} {}", value, units[unit])
                    : fmt::format("{:.1f} {}", value, units[unit]);
}

struct Unit {
    const char* text;
    std::size_t columns;
};

/// A number that is too long becomes a power of ten, with as many digits as there is room for.
std::string describe(LiveKind kind, double value, int decimals, std::size_t width) {
    if (kind == LiveKind::FreeMemory) {
        return describeBytes(value);
    }
    const auto unit = kind == LiveKind::Temperature ? Unit{" °C", 3} : Unit{" %", 2};
    auto number = fmt::format("{:.{}f}", value, decimals);
    for (int digits = 15; number.size() + unit.columns > width && digits >= 0; --digits) {
        number = fmt::format("{:.{}e}", value, digits);
    }
    return number + unit.text;
}

} // namespace

std::vector<std::pair<std::string, std::string>> describeLive(const LiveValues& live,
                                                              const Language& language) {
    std::vector<std::pair<std::string, std::string>> values;
    for (const auto kind : liveKinds) {
        if (const auto value = valueOf(live, kind)) {
            values.emplace_back(language.text(liveKindKey(kind)), describeValue(kind, *value));
        }
    }
    return values;
}

std::string describeValue(LiveKind kind, double value, std::size_t width) {
    return describe(kind, value, 0, width);
}
std::string describeMean(LiveKind kind, double value, std::size_t width) {
    return describe(kind, value, 1, width);
}

const char* liveKindKey(LiveKind kind) {
    constexpr std::array labels = {keys::temperature, keys::load, keys::freeMemory};
    static_assert(labels.size() == liveKinds.size());
    return labels.at(static_cast<std::size_t>(kind));
}

std::string describeDuration(std::chrono::duration<double> duration) {
    const double seconds = duration.count();
    if (seconds < 0.0995) {
        return fmt::format("{:.0f} ms", seconds * 1000.0);
    }
    if (seconds < 59.95) {
        return fmt::format("{:.1f} s", seconds);
    }
    const auto whole = static_cast<std::int64_t>(std::llround(seconds));
    if (whole < 3600) {
        return fmt::format("{}:{:02} min", whole / 60, whole % 60);
    }
    return fmt::format("{}:{:02}:{:02} h", whole / 3600, whole / 60 % 60, whole % 60);
}

std::string describeCounts(const RunSummary& summary, const Language& language) {
    struct Count {
        std::size_t number;
        const char* key;
    };
    auto text = fmt::format("{} {}", summary.passed, language.text(keys::countPassed));
    for (const auto& [number, key] :
         {Count{summary.failed, keys::countFailed}, Count{summary.cleanupFailed, keys::countCleanupFailed},
          Count{summary.noVerdict, keys::countNoVerdict},
          Count{summary.programErrors, keys::countProgramErrors}, Count{summary.notRun, keys::countNotRun}}) {
        if (number > 0) {
            text += fmt::format(", {} {}", number, language.text(key));
        }
    }
    return text;
}

const char* verdictKey(ExitCode code) {
    switch (code) {
    case ExitCode::AllPassed:
        return keys::verdictPassed;
    case ExitCode::CardFailed:
        return keys::verdictFailed;
    case ExitCode::CleanupFailed:
        return keys::verdictCleanupFailed;
    case ExitCode::InternalError:
        return keys::verdictProgramError;
    default:
        return keys::verdictNone;
    }
}

std::string describeId(const core::DeviceRecord& card, const Language& language) {
    return card.id.empty() ? language.text(keys::cardWithoutId) : card.id;
}

} // namespace vexil::host
