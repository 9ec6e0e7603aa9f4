#pragma once

#include <string>
#include <string_view>

// UTF-8 is the module's narrow text; Windows wants UTF-16. Characters that cannot be converted become the
// replacement character.
namespace vexil::platform {

[[nodiscard]] std::wstring toWide(std::string_view utf8);
[[nodiscard]] std::string toUtf8(std::wstring_view wide);

} // namespace vexil::platform
