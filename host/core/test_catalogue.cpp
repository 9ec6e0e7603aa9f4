#include "host/core/test_catalogue.h"

#include "core/module.h"
#include "module/video_card/catalogue.h"

#include <algorithm>

namespace vexil::host {

bool isOffered(const core::Test& test, const Card& card, const Facilities& facilities) {
    const auto device = card.device.lock();
    return device && !lackOf(test.id(), facilities) && test.isSupported(device.get(), device);
}

core::TestDescriptor descriptorOfUnavailable(std::int32_t id) {
    namespace video_card = module::video_card;
    const auto isOfRow = [id](const video_card::CatalogueRow& row) { return row.id == id; };
    if (std::ranges::any_of(video_card::catalogue, isOfRow)) {
        return video_card::catalogueDescriptor(id);
    }
    core::TestDescriptor descriptor;
    descriptor.id = id;
    descriptor.name = "TEST_" + std::to_string(id);
    return descriptor;
}

std::vector<CatalogueEntry> listTests(const core::Module& module, const std::vector<Card>& cards,
                                      const Facilities& facilities) {
    std::vector<CatalogueEntry> entries;
    for (const auto id : module.testIds()) {
        CatalogueEntry& entry = entries.emplace_back();
        const auto test = module.createTest(id);
        if (!test) {
            entry.descriptor = descriptorOfUnavailable(id);
            continue;
        }
        entry.available = true;
        entry.descriptor = test->descriptor();
        entry.expectedDurationMinutes = test->expectedDurationMinutes();
        for (const auto& parameter : test->parameters()) {
            entry.parameters.push_back(parameter.parameter->description());
        }
        for (std::size_t i = 0; i < cards.size(); ++i) {
            if (isOffered(*test, cards[i], facilities)) {
                entry.supportedBy.push_back(i);
            }
        }
    }
    return entries;
}

} // namespace vexil::host
