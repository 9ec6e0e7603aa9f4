#pragma once

#include "simulated/direct3d/device_context_proxy.h"
#include "simulated/direct3d/device_faults.h"
#include "simulated/direct3d/device_proxy.h"
#include "simulated/direct3d/work_faults.h"

#include <memory>

namespace vexil::simulated {

class SimulatedDevice;

/// The immediate context of a simulated device. The two are one object to the outside: they live as long as
/// somebody holds either.
class SimulatedDeviceContext final : public DeviceContextProxy {
public:
    SimulatedDeviceContext(ID3D11DeviceContext* real, SimulatedDevice& device);

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    void STDMETHODCALLTYPE GetDevice(ID3D11Device** device) override;
    void STDMETHODCALLTYPE UpdateSubresource(ID3D11Resource* target, UINT index, const D3D11_BOX* box,
                                             const void* rows, UINT rowPitch, UINT depthPitch) override;
    void STDMETHODCALLTYPE Dispatch(UINT x, UINT y, UINT z) override;
    void STDMETHODCALLTYPE Draw(UINT vertexCount, UINT firstVertex) override;
    void STDMETHODCALLTYPE DrawIndexed(UINT indexCount, UINT firstIndex, INT baseVertex) override;
    HRESULT STDMETHODCALLTYPE Map(ID3D11Resource* resource, UINT index, D3D11_MAP type, UINT flags,
                                  D3D11_MAPPED_SUBRESOURCE* mapped) override;
    void STDMETHODCALLTYPE Unmap(ID3D11Resource* resource, UINT index) override;

protected:
    HRESULT admit(const char* call) override;
    bool reachesCard(const char* call) override;
    CallLog* log() const override;

private:
    SimulatedDevice& device_;
    WorkFaults work_;
};

/// A device of a simulated card: the real device, with the card's faults in front of it. Resources are the
/// real ones.
class SimulatedDevice final : public DeviceProxy {
public:
    /// By which a simulated device is told from a real one, and leads to it.
    static constexpr GUID id{0x51B7C7F0, 0x2D36, 0x4C7B, {0x8E, 0x0A, 0x95, 0x4F, 0x3D, 0x1A, 0x6E, 0xB2}};

    /// Takes over the references of the caller.
    SimulatedDevice(ID3D11Device* real, ID3D11DeviceContext* realContext,
                    std::shared_ptr<SimulatedCard> card);
    virtual ~SimulatedDevice();

    [[nodiscard]] DeviceFaults& faults() { return faults_; }
    [[nodiscard]] CallLog* log() const override { return faults_.card().log().get(); }
    [[nodiscard]] ID3D11DeviceContext* context() { return &context_; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return references_.add(); }
    ULONG STDMETHODCALLTYPE Release() override { return references_.release(this); }
    HRESULT STDMETHODCALLTYPE CreateBuffer(const D3D11_BUFFER_DESC* desc, const D3D11_SUBRESOURCE_DATA* data,
                                           ID3D11Buffer** buffer) override;
    HRESULT STDMETHODCALLTYPE CreateTexture2D(const D3D11_TEXTURE2D_DESC* desc,
                                              const D3D11_SUBRESOURCE_DATA* data,
                                              ID3D11Texture2D** texture) override;
    HRESULT STDMETHODCALLTYPE CreateComputeShader(const void* bytecode, SIZE_T size,
                                                  ID3D11ClassLinkage* linkage,
                                                  ID3D11ComputeShader** shader) override;
    HRESULT STDMETHODCALLTYPE CheckFormatSupport(DXGI_FORMAT format, UINT* support) override;
    HRESULT STDMETHODCALLTYPE GetDeviceRemovedReason() override;
    void STDMETHODCALLTYPE GetImmediateContext(ID3D11DeviceContext** context) override;

protected:
    HRESULT admit(const char* call) override { return faults_.admit(call); }

private:
    ReferenceCount references_;
    DeviceFaults faults_;
    SimulatedDeviceContext context_;
};

} // namespace vexil::simulated
