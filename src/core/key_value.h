#pragma once

#include <string>
#include <utility>

namespace vexil::core {

/// A labelled text: the key is a message key, the value is shown as it stands.
using KeyValue = std::pair<std::string, std::string>;

} // namespace vexil::core
