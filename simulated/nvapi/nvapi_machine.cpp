#include "simulated/nvapi/nvapi_machine.h"

#include "platform/nvapi.h"
#include "simulated/current_machine.h"
#include "simulated/scenario/scenario.h"

#include <algorithm>
#include <array>
#include <utility>

namespace vexil::simulated {

namespace nvapi = platform::nvapi;
using nvapi::GpuHandle;
using nvapi::Status;

namespace {

std::shared_ptr<const NvapiMachine> machine() { return CurrentMachine<NvapiMachine>::get(); }

/// Handles are addresses of these bytes, so that a foreign one is told from a GPU's.
std::array<char, nvapi::maxGpus> handles;

/// The GPU of a handle, which stays valid as long as the machine does.
const NvapiCardSection* gpuOf(const NvapiMachine& machine, GpuHandle handle) {
    for (std::size_t index = 0; index < handles.size() && index < machine.gpus.size(); ++index) {
        if (handle == &handles[index]) {
            return &machine.gpus[index];
        }
    }
    return nullptr;
}

template <typename Value, typename Target>
void writeIfTold(const std::optional<Value>& value, Target& target) {
    if (value) {
        target = *value;
    }
}

Status initialize() {
    const auto now = machine();
    const auto status = statusOf(now->library.statuses, "NvAPI_Initialize");
    return status == nvapi::ok && now->gpus.empty() ? nvapi::deviceNotFound : status;
}

Status unload() { return statusOf(machine()->library.statuses, "NvAPI_Unload"); }

Status enumPhysicalGpus(GpuHandle* gpus, std::uint32_t* count) {
    const auto now = machine();
    if (gpus == nullptr || count == nullptr) {
        return nvapi::invalidArgument;
    }
    const auto listed = std::min(now->gpus.size(), handles.size());
    for (std::size_t index = 0; index < listed; ++index) {
        gpus[index] = &handles[index];
    }
    *count = now->library.gpuCount.value_or(static_cast<std::uint32_t>(listed));
    return statusOf(now->library.statuses, "NvAPI_EnumPhysicalGPUs");
}

/// A call that asks a GPU for one record or number.
template <typename Value, typename Write>
Status answer(GpuHandle handle, Value* value, const char* function, Write write) {
    const auto now = machine();
    const auto* gpu = gpuOf(*now, handle);
    if (gpu == nullptr) {
        return nvapi::expectedGpuHandle;
    }
    if (value == nullptr) {
        return nvapi::invalidArgument;
    }
    if constexpr (nvapi::versionOf<Value> != 0) {
        if (value->version != nvapi::versionOf<Value>) {
            return nvapi::incompatibleVersion;
        }
    }
    write(*gpu, *value);
    return statusOf(gpu->statuses, function);
}

Status getBusId(GpuHandle handle, std::uint32_t* bus) {
    return answer(handle, bus, "NvAPI_GPU_GetBusId",
                  [](const NvapiCardSection& gpu, std::uint32_t& value) { writeIfTold(gpu.bus, value); });
}

Status getBusSlotId(GpuHandle handle, std::uint32_t* slot) {
    return answer(handle, slot, "NvAPI_GPU_GetBusSlotId",
                  [](const NvapiCardSection& gpu, std::uint32_t& value) { writeIfTold(gpu.slot, value); });
}

Status getThermalSettings(GpuHandle handle, std::uint32_t sensor, nvapi::ThermalSettings* settings) {
    if (sensor != nvapi::allSensors) {
        return nvapi::invalidArgument;
    }
    return answer(handle, settings, "NvAPI_GPU_GetThermalSettings",
                  [](const NvapiCardSection& gpu, nvapi::ThermalSettings& record) {
                      const auto count = std::min(gpu.celsius.size(), std::size(record.sensors));
                      for (std::size_t index = 0; index < count; ++index) {
                          record.sensors[index].currentTemperature = gpu.celsius[index];
                      }
                      record.count = gpu.sensorCount.value_or(static_cast<std::uint32_t>(count));
                  });
}

Status getMemoryInfo(GpuHandle handle, nvapi::MemoryInfo* info) {
    return answer(handle, info, "NvAPI_GPU_GetMemoryInfo",
                  [](const NvapiCardSection& gpu, nvapi::MemoryInfo& record) {
                      writeIfTold(gpu.totalKib, record.dedicatedVideoMemory);
                      writeIfTold(gpu.totalKib, record.availableDedicatedVideoMemory);
                      writeIfTold(gpu.freeKib, record.curAvailableDedicatedVideoMemory);
                  });
}

Status getUsage(GpuHandle handle, nvapi::Usage* usage) {
    return answer(handle, usage, "usage", [](const NvapiCardSection& gpu, nvapi::Usage& record) {
        writeIfTold(gpu.usagePercent, record.graphicsPercent);
    });
}

struct Function {
    std::uint32_t id;
    const char* name;
    void* address;
};

const Function functions[] = {
    {nvapi::id::initialize, "NvAPI_Initialize", reinterpret_cast<void*>(&initialize)},
    {nvapi::id::unload, "NvAPI_Unload", reinterpret_cast<void*>(&unload)},
    {nvapi::id::enumPhysicalGpus, "NvAPI_EnumPhysicalGPUs", reinterpret_cast<void*>(&enumPhysicalGpus)},
    {nvapi::id::getBusId, "NvAPI_GPU_GetBusId", reinterpret_cast<void*>(&getBusId)},
    {nvapi::id::getBusSlotId, "NvAPI_GPU_GetBusSlotId", reinterpret_cast<void*>(&getBusSlotId)},
    {nvapi::id::getThermalSettings, "NvAPI_GPU_GetThermalSettings",
     reinterpret_cast<void*>(&getThermalSettings)},
    {nvapi::id::getMemoryInfo, "NvAPI_GPU_GetMemoryInfo", reinterpret_cast<void*>(&getMemoryInfo)},
    {nvapi::id::getUsage, "usage", reinterpret_cast<void*>(&getUsage)},
};

} // namespace

NvapiMachine nvapiMachineOf(const Scenario& scenario) {
    NvapiMachine machine{scenario.nvapi, {}};
    for (const auto& card : scenario.cards) {
        if (card.nvapi) {
            machine.gpus.push_back(*card.nvapi);
        }
    }
    return machine;
}

void setNvapiMachine(NvapiMachine newMachine) { CurrentMachine<NvapiMachine>::set(std::move(newMachine)); }

void* queryNvapi(std::uint32_t functionId) {
    const auto found = std::ranges::find(functions, functionId, &Function::id);
    if (found == std::end(functions)) {
        return nullptr;
    }
    const auto now = machine();
    const auto& missing = now->library.missingFunctions;
    return std::ranges::find(missing, found->name) == missing.end() ? found->address : nullptr;
}

} // namespace vexil::simulated
