#include "system/cim/record_schema.h"

#include <algorithm>
#include <cstdlib>

namespace vexil::system {

void RecordIds::add(std::int32_t id) {
    ++count_;
    largest_ = std::max(largest_, id);
    holdsOldest_ = holdsOldest_ || id <= smallest_;
    smallest_ = std::min(smallest_, id);
}

std::int32_t recordId(const CimRow& row) { return static_cast<std::int32_t>(std::atol(row.front())); }

} // namespace vexil::system
