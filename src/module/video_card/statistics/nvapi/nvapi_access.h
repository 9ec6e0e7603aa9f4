#pragma once

#include "core/library_loader.h"
#include "platform/nvapi.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>

namespace vexil::module::video_card {

/// What stands between the module and NVIDIA's driver library: loads it with the first reference, releases it
/// with the last, and knows its functions in between. Every operation answers an NVAPI status; a library or a
/// function that is not there is a normal answer. To be called from any thread.
class NvapiAccess {
public:
    using Status = platform::nvapi::Status;
    using GpuHandle = platform::nvapi::GpuHandle;

    /// Both outlive this object. The loader must find nothing but what a display driver installed.
    NvapiAccess(::Module& loader, const char* library) : loader_(loader), name_(library) {}
    NvapiAccess(const NvapiAccess&) = delete;
    NvapiAccess& operator=(const NvapiAccess&) = delete;
    ~NvapiAccess() = default;

    /// `NvAPI_Initialize`: takes a reference, unless it fails.
    Status initialize();
    /// `NvAPI_Unload`: gives a reference back. The last one stays while other calls are in progress.
    Status unload();

    Status enumPhysicalGpus(std::array<GpuHandle, platform::nvapi::maxGpus>& gpus, std::uint32_t& count);
    Status getBusId(GpuHandle gpu, std::uint32_t& bus);
    Status getBusSlotId(GpuHandle gpu, std::uint32_t& slot);
    Status getThermalSettings(GpuHandle gpu, std::uint32_t sensor,
                              platform::nvapi::ThermalSettings& settings);
    Status getMemoryInfo(GpuHandle gpu, platform::nvapi::MemoryInfo& info);

private:
    enum Slot : std::size_t { enumGpus, busId, busSlotId, thermalSettings, memoryInfo, unloadLibrary, slots };

    Status loadLibrary();
    void releaseLibrary();
    [[nodiscard]] bool enter();
    template <typename Function, typename... Arguments>
    Status call(Slot slot, Arguments... arguments);

    ::Module& loader_;
    const char* name_;
    std::mutex mutex_; ///< of taking and giving back references
    void* library_ = nullptr;
    /// Resolved with the first reference; null for a function that the library lacks.
    std::array<void*, slots> functions_{};
    std::atomic<std::uint32_t> references_{0};
    std::atomic<std::uint32_t> callsInProgress_{0};
    std::atomic<bool> unloading_{false};
};

/// A reference to NVAPI, given back at its end.
class NvapiReference {
public:
    /// Throws the NVAPI status as an `int` if the reference is refused.
    explicit NvapiReference(NvapiAccess& access) : access_(access) {
        if (const int status = access_.initialize(); status != platform::nvapi::ok) {
            throw status;
        }
    }
    NvapiReference(const NvapiReference&) = delete;
    NvapiReference& operator=(const NvapiReference&) = delete;
    ~NvapiReference() { access_.unload(); }

private:
    NvapiAccess& access_;
};

} // namespace vexil::module::video_card
