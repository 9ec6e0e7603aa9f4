#include "core/never_destroyed.h"
#include "core/shared_api.h"
#include "platform/adl.h"
#include "platform/linux/adl/amdgpu_cards.h"
#include "platform/linux/system_roots.h"

#include <algorithm>
#include <cstdio>
#include <mutex>
#include <optional>
#include <vector>

// AMD has no display library for Linux. This one answers its functions from what the kernel's amdgpu driver
// writes into sysfs, so that the module finds its cards in the same way on both homes.
namespace {

using namespace vexil::platform;

/// All cards are of the one generation whose temperature call names the sensor that it means.
constexpr std::int32_t overdriveGeneration = 7;
constexpr std::int32_t driverVendorId = 1002; // AMD writes its vendor id in decimal digits here

/// A card keeps its place, which is its adapter index, for as long as the library is started, whatever other
/// cards come and go.
struct Library {
    std::mutex mutex;
    unsigned users = 0;
    std::vector<AmdgpuCard> cards;
};

Library& library() {
    // Never destroyed: the module ends its use of ADL when the statics of this library are gone.
    static vexil::core::NeverDestroyed<Library> only;
    return only.get();
}

void lookForCards(Library& state) {
    for (auto& card : listAmdgpuCards(sysfsRoot())) {
        if (std::ranges::find(state.cards, card.folder, &AmdgpuCard::folder) == state.cards.end()) {
            state.cards.push_back(std::move(card));
        }
    }
}

/// The card of an adapter index.
std::optional<AmdgpuCard> cardOf(std::int32_t index) {
    const std::lock_guard lock(library().mutex);
    const auto& cards = library().cards;
    const bool known = index >= 0 && static_cast<std::size_t>(index) < cards.size();
    return known ? std::optional(cards[static_cast<std::size_t>(index)]) : std::nullopt;
}

adl::AdapterInfo describe(const AmdgpuCard& card, std::size_t index) {
    adl::AdapterInfo info{};
    info.iSize = sizeof(info);
    info.iAdapterIndex = static_cast<std::int32_t>(index);
    info.iBusNumber = static_cast<std::int32_t>(card.bus);
    info.iDeviceNumber = static_cast<std::int32_t>(card.device);
    info.iFunctionNumber = static_cast<std::int32_t>(card.function);
    info.iVendorID = driverVendorId;
    info.iPresent = 1;
    info.iExist = 1;
    std::snprintf(info.strAdapterName, sizeof(info.strAdapterName), "AMD graphics card 1002:%04x",
                  card.deviceId().value_or(0));
    std::snprintf(info.strDriverPath, sizeof(info.strDriverPath), "%s", card.folder.c_str());
    return info;
}

/// A call that asks a card for one value.
template <typename Value, typename Target, typename Read>
adl::Status answer(std::int32_t index, Target* target, Read read) {
    const auto card = cardOf(index);
    if (!card) {
        return adl::invalidAdapterIndex;
    }
    if (target == nullptr) {
        return adl::nullPointer;
    }
    const std::optional<Value> value = read(*card);
    if (!value) {
        return adl::error;
    }
    *target = static_cast<Target>(*value);
    return adl::ok;
}

} // namespace

extern "C" {

/// Fails where there is no card, so that a later attempt looks again.
VEXIL_SHARED_API adl::Status ADL_Main_Control_Create(adl::Allocate allocate, std::int32_t) {
    if (allocate == nullptr) {
        return adl::nullPointer;
    }
    const std::lock_guard lock(library().mutex);
    lookForCards(library());
    if (library().cards.empty()) {
        return adl::error;
    }
    ++library().users;
    return adl::ok;
}

VEXIL_SHARED_API adl::Status ADL_Main_Control_Destroy() {
    const std::lock_guard lock(library().mutex);
    if (library().users == 0) {
        return adl::notInitialized;
    }
    if (--library().users == 0) {
        library().cards = {}; // with its memory, which nothing would free when this library is unloaded
    }
    return adl::ok;
}

VEXIL_SHARED_API adl::Status ADL_Adapter_NumberOfAdapters_Get(std::int32_t* count) {
    if (count == nullptr) {
        return adl::nullPointer;
    }
    const std::lock_guard lock(library().mutex);
    if (library().users == 0) {
        return adl::notInitialized;
    }
    lookForCards(library());
    *count = static_cast<std::int32_t>(library().cards.size());
    return adl::ok;
}

VEXIL_SHARED_API adl::Status ADL_Adapter_AdapterInfo_Get(adl::AdapterInfo* adapters, std::int32_t bytes) {
    if (adapters == nullptr) {
        return adl::nullPointer;
    }
    const std::lock_guard lock(library().mutex);
    const auto& cards = library().cards;
    if (bytes < 0 || static_cast<std::size_t>(bytes) / sizeof(adl::AdapterInfo) < cards.size()) {
        return adl::invalidParameterSize;
    }
    for (std::size_t index = 0; index < cards.size(); ++index) {
        adapters[index] = describe(cards[index], index);
    }
    return adl::ok;
}

VEXIL_SHARED_API adl::Status ADL_Adapter_Active_Get(std::int32_t index, std::int32_t* active) {
    return answer<std::int32_t>(index, active, [](const AmdgpuCard& card) -> std::optional<std::int32_t> {
        return card.isPresent() ? 1 : 0;
    });
}

VEXIL_SHARED_API adl::Status ADL2_Overdrive_Caps(adl::ContextHandle, std::int32_t index,
                                                 std::int32_t* supported, std::int32_t* enabled,
                                                 std::int32_t* version) {
    if (!cardOf(index)) {
        return adl::invalidAdapterIndex;
    }
    if (supported == nullptr || enabled == nullptr || version == nullptr) {
        return adl::nullPointer;
    }
    *supported = 1;
    *enabled = 0;
    *version = overdriveGeneration;
    return adl::ok;
}

VEXIL_SHARED_API adl::Status ADL2_OverdriveN_Temperature_Get(adl::ContextHandle, std::int32_t index,
                                                             std::int32_t kind, std::int32_t* millidegrees) {
    if (kind != adl::coreTemperature) {
        return adl::invalidParameter;
    }
    return answer<std::int32_t>(index, millidegrees,
                                [](const AmdgpuCard& card) { return card.millidegrees(); });
}

/// The load is a matter of the kernel-mode graphics statistics; this function only completes its table.
VEXIL_SHARED_API adl::Status ADL2_OverdriveN_PerformanceStatus_Get() { return adl::notSupported; }

VEXIL_SHARED_API adl::Status ADL_Adapter_MemoryInfo_Get(std::int32_t index, adl::MemoryInfo* info) {
    return answer<std::uint64_t>(index, info == nullptr ? nullptr : &info->iMemorySize,
                                 [](const AmdgpuCard& card) { return card.memoryBytes(); });
}

VEXIL_SHARED_API adl::Status ADL2_Adapter_VRAMUsage_Get(adl::ContextHandle, std::int32_t index,
                                                        std::int32_t* megabytes) {
    return answer<std::uint64_t>(index, megabytes,
                                 [](const AmdgpuCard& card) -> std::optional<std::uint64_t> {
                                     const auto bytes = card.usedBytes();
                                     return bytes ? std::optional(*bytes >> 20) : std::nullopt;
                                 });
}
}
