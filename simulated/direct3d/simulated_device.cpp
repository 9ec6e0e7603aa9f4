#include "simulated/direct3d/simulated_device.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace vexil::simulated {

namespace {

/// The bytes that an update of a whole surface reads; 0 for any other update.
std::size_t surfaceRowsBytes(ID3D11Resource& target, UINT index, const D3D11_BOX* box, UINT rowPitch) {
    D3D11_RESOURCE_DIMENSION dimension{};
    target.GetType(&dimension);
    if (dimension != D3D11_RESOURCE_DIMENSION_TEXTURE2D || index != 0 || box != nullptr) {
        return 0;
    }
    D3D11_TEXTURE2D_DESC desc{};
    static_cast<ID3D11Texture2D&>(target).GetDesc(&desc);
    return hasSurfaceShape(desc) ? std::size_t{rowPitch} * desc.Height : 0;
}

} // namespace

SimulatedDeviceContext::SimulatedDeviceContext(ID3D11DeviceContext* real, SimulatedDevice& device)
    : DeviceContextProxy(real), device_(device), work_(device.faults().card().section()) {}

HRESULT SimulatedDeviceContext::QueryInterface(REFIID wanted, void** object) {
    if (wanted == __uuidof(IUnknown) || wanted == __uuidof(ID3D11DeviceChild) ||
        wanted == __uuidof(ID3D11DeviceContext)) {
        AddRef();
        *object = static_cast<ID3D11DeviceContext*>(this);
        return S_OK;
    }
    return real()->QueryInterface(wanted, object);
}

ULONG SimulatedDeviceContext::AddRef() { return device_.AddRef(); }

ULONG SimulatedDeviceContext::Release() { return device_.Release(); }

HRESULT SimulatedDeviceContext::admit(const char* call) { return device_.faults().admit(call); }

bool SimulatedDeviceContext::reachesCard(const char* call) { return device_.faults().reachesCard(call); }

CallLog* SimulatedDeviceContext::log() const { return device_.log(); }

void SimulatedDeviceContext::GetDevice(ID3D11Device** device) {
    device_.AddRef();
    *device = &device_;
}

void SimulatedDeviceContext::UpdateSubresource(ID3D11Resource* target, UINT index, const D3D11_BOX* box,
                                               const void* rows, UINT rowPitch, UINT depthPitch) {
    const auto* source = static_cast<const std::uint8_t*>(rows);
    const auto size = surfaceRowsBytes(*target, index, box, rowPitch);
    const auto stored = size != 0 ? device_.faults().upload({source, size}, rowPitch) : std::nullopt;
    source = stored ? stored->data() : source;
    real()->UpdateSubresource(target, index, box, source, rowPitch, depthPitch);
    if (auto* const listener = log()) {
        CallText text(*listener, "UpdateSubresource");
        text.arguments(target, index, box, static_cast<const void*>(source), size, rowPitch, depthPitch);
        listener->add(text.finish(S_OK));
    }
}

void SimulatedDeviceContext::Dispatch(UINT x, UINT y, UINT z) {
    if (work_.beginDispatch(*real())) {
        DeviceContextProxy::Dispatch(x, y, z);
    }
    work_.endDispatch(*real());
}

void SimulatedDeviceContext::Draw(UINT vertexCount, UINT firstVertex) {
    DeviceContextProxy::Draw(vertexCount, firstVertex);
    work_.drawn(*real());
}

void SimulatedDeviceContext::DrawIndexed(UINT indexCount, UINT firstIndex, INT baseVertex) {
    DeviceContextProxy::DrawIndexed(indexCount, firstIndex, baseVertex);
    device_.faults().drawnIndexed();
    work_.drawnIndexed(*real());
}

HRESULT SimulatedDeviceContext::Map(ID3D11Resource* resource, UINT index, D3D11_MAP type, UINT flags,
                                    D3D11_MAPPED_SUBRESOURCE* mapped) {
    const HRESULT result = DeviceContextProxy::Map(resource, index, type, flags, mapped);
    if (SUCCEEDED(result)) {
        work_.mapped(*resource, *mapped);
    }
    return result;
}

void SimulatedDeviceContext::Unmap(ID3D11Resource* resource, UINT index) {
    work_.unmapping(*resource);
    DeviceContextProxy::Unmap(resource, index);
    work_.unmapped(*resource);
}

SimulatedDevice::SimulatedDevice(ID3D11Device* real, ID3D11DeviceContext* realContext,
                                 std::shared_ptr<SimulatedCard> card)
    : DeviceProxy(real), faults_(std::move(card)), context_(realContext, *this) {}

SimulatedDevice::~SimulatedDevice() {
    context_.real()->Release();
    real()->Release();
}

HRESULT SimulatedDevice::QueryInterface(REFIID wanted, void** object) {
    if (wanted == __uuidof(IUnknown) || wanted == __uuidof(ID3D11Device) || wanted == id) {
        AddRef();
        *object = this;
        return S_OK;
    }
    return real()->QueryInterface(wanted, object);
}

HRESULT SimulatedDevice::CreateBuffer(const D3D11_BUFFER_DESC* desc, const D3D11_SUBRESOURCE_DATA* data,
                                      ID3D11Buffer** buffer) {
    const HRESULT result = DeviceProxy::CreateBuffer(desc, data, buffer);
    if (SUCCEEDED(result)) {
        faults_.bufferMade(**buffer, *desc);
    }
    return result;
}

HRESULT SimulatedDevice::CreateTexture2D(const D3D11_TEXTURE2D_DESC* desc, const D3D11_SUBRESOURCE_DATA* data,
                                         ID3D11Texture2D** texture) {
    const bool hasContent = data != nullptr;
    if (const HRESULT refused = faults_.admitTexture(*desc, hasContent); FAILED(refused)) {
        return refused;
    }
    if (auto* const shared = faults_.sharedSurface(*desc, hasContent)) {
        *texture = shared;
        return S_OK;
    }
    const HRESULT result = DeviceProxy::CreateTexture2D(desc, data, texture);
    if (SUCCEEDED(result)) {
        faults_.textureMade(**texture, *desc, hasContent);
    }
    return result;
}

HRESULT SimulatedDevice::CreateComputeShader(const void* bytecode, SIZE_T size, ID3D11ClassLinkage* linkage,
                                             ID3D11ComputeShader** shader) {
    const HRESULT refused = faults_.admitShader({static_cast<const std::byte*>(bytecode), size});
    return FAILED(refused) ? refused : DeviceProxy::CreateComputeShader(bytecode, size, linkage, shader);
}

HRESULT SimulatedDevice::CheckFormatSupport(DXGI_FORMAT format, UINT* support) {
    const HRESULT result = DeviceProxy::CheckFormatSupport(format, support);
    if (SUCCEEDED(result)) {
        *support = faults_.formatSupport(*support);
    }
    return result;
}

HRESULT SimulatedDevice::GetDeviceRemovedReason() {
    return faults_.removedReason(DeviceProxy::GetDeviceRemovedReason());
}

void SimulatedDevice::GetImmediateContext(ID3D11DeviceContext** context) {
    context_.AddRef();
    *context = &context_;
}

} // namespace vexil::simulated
