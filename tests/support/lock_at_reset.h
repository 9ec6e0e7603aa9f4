#pragma once

#include "module/video_card/device.h"
#include "module/video_card/direct3d/direct3d_api.h"

#include <chrono>
#include <future>
#include <memory>
#include <utility>
#include <vector>

namespace vexil::tests {

/// In front of the function that makes devices: tries the card's lock in another thread whenever a device is
/// made. One at a time.
class LockAtReset {
public:
    explicit LockAtReset(std::shared_ptr<module::video_card::Device> device)
        : device_(std::move(device)), before_(module::video_card::direct3dApi()) {
        current() = this;
        module::video_card::exchangeDirect3DApi({before_.createFactory, create});
    }
    LockAtReset(const LockAtReset&) = delete;
    LockAtReset& operator=(const LockAtReset&) = delete;
    ~LockAtReset() { module::video_card::exchangeDirect3DApi(before_); }

    /// Of each device made, whether the lock was held for 20 ms of its making.
    [[nodiscard]] const std::vector<bool>& held() const { return held_; }
    /// Whether all those threads came in at last, within 10 s.
    [[nodiscard]] bool isFreeAgain() const {
        for (const auto& other : others_) {
            if (other.wait_for(std::chrono::seconds(10)) != std::future_status::ready) {
                return false;
            }
        }
        return true;
    }

private:
    static LockAtReset*& current() {
        static LockAtReset* watch = nullptr;
        return watch;
    }
    static HRESULT WINAPI create(IDXGIAdapter* adapter, D3D_DRIVER_TYPE driverType, HMODULE software,
                                 UINT flags, const D3D_FEATURE_LEVEL* levels, UINT levelCount, UINT version,
                                 ID3D11Device** device, D3D_FEATURE_LEVEL* level,
                                 ID3D11DeviceContext** context) {
        auto& watch = *current();
        watch.others_.push_back(
            std::async(std::launch::async, [&watch] { const auto lock = watch.device_->lock(); }));
        watch.held_.push_back(watch.others_.back().wait_for(std::chrono::milliseconds(20)) ==
                              std::future_status::timeout);
        return watch.before_.createDevice(adapter, driverType, software, flags, levels, levelCount, version,
                                          device, level, context);
    }

    std::shared_ptr<module::video_card::Device> device_;
    module::video_card::Direct3DApi before_;
    std::vector<bool> held_;
    std::vector<std::future<void>> others_;
};

} // namespace vexil::tests
