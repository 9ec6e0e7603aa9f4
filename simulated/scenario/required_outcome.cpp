#include "simulated/scenario/required_outcome.h"

#include "simulated/scenario/field_reader.h"

namespace vexil::simulated {

std::vector<RequiredOutcome> readRequiredOutcomes(FieldReader& scenario) {
    std::vector<RequiredOutcome> outcomes;
    for (auto& reader : scenario.objects("required")) {
        RequiredOutcome outcome;
        outcome.test = static_cast<std::int32_t>(reader.number("test", 1, 90));
        outcome.result = static_cast<std::uint8_t>(reader.number("result", 0, 5));
        outcome.messages = reader.texts("messages");
        outcome.settings = reader.texts("settings");
        for (const auto& other : outcomes) {
            if (other.test == outcome.test) {
                reader.fail("test", "is in the list already");
            }
        }
        reader.finish();
        outcomes.push_back(std::move(outcome));
    }
    return outcomes;
}

} // namespace vexil::simulated
