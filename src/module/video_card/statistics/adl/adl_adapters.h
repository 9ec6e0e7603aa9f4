#pragma once

#include "module/video_card/statistics/adl/adl_context.h"
#include "platform/adl.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vexil::module::video_card {

/// Whether a's bus, device and function are each less than b's, all three at once. No lexicographic order:
/// two records that differ in only some of the three count as equal.
[[nodiscard]] bool comesBefore(const platform::adl::AdapterInfo& a, const platform::adl::AdapterInfo& b);

/// An ordered set of adapters under `comesBefore`. The logical adapters of one card collapse into the first
/// one seen, and so does a second card whose device and function numbers equal the first's.
class AdlAdapterSet {
public:
    void insert(const platform::adl::AdapterInfo& adapter);

    /// In ascending order.
    [[nodiscard]] const std::vector<platform::adl::AdapterInfo>& adapters() const { return adapters_; }

private:
    std::vector<platform::adl::AdapterInfo> adapters_;
};

/// The set of the library's active adapters; empty if the library does not list them.
[[nodiscard]] AdlAdapterSet listActiveAdapters(const ADLContext& context);

/// "bb:dd.f" in lower-case hexadecimal.
[[nodiscard]] std::string adlLocation(const platform::adl::AdapterInfo& adapter);

} // namespace vexil::module::video_card
