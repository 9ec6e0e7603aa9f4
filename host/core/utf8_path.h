#pragma once

#include <filesystem>
#include <string>
#include <system_error>

// Text is UTF-8 throughout the host. A path made from a plain string would be read in the system's own
// encoding, which on Windows is another one.
namespace vexil::host {

[[nodiscard]] inline std::filesystem::path pathFromUtf8(const std::string& text) {
    return {std::u8string(text.begin(), text.end())};
}

[[nodiscard]] inline std::string toUtf8(const std::filesystem::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

/// False also for a name that the system cannot even look for, such as one that is too long.
[[nodiscard]] inline bool fileExists(const std::filesystem::path& file) {
    std::error_code ignored;
    return std::filesystem::exists(file, ignored);
}

} // namespace vexil::host
