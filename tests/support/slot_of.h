#pragma once

#include <cstddef>
#include <cstring>

namespace vexil::tests {

/// The place of a virtual operation in the table of its class, counted from 0; a virtual destructor takes two
/// places. Both homes are built with the C++ ABI that keeps a pointer to a virtual operation as its offset in
/// the table plus one.
template <typename Class, typename Operation>
std::size_t slotOf(Operation Class::*operation) {
    std::size_t words[2];
    static_assert(sizeof(words) == sizeof(operation));
    std::memcpy(words, &operation, sizeof(words));
    return (words[0] - 1) / sizeof(void*);
}

} // namespace vexil::tests
