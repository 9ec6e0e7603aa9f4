#pragma once

#include "core/library_loader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace vexil::tests {

using Events = std::vector<std::string>;

/// A loader that has every library but those that a test takes away, and writes down what is loaded and
/// released. The handle of a library is the loader itself.
class RecordedLoader : public ::Module {
public:
    Events events;                          ///< in order; those who derive from it add theirs
    std::set<std::string> missingLibraries; ///< by name
    std::uint32_t flags = 0;                ///< of the last loading
    std::function<void(const std::string& name)> onLoad = [](const std::string&) {};

    void* load(const char* name, std::uint32_t loadFlags) override {
        flags = loadFlags;
        onLoad(name);
        const bool missing = missingLibraries.contains(name);
        events.push_back((missing ? "miss " : "load ") + std::string(name));
        return missing ? nullptr : this;
    }
    void release(void* library) override {
        events.push_back(library == this ? "release" : "release of a foreign library");
    }

    [[nodiscard]] std::ptrdiff_t count(const std::string& event) const {
        return std::ranges::count(events, event);
    }
};

template <typename Function>
void* addressOf(Function* function) {
    return reinterpret_cast<void*>(function);
}

} // namespace vexil::tests
