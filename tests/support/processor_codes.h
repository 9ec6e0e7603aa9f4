#pragma once

#include <vector>

namespace vexil::tests {

/// Of the versions of a loop, those that this processor can execute: there are no tests of the others here.
/// The plain one is always among them.
template <typename Codes>
auto codesOfThisProcessor(const Codes& codes) {
    std::vector<decltype(codes.data())> supported;
    for (const auto& code : codes) {
        if (code.isSupported()) {
            supported.push_back(&code);
        }
    }
    return supported;
}

} // namespace vexil::tests
