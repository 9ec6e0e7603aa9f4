#pragma once

#include "core/library_loader.h"
#include "module/video_card/statistics/nvapi/nvapi_runtime.h"
#include "platform/nvapi.h"
#include "simulated/nvapi/nvapi_machine.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vexil::tests {

using Events = std::vector<std::string>;

/// A loader whose NVAPI library is the stand-in, with what a test changes about it. One at a time: its
/// functions are plain ones, as the interface has them, and find it here.
class NvapiLoader final : public ::Module {
public:
    NvapiLoader() { only = this; }
    ~NvapiLoader() override {
        only = nullptr;
        simulated::setNvapiMachine({});
    }

    Events events;                          ///< of loading, starting, ending and releasing, in order
    std::set<std::string> missingLibraries; ///< by name
    bool exportsQuery = true;
    std::map<std::uint32_t, void*> replacements; ///< functions by id; null for one that is missing
    std::map<std::uint32_t, int> queries;        ///< how often each id was asked for
    std::uint32_t flags = 0;                     ///< of the last loading
    platform::nvapi::Status initializeStatus = platform::nvapi::ok;
    platform::nvapi::Status unloadStatus = platform::nvapi::ok;
    std::function<void(const std::string& name)> onLoad = [](const std::string&) {};

    void* load(const char* name, std::uint32_t loadFlags) override {
        flags = loadFlags;
        onLoad(name);
        const bool missing = missingLibraries.contains(name);
        events.push_back((missing ? "miss " : "load ") + std::string(name));
        return missing ? nullptr : this;
    }
    void* resolve(void* library, const char* symbol) override {
        const bool found = library == this && exportsQuery && symbol == std::string("nvapi_QueryInterface");
        return found ? reinterpret_cast<void*>(&query) : nullptr;
    }
    void release(void* library) override {
        events.push_back(library == this ? "release" : "release of a foreign library");
    }

    [[nodiscard]] std::ptrdiff_t count(const std::string& event) const {
        return std::ranges::count(events, event);
    }

private:
    static void* query(std::uint32_t id) {
        ++only->queries[id];
        if (const auto found = only->replacements.find(id); found != only->replacements.end()) {
            return found->second;
        }
        if (id == platform::nvapi::id::initialize) {
            return reinterpret_cast<void*>(&initialize);
        }
        if (id == platform::nvapi::id::unload) {
            return reinterpret_cast<void*>(&unload);
        }
        return simulated::queryNvapi(id);
    }
    static platform::nvapi::Status initialize() {
        only->events.push_back("initialize");
        return only->initializeStatus;
    }
    static platform::nvapi::Status unload() {
        only->events.push_back("unload");
        return only->unloadStatus;
    }

    static inline NvapiLoader* only = nullptr;
};

/// An access layer and a loader of the sources, as a process has them, over the stand-in.
struct NvapiFixture {
    NvapiLoader loader;
    module::video_card::NvapiAccess access{loader, "the driver's"};
    module::video_card::NvapiRuntime runtime{access, loader};
};

inline simulated::NvapiCardSection healthyGpu(std::uint32_t bus = 1, std::uint32_t slot = 0) {
    simulated::NvapiCardSection gpu;
    gpu.bus = bus;
    gpu.slot = slot;
    gpu.celsius = {45};
    gpu.usagePercent = 7;
    gpu.totalKib = 2048;
    gpu.freeKib = 1024;
    return gpu;
}

template <typename Function>
void* addressOf(Function* function) {
    return reinterpret_cast<void*>(function);
}

} // namespace vexil::tests
