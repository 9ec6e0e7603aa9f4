#pragma once

#include "core/test.h"
#include "host/core/card.h"
#include "host/core/facilities.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace vexil::core {
class Module;
}

namespace vexil::host {

/// What the host shows of one test of the module.
struct CatalogueEntry {
    core::TestDescriptor descriptor;
    bool available = false; ///< false for an id that the module lists and makes no test for
    std::uint32_t expectedDurationMinutes = 0;
    std::vector<core::TestParameterDescription> parameters;
    std::vector<std::size_t> supportedBy; ///< indexes among the cards
};

/// All tests in the order in which the module lists them.
[[nodiscard]] std::vector<CatalogueEntry>
listTests(const core::Module& module, const std::vector<Card>& cards, const Facilities& facilities = {});

/// Whether the test is offered for the card: the test supports it and lacks nothing that it needs beside it.
/// False for a card that is gone.
[[nodiscard]] bool isOffered(const core::Test& test, const Card& card, const Facilities& facilities = {});

/// The descriptor of an id that the module makes no test for.
[[nodiscard]] core::TestDescriptor descriptorOfUnavailable(std::int32_t id);

} // namespace vexil::host
