#include "platform/linux/kernel_graphics/adapter_luids.h"

#include "platform/direct3d_environment.h"
#include "platform/library_names.h"
#include "platform/shared_library.h"

#include <dxgi.h>
#include <vulkan/vulkan.h>

#include <algorithm>
#include <cstring>
#include <memory>

namespace vexil::platform {

/// Not in the unnamed namespace: of a class there the compiler knows that nobody else derives from it, and
/// makes the calls of its pure functions end the process.
class InteropAdapter : public IUnknown {
public:
    virtual void STDMETHODCALLTYPE GetVulkanHandles(VkInstance* instance, VkPhysicalDevice* device) = 0;
};

namespace {

/// DXVK's way from an adapter to the Vulkan device behind it (its interface IDXGIVkInteropAdapter).
constexpr GUID interopAdapterId = {
    0x3a6d8f2c, 0xb0e8, 0x4ab4, {0xb4, 0xdc, 0x4f, 0xd2, 0x48, 0x91, 0xbf, 0xa5}};

template <typename T>
struct Releaser {
    void operator()(T* object) const { object->Release(); }
};
template <typename T>
using Owned = std::unique_ptr<T, Releaser<T>>;

PFN_vkGetInstanceProcAddr vulkanEntry() {
    static void* const library = openTrustedLibrary("libvulkan.so.1");
    return library == nullptr
               ? nullptr
               : reinterpret_cast<PFN_vkGetInstanceProcAddr>(librarySymbol(library, "vkGetInstanceProcAddr"));
}

bool tellsPciAddress(PFN_vkGetInstanceProcAddr entry, VkInstance instance, VkPhysicalDevice device) {
    const auto enumerate = reinterpret_cast<PFN_vkEnumerateDeviceExtensionProperties>(
        entry(instance, "vkEnumerateDeviceExtensionProperties"));
    std::uint32_t count = 0;
    if (enumerate == nullptr || enumerate(device, nullptr, &count, nullptr) != VK_SUCCESS) {
        return false;
    }
    std::vector<VkExtensionProperties> extensions(count);
    if (enumerate(device, nullptr, &count, extensions.data()) != VK_SUCCESS) {
        return false;
    }
    return std::ranges::any_of(extensions, [](const VkExtensionProperties& extension) {
        return std::strcmp(extension.extensionName, VK_EXT_PCI_BUS_INFO_EXTENSION_NAME) == 0;
    });
}

std::optional<PciAddress> addressOf(IDXGIAdapter& adapter) {
    const auto entry = vulkanEntry();
    void* raw = nullptr;
    if (entry == nullptr || FAILED(adapter.QueryInterface(interopAdapterId, &raw))) {
        return std::nullopt;
    }
    const Owned<InteropAdapter> interop(static_cast<InteropAdapter*>(raw));
    VkInstance instance = VK_NULL_HANDLE;
    VkPhysicalDevice device = VK_NULL_HANDLE;
    interop->GetVulkanHandles(&instance, &device);
    const auto getProperties = reinterpret_cast<PFN_vkGetPhysicalDeviceProperties2>(
        entry(instance, "vkGetPhysicalDeviceProperties2"));
    if (getProperties == nullptr || !tellsPciAddress(entry, instance, device)) {
        return std::nullopt;
    }
    VkPhysicalDevicePCIBusInfoPropertiesEXT bus{};
    bus.sType = VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_PCI_BUS_INFO_PROPERTIES_EXT;
    VkPhysicalDeviceProperties2 properties{};
    properties.sType = VK_STRUCTURE_TYPE_PHYSICAL_DEVICE_PROPERTIES_2;
    properties.pNext = &bus;
    getProperties(device, &properties);
    return PciAddress{bus.pciDomain, bus.pciBus, bus.pciDevice, bus.pciFunction};
}

Owned<IDXGIFactory> makeFactory() {
    if (prepareDirect3D() != nullptr) {
        return nullptr;
    }
    // Kept for the process: the drivers behind it do not survive being unloaded.
    static void* const library = openTrustedLibrary(dxgiLibrary());
    if (library == nullptr) {
        return nullptr;
    }
    using CreateFactory = HRESULT (*)(REFIID, void**);
    const auto create = reinterpret_cast<CreateFactory>(librarySymbol(library, "CreateDXGIFactory"));
    void* factory = nullptr;
    if (create == nullptr || FAILED(create(__uuidof(IDXGIFactory), &factory))) {
        return nullptr;
    }
    return Owned<IDXGIFactory>(static_cast<IDXGIFactory*>(factory));
}

} // namespace

std::optional<PciAddress> pciAddressOfPath(const std::string& devicePath) {
    return parsePciAddress(devicePath.substr(devicePath.find_last_of('/') + 1));
}

std::vector<AdapterLuid> listAdapterLuids() {
    std::vector<AdapterLuid> luids;
    const auto factory = makeFactory();
    if (!factory) {
        return luids;
    }
    IDXGIAdapter* raw = nullptr;
    for (UINT i = 0; SUCCEEDED(factory->EnumAdapters(i, &raw)); ++i) {
        const Owned<IDXGIAdapter> adapter(raw);
        DXGI_ADAPTER_DESC desc{};
        const auto address = addressOf(*adapter);
        if (address && SUCCEEDED(adapter->GetDesc(&desc))) {
            luids.push_back({*address,
                             {static_cast<std::uint32_t>(desc.AdapterLuid.LowPart),
                              static_cast<std::int32_t>(desc.AdapterLuid.HighPart)}});
        }
    }
    return luids;
}

} // namespace vexil::platform
