#include "module/video_card/direct3d/surface_read_back.h"
#include "simulated/direct3d/device_context_proxy.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

namespace vexil::tests {
namespace {

using module::video_card::ComShared;
using module::video_card::readBackSurface;
using testing::ElementsAre;

/// Hands out mapped memory whose rows lie further apart than they are long, with other bytes in between.
class WidePitchContext final : public simulated::DeviceContextProxy {
public:
    static constexpr UINT gap = 24;

    explicit WidePitchContext(ID3D11DeviceContext* real) : DeviceContextProxy(real) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE Map(ID3D11Resource* resource, UINT index, D3D11_MAP type, UINT flags,
                                  D3D11_MAPPED_SUBRESOURCE* mapped) override {
        const HRESULT result = DeviceContextProxy::Map(resource, index, type, flags, mapped);
        const auto* rows = static_cast<const std::uint8_t*>(mapped->pData);
        const UINT height = 4;
        wide_.assign(std::size_t{mapped->RowPitch + gap} * height, 0xEE);
        for (UINT y = 0; y < height; ++y) {
            std::copy_n(rows + std::size_t{y} * mapped->RowPitch, mapped->RowPitch,
                        wide_.data() + std::size_t{y} * (mapped->RowPitch + gap));
        }
        mapped->pData = wide_.data();
        mapped->RowPitch += gap;
        return result;
    }

private:
    std::vector<std::uint8_t> wide_;
};

class SurfaceReadBack : public testing::Test {
protected:
    explicit SurfaceReadBack(const CardSetup& setup = {})
        : card_(setup), dx11_(card_.device->dx11Context()) {}

    ComShared<ID3D11Texture2D> texture(UINT width, UINT height, UINT mips, UINT slices) {
        D3D11_TEXTURE2D_DESC desc{};
        desc.Width = width;
        desc.Height = height;
        desc.MipLevels = mips;
        desc.ArraySize = slices;
        desc.Format = DXGI_FORMAT_R8G8B8A8_UNORM;
        desc.SampleDesc = {1, 0};
        desc.BindFlags = D3D11_BIND_SHADER_RESOURCE;
        ID3D11Texture2D* made = nullptr;
        EXPECT_EQ(dx11_.device->CreateTexture2D(&desc, nullptr, &made), S_OK);
        static_cast<void>(card_.log->take());
        return module::video_card::shareCom(made);
    }

    static std::vector<std::uint8_t> countingBytes(std::size_t count) {
        std::vector<std::uint8_t> bytes(count);
        std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
        return bytes;
    }

    CardUnderTest card_;
    module::video_card::Dx11Context dx11_;
};

TEST_F(SurfaceReadBack, CopiesTheRowsOneBehindTheOther) {
    const auto surface = texture(16, 4, 1, 1);
    const auto written = countingBytes(16 * 4 * 4);
    dx11_.context->UpdateSubresource(surface.get(), 0, nullptr, written.data(), 64, 0);
    std::vector<std::uint8_t> image(written.size());
    EXPECT_EQ(readBackSurface(*dx11_.device, *dx11_.context, *surface, image), S_OK);
    EXPECT_EQ(image, written);
}

TEST_F(SurfaceReadBack, StepsByThePitchOfTheMappedMemory) {
    const auto surface = texture(16, 4, 1, 1);
    const auto written = countingBytes(16 * 4 * 4);
    dx11_.context->UpdateSubresource(surface.get(), 0, nullptr, written.data(), 64, 0);
    WidePitchContext context(dx11_.context.get());
    std::vector<std::uint8_t> image(written.size());
    EXPECT_EQ(readBackSurface(*dx11_.device, context, *surface, image), S_OK);
    EXPECT_EQ(image, written);
}

TEST_F(SurfaceReadBack, ResolvesEveryMipOfEverySlice) {
    const auto surface = texture(16, 16, 3, 2);
    std::vector<std::uint8_t> image(16 * 16 * 4);
    EXPECT_EQ(readBackSurface(*dx11_.device, *dx11_.context, *surface, image), S_OK);
    EXPECT_THAT(card_.log->take(),
                ElementsAre("CreateTexture2D({16, 16, 3, 2, 28, 1, 0, 0, 8, 0, 0}, null) = texture#2",
                            "CheckFormatSupport(28)", "ResolveSubresource(texture#2, 0, texture#1, 0, 28)",
                            "ResolveSubresource(texture#2, 1, texture#1, 1, 28)",
                            "ResolveSubresource(texture#2, 2, texture#1, 2, 28)",
                            "ResolveSubresource(texture#2, 3, texture#1, 3, 28)",
                            "ResolveSubresource(texture#2, 4, texture#1, 4, 28)",
                            "ResolveSubresource(texture#2, 5, texture#1, 5, 28)",
                            "CreateTexture2D({16, 16, 3, 2, 28, 1, 0, 3, 0, 131072, 0}, null) = texture#3",
                            "CopyResource(texture#3, texture#1)", "Map(texture#3, 0, 1, 0)",
                            "Unmap(texture#3, 0)"));
}

class FailingSurfaceReadBack : public SurfaceReadBack {
protected:
    FailingSurfaceReadBack() : SurfaceReadBack(withoutMap()) {}

    static CardSetup withoutMap() {
        CardSetup setup;
        setup.direct3d.faults = {{simulated::Direct3DFault::Kind::failingCall, 1, "Map", 0, 0, 0x887A0005}};
        return setup;
    }
};

TEST_F(FailingSurfaceReadBack, LeavesTheImageAlone) {
    const auto surface = texture(16, 4, 1, 1);
    const std::vector<std::uint8_t> untouched(16 * 4 * 4, 0x77);
    auto image = untouched;
    const auto result = readBackSurface(*dx11_.device, *dx11_.context, *surface, image);
    EXPECT_EQ(static_cast<std::uint32_t>(result), 0x887A0005U);
    EXPECT_EQ(image, untouched);
}

} // namespace
} // namespace vexil::tests
