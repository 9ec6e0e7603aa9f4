#pragma once

#include "module/video_card/statistics/adl/adl_context.h"
#include "platform/adl.h"
#include "simulated/adl/adl_functions.h"
#include "simulated/adl/adl_machine.h"
#include "support/recorded_loader.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vexil::tests {

/// A loader whose ADL library is the stand-in, with what a test changes about it. One at a time: its
/// functions are plain ones, as the interface has them, and find it here.
class AdlLoader final : public RecordedLoader {
public:
    AdlLoader() { only = this; }
    ~AdlLoader() override {
        only = nullptr;
        simulated::setAdlMachine({});
    }

    std::map<std::string, void*> replacements; ///< functions by name; null for one that is missing
    platform::adl::Status createStatus = platform::adl::ok;
    platform::adl::Allocate allocate = nullptr; ///< as `ADL_Main_Control_Create` got it
    std::int32_t connectedOnly = 0;             ///< likewise

    void* resolve(void* library, const char* symbol) override {
        if (library != this) {
            return nullptr;
        }
        if (const auto found = replacements.find(symbol); found != replacements.end()) {
            return found->second;
        }
        if (symbol == std::string("ADL_Main_Control_Create")) {
            return reinterpret_cast<void*>(&create);
        }
        if (symbol == std::string("ADL_Main_Control_Destroy")) {
            return reinterpret_cast<void*>(&destroy);
        }
        return simulated::adl_functions::find(symbol);
    }

private:
    static platform::adl::Status create(platform::adl::Allocate allocate, std::int32_t connectedOnly) {
        only->events.push_back("create");
        only->allocate = allocate;
        only->connectedOnly = connectedOnly;
        return only->createStatus;
    }
    static platform::adl::Status destroy() {
        only->events.push_back("destroy");
        return platform::adl::ok;
    }

    static inline AdlLoader* only = nullptr;
};

struct AdlFixture {
    AdlLoader loader;
    module::video_card::ADLContexts contexts{loader};
};

inline simulated::AdlAdapter adapterAt(std::int32_t index, std::int32_t bus, std::int32_t device,
                                       std::int32_t function) {
    return {index, bus, device, function, 1, 0};
}

/// A card of that generation with one adapter of index 4 at 03:00.0.
inline simulated::AdlCardSection healthyCard(std::int32_t version) {
    simulated::AdlCardSection card;
    card.adapters = {adapterAt(4, 3, 0, 0)};
    card.overdriveSupported = 1;
    card.overdriveVersion = version;
    card.millidegrees = 52'900;
    card.memoryBytes = 8LL << 30;
    card.usedMegabytes = 1024;
    return card;
}

inline void put(simulated::AdlCardSection card) { simulated::setAdlMachine({{}, {std::move(card)}}); }

} // namespace vexil::tests
