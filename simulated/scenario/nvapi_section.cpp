#include "simulated/scenario/nvapi_section.h"

namespace vexil::simulated {

namespace {

constexpr std::size_t maxSensors = 3;

constexpr const char* libraryFunctions[] = {
    "NvAPI_Initialize",
    "NvAPI_Unload",
    "NvAPI_EnumPhysicalGPUs",
};

constexpr const char* gpuFunctions[] = {
    "NvAPI_GPU_GetBusId",
    "NvAPI_GPU_GetBusSlotId",
    "NvAPI_GPU_GetThermalSettings",
    "NvAPI_GPU_GetMemoryInfo",
    "usage",
};

constexpr const char* allFunctions[] = {
    "NvAPI_Initialize",        "NvAPI_Unload",
    "NvAPI_EnumPhysicalGPUs",  "NvAPI_GPU_GetBusId",
    "NvAPI_GPU_GetBusSlotId",  "NvAPI_GPU_GetThermalSettings",
    "NvAPI_GPU_GetMemoryInfo", "usage",
    "nvapi_QueryInterface",
};

} // namespace

std::optional<NvapiCardSection> readNvapiCard(FieldReader& card, const std::string& location) {
    auto reader = card.object("nvapi");
    if (!reader) {
        return std::nullopt;
    }
    NvapiCardSection section;
    section.bus = readUint32(*reader, "bus").value_or(hexadecimal(location.substr(0, 2)));
    section.slot = readUint32(*reader, "slot").value_or(hexadecimal(location.substr(3, 2)));
    for (auto& sensor : reader->objects("sensors")) {
        section.celsius.push_back(readInt32(sensor, "celsius").value_or(0));
        sensor.finish();
    }
    if (section.celsius.size() > maxSensors) {
        reader->fail("sensors", "NVAPI's record has room for three");
    }
    section.sensorCount = readUint32(*reader, "sensorCount");
    section.usagePercent = readUint32(*reader, "usagePercent");
    section.totalKib = readUint32(*reader, "totalMemoryKib");
    section.freeKib = readUint32(*reader, "freeMemoryKib");
    section.statuses = readStatuses(*reader, gpuFunctions);
    reader->finish();
    return section;
}

NvapiSection readNvapi(FieldReader& scenario) {
    NvapiSection section;
    if (auto reader = scenario.object("nvapi")) {
        section.gpuCount = readUint32(*reader, "gpuCount");
        section.statuses = readStatuses(*reader, libraryFunctions);
        section.missingFunctions = readMissingFunctions(*reader, allFunctions);
        reader->finish();
    }
    return section;
}

} // namespace vexil::simulated
