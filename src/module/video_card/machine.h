#pragma once

#include "module/video_card/adapter_record.h"
#include "module/video_card/cuda/cuda_device_record.h"
#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/statistics/statistics_sources.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class NumberHandler;
class StringHandler;
class SystemDeviceList;

namespace vexil::module::video_card {

/// Everything outside the module that a scan asks. Tests put a machine of their own in its place.
class Machine {
public:
    virtual ~Machine() = default;

    /// The system device list, for as long as it is not given back.
    virtual SystemDeviceList* acquireDeviceList() = 0;
    virtual void releaseDeviceList() = 0;
    virtual StringHandler& strings() = 0;
    virtual NumberHandler& numbers() = 0;

    /// The library that knows the LUIDs of device paths, or null.
    virtual void* loadKernelGraphics() = 0;
    virtual void unloadKernelGraphics(void* library) = 0;
    /// The LUID of a device path, high word in the upper half; 0 if it cannot be told.
    virtual std::uint64_t adapterLuid(void* kernelGraphics, const std::string& devicePath) = 0;

    /// One CIM query for one property, in "ROOT\CIMV2". False unless it succeeded; the value may be empty.
    virtual bool queryCim(const char* property, const std::string& where, const char* className,
                          std::string& value) = 0;

    /// As `cudaDriverGetVersion` gives it, 0 without a driver.
    virtual std::int32_t cudaDriverVersion() = 0;
    virtual std::vector<CudaDeviceRecord> cudaDevices() = 0;
    virtual std::vector<Dx11Context> direct3dContexts() = 0;
    virtual StatisticsScans statisticsScans(const std::vector<AdapterRecord>& adapters) = 0;
};

/// The machine that the module runs on. Lives as long as the process.
[[nodiscard]] Machine& systemMachine();

} // namespace vexil::module::video_card
