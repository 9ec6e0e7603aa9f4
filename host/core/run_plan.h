#pragma once

#include "core/test.h"
#include "host/core/card.h"
#include "host/core/facilities.h"
#include "host/core/language.h"

#include <memory>
#include <string>
#include <vector>

namespace vexil::core {
class Module;
}

namespace vexil::host {

/// What the user asks to be run, as text.
struct RunRequest {
    std::string card = "all";          ///< a card's id, or "all"
    std::string tests = "quick";       ///< "quick", "extended", "all" (both) and ids, separated by commas
    std::vector<std::string> settings; ///< "KEY=VALUE", for every planned test that has the parameter
};

struct PlannedRun {
    std::size_t card = 0;             ///< index among the cards
    std::unique_ptr<core::Test> test; ///< with its parameters set
};

/// Tests that the request covers and that a card does not support: they are left out.
struct NotOffered {
    std::size_t card = 0;
    std::vector<std::string> names; ///< message keys
    bool forLackOfDisplay = false;  ///< some of them the card may support, but nobody would see their window
};

struct RunPlan {
    std::vector<PlannedRun> runs; ///< card by card, in the order of the request
    std::vector<NotOffered> notOffered;
};

/// Plans the runs of a request. Throws `UsageError` with a line that names what is unknown, invalid or
/// supported by none of the chosen cards although it was asked for by its id. Tests that lack one of the
/// facilities are not offered, and what they lack is named where nothing else is left.
[[nodiscard]] RunPlan planRuns(const core::Module& module, const std::vector<Card>& cards,
                               const RunRequest& request, const Language& language,
                               const Facilities& facilities = {});

/// The indexes of the cards that "all" or an id stands for. Throws `UsageError` for an unknown id.
[[nodiscard]] std::vector<std::size_t> selectCards(const std::vector<Card>& cards,
                                                   const std::string& selection);

} // namespace vexil::host
