#include "module/video_card/direct3d/com_shared.h"
#include "module/video_card/direct3d/direct3d_api.h"
#include "simulated/direct3d/simulated_adapter.h"
#include "simulated/direct3d/simulated_device.h"
#include "simulated/direct3d/simulated_direct3d.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vexil::simulated {
namespace {

using module::video_card::ComShared;
using module::video_card::direct3dApi;
using module::video_card::shareCom;

constexpr UINT surfaceBytes = 1 << 22;
constexpr D3D11_TEXTURE2D_DESC surfaceDescription = {
    1024, 1024, 1, 1, DXGI_FORMAT_R8G8B8A8_UNORM, {1, 0}, D3D11_USAGE_DEFAULT, D3D11_BIND_SHADER_RESOURCE,
    0,    0};

/// One simulated card with a device, as a program makes it that knows nothing of the simulation.
class SimulatedDirect3D : public testing::Test {
protected:
    void use(Direct3DSection section, std::shared_ptr<CallLog> log = nullptr) {
        card_ = std::make_shared<SimulatedCard>(Direct3DIdentity{"Card", 0x1002, 0x73DF, 0xFFFFFFFE00000003},
                                                std::move(section), std::move(log));
        void* factory = nullptr;
        ASSERT_EQ(
            createSimulatedFactory(direct3dApi().createFactory, {card_}, __uuidof(IDXGIFactory), &factory),
            S_OK);
        factory_ = shareCom(static_cast<IDXGIFactory*>(factory));
        IDXGIAdapter* adapter = nullptr;
        ASSERT_EQ(factory_->EnumAdapters(0, &adapter), S_OK);
        adapter_ = shareCom(adapter);
        ASSERT_EQ(makeDevice(), S_OK);
    }

    HRESULT makeDevice() {
        ID3D11Device* device = nullptr;
        ID3D11DeviceContext* context = nullptr;
        const D3D_FEATURE_LEVEL level = D3D_FEATURE_LEVEL_11_0;
        const HRESULT result = createSimulatedDevice(
            direct3dApi().createDevice,
            {adapter_.get(), D3D_DRIVER_TYPE_UNKNOWN, nullptr, 0, &level, 1, 7, &device, nullptr, &context});
        device_ = shareCom(device);
        context_ = shareCom(context);
        return result;
    }

    HRESULT makeTexture(ComShared<ID3D11Texture2D>& texture,
                        const D3D11_TEXTURE2D_DESC& desc = surfaceDescription) {
        ID3D11Texture2D* made = nullptr;
        const HRESULT result = device_->CreateTexture2D(&desc, nullptr, &made);
        texture = shareCom(made);
        return result;
    }
    std::vector<ComShared<ID3D11Texture2D>> makeSurfaces(int count) {
        std::vector<ComShared<ID3D11Texture2D>> surfaces(static_cast<std::size_t>(count));
        for (auto& surface : surfaces) {
            EXPECT_EQ(makeTexture(surface), S_OK);
        }
        return surfaces;
    }
    void upload(ID3D11Texture2D& texture, std::uint8_t value) {
        const std::vector<std::uint8_t> image(surfaceBytes, value);
        context_->UpdateSubresource(&texture, 0, nullptr, image.data(), 4096, 0);
    }
    std::vector<std::uint8_t> stored(ID3D11Texture2D& texture) {
        auto desc = surfaceDescription;
        desc.Usage = D3D11_USAGE_STAGING;
        desc.BindFlags = 0;
        desc.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
        ComShared<ID3D11Texture2D> staging;
        EXPECT_EQ(makeTexture(staging, desc), S_OK);
        context_->CopyResource(staging.get(), &texture);
        D3D11_MAPPED_SUBRESOURCE mapped{};
        EXPECT_EQ(context_->Map(staging.get(), 0, D3D11_MAP_READ, 0, &mapped), S_OK);
        const auto* bytes = static_cast<const std::uint8_t*>(mapped.pData);
        std::vector<std::uint8_t> image(bytes, bytes + surfaceBytes);
        context_->Unmap(staging.get(), 0);
        return image;
    }

    std::shared_ptr<SimulatedCard> card_;
    ComShared<IDXGIFactory> factory_;
    ComShared<IDXGIAdapter> adapter_;
    ComShared<ID3D11Device> device_;
    ComShared<ID3D11DeviceContext> context_;
};

Direct3DSection sectionWith(const Direct3DFault& fault) {
    Direct3DSection section;
    section.faults = {fault};
    return section;
}

TEST_F(SimulatedDirect3D, ShowsTheCardInThePlaceOfTheRealAdapter) {
    Direct3DSection section;
    section.dedicatedMemory = 5;
    section.sharedMemory = 6;
    use(section);
    DXGI_ADAPTER_DESC desc{};
    ASSERT_EQ(adapter_->GetDesc(&desc), S_OK);
    EXPECT_EQ(desc.VendorId, 0x1002U);
    EXPECT_EQ(desc.DeviceId, 0x73DFU);
    EXPECT_EQ(desc.DedicatedVideoMemory, 5U);
    EXPECT_EQ(desc.SharedSystemMemory, 6U);
    EXPECT_EQ(desc.AdapterLuid.LowPart, 3U);
    EXPECT_EQ(desc.AdapterLuid.HighPart, -2);
    IDXGIAdapter* none = nullptr;
    EXPECT_EQ(factory_->EnumAdapters(1, &none), DXGI_ERROR_NOT_FOUND);
    EXPECT_EQ(none, nullptr);
}

TEST_F(SimulatedDirect3D, DoesNotLeadToTheRealAdapter) {
    use({});
    void* other = nullptr;
    constexpr GUID newerAdapter{0x29038F61, 0x3839, 0x4626, {0x91, 0xFD, 0x08, 0x68, 0x79, 0x01, 0x1A, 0x05}};
    EXPECT_EQ(adapter_->QueryInterface(newerAdapter, &other), E_NOINTERFACE);
    ASSERT_EQ(adapter_->GetParent(__uuidof(IDXGIFactory), &other), S_OK);
    EXPECT_EQ(other, factory_.get());
    factory_->Release();
    ID3D11Device* device = nullptr;
    context_->GetDevice(&device);
    EXPECT_EQ(device, device_.get());
    device->Release();
}

TEST_F(SimulatedDirect3D, KeepsDeviceAndContextAliveForEachOther) {
    use({});
    device_.reset();
    ID3D11Device* device = nullptr;
    context_->GetDevice(&device);
    EXPECT_EQ(device->GetDeviceRemovedReason(), S_OK);
    device->Release();
}

TEST_F(SimulatedDirect3D, StoresWhatAHealthyCardIsGiven) {
    use({});
    const auto surfaces = makeSurfaces(2);
    upload(*surfaces[0], 1);
    upload(*surfaces[1], 2);
    EXPECT_EQ(stored(*surfaces[0]), std::vector<std::uint8_t>(surfaceBytes, 1));
    EXPECT_EQ(stored(*surfaces[1]), std::vector<std::uint8_t>(surfaceBytes, 2));
}

TEST_F(SimulatedDirect3D, StoresOneByteOfOneSurfaceWrongly) {
    use(sectionWith({Direct3DFault::Kind::changedByte, 2, "", 0x12345, 0x81, 0}));
    const auto surfaces = makeSurfaces(3);
    for (const auto& surface : surfaces) {
        upload(*surface, 0x0F);
    }
    auto expected = std::vector<std::uint8_t>(surfaceBytes, 0x0F);
    EXPECT_EQ(stored(*surfaces[0]), expected);
    EXPECT_EQ(stored(*surfaces[2]), expected);
    expected[0x12345] = 0x8E;
    EXPECT_EQ(stored(*surfaces[1]), expected);
}

TEST_F(SimulatedDirect3D, RefusesSurfacesFromTheGivenOneOn) {
    use(sectionWith({Direct3DFault::Kind::surfaceAllocation, 3, "", 0, 0, 0x80070057}));
    const auto surfaces = makeSurfaces(2);
    ComShared<ID3D11Texture2D> refused;
    EXPECT_EQ(static_cast<std::uint32_t>(makeTexture(refused)), 0x80070057U);
    EXPECT_EQ(static_cast<std::uint32_t>(makeTexture(refused)), 0x80070057U);
    // What a test makes beside the surfaces it has is no surface.
    upload(*surfaces[0], 0);
    EXPECT_EQ(makeTexture(refused), S_OK);
}

TEST_F(SimulatedDirect3D, RefusesSurfacesBeyondTheBudgetUntilOthersAreGone) {
    Direct3DSection section;
    section.memoryBudget = 3 * std::uint64_t{surfaceBytes} - 1;
    use(section);
    auto surfaces = makeSurfaces(2);
    EXPECT_EQ(card_->usedMemory, 2U * surfaceBytes);
    ComShared<ID3D11Texture2D> third;
    EXPECT_EQ(makeTexture(third), E_OUTOFMEMORY);
    surfaces.pop_back();
    EXPECT_EQ(card_->usedMemory, surfaceBytes);
    EXPECT_EQ(makeTexture(third), S_OK);
}

TEST_F(SimulatedDirect3D, CountsBuffersAndTexturesButNoStagingCopies) {
    use({});
    D3D11_BUFFER_DESC desc{};
    desc.ByteWidth = 80;
    desc.BindFlags = D3D11_BIND_VERTEX_BUFFER;
    ID3D11Buffer* buffer = nullptr;
    ASSERT_EQ(device_->CreateBuffer(&desc, nullptr, &buffer), S_OK);
    EXPECT_EQ(card_->usedMemory, 80U);
    auto staging = surfaceDescription;
    staging.Usage = D3D11_USAGE_STAGING;
    staging.BindFlags = 0;
    staging.CPUAccessFlags = D3D11_CPU_ACCESS_READ;
    ComShared<ID3D11Texture2D> copy;
    ASSERT_EQ(makeTexture(copy, staging), S_OK);
    EXPECT_EQ(card_->usedMemory, 80U);
    buffer->Release();
    EXPECT_EQ(card_->usedMemory, 0U);
}

TEST_F(SimulatedDirect3D, CanGiveAllSurfacesTheSameMemory) {
    Direct3DSection section;
    section.oneSurfaceMemory = true;
    section.memoryBudget = 4 * std::uint64_t{surfaceBytes};
    use(section);
    auto surfaces = makeSurfaces(4);
    EXPECT_EQ(card_->usedMemory, surfaceBytes);
    ComShared<ID3D11Texture2D> fifth;
    EXPECT_EQ(makeTexture(fifth), E_OUTOFMEMORY) << "the budget counts them all the same";
    upload(*surfaces[0], 1);
    upload(*surfaces[3], 2);
    EXPECT_EQ(stored(*surfaces[0])[0], 2);
    surfaces.clear();
    EXPECT_EQ(card_->usedMemory, 0U);
}

TEST_F(SimulatedDirect3D, LosesTheDeviceWhenTheTurnOfTheSurfaceComes) {
    use(sectionWith({Direct3DFault::Kind::deviceRemoved, 2, "", 0, 0, 0x887A0005}));
    EXPECT_EQ(device_->GetDeviceRemovedReason(), S_OK);
    const auto surfaces = makeSurfaces(2);
    EXPECT_EQ(device_->GetDeviceRemovedReason(), S_OK);
    upload(*surfaces[0], 1);
    EXPECT_EQ(stored(*surfaces[0])[0], 1) << "the first surface still comes through";
    EXPECT_EQ(device_->GetDeviceRemovedReason(), DXGI_ERROR_DEVICE_REMOVED);
    EXPECT_EQ(device_->GetDeviceRemovedReason(), DXGI_ERROR_DEVICE_REMOVED);
    ComShared<ID3D11Texture2D> refused;
    EXPECT_EQ(makeTexture(refused), DXGI_ERROR_DEVICE_REMOVED);
    ASSERT_EQ(makeDevice(), S_OK);
    EXPECT_EQ(device_->GetDeviceRemovedReason(), S_OK) << "the next device is a new one";
}

TEST_F(SimulatedDirect3D, TakesNoMoreWorkWhenTheDeviceIsGone) {
    const auto log = std::make_shared<CallLog>();
    use(sectionWith({Direct3DFault::Kind::removedInDrawing, 2, "", 0, 0, 0x887A0005}), log);
    static_cast<void>(log->take());
    for (int drawing = 0; drawing < 3; ++drawing) {
        context_->DrawIndexed(0, 0, 0);
    }
    context_->Draw(0, 0);
    context_->CopyResource(nullptr, nullptr);
    context_->OMSetRenderTargets(0, nullptr, nullptr);
    context_->ClearState();
    EXPECT_EQ(log->take(), (std::vector<std::string>{"DrawIndexed(0, 0, 0)", "DrawIndexed(0, 0, 0)",
                                                     "OMSetRenderTargets(0, null, null)", "ClearState()"}))
        << "what is bound is let go of all the same";
}

TEST_F(SimulatedDirect3D, FailsACallFromItsNumberOn) {
    use(sectionWith({Direct3DFault::Kind::failingCall, 2, "CreateTexture2D", 0, 0, 0x80004005}));
    ComShared<ID3D11Texture2D> texture;
    EXPECT_EQ(makeTexture(texture), S_OK);
    EXPECT_EQ(makeTexture(texture), E_FAIL);
    EXPECT_EQ(makeTexture(texture), E_FAIL);
    ASSERT_EQ(makeDevice(), S_OK);
    EXPECT_EQ(makeTexture(texture), S_OK) << "each device counts for itself";
}

TEST_F(SimulatedDirect3D, CanRefuseFurtherDevices) {
    use(sectionWith({Direct3DFault::Kind::failingCall, 2, "D3D11CreateDevice", 0, 0, 0x887A0004}));
    EXPECT_EQ(makeDevice(), DXGI_ERROR_UNSUPPORTED);
}

TEST_F(SimulatedDirect3D, TakesTheResolveFromEveryFormat) {
    use({});
    UINT healthy = 0;
    ASSERT_EQ(device_->CheckFormatSupport(DXGI_FORMAT_R8G8B8A8_UNORM, &healthy), S_OK);
    EXPECT_NE(healthy & 0x40000, 0U);
    use(sectionWith({Direct3DFault::Kind::noResolveSupport, 1, "", 0, 0, 0}));
    UINT broken = 0;
    ASSERT_EQ(device_->CheckFormatSupport(DXGI_FORMAT_R8G8B8A8_UNORM, &broken), S_OK);
    EXPECT_EQ(broken, healthy & ~0x40000U);
}

TEST_F(SimulatedDirect3D, LogsWhatReachesTheDeviceAndNotWhatIsRefused) {
    const auto log = std::make_shared<CallLog>();
    use(sectionWith({Direct3DFault::Kind::failingCall, 2, "CreateTexture2D", 0, 0, 0x80004005}), log);
    static_cast<void>(log->take());
    ComShared<ID3D11Texture2D> texture;
    EXPECT_EQ(makeTexture(texture), S_OK);
    ComShared<ID3D11Texture2D> refused;
    EXPECT_EQ(makeTexture(refused), E_FAIL);
    context_->Flush();
    const auto calls = log->take();
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0], "CreateTexture2D({1024, 1024, 1, 1, 28, 1, 0, 0, 8, 0, 0}, null) = texture#1");
    EXPECT_EQ(calls[1], "Flush()");
}

TEST_F(SimulatedDirect3D, LogsTheFailuresOfTheRealDevice) {
    const auto log = std::make_shared<CallLog>();
    use({}, log);
    static_cast<void>(log->take());
    auto impossible = surfaceDescription;
    impossible.Format = DXGI_FORMAT_UNKNOWN;
    impossible.Width = 0;
    ComShared<ID3D11Texture2D> texture;
    ASSERT_TRUE(FAILED(makeTexture(texture, impossible)));
    EXPECT_EQ(log->take().at(0), "CreateTexture2D({0, 1024, 1, 1, 0, 1, 0, 0, 8, 0, 0}, null) = 0x80070057");
}

TEST(SimulatedDirect3DWithoutDirect3D, HasNeitherFactoryNorDevice) {
    void* factory = nullptr;
    EXPECT_EQ(createSimulatedFactory(nullptr, {}, __uuidof(IDXGIFactory), &factory), DXGI_ERROR_UNSUPPORTED);
    EXPECT_EQ(factory, nullptr);
    EXPECT_EQ(createSimulatedDevice(nullptr, {}), DXGI_ERROR_UNSUPPORTED);
}

} // namespace
} // namespace vexil::simulated
