#include "host/core/run_plan.h"

#include "core/module.h"
#include "host/core/exit_code.h"
#include "host/core/test_catalogue.h"
#include "module/video_card/catalogue.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <set>
#include <sstream>

namespace vexil::host {

namespace {

namespace group = module::video_card::group;

template <typename Range, typename ToText>
std::string listOf(const Range& range, ToText toText) {
    std::string list;
    for (const auto& element : range) {
        list += (list.empty() ? "" : ", ") + toText(element);
    }
    return list;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

std::string describe(const core::TestDescriptor& descriptor, const Language& language) {
    return "test " + std::to_string(descriptor.id) + " (" + language.text(descriptor.name) + ')';
}

struct Selection {
    std::int32_t id = 0;
    bool askedById = false;
};

bool coversGroup(const std::string& word, const std::string& testGroup) {
    // A tool is no test: it is run only when it is asked for by its id.
    return ((word == "quick" || word == "all") && testGroup == group::quick) ||
           ((word == "extended" || word == "all") && testGroup == group::extended);
}

std::optional<std::int32_t> parseId(const std::string& word) {
    std::int32_t id = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), id);
    return error == std::errc() && end == word.data() + word.size() ? std::optional(id) : std::nullopt;
}

std::vector<Selection> selectTests(const core::Module& module, const std::string& request,
                                   const Language& language) {
    const auto ids = module.testIds();
    std::vector<Selection> selected;
    const auto select = [&](std::int32_t id, bool askedById) {
        if (std::ranges::find(selected, id, &Selection::id) == selected.end()) {
            selected.push_back({id, askedById});
        }
    };
    for (const auto& word : split(request, ',')) {
        if (word == "quick" || word == "extended" || word == "all") {
            for (const auto id : ids) {
                const auto test = module.createTest(id);
                if (test && coversGroup(word, test->descriptor().group)) {
                    select(id, false);
                }
            }
            continue;
        }
        const auto id = parseId(word);
        if (!id || std::ranges::find(ids, *id) == ids.end()) {
            throw UsageError("unknown test '" + word + "': the module has " +
                             listOf(ids, [](auto known) { return std::to_string(known); }) +
                             ", and the words quick, extended and all");
        }
        if (!module.createTest(*id)) {
            throw UsageError(describe(descriptorOfUnavailable(*id), language) +
                             " is not available in this module");
        }
        select(*id, true);
    }
    if (selected.empty() && request.find_first_not_of(',') == std::string::npos) {
        throw UsageError("no test is named: --tests takes ids, quick, extended or all");
    }
    return selected;
}

struct Setting {
    std::string key;
    std::string value;
};

std::vector<Setting> parseSettings(const std::vector<std::string>& texts) {
    std::vector<Setting> settings;
    for (const auto& text : texts) {
        const auto equals = text.find('=');
        if (equals == 0 || equals == std::string::npos) {
            throw UsageError("'" + text + "' sets no parameter: --set takes KEY=VALUE");
        }
        settings.push_back({text.substr(0, equals), text.substr(equals + 1)});
    }
    return settings;
}

/// Whether a later setting has the same key: the last one counts, and a parameter sees no other.
bool isOverruled(const std::vector<Setting>& settings, const Setting& setting) {
    return std::ranges::any_of(&setting + 1, settings.data() + settings.size(),
                               [&](const Setting& later) { return later.key == setting.key; });
}

/// Throws for a key that none of the tests has, and for a value that one of them does not take.
void checkSettings(const core::Module& module, const std::vector<Selection>& tests,
                   const std::vector<Setting>& settings, const Language& language) {
    std::set<std::string> available;
    for (const auto& selection : tests) {
        const auto test = module.createTest(selection.id);
        for (const auto& [key, parameter] : test->parameters()) {
            available.insert(key);
            for (const auto& setting : settings) {
                if (setting.key == key && !parameter->isValid(setting.value)) {
                    throw UsageError("'" + setting.value + "' is no value for " + key + " of " +
                                     describe(test->descriptor(), language) + ", which takes " +
                                     parameter->description().range);
                }
            }
        }
    }
    for (const auto& setting : settings) {
        if (!available.contains(setting.key)) {
            throw UsageError("unknown parameter '" + setting.key + "': the chosen tests have " +
                             (available.empty() ? std::string("none")
                                                : listOf(available, [](const auto& key) { return key; })));
        }
    }
}

/// Sets what the test has of the settings.
void applySettings(core::Test& test, const std::vector<Setting>& settings) {
    for (const auto& setting : settings) {
        const auto entry =
            std::ranges::find(test.parameters(), setting.key, &core::Test::ParameterEntry::key);
        if (entry != test.parameters().end() && !isOverruled(settings, setting)) {
            entry->parameter->setValue(setting.value);
        }
    }
}

/// Throws for a test that was asked for by its id and that no chosen card supports, and for a request that
/// nothing is left of because the machine or the program lacks what the tests need.
void refuseUnsupported(const core::Module& module, const std::vector<Selection>& tests,
                       const std::set<std::int32_t>& offered, const RunRequest& request,
                       const Language& language, const Facilities& facilities) {
    for (const auto& selection : tests) {
        if (!selection.askedById || offered.contains(selection.id)) {
            continue;
        }
        const auto test = describe(module.createTest(selection.id)->descriptor(), language);
        if (const auto lack = lackOf(selection.id, facilities)) {
            throw UsageError(test + " needs " + *lack);
        }
        throw UsageError((request.card == "all" ? std::string("no card of this machine supports ")
                                                : "card " + request.card + " does not support ") +
                         test);
    }
    if (!offered.empty()) {
        return;
    }
    for (const auto& selection : tests) {
        if (const auto lack = lackOf(selection.id, facilities)) {
            throw UsageError("no test is left to run: the chosen ones need " + *lack);
        }
    }
}

} // namespace

std::vector<std::size_t> selectCards(const std::vector<Card>& cards, const std::string& selection) {
    std::vector<std::size_t> chosen;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        if (selection == "all" || cards[i].record.id == selection) {
            chosen.push_back(i);
        }
    }
    if (chosen.empty() && selection != "all") {
        throw UsageError("unknown card '" + selection + "': the machine has " +
                         (cards.empty() ? std::string("none")
                                        : listOf(cards, [](const Card& card) { return card.record.id; })));
    }
    return chosen;
}

RunPlan planRuns(const core::Module& module, const std::vector<Card>& cards, const RunRequest& request,
                 const Language& language, const Facilities& facilities) {
    const auto chosenCards = selectCards(cards, request.card);
    const auto tests = selectTests(module, request.tests, language);
    const auto settings = parseSettings(request.settings);
    checkSettings(module, tests, settings, language);

    RunPlan plan;
    std::set<std::int32_t> offered;
    for (const auto card : chosenCards) {
        NotOffered missing{card, {}, false};
        for (const auto& selection : tests) {
            auto test = module.createTest(selection.id);
            if (!isOffered(*test, cards[card], facilities)) {
                missing.names.push_back(test->descriptor().name);
                missing.forLackOfDisplay |= !facilities.display && needsDisplay(selection.id);
                continue;
            }
            offered.insert(selection.id);
            applySettings(*test, settings);
            plan.runs.push_back({card, std::move(test)});
        }
        if (!missing.names.empty()) {
            plan.notOffered.push_back(std::move(missing));
        }
    }
    if (!chosenCards.empty()) {
        refuseUnsupported(module, tests, offered, request, language, facilities);
    }
    return plan;
}

} // namespace vexil::host
