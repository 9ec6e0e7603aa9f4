#pragma once

#include "module/video_card/device.h"

namespace vexil::module::video_card {

/// Gives the card a fresh Direct3D device on every way out of a test, so that nothing a test leaves behind
/// reaches the next one. Declared behind the lock, in front of all that the test makes on the device.
class Dx11ResetGuard {
public:
    /// The slot of `lock` is not empty. The lock outlives the guard.
    explicit Dx11ResetGuard(const Device::Direct3DLock& lock) : lock_(lock) {}
    Dx11ResetGuard(const Dx11ResetGuard&) = delete;
    Dx11ResetGuard& operator=(const Dx11ResetGuard&) = delete;
    /// Ends the process if the card gives no new device: there is nothing left that a test could run on.
    ~Dx11ResetGuard();

private:
    const Device::Direct3DLock& lock_;
};

} // namespace vexil::module::video_card
