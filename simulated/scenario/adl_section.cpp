#include "simulated/scenario/adl_section.h"

namespace vexil::simulated {

namespace {

constexpr const char* libraryFunctions[] = {
    "ADL_Main_Control_Create",
    "ADL_Main_Control_Destroy",
    "ADL_Adapter_NumberOfAdapters_Get",
    "ADL_Adapter_AdapterInfo_Get",
};

constexpr const char* cardFunctions[] = {
    "ADL2_Overdrive_Caps",        "ADL_Overdrive6_Temperature_Get", "ADL2_OverdriveN_Temperature_Get",
    "ADL_Adapter_MemoryInfo_Get", "ADL2_Adapter_VRAMUsage_Get",
};

constexpr const char* allFunctions[] = {
    "ADL_Main_Control_Create",
    "ADL_Main_Control_Destroy",
    "ADL_Adapter_NumberOfAdapters_Get",
    "ADL_Adapter_AdapterInfo_Get",
    "ADL_Adapter_Active_Get",
    "ADL2_Overdrive_Caps",
    "ADL_Overdrive5_ThermalDevices_Enum",
    "ADL_Overdrive5_Temperature_Get",
    "ADL_Overdrive5_CurrentActivity_Get",
    "ADL_Overdrive6_Temperature_Get",
    "ADL_Overdrive6_CurrentStatus_Get",
    "ADL2_OverdriveN_Temperature_Get",
    "ADL2_OverdriveN_PerformanceStatus_Get",
    "ADL_Adapter_MemoryInfo_Get",
    "ADL2_Adapter_VRAMUsage_Get",
};

AdlAdapter adapterAt(const std::string& location) {
    AdlAdapter adapter;
    adapter.bus = static_cast<std::int32_t>(hexadecimal(location.substr(0, 2)));
    adapter.device = static_cast<std::int32_t>(hexadecimal(location.substr(3, 2)));
    adapter.function = static_cast<std::int32_t>(hexadecimal(location.substr(6)));
    return adapter;
}

AdlAdapter readAdapter(FieldReader& reader, const std::string& location, std::int32_t& nextIndex) {
    auto adapter = adapterAt(location);
    const auto index = readInt32(reader, "index");
    adapter.index = index ? *index : nextIndex++;
    adapter.bus = readInt32(reader, "bus").value_or(adapter.bus);
    adapter.device = readInt32(reader, "device").value_or(adapter.device);
    adapter.function = readInt32(reader, "function").value_or(adapter.function);
    adapter.active = readInt32(reader, "active").value_or(1);
    adapter.activeStatus = readInt32(reader, "activeStatus").value_or(0);
    reader.finish();
    return adapter;
}

AdlThermalController readController(FieldReader& reader) {
    AdlThermalController controller;
    controller.domain = readInt32(reader, "domain");
    controller.enumStatus = readInt32(reader, "enumStatus").value_or(0);
    controller.millidegrees = readInt32(reader, "millidegrees");
    controller.temperatureStatus = readInt32(reader, "temperatureStatus").value_or(0);
    reader.finish();
    return controller;
}

} // namespace

std::optional<AdlCardSection> readAdlCard(FieldReader& card, const std::string& location,
                                          std::int32_t& nextIndex) {
    auto reader = card.object("adl");
    if (!reader) {
        return std::nullopt;
    }
    AdlCardSection section;
    for (auto& adapter : reader->objects("adapters")) {
        section.adapters.push_back(readAdapter(adapter, location, nextIndex));
    }
    if (!reader->has("adapters")) {
        section.adapters.push_back(adapterAt(location));
        section.adapters.back().index = nextIndex++;
    }
    section.overdriveSupported = readInt32(*reader, "overdriveSupported");
    section.overdriveVersion = readInt32(*reader, "overdriveVersion");
    section.millidegrees = readInt32(*reader, "millidegrees");
    for (auto& controller : reader->objects("thermalControllers")) {
        section.thermalControllers.push_back(readController(controller));
    }
    using Limits = std::numeric_limits<std::int64_t>;
    section.memoryBytes = reader->integer("memoryBytes", Limits::min(), Limits::max());
    section.usedMegabytes = readInt32(*reader, "usedMegabytes");
    section.statuses = readStatuses(*reader, cardFunctions);
    reader->finish();
    return section;
}

AdlSection readAdl(FieldReader& scenario) {
    AdlSection section;
    if (auto reader = scenario.object("adl")) {
        section.adapterCount = readInt32(*reader, "adapterCount");
        section.statuses = readStatuses(*reader, libraryFunctions);
        section.missingFunctions = readMissingFunctions(*reader, allFunctions);
        reader->finish();
    }
    return section;
}

} // namespace vexil::simulated
