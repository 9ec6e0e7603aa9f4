#include "stand_ins/graphics_stand_ins.h"

#include <vulkan/vulkan.h>

#include <cstdio>
#include <cstring>

namespace {

using namespace vexil::tests;

VKAPI_ATTR VkResult VKAPI_CALL enumerateExtensions(VkPhysicalDevice device, const char*, std::uint32_t* count,
                                                   VkExtensionProperties* extensions) {
    const bool tellsAddress = reinterpret_cast<std::uintptr_t>(device) == cardWithAddress;
    const std::uint32_t present = tellsAddress ? 2 : 1;
    if (extensions == nullptr) {
        *count = present;
        return VK_SUCCESS;
    }
    const char* const names[] = {VK_KHR_SWAPCHAIN_EXTENSION_NAME, VK_EXT_PCI_BUS_INFO_EXTENSION_NAME};
    for (std::uint32_t i = 0; i < present; ++i) {
        std::snprintf(extensions[i].extensionName, sizeof(extensions[i].extensionName), "%s", names[i]);
    }
    *count = present;
    return VK_SUCCESS;
}

/// Writes an address for every device: one that lacks the extension must not be asked.
VKAPI_ATTR void VKAPI_CALL getProperties(VkPhysicalDevice device, VkPhysicalDeviceProperties2* properties) {
    auto* bus = static_cast<VkPhysicalDevicePCIBusInfoPropertiesEXT*>(properties->pNext);
    if (bus != nullptr && bus->sType == VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_PCI_BUS_INFO_PROPERTIES_EXT) {
        bus->pciDomain = 0;
        bus->pciBus = reinterpret_cast<std::uintptr_t>(device) == cardWithAddress ? 0x0A : 0x0B;
        bus->pciDevice = 0;
        bus->pciFunction = 0;
    }
}

} // namespace

extern "C" VKAPI_ATTR PFN_vkVoidFunction VKAPI_CALL vkGetInstanceProcAddr(VkInstance instance,
                                                                          const char* name) {
    if (reinterpret_cast<std::uintptr_t>(instance) != standInInstance) {
        return nullptr;
    }
    if (std::strcmp(name, "vkEnumerateDeviceExtensionProperties") == 0) {
        return reinterpret_cast<PFN_vkVoidFunction>(&enumerateExtensions);
    }
    if (std::strcmp(name, "vkGetPhysicalDeviceProperties2") == 0) {
        return reinterpret_cast<PFN_vkVoidFunction>(&getProperties);
    }
    return nullptr;
}
