#pragma once

#include "module/video_card/direct3d/com_shared.h"

#include <d3d11.h>
#include <dxgi.h>

#include <cstdint>
#include <vector>

namespace vexil::module::video_card {

/// One adapter as DXGI lists it. All adapters of a listing share its factory.
struct DxgiAdapterInfo {
    ComShared<IDXGIAdapter> adapter;
    ComShared<IDXGIFactory> factory;
    DXGI_ADAPTER_DESC desc{};
};

/// A card's Direct3D device with what it was made from. Copies share the four COM objects.
struct Dx11Context {
    ComShared<ID3D11DeviceContext> context; ///< the immediate context
    ComShared<ID3D11Device> device;
    DxgiAdapterInfo adapterInfo;
};

/// Every adapter that DXGI lists and can describe. Empty where there is no Direct3D.
[[nodiscard]] std::vector<DxgiAdapterInfo> enumerateAdapters();

/// A device of feature level 11_0 on the adapter. Throws `std::runtime_error` if it cannot be made.
[[nodiscard]] Dx11Context createDx11Context(const DxgiAdapterInfo& info);

/// A context for each adapter on which a device can be made; the others are left out.
[[nodiscard]] std::vector<Dx11Context> createAllDx11Contexts();

/// Whether the context's adapter has one of the LUIDs (see `AdapterRecord::adapterLuids`).
[[nodiscard]] bool matchesCard(const Dx11Context& context, const std::vector<std::uint64_t>& adapterLuids);

} // namespace vexil::module::video_card
