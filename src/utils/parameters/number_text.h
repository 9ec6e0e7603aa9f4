#pragma once

#include <cstdint>
#include <string>

// Numbers as the parameters read them: leading blanks are skipped, and text after the number is ignored.
namespace vexil::utils {

/// What `strtof` reads. Throws `std::invalid_argument` ("invalid stof argument") where the text does not
/// begin with a number, and `std::out_of_range` ("stof argument out of range") where no float can hold it.
[[nodiscard]] float floatOf(const std::string& text);

/// What `strtol` reads to the base 10. Throws the same exceptions with "stoi" in the place of "stof".
[[nodiscard]] std::int32_t integerOf(const std::string& text);

} // namespace vexil::utils
