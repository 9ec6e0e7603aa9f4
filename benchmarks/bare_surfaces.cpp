#include "bare_surfaces.h"

#include "module/video_card/direct3d/resource_creation.h"
#include "timing.h"

#include <cstring>
#include <stdexcept>

namespace vexil::benchmarks {

using namespace module::video_card;

namespace {

void require(bool condition, const char* what) {
    if (!condition) {
        throw std::runtime_error(what);
    }
}

} // namespace

BareSurfaces::BareSurfaces(const Dx11Context& dx11, std::uint32_t count)
    : dx11_(dx11), image_(surfaceBytes, 0x5A), copy_(surfaceBytes) {
    auto& device = *dx11_.device;
    require(SUCCEEDED(pipeline_.create(device, *dx11_.context)), "the pipeline cannot be made");
    require(createSurfaces(device, count, surfaces_) && surfaces_.size() == count, "too little memory");

    auto& surface = *surfaces_.front().texture;
    require(SUCCEEDED(createTexture(device, descriptionOf(surface), nullptr, temporary_)),
            "the temporary texture cannot be made");
    require(SUCCEEDED(createTexture(device, stagingDescription(surface), nullptr, staging_)),
            "the staging texture cannot be made");
}

std::vector<double> BareSurfaces::run() {
    std::vector<double> times;
    for (const auto& surface : surfaces_) {
        const auto start = Clock::now();
        runOne(surface);
        times.push_back(milliseconds(Clock::now() - start));
    }
    return times;
}

void BareSurfaces::runOne(const VideoSurface& surface) {
    constexpr UINT pitch = surfaceExtent * 4;
    auto& context = *dx11_.context;
    context.UpdateSubresource(surface.texture.get(), 0, nullptr, image_.data(), pitch, 0);
    pipeline_.draw(context, surface.view.get());
    context.ResolveSubresource(temporary_.get(), 0, surface.texture.get(), 0, DXGI_FORMAT_R8G8B8A8_UNORM);
    context.CopyResource(staging_.get(), surface.texture.get());
    D3D11_MAPPED_SUBRESOURCE mapped{};
    require(SUCCEEDED(context.Map(staging_.get(), 0, D3D11_MAP_READ, 0, &mapped)),
            "the copy cannot be mapped");
    const auto* row = static_cast<const std::uint8_t*>(mapped.pData);
    for (UINT y = 0; y < surfaceExtent; ++y, row += mapped.RowPitch) {
        std::memcpy(copy_.data() + std::size_t{y} * pitch, row, pitch);
    }
    context.Unmap(staging_.get(), 0);
}

} // namespace vexil::benchmarks
