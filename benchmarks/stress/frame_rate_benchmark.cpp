#include "arguments.h"
#include "module/video_card/stress/rendering/d3d11_animation_renderer.h"
#include "platform/swap_chain_window.h"
#include "stress/bare_scene.h"

#include <QGuiApplication>
#include <QPixmap>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <chrono>
#include <exception>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <thread>
#include <vector>

// Frames of the stress test's renderer, with Present, overlay and instruction, in turns with the same draws
// alone.

namespace {

using namespace vexil;
using namespace module::video_card;
using Clock = std::chrono::steady_clock;

constexpr int framesOfARound = 5;

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// Frames per second of a round.
template <typename Draw, typename Wait>
double rate(float start, const Draw& draw, const Wait& wait) {
    const auto begin = Clock::now();
    for (int frame = 0; frame < framesOfARound; ++frame) {
        draw(start + 0.05F * static_cast<float>(frame));
    }
    wait();
    const std::chrono::duration<double> elapsed = Clock::now() - begin;
    return framesOfARound / elapsed.count();
}

/// What the display shows of the window.
void save(const QWindow& window, const char* file) {
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    QCoreApplication::processEvents();
    if (!QGuiApplication::primaryScreen()->grabWindow(window.winId()).save(QString::fromLocal8Bit(file))) {
        throw std::runtime_error("the picture cannot be saved");
    }
}

void measure(unsigned width, unsigned height, int rounds, const char* picture) {
    const auto contexts = createAllDx11Contexts();
    if (contexts.empty()) {
        throw std::runtime_error("there is no Direct3D here");
    }
    const auto& dx11 = contexts.front();
    QWindow window;
    window.setFlags(Qt::BypassWindowManagerHint | Qt::FramelessWindowHint);
    window.setGeometry(0, 0, static_cast<int>(width), static_cast<int>(height));
    window.show();
    QCoreApplication::processEvents();
    const platform::SwapChainWindow target(window.winId());
    D3D11AnimationRenderer renderer(dx11, static_cast<HWND>(target.handle()), width, height, 96);
    renderer.setSceneObject(createSceneObject(width, height, dx11).value);
    renderer.setCompareObject(createCompareObject(width, height, dx11).value);
    renderer.setFpsLabel(L"Frames per second");
    renderer.setUsageLabel(L"Usage");
    renderer.setTemperatureLabel(L"Temperature");
    renderer.setFullScreen(true);
    benchmarks::BareScene bare(dx11, width, height);

    std::vector<double> shown;
    std::vector<double> alone;
    std::vector<double> ratios;
    for (int round = 0; round <= rounds; ++round) {
        const auto start = static_cast<float>(round) * 0.7F;
        renderer.updateOverlay({static_cast<float>(round), true, 50, true, 99, true});
        ImageReadBack image;
        const double ours = rate(
            start, [&](float seconds) { static_cast<void>(renderer.render(seconds)); },
            [&] { static_cast<void>(renderer.readBack(image)); });
        image = {};
        const double theirs = rate(
            start, [&](float seconds) { bare.drawFrame(seconds); },
            [&] { static_cast<void>(bare.picture()); });
        if (round > 0) { // The first one compiles.
            shown.push_back(ours);
            alone.push_back(theirs);
            ratios.push_back(ours / theirs);
        }
    }
    std::cout << std::fixed << std::setprecision(2) << width << "x" << height << ": renderer "
              << median(shown) << " frames/s, bare " << median(alone) << " frames/s, ratio " << median(ratios)
              << " (aim: at least 0.95)\n";
    if (picture != nullptr) {
        save(window, picture);
    }
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "xcb");
    QGuiApplication application(argc, argv);
    try {
        measure(benchmarks::numberArgument(argc, argv, 1, 400U),
                benchmarks::numberArgument(argc, argv, 2, 400U),
                benchmarks::numberArgument(argc, argv, 3, 20), argc > 4 ? argv[4] : nullptr);
    } catch (const std::exception& error) {
        std::cerr << "stress_frame_rate_benchmark: " << error.what() << '\n';
        return 1;
    }
}
