#include "simulated/scenario/processor_section.h"

#include "simulated/scenario/field_reader.h"
#include "simulated/scenario/function_names.h"

#include <limits>

namespace vexil::simulated {

namespace {

constexpr std::uint32_t any32 = std::numeric_limits<std::uint32_t>::max();
constexpr std::size_t longestCaption = 255;
constexpr std::uint64_t any64 = std::numeric_limits<std::uint64_t>::max();

std::uint32_t number(FieldReader& reader, const char* field, std::uint32_t most, std::uint32_t fallback) {
    return static_cast<std::uint32_t>(reader.number(field, 0, most, fallback));
}

ScenarioMsr readMsr(FieldReader& reader) {
    ScenarioMsr msr;
    msr.reg = static_cast<std::uint32_t>(reader.number("register", 0, any32));
    msr.value = reader.number("value", 0, any64, 0);
    msr.status = static_cast<std::int32_t>(number(reader, "status", any32, 0));
    reader.finish();
    return msr;
}

ScenarioPciRegister readPciRegister(FieldReader& reader) {
    ScenarioPciRegister pci;
    pci.bus = reader.number("bus", 0, any64, 0);
    pci.device = number(reader, "device", any32, 0);
    pci.function = number(reader, "function", any32, 0);
    pci.offset = static_cast<std::uint32_t>(reader.number("offset", 0, any32));
    pci.value = number(reader, "value", any32, 0);
    pci.status = static_cast<std::int32_t>(number(reader, "status", any32, 0));
    reader.finish();
    return pci;
}

} // namespace

ProcessorSection readProcessorSection(FieldReader& scenario) {
    ProcessorSection section;
    auto reader = scenario.object("processor");
    if (!reader) {
        return section;
    }
    section.vendor = reader->text("vendor", section.vendor);
    if (section.vendor.size() != 12) {
        reader->fail("vendor", "must have 12 characters, is \"" + section.vendor + "\"");
    }
    section.family = number(*reader, "family", 0xF + 0xFF, section.family);
    section.model = number(*reader, "model", 0xFF, section.model);
    section.stepping = number(*reader, "stepping", 0xF, section.stepping);
    if (reader->has("caption")) {
        section.caption = reader->text("caption");
        if (section.caption.empty() || section.caption.size() > longestCaption) {
            reader->fail("caption", "must have 1 to " + std::to_string(longestCaption) +
                                        " characters, is \"" + section.caption + "\"");
        }
    }
    section.captionStatus = static_cast<std::int32_t>(number(*reader, "captionStatus", any32, 0));
    section.listed = reader->flag("listed", section.listed);
    reader->finish();
    return section;
}

DriverServiceSection readDriverServiceSection(FieldReader& scenario) {
    DriverServiceSection section;
    auto reader = scenario.object("driverService");
    if (!reader) {
        return section;
    }
    section.created = reader->flag("created", section.created);
    section.missingFunction = readMissingFunction(*reader, {"CreateVXKService", "DestroyVXKService"});
    section.ready = reader->flag("ready", section.ready);
    if (reader->has("temperatureCelsius")) {
        section.temperatureCelsius = reader->real("temperatureCelsius", -49, 206.5);
    }
    section.maximumCelsius = number(*reader, "maximumCelsius", 0xFF, section.maximumCelsius);
    for (auto& msr : reader->objects("msrs")) {
        section.msrs.push_back(readMsr(msr));
    }
    for (auto& pci : reader->objects("pciRegisters")) {
        section.pciRegisters.push_back(readPciRegister(pci));
    }
    reader->finish();
    return section;
}

} // namespace vexil::simulated
