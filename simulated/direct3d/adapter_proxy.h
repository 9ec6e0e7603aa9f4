#pragma once

#include "simulated/direct3d/com_proxy.h"

#include <dxgi.h>

namespace vexil::simulated {

/// Hands every call on to a real adapter.
class AdapterProxy : public ComProxy<IDXGIAdapter> {
public:
    using ComProxy::ComProxy;

    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID guid, UINT dataSize, const void* data) override {
        return forward<&IDXGIAdapter::SetPrivateData>("SetPrivateData", guid, dataSize, data);
    }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID guid, const IUnknown* object) override {
        return forward<&IDXGIAdapter::SetPrivateDataInterface>("SetPrivateDataInterface", guid, object);
    }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID guid, UINT* dataSize, void* data) override {
        return forward<&IDXGIAdapter::GetPrivateData>("GetPrivateData", guid, dataSize, data);
    }
    HRESULT STDMETHODCALLTYPE GetParent(REFIID riid, void** parent) override {
        return forward<&IDXGIAdapter::GetParent>("GetParent", riid, parent);
    }
    HRESULT STDMETHODCALLTYPE EnumOutputs(UINT index, IDXGIOutput** output) override {
        return forward<&IDXGIAdapter::EnumOutputs>("EnumOutputs", index, output);
    }
    HRESULT STDMETHODCALLTYPE GetDesc(DXGI_ADAPTER_DESC* desc) override {
        return forward<&IDXGIAdapter::GetDesc>("GetDesc", desc);
    }
    HRESULT STDMETHODCALLTYPE CheckInterfaceSupport(REFGUID guid, LARGE_INTEGER* umdVersion) override {
        return forward<&IDXGIAdapter::CheckInterfaceSupport>("CheckInterfaceSupport", guid, umdVersion);
    }

protected:
    ~AdapterProxy() = default;
};

} // namespace vexil::simulated
