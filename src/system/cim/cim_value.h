#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace vexil::system {

/// A value of an object's property, as far as its variant type has a text. Texts are already narrow.
using CimValue = std::variant<std::monostate,           // VT_EMPTY, VT_NULL and every type that is not below
                              std::int32_t,             // VT_I4
                              std::int16_t,             // VT_I2
                              std::uint16_t,            // VT_UI2
                              std::uint8_t,             // VT_I1 and VT_UI1, by their byte
                              bool,                     // VT_BOOL
                              std::string,              // VT_BSTR
                              std::vector<std::string>, // VT_ARRAY of VT_BSTR
                              std::vector<std::uint8_t>>; // VT_ARRAY of VT_UI1

/// A text of a row is cut to so many characters, and so is each element of an array of texts.
inline constexpr std::size_t cimTextLimit = 500;

/// The text of a value in the rows of `Cim`. Signed 16-bit numbers and truth values have none there, and the
/// bytes of an array stand in it raw.
[[nodiscard]] std::string cimRowText(const CimValue& value);

/// The text of a value in the map of `WmiQuery`, which knows signed numbers, truth values and texts only.
[[nodiscard]] std::string wmiQueryText(const CimValue& value);

} // namespace vexil::system
