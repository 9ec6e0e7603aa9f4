#pragma once

#include <string>
#include <string_view>

// UTF-8 is the module's narrow text; wide text is UTF-16 on Windows and UTF-32 on Linux. What cannot be
// converted becomes the replacement character.
namespace vexil::platform {

[[nodiscard]] std::wstring toWide(std::string_view utf8);
[[nodiscard]] std::string toUtf8(std::wstring_view wide);

/// UTF-8 to and from the narrow text of the system's own interfaces: the process's code page on Windows,
/// UTF-8 on Linux. What the code page lacks is lost.
[[nodiscard]] std::string toProcessText(std::string_view utf8);
[[nodiscard]] std::string fromProcessText(std::string_view text);

} // namespace vexil::platform
