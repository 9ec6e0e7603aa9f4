#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vexil::module::video_card {

/// Columns of every table, and threads of a group of the shaders that compute them.
inline constexpr std::size_t mathOpColumns = 5;

/// One operation on five sets of operands. The row number is the shader's group number, the column its
/// thread.
template <typename T>
struct MathOpRow {
    const char* operation;
    std::array<T, mathOpColumns> a;
    std::array<T, mathOpColumns> b;
    std::array<T, mathOpColumns> c;
    std::array<T, mathOpColumns> expected;
};

/// A table as the card gets it: the columns of one kind row after row, each in a block of its own.
template <typename T>
struct MathOpTable {
    std::uint32_t rowCount = 0;
    std::uint32_t valuesPerRow = 0;
    std::vector<T> input0; ///< a
    std::vector<T> input1; ///< b
    std::vector<T> input2; ///< c
    std::vector<T> expected;

    void load(std::span<const MathOpRow<T>> rows) {
        *this = {static_cast<std::uint32_t>(rows.size()), mathOpColumns, {}, {}, {}, {}};
        for (const auto& row : rows) {
            input0.insert(input0.end(), row.a.begin(), row.a.end());
            input1.insert(input1.end(), row.b.begin(), row.b.end());
            input2.insert(input2.end(), row.c.begin(), row.c.end());
            expected.insert(expected.end(), row.expected.begin(), row.expected.end());
        }
    }
};

} // namespace vexil::module::video_card
