#include "platform/linux/cim/machine_objects.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <map>
#include <sstream>

namespace vexil::platform {

namespace {

/// One logical processor: the labels of /proc/cpuinfo and what stands behind their colons.
using Block = std::map<std::string, std::string>;

std::string trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    const auto last = text.find_last_not_of(" \t");
    return first == std::string_view::npos ? std::string()
                                           : std::string(text.substr(first, last - first + 1));
}

std::vector<Block> logicalProcessors(const std::string& cpuInfo) {
    std::vector<Block> blocks;
    bool inBlock = false;
    std::istringstream lines(cpuInfo);
    for (std::string line; std::getline(lines, line);) {
        const auto colon = line.find(':');
        if (colon == std::string::npos) {
            inBlock = false;
            continue;
        }
        if (!inBlock) {
            blocks.emplace_back();
            inBlock = true;
        }
        blocks.back()[trimmed(line.substr(0, colon))] = trimmed(line.substr(colon + 1));
    }
    // Other architectures add a block of the whole machine, which is no processor.
    std::erase_if(blocks, [](const Block& block) { return !block.contains("processor"); });
    return blocks;
}

std::string field(const Block& block, const std::string& label) {
    const auto found = block.find(label);
    return found == block.end() ? std::string() : found->second;
}

bool number(const std::string& text, std::int32_t& value) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size();
}

system::CimValue numberOrEmpty(const std::string& text) {
    std::int32_t value = 0;
    return number(text, value) ? system::CimValue(value) : system::CimValue();
}

system::CimValue textOrEmpty(std::string text) {
    return text.empty() ? system::CimValue() : system::CimValue(std::move(text));
}

/// "Intel64 Family 6 Model 167 Stepping 1", the form in which Windows captions a processor. Empty where the
/// kernel does not tell family and model.
system::CimValue caption(const Block& block) {
    std::int32_t family = 0;
    std::int32_t model = 0;
    std::int32_t stepping = 0;
    if (!number(field(block, "cpu family"), family) || !number(field(block, "model"), model)) {
        return {};
    }
    // The kernel writes "unknown" for a processor that cannot be asked, and Windows 0.
    number(field(block, "stepping"), stepping);
    const char* architecture = field(block, "vendor_id") == "GenuineIntel" ? "Intel64" : "AMD64";
    return std::string(architecture) + " Family " + std::to_string(family) + " Model " +
           std::to_string(model) + " Stepping " + std::to_string(stepping);
}

} // namespace

std::vector<CimObject> processorObjects(const std::filesystem::path& root) {
    struct Package {
        std::string id;
        Block first;
        std::int32_t logical = 0;
    };
    std::vector<Package> packages;
    for (const Block& block : logicalProcessors(readSystemText(root / "proc/cpuinfo"))) {
        const auto id = field(block, "physical id");
        auto package =
            std::find_if(packages.begin(), packages.end(), [&](const auto& p) { return p.id == id; });
        if (package == packages.end()) {
            package = packages.insert(package, Package{id, block});
        }
        ++package->logical;
    }

    std::vector<CimObject> objects;
    for (const Package& package : packages) {
        const auto text = caption(package.first);
        objects.push_back({
            {"Caption", text},
            {"Description", text},
            {"DeviceID", "CPU" + std::to_string(objects.size())},
            {"Manufacturer", textOrEmpty(field(package.first, "vendor_id"))},
            {"Name", textOrEmpty(field(package.first, "model name"))},
            {"NumberOfCores", numberOrEmpty(field(package.first, "cpu cores"))},
            {"NumberOfLogicalProcessors", package.logical},
            {"Stepping", textOrEmpty(field(package.first, "stepping"))},
        });
    }
    return objects;
}

} // namespace vexil::platform
