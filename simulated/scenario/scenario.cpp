#include "simulated/scenario/scenario.h"

#include <cstdlib>

namespace vexil::simulated {

namespace {

constexpr const char* schema = "vexil.scenario/1";

ScenarioCard readCard(FieldReader& reader, std::size_t place) {
    auto card = readScenarioCard(reader, place);
    card.kernelGraphics = readKernelGraphicsSection(reader);
    reader.finish();
    return card;
}

} // namespace

Scenario loadScenario(const std::string& file) {
    auto reader = readJsonFile(file);
    if (reader.text("schema") != schema) {
        reader.fail("schema", std::string("must be \"") + schema + "\"");
    }
    Scenario scenario;
    scenario.description = reader.text("description", "");
    for (auto& card : reader.objects("cards")) {
        scenario.cards.push_back(readCard(card, scenario.cards.size()));
    }
    scenario.processor = readProcessorSection(reader);
    scenario.driverService = readDriverServiceSection(reader);
    reader.finish();
    return scenario;
}

std::optional<std::string> scenarioFileOfProcess() {
    const char* file = std::getenv("VEXIL_SCENARIO");
    return file == nullptr || *file == '\0' ? std::nullopt : std::optional<std::string>(file);
}

} // namespace vexil::simulated
