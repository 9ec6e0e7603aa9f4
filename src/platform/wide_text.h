#pragma once

#include <string>
#include <string_view>

// UTF-8 is the module's narrow text; wide text is UTF-16 on Windows and UTF-32 on Linux. What cannot be
// converted becomes the replacement character.
namespace vexil::platform {

[[nodiscard]] std::wstring toWide(std::string_view utf8);
[[nodiscard]] std::string toUtf8(std::wstring_view wide);

} // namespace vexil::platform
