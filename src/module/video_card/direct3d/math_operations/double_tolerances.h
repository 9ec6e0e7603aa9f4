#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace vexil::module::video_card {

/// The tolerances of the double tables. They are looked up by the number of the element and not by its row,
/// in a view where the three arrays are one run of memory: the one ULP that was meant for the fourth row goes
/// to the fourth element, and the rows behind it are compared exactly. That is how the comparison is to work.
struct DoubleTolerances {
    std::array<std::int32_t, 4> maxUlps{-1};
    std::array<double, 4> absolute{-1};
    std::array<double, 4> relative{-1};

    // Behind the end of the memory everything is 0.
    [[nodiscard]] constexpr std::int32_t maxUlpsOf(std::size_t element) const {
        const auto words = std::bit_cast<std::array<std::int32_t, 20>>(*this);
        return element < words.size() ? words[element] : 0;
    }
    [[nodiscard]] constexpr double absoluteOf(std::size_t element) const {
        const auto own = absolute.size();
        return element < own ? absolute[element] : relativeOf(element - own);
    }
    [[nodiscard]] constexpr double relativeOf(std::size_t element) const {
        return element < relative.size() ? relative[element] : 0;
    }
};
static_assert(sizeof(DoubleTolerances) == 80);

} // namespace vexil::module::video_card
