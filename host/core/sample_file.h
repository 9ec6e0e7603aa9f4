#pragma once

#include "core/device_record.h"
#include "host/core/monitoring.h"

#include <fstream>
#include <string>
#include <vector>

namespace vexil::host {

/// A file of comma-separated values: a line of column names, then for each sample a line for each card. Every
/// sample is in the file when `write` returns, so whatever ends the program, the file holds whole lines.
class SampleFile {
public:
    /// Finds out whether the file can be written, and leaves an older one alone. Throws `UsageError` naming
    /// the file for a place that cannot be written to.
    explicit SampleFile(const std::string& path);

    /// Empties the file and writes the line of column names. Like `write`, throws `InternalError` naming the
    /// file if it cannot be written any more.
    void begin();
    void write(const Sample& sample, const std::vector<core::DeviceRecord>& cards);

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    void append(const std::string& text);

    std::string path_;
    std::ofstream stream_;
};

/// "time,elapsed_seconds,card,name,temperature_celsius,usage_percent,free_memory_bytes".
[[nodiscard]] std::string sampleColumns();
/// One line; a value that nothing tells is an empty field. Names with a comma, a quotation mark or a line
/// break stand in quotation marks (RFC 4180).
[[nodiscard]] std::string sampleRow(const Sample& sample, std::size_t card, const core::DeviceRecord& record);

} // namespace vexil::host
