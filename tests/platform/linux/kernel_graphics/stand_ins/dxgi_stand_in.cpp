#include "stand_ins/graphics_stand_ins.h"

#include <dxgi.h>
#include <vulkan/vulkan.h>

#include <array>
#include <cstring>

namespace {

using namespace vexil::tests;

GraphicsObjects objects;

/// DXVK's interface IDXGIVkInteropAdapter.
constexpr GUID interopAdapterId = {
    0x3a6d8f2c, 0xb0e8, 0x4ab4, {0xb4, 0xdc, 0x4f, 0xd2, 0x48, 0x91, 0xbf, 0xa5}};

template <typename Interface>
class Counted : public Interface {
public:
    Counted() { ++objects.objectsAlive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    virtual ~Counted() { --objects.objectsAlive; }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const auto left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }

private:
    ULONG references_ = 1;
};

/// What no caller of these adapters asks for.
template <typename Interface>
class PlainObject : public Counted<Interface> {
public:
    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID, UINT, const void*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID, const IUnknown*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID, UINT*, void*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetParent(REFIID, void**) override { return E_NOTIMPL; }
};

class InteropAdapter : public IUnknown {
public:
    virtual void STDMETHODCALLTYPE GetVulkanHandles(VkInstance* instance, VkPhysicalDevice* device) = 0;
};

class Interop final : public Counted<InteropAdapter> {
public:
    explicit Interop(std::uintptr_t device) : device_(device) {}

    void STDMETHODCALLTYPE GetVulkanHandles(VkInstance* instance, VkPhysicalDevice* device) override {
        *instance = reinterpret_cast<VkInstance>(standInInstance);
        *device = reinterpret_cast<VkPhysicalDevice>(device_);
    }

private:
    std::uintptr_t device_;
};

struct AdapterRow {
    bool interop;
    std::uintptr_t device;
    LUID luid;
};
constexpr std::array<AdapterRow, 3> adapterRows = {{
    {false, cardWithAddress, {5, 0}},
    {true, cardWithoutAddress, {6, 0}},
    {true, cardWithAddress, {7, -1}},
}};

class Adapter final : public PlainObject<IDXGIAdapter> {
public:
    explicit Adapter(const AdapterRow& row) : row_(row) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (!row_.interop || std::memcmp(&id, &interopAdapterId, sizeof(id)) != 0) {
            return PlainObject::QueryInterface(id, object);
        }
        *object = static_cast<InteropAdapter*>(new Interop(row_.device));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE EnumOutputs(UINT, IDXGIOutput**) override { return DXGI_ERROR_NOT_FOUND; }
    HRESULT STDMETHODCALLTYPE GetDesc(DXGI_ADAPTER_DESC* desc) override {
        *desc = {};
        desc->AdapterLuid = row_.luid;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE CheckInterfaceSupport(REFGUID, LARGE_INTEGER*) override { return E_NOTIMPL; }

private:
    const AdapterRow& row_;
};

class Factory final : public PlainObject<IDXGIFactory> {
public:
    HRESULT STDMETHODCALLTYPE EnumAdapters(UINT index, IDXGIAdapter** adapter) override {
        if (index >= adapterRows.size()) {
            return DXGI_ERROR_NOT_FOUND;
        }
        *adapter = new Adapter(adapterRows[index]);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE MakeWindowAssociation(HWND, UINT) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetWindowAssociation(HWND*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CreateSwapChain(IUnknown*, DXGI_SWAP_CHAIN_DESC*, IDXGISwapChain**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateSoftwareAdapter(HMODULE, IDXGIAdapter**) override { return E_NOTIMPL; }
};

} // namespace

extern "C" HRESULT CreateDXGIFactory(REFIID, void** factory) {
    ++objects.factoriesMade;
    *factory = static_cast<IDXGIFactory*>(new Factory);
    return S_OK;
}

extern "C" GraphicsObjects VexilGraphicsObjects() { return objects; }
