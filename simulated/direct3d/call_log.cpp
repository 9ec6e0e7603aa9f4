#include "simulated/direct3d/call_log.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <utility>

namespace vexil::simulated {

void CallLog::add(std::string line) {
    const std::lock_guard lock(mutex_);
    lines_.push_back(std::move(line));
}

std::vector<std::string> CallLog::take() {
    const std::lock_guard lock(mutex_);
    return std::exchange(lines_, {});
}

std::string CallLog::nameNew(const void* object, const std::string& kind) {
    const std::lock_guard lock(mutex_);
    return names_[object] = kind + "#" + std::to_string(++lastNumbers_[kind]);
}

std::string CallLog::nameOf(const void* object) const {
    if (object == nullptr) {
        return "null";
    }
    const std::lock_guard lock(mutex_);
    const auto found = names_.find(object);
    return found == names_.end() ? "?" : found->second;
}

std::string contentMark(std::span<const std::byte> content) {
    constexpr std::uint64_t prime = 0x100000001B3;
    std::uint64_t mark = 0xCBF29CE484222325;
    while (!content.empty()) {
        std::uint64_t word = 0;
        const auto count = std::min(content.size(), sizeof word);
        std::memcpy(&word, content.data(), count);
        mark = (mark ^ word) * prime;
        content = content.subspan(count);
    }
    std::array<char, 17> text{};
    std::snprintf(text.data(), text.size(), "%016llx", static_cast<unsigned long long>(mark));
    return text.data();
}

} // namespace vexil::simulated
