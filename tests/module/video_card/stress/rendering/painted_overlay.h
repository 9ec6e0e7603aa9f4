#pragma once

#include "module/video_card/direct3d/com_create.h"
#include "module/video_card/direct3d/dx11_context.h"
#include "module/video_card/direct3d/mapped_subresource.h"
#include "module/video_card/stress/rendering/gui_application.h"
#include "module/video_card/stress/rendering/render_resources.h"
#include "platform/overlay_painter.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <vector>

// Texts over two textures of Direct3D, with no window.
namespace vexil::tests {

using namespace module::video_card;
using Picture = std::vector<std::uint32_t>;

inline constexpr std::uint32_t width = 200;
inline constexpr std::uint32_t height = 80;
inline constexpr std::uint32_t background = 0xFF204060; ///< alpha, red, green, blue
inline constexpr platform::OverlayFont font{L"Lato", 900, 5, 20};

struct Box {
    std::uint32_t left, top, right, bottom;
};

class OverlayPainterTest : public testing::Test {
protected:
    static void SetUpTestSuite() {
        startGuiApplication();
        contexts_ = createAllDx11Contexts();
    }
    static void TearDownTestSuite() { contexts_.clear(); }

    void SetUp() override {
        ASSERT_FALSE(contexts_.empty());
        const std::vector<std::uint32_t> pixels(width * height, background);
        const D3D11_SUBRESOURCE_DATA content{pixels.data(), width * 4, 0};
        const auto description = plainTexture(width, height, DXGI_FORMAT_B8G8R8A8_UNORM,
                                              D3D11_BIND_RENDER_TARGET | D3D11_BIND_SHADER_RESOURCE);
        for (auto& texture : textures_) {
            ASSERT_EQ(createTexture(device(), description, &content, texture), S_OK);
            ComShared<IDXGISurface> surface;
            ASSERT_EQ(createCom(surface,
                                [&](IDXGISurface** out) {
                                    return texture->QueryInterface(__uuidof(IDXGISurface),
                                                                   reinterpret_cast<void**>(out));
                                }),
                      S_OK);
            surfaces_.push_back(surface);
        }
        painter_ = platform::createOverlayPainter(contexts_.front().context, surfaces_);
    }

    static ID3D11Device& device() { return *contexts_.front().device; }
    static ID3D11DeviceContext& context() { return *contexts_.front().context; }

    std::shared_ptr<const platform::OverlayText> laidOut(const std::wstring& text,
                                                         const platform::OverlayFont& in = font) {
        return painter_->layOut(text, *painter_->createFormat(in), width, height);
    }

    Picture picture(std::size_t target) {
        ComShared<ID3D11Texture2D> staging;
        EXPECT_EQ(createTexture(device(), stagingDescription(*textures_[target]), nullptr, staging), S_OK);
        context().CopyResource(staging.get(), textures_[target].get());
        const auto mapped = mapSubresource(contexts_.front().context, staging, 0, D3D11_MAP_READ);
        Picture pixels(width * height);
        for (std::size_t row = 0; row < height; ++row) {
            std::memcpy(&pixels[row * width],
                        static_cast<const std::byte*>(mapped->pData) + row * mapped->RowPitch, width * 4);
        }
        return pixels;
    }

    /// Around all that differs from the background.
    static std::optional<Box> changed(const Picture& pixels) {
        std::optional<Box> box;
        for (std::uint32_t y = 0; y < height; ++y) {
            for (std::uint32_t x = 0; x < width; ++x) {
                if (pixels[y * width + x] != background) {
                    box = box.value_or(Box{x, y, x, y});
                    box = Box{std::min(box->left, x), std::min(box->top, y), std::max(box->right, x),
                              std::max(box->bottom, y)};
                }
            }
        }
        return box;
    }

    static inline std::vector<Dx11Context> contexts_;
    ComShared<ID3D11Texture2D> textures_[2];
    std::vector<std::shared_ptr<IDXGISurface>> surfaces_;
    std::unique_ptr<platform::OverlayPainter> painter_;
};

} // namespace vexil::tests
