#pragma once

#include "simulated/direct3d/com_proxy.h"

#include <dxgi.h>

#include <memory>
#include <utility>

namespace vexil::simulated {

/// The swap chain of a simulated device: the real one, whose calls stand in the card's log.
class SimulatedSwapChain final : public ComProxy<IDXGISwapChain> {
public:
    /// Takes over the reference to `real`. The log may be null.
    SimulatedSwapChain(IDXGISwapChain* real, std::shared_ptr<CallLog> log)
        : ComProxy(real), log_(std::move(log)) {}
    virtual ~SimulatedSwapChain() { real()->Release(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** object) override {
        if (wanted == __uuidof(IUnknown) || wanted == __uuidof(IDXGIObject) ||
            wanted == __uuidof(IDXGIDeviceSubObject) || wanted == __uuidof(IDXGISwapChain)) {
            AddRef();
            *object = this;
            return S_OK;
        }
        return real()->QueryInterface(wanted, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.release(this); }
    HRESULT STDMETHODCALLTYPE SetPrivateData(REFGUID id, UINT size, const void* data) override {
        return real()->SetPrivateData(id, size, data);
    }
    HRESULT STDMETHODCALLTYPE SetPrivateDataInterface(REFGUID id, const IUnknown* object) override {
        return real()->SetPrivateDataInterface(id, object);
    }
    HRESULT STDMETHODCALLTYPE GetPrivateData(REFGUID id, UINT* size, void* data) override {
        return real()->GetPrivateData(id, size, data);
    }
    HRESULT STDMETHODCALLTYPE GetParent(REFIID id, void** parent) override {
        return real()->GetParent(id, parent);
    }
    HRESULT STDMETHODCALLTYPE GetDevice(REFIID id, void** device) override {
        return real()->GetDevice(id, device);
    }
    HRESULT STDMETHODCALLTYPE Present(UINT syncInterval, UINT flags) override {
        return forward<&IDXGISwapChain::Present>("Present", syncInterval, flags);
    }
    HRESULT STDMETHODCALLTYPE GetBuffer(UINT buffer, REFIID id, void** surface) override {
        return real()->GetBuffer(buffer, id, surface);
    }
    HRESULT STDMETHODCALLTYPE SetFullscreenState(WINBOOL fullScreen, IDXGIOutput* target) override {
        return real()->SetFullscreenState(fullScreen, target);
    }
    HRESULT STDMETHODCALLTYPE GetFullscreenState(WINBOOL* fullScreen, IDXGIOutput** target) override {
        return real()->GetFullscreenState(fullScreen, target);
    }
    HRESULT STDMETHODCALLTYPE GetDesc(DXGI_SWAP_CHAIN_DESC* desc) override { return real()->GetDesc(desc); }
    HRESULT STDMETHODCALLTYPE ResizeBuffers(UINT count, UINT width, UINT height, DXGI_FORMAT format,
                                            UINT flags) override {
        return real()->ResizeBuffers(count, width, height, format, flags);
    }
    HRESULT STDMETHODCALLTYPE ResizeTarget(const DXGI_MODE_DESC* mode) override {
        return real()->ResizeTarget(mode);
    }
    HRESULT STDMETHODCALLTYPE GetContainingOutput(IDXGIOutput** output) override {
        return real()->GetContainingOutput(output);
    }
    HRESULT STDMETHODCALLTYPE GetFrameStatistics(DXGI_FRAME_STATISTICS* statistics) override {
        return real()->GetFrameStatistics(statistics);
    }
    HRESULT STDMETHODCALLTYPE GetLastPresentCount(UINT* count) override {
        return real()->GetLastPresentCount(count);
    }

protected:
    CallLog* log() const override { return log_.get(); }

private:
    ReferenceCount references_;
    std::shared_ptr<CallLog> log_;
};

} // namespace vexil::simulated
