#include "core/sal.h"

#include "core/never_destroyed.h"
#include "device_list.h"
#include "hidden_symbols.h"
#include "platform/shared_library.h"
#include "simulated/scenario/scenario.h"
#include "system/win_module.h"
#include "text_handlers.h"

#include <chrono>
#include <filesystem>
#include <memory>
#include <system_error>
#include <thread>

namespace {

using namespace vexil;

/// The suite's loader. The flags are not looked at.
class Loader final : public Module {
public:
    void* load(const char* name, std::uint32_t) override { return system::loadedOrFound(search_, name); }
    void* resolve(void* library, const char* symbol) override {
        return hidden_.hides(symbol) ? nullptr : platform::librarySymbol(library, symbol);
    }
    void release(void* library) override { platform::closeLibrary(library); }

private:
    WinModule search_;
    sal::HiddenSymbols hidden_;
};

class Timer final : public SystemTimer {
public:
    void sleepMilliseconds(std::uint32_t duration) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(duration));
    }
    /// A begun tenth counts as a whole one. Who paces work by this clock asks between two pieces of work, now
    /// a little early and now a little late: a finer answer would let every other turn pass.
    double secondsBetween(std::uint32_t start, std::uint32_t end) override {
        const auto milliseconds = end - start;
        return (milliseconds / 100 + (milliseconds % 100 != 0 ? 1 : 0)) / 10.0;
    }
    std::uint32_t now() override {
        const auto time = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<std::uint32_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(time).count());
    }
};

/// Made when the first user asks and freed with the last one, so that a user sees the machine as it is now.
std::unique_ptr<sal::DeviceList> deviceList;
unsigned deviceListUsers = 0;

std::unique_ptr<sal::DeviceSource> makeDeviceSource() {
    const auto scenario = simulated::scenarioFileOfProcess();
    return scenario ? sal::makeScenarioDeviceSource(*scenario) : sal::makeSystemDeviceSource();
}

} // namespace

Module* get_module() {
    // Never destroyed: the module gives its last library back when the statics are gone.
    static vexil::core::NeverDestroyed<Loader> loader;
    return &loader.get();
}

SystemTimer* get_timer() {
    static Timer timer;
    return &timer;
}

StringHandler* get_string_handler() {
    static sal::TextHandler handler;
    return &handler;
}

NumberHandler* get_number_handler() {
    static sal::NumberText handler;
    return &handler;
}

SystemDeviceList* get_device_scanner() {
    if (deviceListUsers == 0) {
        deviceList = std::make_unique<sal::DeviceList>(makeDeviceSource());
    }
    ++deviceListUsers; // A list that could not be made has no user.
    return deviceList.get();
}

void release_device_scanner() {
    if (deviceListUsers > 0 && --deviceListUsers == 0) {
        deviceList.reset();
    }
}

const char* get_temporary_path() {
    static const std::string path = [] {
        std::error_code error;
        const auto folder = std::filesystem::temp_directory_path(error);
        return error ? std::string(".") : folder.string();
    }();
    return path.c_str();
}
