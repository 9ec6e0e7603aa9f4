#include "module/cpu/amd_processor.h"

#include "module/cpu/amd_registers.h"
#include "system/cim/cim.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace vexil::module::cpu {

namespace {

constexpr std::int32_t anyModel = std::numeric_limits<std::int32_t>::max();

struct ReaderRow {
    std::int32_t family;
    std::int32_t firstModel;
    std::int32_t lastModel;
    AmdReader reader;
};

// Family and model are decimal, as the caption has them.
constexpr std::array readers = {
    ReaderRow{21, 0, 15, readFamily15Early},
    ReaderRow{21, 16, 95, readNorthBridge},
    ReaderRow{21, 96, 127, readFamily15Late},
    ReaderRow{21, 128, anyModel, readNorthBridge},
    ReaderRow{22, std::numeric_limits<std::int32_t>::min(), anyModel, readNorthBridge},
    ReaderRow{23, std::numeric_limits<std::int32_t>::min(), anyModel, readZen},
    ReaderRow{25, std::numeric_limits<std::int32_t>::min(), anyModel, readZen},
};
static_assert(readers.size() == 7);

constexpr const char* lookUpError =
    "Failed to create a TemperatureAmd because it was unable to obtain family or model.";

/// At each blank; only an empty word at the end is dropped.
std::vector<std::string> words(const std::string& text) {
    std::vector<std::string> result;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, ' ');) {
        result.push_back(word);
    }
    return result;
}

std::int32_t decimal(const std::string& text) {
    try {
        return std::stoi(text);
    } catch (const std::logic_error&) {
        return 0;
    }
}

/// The number behind the first word that contains `label`.
std::optional<std::int32_t> numberBehind(const std::vector<std::string>& caption, const char* label) {
    for (std::size_t i = 0; i < caption.size(); ++i) {
        if (caption[i].find(label) != std::string::npos) {
            return decimal(caption.at(i + 1));
        }
    }
    return std::nullopt;
}

} // namespace

AmdProcessor parseCaption(const std::string& caption) {
    const auto parts = words(caption);
    const auto family = numberBehind(parts, "Family");
    const auto model = numberBehind(parts, "Model");
    if (!family || !model) {
        throw std::runtime_error(lookUpError);
    }
    return {*family, *model};
}

AmdProcessor lookUpAmdProcessor(system::Cim& cim) {
    const char* property = "Caption";
    system::CimRows rows = nullptr;
    const auto status = cim.query(&property, "Win32_Processor", 1, rows, system::machineNamespace);
    std::optional<std::string> caption;
    if (status == system::CimStatus::Success && rows != nullptr && !rows->empty() &&
        rows->front() != nullptr && !rows->front()->empty() && rows->front()->front() != nullptr) {
        caption = rows->front()->front();
    }
    cim.freeRows(&rows);
    if (!caption) {
        throw std::runtime_error(lookUpError);
    }
    return parseCaption(*caption);
}

AmdReader readerFor(const AmdProcessor& processor) {
    const auto row = std::ranges::find_if(readers, [&](const ReaderRow& candidate) {
        return candidate.family == processor.family && processor.model >= candidate.firstModel &&
               processor.model <= candidate.lastModel;
    });
    if (row == readers.end()) {
        throw std::runtime_error("The AMD Family " + std::to_string(processor.family) + " and Model " +
                                 std::to_string(processor.model) +
                                 " is not supported. Throwing exception...");
    }
    return row->reader;
}

} // namespace vexil::module::cpu
