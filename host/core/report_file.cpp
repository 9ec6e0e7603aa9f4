#include "host/core/report_file.h"

#include "host/core/exit_code.h"
#include "host/core/html_report.h"
#include "host/core/json_documents.h"
#include "host/core/utf8_path.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>

namespace vexil::host {

namespace {

std::string cannotWrite(const std::string& path, const std::string& reason) {
    return "the report '" + path + "' cannot be written: " + reason;
}

/// What the last failing call of the C library says.
std::string systemReason() { return errno == 0 ? "unknown reason" : std::strerror(errno); }

void removeQuietly(const std::filesystem::path& file) {
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
}

} // namespace

ReportFile::ReportFile(const std::string& path) : path_(path), file_(pathFromUtf8(path)) {
    const auto extension = toUtf8(file_.extension());
    if (extension != ".json" && extension != ".html") {
        throw UsageError("the report '" + path +
                         "' has no known form: its name must end with .json or .html");
    }
    html_ = extension == ".html";
    std::error_code error;
    if (std::filesystem::is_symlink(file_, error)) {
        const auto target = std::filesystem::weakly_canonical(file_, error);
        file_ = error ? file_ : target;
    }
    if (std::filesystem::exists(file_, error) && !std::filesystem::is_regular_file(file_, error)) {
        throw UsageError(cannotWrite(path, "there is something else of this name"));
    }
    temporary_ = file_;
    temporary_ += ".partial";
    errno = 0;
    if (!std::ofstream(temporary_)) {
        throw UsageError(cannotWrite(path, systemReason()));
    }
    removeQuietly(temporary_);
}

void ReportFile::write(const Report& report, const Language& language) const {
    const auto text = html_ ? htmlReport(report, language) : reportDocument(report, language);
    errno = 0;
    std::ofstream stream(temporary_, std::ios::binary | std::ios::trunc);
    stream << text;
    stream.close();
    if (!stream) {
        const auto reason = systemReason();
        removeQuietly(temporary_);
        throw InternalError(cannotWrite(path_, reason));
    }
    std::error_code error;
    std::filesystem::rename(temporary_, file_, error);
    if (error) {
        removeQuietly(temporary_);
        throw InternalError(cannotWrite(path_, error.message()));
    }
}

} // namespace vexil::host
