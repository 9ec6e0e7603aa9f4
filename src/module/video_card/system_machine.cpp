#include "core/sal.h"
#include "module/video_card/cuda/cuda_devices.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "module/video_card/machine.h"
#include "module/video_card/statistics/adl/adl_scanner.h"
#include "module/video_card/statistics/d3dkmt/d3dkmt_device_statistics.h"
#include "module/video_card/statistics/intel/intel_device_statistics.h"
#include "module/video_card/statistics/nvapi/nvapi_scanner.h"
#include "platform/kernel_graphics.h"
#include "platform/library_names.h"
#include "platform/wide_text.h"
#include "system/cim/wmi_query.h"
#include "system/win_module.h"

#include <map>

namespace vexil::module::video_card {

namespace {

namespace d3dkmt = platform::d3dkmt;

/// The functions that tell the LUID of a device path. Missing ones are null.
struct LuidFunctions {
    d3dkmt::OpenAdapterFromDeviceNameFunction open = nullptr;
    d3dkmt::CloseAdapterFunction close = nullptr;
};

LuidFunctions lookUpLuidFunctions() {
    // A reference of its own, never given back: the functions are remembered for the process, the scanner's
    // library only for as long as the scanner.
    void* library = getModule()->load(platform::kernelGraphicsLibrary(), 1);
    if (library == nullptr) {
        return {};
    }
    return {
        reinterpret_cast<d3dkmt::OpenAdapterFromDeviceNameFunction>(
            getModule()->resolve(library, "D3DKMTOpenAdapterFromDeviceName")),
        reinterpret_cast<d3dkmt::CloseAdapterFunction>(getModule()->resolve(library, "D3DKMTCloseAdapter"))};
}

class SystemMachine final : public Machine {
public:
    SystemDeviceList* acquireDeviceList() override { return get_device_scanner(); }
    void releaseDeviceList() override { release_device_scanner(); }
    StringHandler& strings() override { return *get_string_handler(); }
    NumberHandler& numbers() override { return *get_number_handler(); }

    void* loadKernelGraphics() override { return getModule()->load(platform::kernelGraphicsLibrary(), 1); }
    void unloadKernelGraphics(void* library) override { getModule()->release(library); }

    std::uint64_t adapterLuid(void* kernelGraphics, const std::string& devicePath) override {
        if (kernelGraphics == nullptr) {
            return 0;
        }
        static const LuidFunctions functions = lookUpLuidFunctions();
        const auto path = platform::toWide(devicePath);
        d3dkmt::OpenAdapterFromDeviceName request{path.c_str(), 0, {}};
        if (functions.open == nullptr || functions.open(&request) < 0) {
            return 0;
        }
        if (functions.close != nullptr) {
            const d3dkmt::CloseAdapter opened{request.adapter};
            functions.close(&opened);
        }
        const auto high = static_cast<std::uint32_t>(request.adapterLuid.highPart);
        return std::uint64_t{high} << 32 | request.adapterLuid.lowPart;
    }

    bool queryCim(const char* property, const std::string& where, const char* className,
                  std::string& value) override {
        std::map<std::string, std::string> values;
        const char* const properties[] = {property};
        system::WmiQuery query;
        if (query.query(properties, where.c_str(), className, 1, values, system::machineNamespace) !=
            system::CimStatus::Success) {
            return false;
        }
        value = values[property];
        return true;
    }

    std::int32_t cudaDriverVersion() override {
        std::int32_t version = 0;
        CudaRuntime::instance().cudaDriverGetVersion(&version);
        return version;
    }
    std::vector<CudaDeviceRecord> cudaDevices() override {
        CudaRuntime& cuda = CudaRuntime::instance();
        const CudaListing listing{
            [&](std::int32_t& count) { return cuda.cudaGetDeviceCount(&count) == cudaSuccess; },
            [&](std::int32_t index, PciBusIdText& text) {
                return cuda.cudaDeviceGetPCIBusId(text.data(), static_cast<int>(text.size()), index) ==
                       cudaSuccess;
            }};
        return listCudaDevices(listing, strings());
    }
    std::vector<Dx11Context> direct3dContexts() override { return createAllDx11Contexts(); }
    StatisticsScans statisticsScans(const std::vector<AdapterRecord>& adapters) override {
        StatisticsScans scans;
        scans.adl = [](StatisticsSources& sources) { ADLDeviceStatisticsScanner().scan(sources); };
        scans.nvapi = [](StatisticsSources& sources) { NvapiDeviceStatisticsScanner().scan(sources); };
        scans.intel = [](StatisticsSources& sources) { IntelDeviceStatisticsScanner().scan(sources); };
        scans.d3dkmt = [adapters](StatisticsSources& sources) {
            D3DKMTDeviceStatisticsScanner(adapters).scan(sources);
        };
        return scans;
    }
};

} // namespace

Machine& systemMachine() {
    static SystemMachine machine;
    return machine;
}

} // namespace vexil::module::video_card
