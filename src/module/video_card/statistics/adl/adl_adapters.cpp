#include "module/video_card/statistics/adl/adl_adapters.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <memory>
#include <span>

namespace vexil::module::video_card {

namespace adl = platform::adl;

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};

/// All records are plain numbers and characters, so zeroed memory is an array of them: a library that
/// announces a million adapters costs no more than the pages that it fills.
using AdapterRecords = std::unique_ptr<adl::AdapterInfo[], Free>;

AdapterRecords zeroedRecords(std::size_t count) {
    return AdapterRecords(static_cast<adl::AdapterInfo*>(std::calloc(count, sizeof(adl::AdapterInfo))));
}

} // namespace

bool comesBefore(const adl::AdapterInfo& a, const adl::AdapterInfo& b) {
    return a.iBusNumber < b.iBusNumber && a.iDeviceNumber < b.iDeviceNumber &&
           a.iFunctionNumber < b.iFunctionNumber;
}

void AdlAdapterSet::insert(const adl::AdapterInfo& adapter) {
    // What is in the set is a chain, each before the next, so those before the new record stand in front and
    // a binary search ends where a walk down a tree of any shape would.
    const auto next = std::ranges::partition_point(
        adapters_, [&](const adl::AdapterInfo& present) { return comesBefore(present, adapter); });
    if (next == adapters_.end() || comesBefore(adapter, *next)) {
        adapters_.insert(next, adapter);
    }
}

AdlAdapterSet listActiveAdapters(const ADLContext& context) {
    AdlAdapterSet set;
    std::int32_t count = 0;
    constexpr auto most = std::numeric_limits<std::int32_t>::max() / std::int32_t{sizeof(adl::AdapterInfo)};
    // A count that is negative, or whose buffer the interface could not express, is nonsense.
    if (context.numberOfAdaptersGet(&count) != adl::ok || count <= 0 || count > most) {
        return set;
    }
    const auto records = zeroedRecords(static_cast<std::size_t>(count));
    const auto bytes = count * std::int32_t{sizeof(adl::AdapterInfo)};
    if (!records || context.adapterInfoGet(records.get(), bytes) != adl::ok) {
        return set;
    }
    for (const auto& record : std::span(records.get(), static_cast<std::size_t>(count))) {
        std::int32_t active = 0;
        if (context.activeGet(record.iAdapterIndex, &active) == adl::ok && active != 0) {
            set.insert(record);
        }
    }
    return set;
}

std::string adlLocation(const adl::AdapterInfo& adapter) {
    char text[3 * 8 + 3];
    std::snprintf(text, sizeof(text), "%02x:%02x.%x", static_cast<std::uint32_t>(adapter.iBusNumber),
                  static_cast<std::uint32_t>(adapter.iDeviceNumber),
                  static_cast<std::uint32_t>(adapter.iFunctionNumber));
    return text;
}

} // namespace vexil::module::video_card
