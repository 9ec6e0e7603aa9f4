#include "window_under_test.h"

#include "module/video_card/stress/rendering/quad_objects.h"
#include "support/display.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QWindow>

#include <cstring>

namespace vexil::tests {

using namespace module::video_card;

namespace {

class Display final : public testing::Environment {
public:
    void SetUp() override {
        ASSERT_TRUE(provideDisplay()) << "there is no display, and no Xvfb";
        static int count = 1;
        static char name[] = "tests";
        static char* arguments[] = {name, nullptr};
        application_ = std::make_unique<QGuiApplication>(count, arguments);
    }
    void TearDown() override { application_.reset(); }

private:
    std::unique_ptr<QGuiApplication> application_;
};

[[maybe_unused]] const auto* const display = testing::AddGlobalTestEnvironment(new Display);

CardSetup cardWith(const std::vector<simulated::Direct3DFault>& faults) {
    CardSetup setup;
    setup.direct3d.faults = faults;
    return setup;
}

} // namespace

WindowUnderTest::WindowUnderTest(std::uint32_t windowWidth, std::uint32_t windowHeight,
                                 const std::vector<simulated::Direct3DFault>& faults)
    : card(cardWith(faults)), dx11(card.device->dx11Context()), window(std::make_unique<QWindow>()),
      width(windowWidth), height(windowHeight) {
    window->setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
    window->setGeometry(10, 10, static_cast<int>(width), static_cast<int>(height));
    window->show();
    QCoreApplication::processEvents();
    swapChainWindow = std::make_unique<platform::SwapChainWindow>(window->winId());
}

WindowUnderTest::~WindowUnderTest() {
    renderer.reset();
    dx11.context->ClearState();
    dx11.context->Flush();
}

void WindowUnderTest::createRenderer() {
    renderer = std::make_unique<D3D11AnimationRenderer>(dx11, static_cast<HWND>(swapChainWindow->handle()),
                                                        width, height, 96.0F);
}

void WindowUnderTest::createWholeRenderer() {
    createRenderer();
    renderer->setSceneObject(createSceneObject(width, height, dx11).value);
    renderer->setCompareObject(createCompareObject(width, height, dx11).value);
}

std::vector<std::uint32_t> WindowUnderTest::comparison() {
    ImageReadBack image;
    EXPECT_TRUE(renderer->readBack(image));
    std::vector<std::uint32_t> words(std::size_t{width} * height);
    for (std::size_t row = 0; row < height; ++row) {
        std::memcpy(&words[row * width],
                    static_cast<const std::byte*>(image.data->pData) + row * image.data->RowPitch,
                    std::size_t{width} * 4);
    }
    return words;
}

} // namespace vexil::tests
