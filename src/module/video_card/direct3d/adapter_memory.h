#pragma once

#include <cstdint>

namespace vexil::module::video_card {

class Device;

// The caller holds the card's Direct3D lock, and the card has a context.

/// The memory of the card in bytes, as DXGI tells it: for an Intel card without memory of its own what it
/// shares with the system, for any other its dedicated memory, or the shared one if it has none.
[[nodiscard]] std::uint64_t adapterMemoryBytes(const Device& device);

/// The memory to test in bytes: what is free, or four fifths of the whole where nobody can tell.
[[nodiscard]] std::uint64_t testableBytes(const Device& device);

} // namespace vexil::module::video_card
