#pragma once

#include "module/video_card/stress/rendering/d3d11_animation_renderer.h"
#include "platform/swap_chain_window.h"
#include "support/card_under_test.h"

#include <cstdint>
#include <memory>
#include <vector>

class QWindow;

namespace vexil::tests {

/// A window on the display with a renderer in it, on a card with the faults.
class WindowUnderTest {
public:
    WindowUnderTest(std::uint32_t width, std::uint32_t height,
                    const std::vector<simulated::Direct3DFault>& faults = {});
    ~WindowUnderTest();

    /// Throws what the renderer throws.
    void createRenderer();
    /// With the scene and the comparison.
    void createWholeRenderer();
    /// The comparison, row by row.
    [[nodiscard]] std::vector<std::uint32_t> comparison();

    CardUnderTest card;
    module::video_card::Dx11Context dx11;
    std::unique_ptr<QWindow> window;
    std::unique_ptr<platform::SwapChainWindow> swapChainWindow;
    std::unique_ptr<module::video_card::D3D11AnimationRenderer> renderer;
    std::uint32_t width;
    std::uint32_t height;
};

} // namespace vexil::tests
