#pragma once

#include <charconv>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vexil::benchmarks {

/// The number, at least `least`, that stands at `place` of the command line, or `fallback` where it is
/// shorter. Throws `std::invalid_argument` naming what stands there instead.
template <typename Number>
Number numberArgument(int count, char** words, int place, Number fallback, Number least = 1) {
    if (place >= count) {
        return fallback;
    }
    const std::string_view word = words[place];
    Number number{};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size() || number < least) {
        throw std::invalid_argument("'" + std::string(word) + "' is no number here, or too small");
    }
    return number;
}

} // namespace vexil::benchmarks
