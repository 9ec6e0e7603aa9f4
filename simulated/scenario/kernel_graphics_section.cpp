#include "simulated/scenario/kernel_graphics_section.h"

#include "simulated/scenario/field_reader.h"
#include "simulated/scenario/function_names.h"

#include <limits>

namespace vexil::simulated {

namespace {

constexpr std::uint32_t anyStatus = std::numeric_limits<std::uint32_t>::max();
constexpr std::uint64_t any64 = std::numeric_limits<std::uint64_t>::max();
constexpr auto unsuccessful = static_cast<std::int32_t>(0xC0000001); ///< STATUS_UNSUCCESSFUL

std::int32_t status(FieldReader& reader, const char* field) {
    return static_cast<std::int32_t>(reader.number(field, 0, anyStatus, 0));
}

ScenarioEngine readEngine(FieldReader& reader) {
    ScenarioEngine engine;
    engine.loadPercent = reader.has("loadPercent") ? reader.real("loadPercent", 0, 1000) : 0;
    engine.status = status(reader, "status");
    if (reader.has("failsFrom")) {
        engine.failsFrom = reader.number("failsFrom", 1, any64);
        engine.status = reader.has("status") ? engine.status : unsuccessful;
        if (engine.status == 0) {
            reader.fail("status", "must not be 0 beside \"failsFrom\"");
        }
    }
    engine.runningTimes = reader.numbers("runningTimes", 0, any64);
    if (!engine.runningTimes.empty() && reader.has("loadPercent")) {
        reader.fail("runningTimes", "stands instead of \"loadPercent\", not beside it");
    }
    reader.finish();
    return engine;
}

} // namespace

KernelGraphicsLibrarySection readKernelGraphicsLibrary(FieldReader& scenario) {
    KernelGraphicsLibrarySection section;
    if (auto reader = scenario.object("kernelGraphics")) {
        section.missingFunction = readMissingFunction(
            *reader, {"D3DKMTOpenAdapterFromDeviceName", "D3DKMTQueryStatistics", "D3DKMTCloseAdapter"});
        reader->finish();
    }
    return section;
}

KernelGraphicsSection readKernelGraphicsSection(FieldReader& card) {
    KernelGraphicsSection section;
    auto reader = card.object("kernelGraphics");
    if (!reader) {
        section.engines.emplace_back();
        return section;
    }
    section.openStatus = status(*reader, "openStatus");
    section.statisticsStatus = status(*reader, "statisticsStatus");
    if (reader->has("engineCount")) {
        section.engineCount = static_cast<std::uint32_t>(reader->number("engineCount", 0, anyStatus));
    }
    for (auto& engine : reader->objects("engines")) {
        section.engines.push_back(readEngine(engine));
    }
    reader->finish();
    return section;
}

} // namespace vexil::simulated
