#include "module/video_card/direct3d/dx11_context.h"

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/direct3d_api.h"

#include <algorithm>
#include <stdexcept>

namespace vexil::module::video_card {

namespace {

std::uint64_t luidNumber(const LUID& luid) {
    return static_cast<std::uint64_t>(static_cast<std::uint32_t>(luid.HighPart)) << 32 |
           static_cast<std::uint32_t>(luid.LowPart);
}

ComShared<IDXGIFactory> createFactory() {
    const auto create = direct3dApi().createFactory;
    void* factory = nullptr;
    if (create == nullptr || FAILED(create(__uuidof(IDXGIFactory), &factory))) {
        return nullptr;
    }
    return shareCom(static_cast<IDXGIFactory*>(factory));
}

} // namespace

std::vector<DxgiAdapterInfo> enumerateAdapters() {
    std::vector<DxgiAdapterInfo> adapters;
    const auto factory = createFactory();
    if (!factory) {
        return adapters;
    }
    for (UINT index = 0;; ++index) {
        DxgiAdapterInfo info{nullptr, factory, {}};
        if (FAILED(createCom(info.adapter, [&](auto out) { return factory->EnumAdapters(index, out); }))) {
            return adapters;
        }
        if (SUCCEEDED(info.adapter->GetDesc(&info.desc))) {
            adapters.push_back(std::move(info));
        }
    }
}

Dx11Context createDx11Context(const DxgiAdapterInfo& info) {
    // Direct2D draws on the surfaces of this device, which the flag is for. Cards below the level get no
    // device.
    static constexpr UINT flags = D3D11_CREATE_DEVICE_BGRA_SUPPORT;
    static constexpr D3D_FEATURE_LEVEL level = D3D_FEATURE_LEVEL_11_0;
    static constexpr UINT sdkVersion = 7;

    const auto create = direct3dApi().createDevice;
    ID3D11Device* device = nullptr;
    ID3D11DeviceContext* context = nullptr;
    if (create == nullptr || FAILED(create(info.adapter.get(), D3D_DRIVER_TYPE_UNKNOWN, nullptr, flags,
                                           &level, 1, sdkVersion, &device, nullptr, &context))) {
        throw std::runtime_error("Failed to create device");
    }
    auto sharedDevice = shareCom(device);
    return {shareCom(context), std::move(sharedDevice), info};
}

std::vector<Dx11Context> createAllDx11Contexts() {
    std::vector<Dx11Context> contexts;
    for (const auto& info : enumerateAdapters()) {
        try {
            contexts.push_back(createDx11Context(info));
        } catch (...) {
            // The other adapters still work.
        }
    }
    return contexts;
}

bool matchesCard(const Dx11Context& context, const std::vector<std::uint64_t>& adapterLuids) {
    return std::ranges::find(adapterLuids, luidNumber(context.adapterInfo.desc.AdapterLuid)) !=
           adapterLuids.end();
}

} // namespace vexil::module::video_card
