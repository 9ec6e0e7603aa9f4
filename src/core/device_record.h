#pragma once

#include "core/key_value.h"

#include <string>
#include <vector>

namespace vexil::core {

/// What a scan tells the host about one device.
struct DeviceRecord {
    std::string id;
    std::string udi; ///< empty without one
    std::string name;
    std::vector<KeyValue> properties;
    std::vector<KeyValue> rows;
    std::vector<DeviceRecord> children;
    std::vector<std::string> notices;
    bool present = false;
};

} // namespace vexil::core
