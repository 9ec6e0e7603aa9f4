#include "simulated/scenario/scenario.h"

#include "platform/environment.h"

#include <algorithm>
#include <utility>

namespace vexil::simulated {

namespace {

constexpr std::string_view nvapiExport = "nvapi_QueryInterface"; // the others are found through it
constexpr const char* schema = "vexil.scenario/1";

ScenarioCard readCard(FieldReader& reader, std::size_t place, std::int32_t& nextAdlIndex) {
    auto card = readScenarioCard(reader, place);
    card.adl = readAdlCard(reader, card.location, nextAdlIndex);
    card.nvapi = readNvapiCard(reader, card.location);
    card.kernelGraphics = readKernelGraphicsSection(reader);
    reader.finish();
    return card;
}

} // namespace

std::vector<std::string> missingExports(const Scenario& scenario) {
    std::vector<std::string> functions;
    for (const auto& function :
         {scenario.kernelGraphics.missingFunction, scenario.driverService.missingFunction}) {
        if (!function.empty()) {
            functions.push_back(function);
        }
    }
    if (std::ranges::find(scenario.nvapi.missingFunctions, nvapiExport) !=
        scenario.nvapi.missingFunctions.end()) {
        functions.emplace_back(nvapiExport);
    }
    return functions;
}

Scenario loadScenario(const std::string& file) {
    auto reader = readJsonFile(file);
    if (reader.text("schema") != schema) {
        reader.fail("schema", std::string("must be \"") + schema + "\"");
    }
    Scenario scenario;
    scenario.description = reader.text("description", "");
    scenario.cudaDriverVersion = static_cast<std::int32_t>(
        reader.number("cudaDriverVersion", 0, 99999, static_cast<std::uint64_t>(scenario.cudaDriverVersion)));
    std::int32_t nextAdlIndex = 0;
    for (auto& card : reader.objects("cards")) {
        scenario.cards.push_back(readCard(card, scenario.cards.size(), nextAdlIndex));
    }
    scenario.adl = readAdl(reader);
    scenario.nvapi = readNvapi(reader);
    scenario.kernelGraphics = readKernelGraphicsLibrary(reader);
    scenario.processor = readProcessorSection(reader);
    scenario.driverService = readDriverServiceSection(reader);
    scenario.required = readRequiredOutcomes(reader);
    reader.finish();
    return scenario;
}

std::optional<std::string> scenarioFileOfProcess() {
    auto file = platform::environmentVariable("VEXIL_SCENARIO");
    return file && !file->empty() ? std::move(file) : std::nullopt;
}

} // namespace vexil::simulated
