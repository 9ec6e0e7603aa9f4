#include "simulated/scenario/scenario_card.h"

#include "simulated/scenario/field_reader.h"

#include <regex>

namespace vexil::simulated {

namespace {

std::string matching(FieldReader& reader, const std::string& field, const char* pattern, const char* form) {
    const auto text = reader.text(field);
    if (!std::regex_match(text, std::regex(pattern))) {
        reader.fail(field, std::string("must be ") + form + ", is \"" + text + "\"");
    }
    return text;
}

std::string decimal(const std::string& digits) { return std::to_string(hexadecimal(digits)); }

} // namespace

std::string ScenarioCard::devicePath() const {
    return "\\\\?\\PCI#VEN_" + vendorId + "&DEV_" + deviceId + "#" + location;
}

std::string ScenarioCard::locationInformation() const {
    return "PCI bus " + decimal(location.substr(0, 2)) + ", device " + decimal(location.substr(3, 2)) +
           ", function " + decimal(location.substr(6));
}

ScenarioCard readScenarioCard(FieldReader& reader, std::size_t place) {
    constexpr const char* digits = "[0-9A-F]{4}";
    constexpr const char* digitsForm = "four upper-case hexadecimal digits";
    ScenarioCard card;
    card.name = reader.text("name", "");
    card.manufacturer = reader.text("manufacturer", "");
    card.vendorId = matching(reader, "vendorId", digits, digitsForm);
    card.deviceId = matching(reader, "deviceId", digits, digitsForm);
    card.location = matching(reader, "location", "[0-9a-f]{2}:[0-9a-f]{2}\\.[0-7]",
                             "a PCI location in the form \"01:00.0\"");
    card.hasInterface = reader.flag("hasInterface", true);
    // Far from what a real adapter of the build machine reports, so that the two are never mixed up.
    card.luid = 0x5E1F'0000'0000ULL + place + 1;
    if (auto section = reader.object("direct3d")) {
        card.direct3d = readDirect3DSection(*section);
    }
    if (auto section = reader.object("cuda")) {
        card.cuda = readCudaCard(*section, card.location);
    }
    return card;
}

} // namespace vexil::simulated
