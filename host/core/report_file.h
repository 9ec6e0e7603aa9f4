#pragma once

#include "host/core/report.h"

#include <filesystem>
#include <string>

namespace vexil::host {

class Language;

/// A file that a report is to be written to, in the form that its extension names (".json", ".html"). Whether
/// it can be written is found out before the run whose report it is to hold.
class ReportFile {
public:
    /// Throws `UsageError` for another extension or a place that cannot be written to; leaves nothing behind.
    explicit ReportFile(const std::string& path);

    /// Writes the whole file or leaves what was there: a temporary file beside it takes its name at the end.
    /// Throws `InternalError` if the place has become unwritable since.
    void write(const Report& report, const Language& language) const;

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    std::string path_;
    std::filesystem::path file_; ///< where a link leads, so that the link stays one
    std::filesystem::path
        temporary_; ///< in the same folder: a name is taken over within one file system only
    bool html_ = false;
};

} // namespace vexil::host
