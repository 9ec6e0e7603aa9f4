#pragma once

#include "module/video_card/statistics/nvapi/nvapi_runtime.h"
#include "platform/nvapi.h"
#include "simulated/nvapi/nvapi_machine.h"
#include "support/recorded_loader.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace vexil::tests {

/// A loader whose NVAPI library is the stand-in, with what a test changes about it. One at a time: its
/// functions are plain ones, as the interface has them, and find it here.
class NvapiLoader final : public RecordedLoader {
public:
    NvapiLoader() { only = this; }
    ~NvapiLoader() override {
        only = nullptr;
        simulated::setNvapiMachine({});
    }

    bool exportsQuery = true;
    std::map<std::uint32_t, void*> replacements; ///< functions by id; null for one that is missing
    std::map<std::uint32_t, int> queries;        ///< how often each id was asked for
    platform::nvapi::Status initializeStatus = platform::nvapi::ok;
    platform::nvapi::Status unloadStatus = platform::nvapi::ok;

    void* resolve(void* library, const char* symbol) override {
        const bool found = library == this && exportsQuery && symbol == std::string("nvapi_QueryInterface");
        return found ? reinterpret_cast<void*>(&query) : nullptr;
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

} // namespace vexil::tests
