#pragma once

#include <cstdint>
#include <string>

namespace vexil::core {

/// What a test tells the host's reporter. `key` is a message key for the host to translate, never display
/// text.
struct TestMessage {
    std::uint8_t kind = 0;
    std::string key;
};

} // namespace vexil::core
