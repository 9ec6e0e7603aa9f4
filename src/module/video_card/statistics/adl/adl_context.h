#pragma once

#include "core/library_loader.h"
#include "platform/adl.h"

#include <cstdint>
#include <memory>
#include <mutex>

namespace vexil::module::video_card {

/// Memory for the library's results: 4 bytes for each unit of `count`. Null if that does not fit.
[[nodiscard]] void* allocateForAdl(std::int32_t count);

/// AMD's display library, loaded and started, with its functions. A generation's table exists only if the
/// library has all of its functions.
class ADLContext {
public:
    struct Overdrive5 {
        platform::adl::Overdrive5ThermalDevicesEnum thermalDevicesEnum = nullptr;
        platform::adl::Overdrive5TemperatureGet temperatureGet = nullptr;
        platform::adl::Uncalled currentActivityGet = nullptr;
    };
    struct Overdrive6 {
        platform::adl::Overdrive6TemperatureGet temperatureGet = nullptr;
        platform::adl::Uncalled currentStatusGet = nullptr;
    };
    struct OverdriveN {
        platform::adl::OverdriveNTemperatureGet temperatureGet = nullptr;
        platform::adl::Uncalled performanceStatusGet = nullptr;
    };
    /// Always there; either entry may be null.
    struct Memory {
        platform::adl::MemoryInfoGet memoryInfoGet = nullptr;
        platform::adl::VramUsageGet vramUsageGet = nullptr;
    };

    /// Null if there is no library, if it lacks one of the functions that every card needs, or if it does not
    /// start. The loader outlives the context.
    [[nodiscard]] static std::shared_ptr<const ADLContext> create(::Module& loader);
    ADLContext(const ADLContext&) = delete;
    ADLContext& operator=(const ADLContext&) = delete;
    ~ADLContext();

    platform::adl::NumberOfAdaptersGet numberOfAdaptersGet = nullptr;
    platform::adl::ActiveGet activeGet = nullptr;
    platform::adl::AdapterInfoGet adapterInfoGet = nullptr;
    platform::adl::OverdriveCaps overdriveCaps = nullptr;
    std::unique_ptr<const Overdrive5> overdrive5;
    std::unique_ptr<const Overdrive6> overdrive6;
    std::unique_ptr<const OverdriveN> overdriveN;
    std::unique_ptr<const Memory> memory;

private:
    explicit ADLContext(::Module& loader) : loader_(loader) {}
    [[nodiscard]] bool resolveFunctions();
    void resolveTables();

    platform::adl::MainControlCreate mainControlCreate_ = nullptr;
    platform::adl::MainControlDestroy mainControlDestroy_ = nullptr;
    void* library_ = nullptr;
    bool started_ = false;
    ::Module& loader_;
};

/// The one context of a process: made by the first request that succeeds, and kept. A request that fails
/// leaves nothing behind, so the next one tries again. To be asked from any thread.
class ADLContexts {
public:
    explicit ADLContexts(::Module& loader) : loader_(loader) {}

    /// Null if there is none to be had.
    [[nodiscard]] std::shared_ptr<const ADLContext> get();

private:
    ::Module& loader_;
    std::mutex mutex_;
    std::shared_ptr<const ADLContext> context_;
};

/// Over the suite's loader. Its context goes with the process.
[[nodiscard]] ADLContexts& systemAdl();

/// The process's context, or null.
[[nodiscard]] std::shared_ptr<const ADLContext> getADLContext();

} // namespace vexil::module::video_card
