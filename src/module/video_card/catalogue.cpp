#include "module/video_card/catalogue.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace vexil::module::video_card {

core::TestDescriptor catalogueDescriptor(std::int32_t id) {
    const auto row = std::ranges::find(catalogue, id, &CatalogueRow::id);
    if (row == catalogue.end()) {
        throw std::out_of_range("no test has the id " + std::to_string(id));
    }
    core::TestDescriptor descriptor;
    descriptor.id = row->id;
    descriptor.name = row->name;
    descriptor.tooltip = row->tooltip;
    descriptor.group = row->group;
    descriptor.groupRank = row->groupRank;
    return descriptor;
}

} // namespace vexil::module::video_card
