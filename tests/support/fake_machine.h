#pragma once

#include "core/sal.h"
#include "module/video_card/machine.h"
#include "text_handlers.h"

#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace vexil::tests {

/// A device as the system list of a test describes it. A missing property is one that cannot be read.
struct FakeDevice {
    std::map<std::uint32_t, std::string> properties;
    std::vector<std::string> paths; ///< with at least one, the device has a display interface

    /// A display controller with everything that the module asks for.
    static FakeDevice displayController(const std::string& name, const std::string& manufacturer,
                                        const std::string& vendorId, unsigned bus) {
        using namespace std::string_literals;
        return {{{0, name},
                 {1, "PCI\\VEN_" + vendorId + "&DEV_1C03&SUBSYS_00000000&REV_A1\0"s},
                 {2, "PCI\\VEN_" + vendorId + "\0PCI\\CC_030000\0PCI\\CC_0300\0"s},
                 {11, manufacturer},
                 {13, "PCI bus " + std::to_string(bus) + ", device 0, function 0"}},
                {}};
    }
};

class FakeDeviceList final : public SystemDeviceList {
public:
    std::vector<FakeDevice> devices;
    std::int32_t interfaceScanStatus = 0;
    std::int32_t plainScanStatus = 0;
    std::vector<WinDeviceScanFilter> filters; ///< of the scans so far
    std::function<void()> onScan;             ///< called at the start of each scan, if there is one

    std::int32_t scan(const DeviceScanFilter& filter, InterfacePaths& paths) override {
        const auto& restriction = dynamic_cast<const WinDeviceScanFilter&>(filter);
        filters.push_back(restriction);
        if (onScan) {
            onScan();
        }
        const bool interfacesOnly = restriction.interfaceGuid != DeviceGuid();
        const auto status = interfacesOnly ? interfaceScanStatus : plainScanStatus;
        if (status != 0) {
            return status;
        }
        listed_.clear();
        for (const auto& device : devices) {
            if (interfacesOnly && device.paths.empty()) {
                continue;
            }
            if (interfacesOnly) {
                paths[static_cast<std::uint32_t>(listed_.size())] = device.paths;
            }
            listed_.push_back(&device);
        }
        return 0;
    }

    std::int32_t property(std::uint32_t index, std::uint32_t id, const char*& text) override {
        const auto found = listed_.at(index)->properties.find(id);
        if (found == listed_.at(index)->properties.end()) {
            return 1;
        }
        text = found->second.c_str();
        return 0;
    }

    std::uint32_t count() override { return static_cast<std::uint32_t>(listed_.size()); }

private:
    std::vector<const FakeDevice*> listed_;
};

class FakeMachine final : public module::video_card::Machine {
public:
    FakeDeviceList list;
    std::map<std::string, std::uint64_t> luids;
    std::vector<module::video_card::CudaDeviceRecord> cuda;
    std::vector<module::video_card::Dx11Context> contexts;
    std::int32_t cudaVersion = 0;
    module::video_card::StatisticsScans scans;
    /// Answers a CIM condition; nothing for one that fails.
    std::map<std::string, std::string> cim;
    std::vector<std::string> cimConditions; ///< asked so far
    bool hasKernelGraphics = true;
    bool loadFails = false;
    std::vector<std::string> calls;                                 ///< in order, without those of CIM
    std::vector<module::video_card::AdapterRecord> statisticsCards; ///< told to the statistics scans last
    std::function<void()> onRelease; ///< called when the device list is given back, if there is one

    SystemDeviceList* acquireDeviceList() override {
        calls.emplace_back("acquire list");
        return &list;
    }
    void releaseDeviceList() override {
        calls.emplace_back("release list");
        if (onRelease) {
            onRelease();
        }
    }
    StringHandler& strings() override { return strings_; }
    NumberHandler& numbers() override { return numbers_; }
    void* loadKernelGraphics() override {
        calls.emplace_back("load library");
        if (loadFails) {
            throw std::runtime_error("no memory");
        }
        return hasKernelGraphics ? &list : nullptr;
    }
    void unloadKernelGraphics(void*) override { calls.emplace_back("unload library"); }
    std::uint64_t adapterLuid(void* kernelGraphics, const std::string& path) override {
        const auto found = luids.find(path);
        return kernelGraphics == nullptr || found == luids.end() ? 0 : found->second;
    }
    bool queryCim(const char* property, const std::string& where, const char* className,
                  std::string& value) override {
        cimConditions.push_back(std::string(className) + "." + property + " where " + where);
        const auto found = cim.find(where);
        if (found == cim.end()) {
            return false;
        }
        value = found->second;
        return true;
    }
    std::int32_t cudaDriverVersion() override { return cudaVersion; }
    std::vector<module::video_card::CudaDeviceRecord> cudaDevices() override {
        calls.emplace_back("CUDA");
        return cuda;
    }
    std::vector<module::video_card::Dx11Context> direct3dContexts() override {
        calls.emplace_back("Direct3D");
        return contexts;
    }
    module::video_card::StatisticsScans
    statisticsScans(const std::vector<module::video_card::AdapterRecord>& adapters) override {
        calls.emplace_back("statistics");
        statisticsCards = adapters;
        return scans;
    }

private:
    sal::TextHandler strings_;
    sal::NumberText numbers_;
};

} // namespace vexil::tests
