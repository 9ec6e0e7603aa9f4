#include "host/core/sample_file.h"

#include "host/core/exit_code.h"
#include "host/core/report.h"
#include "host/core/utf8_path.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace vexil::host {

namespace {

std::string cannotWrite(const std::string& path) {
    const std::string reason = errno == 0 ? "unknown reason" : std::strerror(errno);
    return "the file '" + path + "' cannot be written: " + reason;
}

std::string field(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        return text;
    }
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    }
    return quoted + '"';
}

template <typename Value>
std::string field(const std::optional<Value>& value) {
    return value ? std::to_string(*value) : std::string();
}

} // namespace

SampleFile::SampleFile(const std::string& path) : path_(path) {
    const auto file = pathFromUtf8(path);
    std::error_code error;
    const bool existed = std::filesystem::exists(file, error);
    errno = 0;
    if (!std::ofstream(file, std::ios::app)) {
        throw UsageError(cannotWrite(path));
    }
    if (!existed) {
        std::filesystem::remove(file, error);
    }
}

void SampleFile::begin() {
    errno = 0;
    stream_.open(pathFromUtf8(path_), std::ios::binary | std::ios::trunc);
    append(sampleColumns());
}

void SampleFile::write(const Sample& sample, const std::vector<core::DeviceRecord>& cards) {
    std::string rows;
    for (std::size_t i = 0; i < cards.size(); ++i) {
        rows += sampleRow(sample, i, cards[i]);
    }
    append(rows);
}

void SampleFile::append(const std::string& text) {
    errno = 0;
    stream_ << text << std::flush;
    if (!stream_) {
        throw InternalError(cannotWrite(path_));
    }
}

std::string sampleColumns() {
    return "time,elapsed_seconds,card,name,temperature_celsius,usage_percent,free_memory_bytes\n";
}

std::string sampleRow(const Sample& sample, std::size_t card, const core::DeviceRecord& record) {
    const auto& values = sample.cards.at(card);
    return fmt::format("{},{:.3f},{},{},{},{},{}\n", toRfc3339(sample.time), sample.elapsed.count(),
                       field(record.id), field(record.name), field(values.temperatureCelsius),
                       field(values.usagePercent), field(values.freeMemoryBytes));
}

} // namespace vexil::host
