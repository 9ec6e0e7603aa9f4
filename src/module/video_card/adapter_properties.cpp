#include "module/video_card/adapter_properties.h"

#include "core/sal.h"

#include <array>
#include <iomanip>
#include <locale>
#include <sstream>
#include <string_view>

namespace vexil::module::video_card {

namespace {

// Property ids of the Windows setup API, which the system list uses on every platform.
constexpr std::uint32_t descriptionId = 0;
constexpr std::uint32_t hardwareIdsId = 1;
constexpr std::uint32_t compatibleIdsId = 2;
constexpr std::uint32_t manufacturerId = 11;
constexpr std::uint32_t locationInformationId = 13;

/// All texts of a sequence that ends with two NUL characters, the single NULs between them included.
std::string_view wholeSequence(const char* text) {
    std::size_t length = 0;
    while (text[length] != '\0' || text[length + 1] != '\0') {
        ++length;
    }
    return {text, length};
}

/// The first three runs of decimal digits.
std::optional<std::array<std::uint32_t, 3>> firstThreeNumbers(const std::string& text,
                                                              NumberHandler& numbers) {
    constexpr const char* digits = "0123456789";
    std::array<std::uint32_t, 3> result{};
    std::size_t position = 0;
    for (auto& number : result) {
        const auto begin = text.find_first_of(digits, position);
        if (begin == std::string::npos) {
            return std::nullopt;
        }
        position = text.find_first_not_of(digits, begin);
        if (!numbers.parse(number, text.substr(begin, position - begin), std::dec)) {
            return std::nullopt;
        }
    }
    return result;
}

} // namespace

const char* AdapterProperties::property(std::uint32_t index, std::uint32_t id) const {
    const char* text = nullptr;
    return list_.property(index, id, text) == 0 ? text : nullptr;
}

std::optional<std::uint32_t> AdapterProperties::classCode(std::uint32_t index) const {
    const char* ids = property(index, compatibleIdsId);
    if (ids == nullptr) {
        return std::nullopt;
    }
    const auto sequence = wholeSequence(ids);
    const auto found = sequence.find("CC_");
    if (found == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string digits(sequence.substr(found + 3, 2));
    std::uint32_t code = 0;
    return digits.size() == 2 && numbers_.parse(code, digits, std::hex) ? std::optional(code) : std::nullopt;
}

std::optional<std::string> AdapterProperties::location(std::uint32_t index) const {
    const char* text = property(index, locationInformationId);
    const auto numbers = text == nullptr ? std::nullopt : firstThreeNumbers(text, numbers_);
    if (!numbers) {
        return std::nullopt;
    }
    const auto [bus, device, function] = *numbers;
    std::ostringstream stream;
    stream.imbue(std::locale::classic()); // The host's language would put points into the numbers.
    stream << std::setfill('0') << std::hex << std::setw(2) << bus << ':' << std::setw(2) << device << '.'
           << function;
    return stream.str();
}

std::optional<HardwareIds> AdapterProperties::hardwareIds(std::uint32_t index) const {
    const char* ids = property(index, hardwareIdsId);
    const std::string_view first = ids == nullptr ? std::string_view() : ids;
    if (first.size() < 22) {
        return std::nullopt;
    }
    return HardwareIds{std::string(first.substr(8, 4)), std::string(first.substr(17, 4))};
}

std::string AdapterProperties::description(std::uint32_t index) const {
    const char* text = property(index, descriptionId);
    return text == nullptr ? "" : text;
}

std::string AdapterProperties::manufacturer(std::uint32_t index) const {
    const char* text = property(index, manufacturerId);
    return text == nullptr ? "" : text;
}

} // namespace vexil::module::video_card
