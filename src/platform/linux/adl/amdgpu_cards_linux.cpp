#include "platform/linux/adl/amdgpu_cards.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <system_error>

namespace vexil::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::uint32_t amd = 0x1002;
constexpr std::uint32_t displayController = 3;

std::string readWord(const fs::path& file) {
    std::ifstream stream(file);
    std::string word;
    stream >> word;
    return word;
}

/// Nothing for a file that holds anything else than a number; hexadecimal ones begin with "0x".
template <typename Number>
std::optional<Number> readNumber(const fs::path& file, int base = 10) {
    const auto word = readWord(file);
    const char* const first = word.data() + (base == 16 && word.starts_with("0x") ? 2 : 0);
    const char* const end = word.data() + word.size();
    Number number{};
    const auto result = std::from_chars(first, end, number, base);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        entries.push_back(entry->path());
    }
    std::ranges::sort(entries);
    return entries;
}

/// The name of the driver that runs a device, which a link names; empty without one.
std::string driverOf(const fs::path& device) {
    std::error_code error;
    return fs::read_symlink(device / "driver", error).filename().string();
}

std::optional<AmdgpuCard> readCard(const fs::path& folder) {
    const auto address = parsePciAddress(folder.filename().string());
    if (!address) {
        return std::nullopt;
    }
    const auto deviceClass = readNumber<std::uint32_t>(folder / "class", 16).value_or(0);
    if (readNumber<std::uint32_t>(folder / "vendor", 16) != amd || deviceClass >> 16 != displayController ||
        driverOf(folder) != "amdgpu") {
        return std::nullopt;
    }
    return AmdgpuCard{*address, folder};
}

/// The folder of the card's sensors.
std::optional<fs::path> findSensors(const fs::path& card) {
    for (const auto& folder : entriesOf(card / "hwmon")) {
        if (readWord(folder / "name") == "amdgpu") {
            return folder;
        }
    }
    return std::nullopt;
}

/// The sensor "edge" where sensors have labels; older kernels have one sensor and no labels.
fs::path temperatureFile(const fs::path& sensors) {
    for (const char* name : {"temp1", "temp2", "temp3"}) {
        if (readWord(sensors / (std::string(name) + "_label")) == "edge") {
            return sensors / (std::string(name) + "_input");
        }
    }
    return sensors / "temp1_input";
}

} // namespace

bool AmdgpuCard::isPresent() const {
    std::error_code error;
    return fs::is_directory(folder, error);
}

std::optional<std::uint32_t> AmdgpuCard::deviceId() const {
    return readNumber<std::uint32_t>(folder / "device", 16);
}

std::optional<std::int32_t> AmdgpuCard::millidegrees() const {
    const auto sensors = findSensors(folder);
    return sensors ? readNumber<std::int32_t>(temperatureFile(*sensors)) : std::nullopt;
}

std::optional<std::uint64_t> AmdgpuCard::memoryBytes() const {
    return readNumber<std::uint64_t>(folder / "mem_info_vram_total");
}

std::optional<std::uint64_t> AmdgpuCard::usedBytes() const {
    return readNumber<std::uint64_t>(folder / "mem_info_vram_used");
}

std::vector<AmdgpuCard> listAmdgpuCards(const fs::path& root) {
    std::vector<AmdgpuCard> cards;
    for (const auto& folder : entriesOf(root / "bus/pci/devices")) {
        if (auto card = readCard(folder)) {
            cards.push_back(std::move(*card));
        }
    }
    std::ranges::sort(cards, {}, &AmdgpuCard::address);
    return cards;
}

} // namespace vexil::platform
