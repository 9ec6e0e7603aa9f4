#pragma once

#include <cstdint>
#include <cstring>

namespace vexil::tests {

/// A mark of the exact bits of a table of operands and results (rows with `a`, `b`, `c` and `expected`), by
/// which a test notices that one of them has changed: 64-bit FNV-1a over the values, lowest byte first, row
/// after row.
template <typename Rows>
std::uint64_t tableMark(const Rows& rows) {
    std::uint64_t mark = 0xCBF29CE484222325;
    const auto add = [&](const auto& values) {
        for (const auto& value : values) {
            unsigned char bytes[sizeof value];
            std::memcpy(bytes, &value, sizeof value);
            for (const unsigned char octet : bytes) {
                mark = (mark ^ octet) * 0x100000001B3;
            }
        }
    };
    for (const auto& row : rows) {
        add(row.a);
        add(row.b);
        add(row.c);
        add(row.expected);
    }
    return mark;
}

} // namespace vexil::tests
