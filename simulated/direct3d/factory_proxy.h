#pragma once

#include "simulated/direct3d/com_proxy.h"

#include <dxgi.h>

namespace vexil::simulated {

/// Hands every call on to a real factory.
class FactoryProxy : public ComProxy<IDXGIFactory> {
public:
    using ComProxy::ComProxy;

    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID guid, UINT dataSize, const void* data) override {
        return forward<&IDXGIFactory::SetPrivateData>("SetPrivateData", guid, dataSize, data);
    }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID guid, const IUnknown* object) override {
        return forward<&IDXGIFactory::SetPrivateDataInterface>("SetPrivateDataInterface", guid, object);
    }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID guid, UINT* dataSize, void* data) override {
        return forward<&IDXGIFactory::GetPrivateData>("GetPrivateData", guid, dataSize, data);
    }
    HRESULT STDMETHODCALLTYPE GetParent(REFIID riid, void** parent) override {
        return forward<&IDXGIFactory::GetParent>("GetParent", riid, parent);
    }
    HRESULT STDMETHODCALLTYPE EnumAdapters(UINT index, IDXGIAdapter** adapter) override {
        return forward<&IDXGIFactory::EnumAdapters>("EnumAdapters", index, adapter);
    }
    HRESULT STDMETHODCALLTYPE MakeWindowAssociation(HWND window, UINT flags) override {
        return forward<&IDXGIFactory::MakeWindowAssociation>("MakeWindowAssociation", window, flags);
    }
    HRESULT STDMETHODCALLTYPE GetWindowAssociation(HWND* window) override {
        return forward<&IDXGIFactory::GetWindowAssociation>("GetWindowAssociation", window);
    }
    HRESULT STDMETHODCALLTYPE CreateSwapChain(IUnknown* device, DXGI_SWAP_CHAIN_DESC* desc,
                                              IDXGISwapChain** swapchain) override {
        return forward<&IDXGIFactory::CreateSwapChain>("CreateSwapChain", device, desc, swapchain);
    }
    HRESULT STDMETHODCALLTYPE CreateSoftwareAdapter(HMODULE swrast, IDXGIAdapter** adapter) override {
        return forward<&IDXGIFactory::CreateSoftwareAdapter>("CreateSoftwareAdapter", swrast, adapter);
    }

protected:
    ~FactoryProxy() = default;
};

} // namespace vexil::simulated
