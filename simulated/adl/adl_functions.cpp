#include "simulated/adl/adl_functions.h"

#include "simulated/adl/adl_machine.h"

#include <algorithm>
#include <cstring>

namespace vexil::simulated::adl_functions {

namespace {

struct Found {
    const AdlCardSection* card = nullptr;
    const AdlAdapter* adapter = nullptr;
};

Found findAdapter(const AdlMachine& machine, std::int32_t index) {
    for (const auto& card : machine.cards) {
        const auto adapter = std::ranges::find(card.adapters, index, &AdlAdapter::index);
        if (adapter != card.adapters.end()) {
            return {&card, &*adapter};
        }
    }
    return {};
}

std::size_t countAdapters(const AdlMachine& machine) {
    std::size_t count = 0;
    for (const auto& card : machine.cards) {
        count += card.adapters.size();
    }
    return count;
}

/// A call that asks a card for one value.
template <typename Value, typename Target>
adl::Status answer(std::int32_t index, Target* target, std::optional<Value> AdlCardSection::*value,
                   const char* function) {
    const auto now = adlMachine();
    const auto* card = findAdapter(*now, index).card;
    if (card == nullptr) {
        return adl::invalidAdapterIndex;
    }
    if (target == nullptr) {
        return adl::nullPointer;
    }
    if (card->*value) {
        *target = *(card->*value);
    }
    return statusOf(card->statuses, function);
}

/// The controller of an Overdrive 5 card, or null if it has none of that number.
const AdlThermalController* findController(const AdlMachine& machine, std::int32_t index,
                                           std::int32_t controller) {
    const auto* card = findAdapter(machine, index).card;
    const auto place = static_cast<std::size_t>(controller);
    return card != nullptr && controller >= 0 && place < card->thermalControllers.size()
               ? &card->thermalControllers[place]
               : nullptr;
}

adl::AdapterInfo describe(const AdlAdapter& adapter) {
    adl::AdapterInfo info{};
    info.iSize = sizeof(info);
    info.iAdapterIndex = adapter.index;
    info.iBusNumber = adapter.bus;
    info.iDeviceNumber = adapter.device;
    info.iFunctionNumber = adapter.function;
    info.iVendorID = 1002; // AMD writes its vendor id in decimal digits here
    info.iPresent = 1;
    info.iExist = 1;
    std::strcpy(info.strAdapterName, "Simulated adapter");
    return info;
}

} // namespace

adl::Status mainControlCreate(adl::Allocate allocate, std::int32_t) {
    return allocate == nullptr ? adl::nullPointer
                               : statusOf(adlMachine()->library.statuses, "ADL_Main_Control_Create");
}

adl::Status mainControlDestroy() {
    return statusOf(adlMachine()->library.statuses, "ADL_Main_Control_Destroy");
}

adl::Status numberOfAdaptersGet(std::int32_t* count) {
    if (count == nullptr) {
        return adl::nullPointer;
    }
    const auto now = adlMachine();
    *count = now->library.adapterCount.value_or(static_cast<std::int32_t>(countAdapters(*now)));
    return statusOf(now->library.statuses, "ADL_Adapter_NumberOfAdapters_Get");
}

adl::Status adapterInfoGet(adl::AdapterInfo* adapters, std::int32_t bytes) {
    if (adapters == nullptr) {
        return adl::nullPointer;
    }
    if (bytes < 0) {
        return adl::invalidParameterSize;
    }
    const auto room = static_cast<std::size_t>(bytes) / sizeof(adl::AdapterInfo);
    const auto now = adlMachine();
    std::size_t written = 0;
    for (const auto& card : now->cards) {
        for (const auto& adapter : card.adapters) {
            if (written < room) {
                adapters[written++] = describe(adapter);
            }
        }
    }
    return statusOf(now->library.statuses, "ADL_Adapter_AdapterInfo_Get");
}

adl::Status activeGet(std::int32_t index, std::int32_t* active) {
    const auto now = adlMachine();
    const auto* adapter = findAdapter(*now, index).adapter;
    if (adapter == nullptr) {
        return adl::invalidAdapterIndex;
    }
    if (active == nullptr) {
        return adl::nullPointer;
    }
    *active = adapter->active;
    return adapter->activeStatus;
}

adl::Status overdriveCaps(adl::ContextHandle, std::int32_t index, std::int32_t* supported,
                          std::int32_t* enabled, std::int32_t* version) {
    if (supported == nullptr || enabled == nullptr) {
        return adl::nullPointer;
    }
    const auto now = adlMachine();
    const auto* card = findAdapter(*now, index).card;
    if (card != nullptr && card->overdriveSupported) {
        *supported = *card->overdriveSupported;
        *enabled = *card->overdriveSupported;
    }
    return answer(index, version, &AdlCardSection::overdriveVersion, "ADL2_Overdrive_Caps");
}

adl::Status overdrive5ThermalDevicesEnum(std::int32_t index, std::int32_t number,
                                         adl::ThermalControllerInfo* info) {
    const auto now = adlMachine();
    const auto* controller = findController(*now, index, number);
    if (controller == nullptr) {
        return adl::invalidParameter;
    }
    if (info == nullptr) {
        return adl::nullPointer;
    }
    info->iThermalDomain = controller->domain.value_or(info->iThermalDomain);
    return controller->enumStatus;
}

adl::Status overdrive5TemperatureGet(std::int32_t index, std::int32_t number, adl::Temperature* temperature) {
    const auto now = adlMachine();
    const auto* controller = findController(*now, index, number);
    if (controller == nullptr) {
        return adl::invalidParameter;
    }
    if (temperature == nullptr) {
        return adl::nullPointer;
    }
    temperature->iTemperature = controller->millidegrees.value_or(temperature->iTemperature);
    return controller->temperatureStatus;
}

adl::Status overdrive6TemperatureGet(std::int32_t index, std::int32_t* millidegrees) {
    return answer(index, millidegrees, &AdlCardSection::millidegrees, "ADL_Overdrive6_Temperature_Get");
}

adl::Status overdriveNTemperatureGet(adl::ContextHandle, std::int32_t index, std::int32_t kind,
                                     std::int32_t* millidegrees) {
    return kind != adl::coreTemperature ? adl::invalidParameter
                                        : answer(index, millidegrees, &AdlCardSection::millidegrees,
                                                 "ADL2_OverdriveN_Temperature_Get");
}

adl::Status memoryInfoGet(std::int32_t index, adl::MemoryInfo* info) {
    return answer(index, info == nullptr ? nullptr : &info->iMemorySize, &AdlCardSection::memoryBytes,
                  "ADL_Adapter_MemoryInfo_Get");
}

adl::Status vramUsageGet(adl::ContextHandle, std::int32_t index, std::int32_t* megabytes) {
    return answer(index, megabytes, &AdlCardSection::usedMegabytes, "ADL2_Adapter_VRAMUsage_Get");
}

adl::Status uncalled() { return adl::notSupported; }

namespace {

struct Entry {
    std::string_view name;
    void* address;
};

template <typename Function>
void* address(Function* function) {
    return reinterpret_cast<void*>(function);
}

const Entry table[] = {
    {"ADL_Main_Control_Create", address(mainControlCreate)},
    {"ADL_Main_Control_Destroy", address(mainControlDestroy)},
    {"ADL_Adapter_NumberOfAdapters_Get", address(numberOfAdaptersGet)},
    {"ADL_Adapter_AdapterInfo_Get", address(adapterInfoGet)},
    {"ADL_Adapter_Active_Get", address(activeGet)},
    {"ADL2_Overdrive_Caps", address(overdriveCaps)},
    {"ADL_Overdrive5_ThermalDevices_Enum", address(overdrive5ThermalDevicesEnum)},
    {"ADL_Overdrive5_Temperature_Get", address(overdrive5TemperatureGet)},
    {"ADL_Overdrive5_CurrentActivity_Get", address(uncalled)},
    {"ADL_Overdrive6_Temperature_Get", address(overdrive6TemperatureGet)},
    {"ADL_Overdrive6_CurrentStatus_Get", address(uncalled)},
    {"ADL2_OverdriveN_Temperature_Get", address(overdriveNTemperatureGet)},
    {"ADL2_OverdriveN_PerformanceStatus_Get", address(uncalled)},
    {"ADL_Adapter_MemoryInfo_Get", address(memoryInfoGet)},
    {"ADL2_Adapter_VRAMUsage_Get", address(vramUsageGet)},
};

} // namespace

void* find(std::string_view name) {
    const auto found = std::ranges::find(table, name, &Entry::name);
    const auto now = adlMachine();
    const auto& missing = now->library.missingFunctions;
    return found == std::end(table) || std::ranges::find(missing, name) != missing.end() ? nullptr
                                                                                         : found->address;
}

} // namespace vexil::simulated::adl_functions
