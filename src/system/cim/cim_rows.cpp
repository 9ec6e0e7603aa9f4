#include "system/cim/cim_rows.h"

#include <algorithm>

namespace vexil::system {

void freeCimRows(CimRows rows) {
    if (rows == nullptr) {
        return;
    }
    for (CimRow* row : *rows) {
        if (row == nullptr) {
            continue;
        }
        for (char* text : *row) {
            delete[] text;
        }
        delete row;
    }
    delete rows;
}

void Cim::freeRows(CimRows* rows) {
    if (rows == nullptr) {
        return;
    }
    freeCimRows(*rows);
    *rows = nullptr;
}

void CimRowCollector::addRow() {
    if (!rows_) {
        rows_.reset(new std::vector<CimRow*>);
    }
    auto row = std::make_unique<CimRow>();
    rows_->push_back(row.get());
    row.release();
}

void CimRowCollector::addText(std::string_view text) {
    auto copy = std::make_unique<char[]>(text.size() + 1);
    std::copy(text.begin(), text.end(), copy.get());
    rows_->back()->push_back(copy.get());
    copy.release();
}

} // namespace vexil::system
