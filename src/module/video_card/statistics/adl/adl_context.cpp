#include "module/video_card/statistics/adl/adl_context.h"

#include "core/sal.h"
#include "platform/library_names.h"

#include <limits>
#include <new>

namespace vexil::module::video_card {

namespace {

constexpr std::size_t unitSize = 4;
/// Restricts the library's lists to adapters that a display is connected to.
constexpr std::int32_t connectedOnly = 1;

void* loadAdl(::Module& loader) {
    for (const char* name : platform::adlLibraries()) {
        if (void* library = loader.load(name, 1)) {
            return library;
        }
    }
    return nullptr;
}

/// False for a function that the library lacks.
template <typename Function>
bool resolve(::Module& loader, void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(loader.resolve(library, name));
    return function != nullptr;
}

} // namespace

void* allocateForAdl(std::int32_t count) {
    // A negative count is a size beyond the address space, like any product that does not fit.
    const auto units = static_cast<std::size_t>(count);
    if (units > std::numeric_limits<std::size_t>::max() / unitSize) {
        return nullptr;
    }
    return ::operator new(units* unitSize, std::nothrow);
}

std::shared_ptr<const ADLContext> ADLContext::create(::Module& loader) {
    const std::shared_ptr<ADLContext> context(new ADLContext(loader));
    context->library_ = loadAdl(loader);
    if (context->library_ == nullptr || !context->resolveFunctions()) {
        return nullptr;
    }
    context->resolveTables();
    if (context->mainControlCreate_(allocateForAdl, connectedOnly) != platform::adl::ok) {
        return nullptr;
    }
    context->started_ = true;
    return context;
}

ADLContext::~ADLContext() {
    if (started_) {
        mainControlDestroy_();
    }
    if (library_ != nullptr) {
        loader_.release(library_);
    }
}

bool ADLContext::resolveFunctions() {
    return resolve(loader_, library_, "ADL_Main_Control_Create", mainControlCreate_) &&
           resolve(loader_, library_, "ADL_Main_Control_Destroy", mainControlDestroy_) &&
           resolve(loader_, library_, "ADL_Adapter_NumberOfAdapters_Get", numberOfAdaptersGet) &&
           resolve(loader_, library_, "ADL_Adapter_Active_Get", activeGet) &&
           resolve(loader_, library_, "ADL_Adapter_AdapterInfo_Get", adapterInfoGet) &&
           resolve(loader_, library_, "ADL2_Overdrive_Caps", overdriveCaps);
}

void ADLContext::resolveTables() {
    Overdrive5 five;
    if (resolve(loader_, library_, "ADL_Overdrive5_ThermalDevices_Enum", five.thermalDevicesEnum) &&
        resolve(loader_, library_, "ADL_Overdrive5_Temperature_Get", five.temperatureGet) &&
        resolve(loader_, library_, "ADL_Overdrive5_CurrentActivity_Get", five.currentActivityGet)) {
        overdrive5 = std::make_unique<const Overdrive5>(five);
    }
    Overdrive6 six;
    if (resolve(loader_, library_, "ADL_Overdrive6_Temperature_Get", six.temperatureGet) &&
        resolve(loader_, library_, "ADL_Overdrive6_CurrentStatus_Get", six.currentStatusGet)) {
        overdrive6 = std::make_unique<const Overdrive6>(six);
    }
    OverdriveN next;
    if (resolve(loader_, library_, "ADL2_OverdriveN_Temperature_Get", next.temperatureGet) &&
        resolve(loader_, library_, "ADL2_OverdriveN_PerformanceStatus_Get", next.performanceStatusGet)) {
        overdriveN = std::make_unique<const OverdriveN>(next);
    }
    Memory both;
    resolve(loader_, library_, "ADL_Adapter_MemoryInfo_Get", both.memoryInfoGet);
    resolve(loader_, library_, "ADL2_Adapter_VRAMUsage_Get", both.vramUsageGet);
    memory = std::make_unique<const Memory>(both);
}

std::shared_ptr<const ADLContext> ADLContexts::get() {
    const std::lock_guard lock(mutex_);
    if (!context_) {
        context_ = ADLContext::create(loader_);
    }
    return context_;
}

ADLContexts& systemAdl() {
    static ADLContexts contexts(*get_module());
    return contexts;
}

std::shared_ptr<const ADLContext> getADLContext() { return systemAdl().get(); }

} // namespace vexil::module::video_card
