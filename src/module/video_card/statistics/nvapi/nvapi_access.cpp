#include "module/video_card/statistics/nvapi/nvapi_access.h"

#include <chrono>
#include <thread>

namespace vexil::module::video_card {

namespace nvapi = platform::nvapi;

namespace {

// A call that meets an unload waits for it this long, and then fails.
constexpr int unloadWaits = 10;
constexpr std::chrono::milliseconds unloadWait{100};

constexpr std::uint32_t slotIds[] = {
    nvapi::id::enumPhysicalGpus,   nvapi::id::getBusId,      nvapi::id::getBusSlotId,
    nvapi::id::getThermalSettings, nvapi::id::getMemoryInfo, nvapi::id::unload,
};

} // namespace

NvapiAccess::Status NvapiAccess::loadLibrary() {
    static_assert(std::size(slotIds) == slots);
    library_ = loader_.load(name_, 1);
    if (library_ == nullptr) {
        return nvapi::libraryNotFound;
    }
    const auto query =
        reinterpret_cast<nvapi::QueryInterface>(loader_.resolve(library_, "nvapi_QueryInterface"));
    const auto start =
        query == nullptr ? nullptr : reinterpret_cast<nvapi::Initialize>(query(nvapi::id::initialize));
    if (start == nullptr) {
        return nvapi::noImplementation;
    }
    for (std::size_t slot = 0; slot < slots; ++slot) {
        functions_[slot] = query(slotIds[slot]);
    }
    return start();
}

void NvapiAccess::releaseLibrary() {
    functions_.fill(nullptr);
    if (library_ != nullptr) {
        loader_.release(library_);
        library_ = nullptr;
    }
}

NvapiAccess::Status NvapiAccess::initialize() {
    const std::lock_guard lock(mutex_);
    if (references_ == 0) {
        const auto status = loadLibrary();
        if (status != nvapi::ok) {
            releaseLibrary();
            return status;
        }
    }
    ++references_;
    return nvapi::ok;
}

NvapiAccess::Status NvapiAccess::unload() {
    const std::lock_guard lock(mutex_);
    if (references_ == 0) {
        return nvapi::notInitialized;
    }
    if (references_ > 1) {
        --references_;
        return nvapi::ok;
    }
    // The mark is set before the counter is read, and a call counts itself before it reads the mark: one of
    // the two always sees the other.
    unloading_ = true;
    auto status = nvapi::unloadRefused;
    if (callsInProgress_ == 0) {
        const auto end = reinterpret_cast<nvapi::Unload>(functions_[unloadLibrary]);
        status = end == nullptr ? nvapi::ok : end();
    }
    if (status == nvapi::ok) {
        references_ = 0;
        releaseLibrary();
    }
    unloading_ = false;
    return status;
}

/// Counts the caller among the calls in progress; false if an unload did not end in time.
bool NvapiAccess::enter() {
    for (int waits = 0;; ++waits) {
        ++callsInProgress_;
        if (!unloading_) {
            return true;
        }
        --callsInProgress_;
        if (waits == unloadWaits) {
            return false;
        }
        std::this_thread::sleep_for(unloadWait);
    }
}

template <typename Function, typename... Arguments>
NvapiAccess::Status NvapiAccess::call(Slot slot, Arguments... arguments) {
    if (!enter()) {
        return nvapi::error;
    }
    auto status = nvapi::notInitialized;
    if (references_ > 0) {
        const auto function = reinterpret_cast<Function>(functions_[slot]);
        status = function == nullptr ? nvapi::noImplementation : function(arguments...);
    }
    --callsInProgress_;
    return status;
}

NvapiAccess::Status NvapiAccess::enumPhysicalGpus(std::array<GpuHandle, nvapi::maxGpus>& gpus,
                                                  std::uint32_t& count) {
    return call<nvapi::EnumPhysicalGpus>(enumGpus, gpus.data(), &count);
}

NvapiAccess::Status NvapiAccess::getBusId(GpuHandle gpu, std::uint32_t& bus) {
    return call<nvapi::GetBusNumber>(busId, gpu, &bus);
}

NvapiAccess::Status NvapiAccess::getBusSlotId(GpuHandle gpu, std::uint32_t& slot) {
    return call<nvapi::GetBusNumber>(busSlotId, gpu, &slot);
}

NvapiAccess::Status NvapiAccess::getThermalSettings(GpuHandle gpu, std::uint32_t sensor,
                                                    nvapi::ThermalSettings& settings) {
    return call<nvapi::GetThermalSettings>(thermalSettings, gpu, sensor, &settings);
}

NvapiAccess::Status NvapiAccess::getMemoryInfo(GpuHandle gpu, nvapi::MemoryInfo& info) {
    return call<nvapi::GetMemoryInfo>(memoryInfo, gpu, &info);
}

} // namespace vexil::module::video_card
