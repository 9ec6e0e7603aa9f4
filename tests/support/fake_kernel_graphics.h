#pragma once

#include "core/library_loader.h"
#include "module/video_card/statistics/d3dkmt/sample_clock.h"
#include "platform/kernel_graphics.h"
#include "platform/wide_text.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace vexil::tests {

namespace d3dkmt = platform::d3dkmt;

/// The kernel-mode graphics library as a test wants it, and the loader that finds it. One at a time: the
/// library's functions know no object, so they work on the last one made.
class FakeKernelGraphics final : public ::Module {
public:
    FakeKernelGraphics() { current_ = this; }

    std::map<std::string, std::uint32_t> adapters; ///< the LUIDs of the paths that open
    std::set<std::string> missing;                 ///< symbols
    void* library = this;
    d3dkmt::Status openStatus = d3dkmt::success;
    std::function<d3dkmt::Status(d3dkmt::OpenAdapterFromDeviceName&)> open = [this](auto& request) {
        return openByPath(request);
    };
    std::function<d3dkmt::Status(d3dkmt::QueryStatistics&)> query = [](auto&) { return d3dkmt::success; };
    std::vector<std::string> loads;
    std::set<void*> resolvedFrom; ///< the handles that symbols were looked up in
    std::set<std::string> resolved;
    std::function<void()> onResolve = [] {};

    void* load(const char* name, std::uint32_t flags) override {
        loads.push_back(std::string(name) + " " + std::to_string(flags));
        return library;
    }
    void* resolve(void* from, const char* symbol) override {
        const std::string name = symbol;
        resolvedFrom.insert(from);
        resolved.insert(name);
        onResolve();
        if (from != this || missing.contains(name)) {
            return nullptr;
        }
        return name == "D3DKMTOpenAdapterFromDeviceName" ? reinterpret_cast<void*>(&openAdapter)
               : name == "D3DKMTQueryStatistics"         ? reinterpret_cast<void*>(&ask)
                                                         : nullptr;
    }
    void release(void*) override { loads.emplace_back("release"); }

private:
    d3dkmt::Status openByPath(d3dkmt::OpenAdapterFromDeviceName& request) const {
        const auto found = adapters.find(platform::toUtf8(request.deviceName));
        if (found == adapters.end()) {
            return d3dkmt::invalidParameter;
        }
        request.adapter = found->second;
        request.adapterLuid = {found->second, -1};
        return openStatus;
    }
    static d3dkmt::Status openAdapter(d3dkmt::OpenAdapterFromDeviceName* request) {
        return current_->open(*request);
    }
    static d3dkmt::Status ask(d3dkmt::QueryStatistics* request) { return current_->query(*request); }

    static inline FakeKernelGraphics* current_ = nullptr;
};

/// A clock that stands still unless it is told, or slept with.
class FakeSampleClock final : public module::video_card::SampleClock {
public:
    using Duration = std::chrono::steady_clock::duration;

    /// Of the performance counter, in units of 100 nanoseconds. The module reads it once for the process.
    static constexpr std::int64_t countsOfSecond = 10'000'000;

    std::chrono::steady_clock::time_point time{std::chrono::hours(1)};
    std::vector<Duration> sleeps;
    int frequencyReads = 0;
    /// What a sleep takes of what it was asked for.
    std::function<Duration(Duration)> sleepTakes = [](Duration asked) { return asked; };

    void pass(Duration duration) { time += duration; }

    std::int64_t counter() override {
        return std::chrono::duration_cast<std::chrono::nanoseconds>(time.time_since_epoch()).count() / 100;
    }
    std::int64_t frequency() override {
        ++frequencyReads;
        return countsOfSecond;
    }
    std::chrono::steady_clock::time_point now() override { return time; }
    void sleepFor(Duration duration) override {
        sleeps.push_back(duration);
        pass(sleepTakes(duration));
    }
};

} // namespace vexil::tests
