#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace vexil::simulated {

/// What reached the Direct3D devices of simulated cards, call by call, each as one line of text:
/// "CreateTexture2D({1024, ...}, null) = texture#3". Objects are named by kind and number as they are made.
class CallLog {
public:
    void add(std::string line);
    /// The lines since the last time.
    [[nodiscard]] std::vector<std::string> take();

    /// Gives a new object a name of its kind.
    std::string nameNew(const void* object, const std::string& kind);
    /// "?" for an object that the log has not seen made.
    [[nodiscard]] std::string nameOf(const void* object) const;

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
    std::map<const void*, std::string> names_;
    std::map<std::string, unsigned> lastNumbers_;
};

/// By which the log tells contents apart: 64-bit FNV-1a over words of 8 bytes, in hexadecimal.
[[nodiscard]] std::string contentMark(std::span<const std::byte> content);

} // namespace vexil::simulated
