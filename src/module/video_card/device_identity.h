#pragma once

#include "core/key_value.h"

#include <cstdint>
#include <string>
#include <vector>

class NumberHandler;
class StringHandler;

namespace vexil::module::video_card {

struct AdapterRecord;

/// What a card is called and what is shown of it, as far as the system list tells.
struct DeviceIdentity {
    static constexpr std::int32_t complete = 0;
    static constexpr std::int32_t badLocation =
        39; ///< what had been found until then stands in the other fields

    std::int32_t status = complete;
    std::string id;
    std::string displayName; ///< the card's name, or a key where it has none that can be shown
    std::vector<core::KeyValue> rows;
};

/// Never throws for a poor record.
[[nodiscard]] DeviceIdentity identify(const AdapterRecord& adapter, StringHandler& strings,
                                      NumberHandler& numbers);

} // namespace vexil::module::video_card
