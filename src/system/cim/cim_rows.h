#pragma once

#include "system/cim/cim.h"

#include <memory>
#include <string_view>

namespace vexil::system {

/// Frees rows as `Cim::freeRows` does.
void freeCimRows(CimRows rows);

/// Rows while they are collected; they free themselves if nobody takes them.
class CimRowCollector {
public:
    /// Begins the row of the next object. The vector itself comes into being with the first one.
    void addRow();
    /// Appends a text, which may hold NUL characters, to the last row; there must be one.
    void addText(std::string_view text);
    /// Hands the rows over; null if there is none.
    [[nodiscard]] CimRows take() { return rows_.release(); }

private:
    struct Free {
        void operator()(CimRows rows) const { freeCimRows(rows); }
    };
    std::unique_ptr<std::vector<CimRow*>, Free> rows_;
};

/// The rows of a query, given back to the client that they come from.
class OwnedRows {
public:
    explicit OwnedRows(Cim& cim) : cim_(cim) {}
    OwnedRows(const OwnedRows&) = delete;
    OwnedRows& operator=(const OwnedRows&) = delete;
    ~OwnedRows() { cim_.freeRows(&rows_); }

    /// Where the query is to put them.
    [[nodiscard]] CimRows& out() { return rows_; }
    [[nodiscard]] std::size_t size() const { return rows_ == nullptr ? 0 : rows_->size(); }
    [[nodiscard]] const CimRow& operator[](std::size_t index) const { return *rows_->at(index); }

private:
    Cim& cim_;
    CimRows rows_ = nullptr;
};

} // namespace vexil::system
