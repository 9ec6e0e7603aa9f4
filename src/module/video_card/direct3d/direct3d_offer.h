#pragma once

namespace vexil::core {
class Device;
}

// What a test that works through Direct3D asks before it is offered for a card. Both take the card's lock.
namespace vexil::module::video_card {

/// Whether the device is a video card with a Direct3D device.
[[nodiscard]] bool hasDirect3D(core::Device* device);

/// The same, and the adapter is not the one that the system emulates on the processor.
[[nodiscard]] bool hasHardwareDirect3D(core::Device* device);

} // namespace vexil::module::video_card
