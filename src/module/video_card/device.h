#pragma once

#include "core/device.h"
#include "module/video_card/adapter_record.h"
#include "module/video_card/cuda/cuda_device_record.h"
#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/statistics/video_card_statistics.h"

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class NumberHandler;
class StringHandler;

namespace vexil::module::video_card {

/// What a device needs from around it while it is being built.
struct DeviceServices {
    StringHandler& strings;
    NumberHandler& numbers;
    std::int32_t
        cudaDriverVersion; ///< as `cudaDriverGetVersion` gives it (11030 for 11.3), 0 without a driver
};

/// One video card. The scanner builds it from what the system list says and attaches what the other
/// interfaces know of it; afterwards only `direct3d` changes, under its mutex.
class Device final : public core::Device {
public:
    /// The mutex of the card's Direct3D slot, held, and the slot itself. A test keeps it for its whole run,
    /// so that no two of them work on one card at a time.
    class Direct3DLock {
    public:
        [[nodiscard]] std::unique_ptr<Dx11Context>& slot() const { return *slot_; }

    private:
        friend class Device;
        Direct3DLock(std::mutex& mutex, std::unique_ptr<Dx11Context>& slot) : lock_(mutex), slot_(&slot) {}

        std::unique_lock<std::mutex> lock_;
        std::unique_ptr<Dx11Context>* slot_;
    };

    /// A record with a poor location gives a device without identity; nothing throws for it.
    Device(const AdapterRecord& adapter, const DeviceServices& services);

    [[nodiscard]] std::string id() const override { return id_; }
    [[nodiscard]] std::string displayName() const override { return displayName_; }
    [[nodiscard]] bool hasUdi() const override { return udi_ != nullptr; }
    [[nodiscard]] std::string udi() const override { return udi_ ? *udi_ : std::string(); }
    [[nodiscard]] std::vector<core::KeyValue> properties() const override { return properties_; }
    [[nodiscard]] std::vector<std::string> notices() const override { return notices_; }
    [[nodiscard]] bool isPresent() const override { return true; }
    void refresh() override {}

    [[nodiscard]] const AdapterRecord& adapter() const { return adapter_; }
    [[nodiscard]] std::vector<core::KeyValue> rows() const { return rows_; }
    [[nodiscard]] Direct3DLock lock() { return {direct3dMutex_, direct3d_}; }
    /// A copy of the context, for callers that hold the lock. Empty members without one.
    [[nodiscard]] Dx11Context dx11Context() const { return direct3d_ ? *direct3d_ : Dx11Context(); }
    /// Null for a card that CUDA does not list.
    [[nodiscard]] const CudaDeviceRecord* cudaRecord() const { return cuda_.get(); }

    void setDirect3D(const Dx11Context& context);
    /// Appends what Direct3D says of the card; nothing without a context.
    void addDirect3DRows();
    void setCuda(const CudaDeviceRecord& record) { cuda_ = std::make_unique<CudaDeviceRecord>(record); }
    void setStatistics(std::unique_ptr<VideoCardStatistics> statistics) {
        statistics_ = std::move(statistics);
    }

    // True if a source answered; the out value counts only then. Units as in `VideoCardStatistics`.
    [[nodiscard]] bool getFreeMemory(std::uint64_t& bytes) const;
    [[nodiscard]] bool getTemperature(std::int64_t& celsius) const;
    [[nodiscard]] bool getUsage(std::uint64_t& percent) const;

private:
    AdapterRecord adapter_;
    std::vector<core::KeyValue> rows_;
    std::unique_ptr<Dx11Context> direct3d_;
    std::mutex direct3dMutex_;
    std::unique_ptr<CudaDeviceRecord> cuda_;
    std::unique_ptr<VideoCardStatistics> statistics_;
    std::vector<std::string> notices_;
};

} // namespace vexil::module::video_card
