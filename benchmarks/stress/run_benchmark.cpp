#include "arguments.h"
#include "module/video_card/direct3d/com_create.h"
#include "stress/bare_scene.h"
#include "stress/run_in_window.h"

#include <QApplication>
#include <dxgi1_4.h>

#include <algorithm>
#include <chrono>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

// The whole stress test in its window: how much its dialog, overlay and samples cost beside the bare draws,
// how many frames a load leaves, and whether its memory stays what it is.

namespace {

using namespace vexil;
using namespace vexil::module::video_card;
using Clock = std::chrono::steady_clock;

constexpr double mebibyte = 1 << 20;
constexpr unsigned width = 400;
constexpr unsigned height = 400;
constexpr std::uint64_t secondsOfARound = 10;
/// Until then the driver's caches and the process's heap still grow.
constexpr double settledSeconds = 60;
constexpr double growthLimit = 8; ///< MiB

struct Memory {
    double process = 0; ///< MiB, resident
    double card = 0;    ///< MiB, as the driver tells it; the software renderer's stands in the process
};

Memory memoryNow(const Dx11Context& dx11) {
    constexpr double page = 4096; // of the only processors that this runs on
    Memory memory;
    double total = 0;
    std::ifstream("/proc/self/statm") >> total >> memory.process; // 0 where there is no such file
    memory.process *= page / mebibyte;
    ComShared<IDXGIAdapter3> adapter;
    const HRESULT result = createCom(adapter, [&](IDXGIAdapter3** out) {
        return dx11.adapterInfo.adapter->QueryInterface(__uuidof(IDXGIAdapter3),
                                                        reinterpret_cast<void**>(out));
    });
    DXGI_QUERY_VIDEO_MEMORY_INFO info{};
    if (SUCCEEDED(result) &&
        SUCCEEDED(adapter->QueryVideoMemoryInfo(0, DXGI_MEMORY_SEGMENT_GROUP_LOCAL, &info))) {
        memory.card = static_cast<double>(info.CurrentUsage) / mebibyte;
    }
    return memory;
}

/// False if the memory grew.
bool watchMemory(const Dx11Context& dx11, std::uint64_t seconds, const std::string& size) {
    std::vector<Memory> settled;
    std::cout << "seconds  process MiB  card MiB\n" << std::fixed << std::setprecision(1);
    const auto sample = [&](double elapsed) {
        const auto memory = memoryNow(dx11);
        std::cout << std::setw(7) << elapsed << std::setw(13) << memory.process << std::setw(10)
                  << memory.card << std::endl;
        if (elapsed >= settledSeconds) {
            settled.push_back(memory);
        }
    };
    const auto frames =
        benchmarks::runInWindow(dx11, {.seconds = seconds, .size = size, .eachTenSeconds = sample});
    std::cout << frames.frames << " frames, " << frames.rate() << " a second\n";
    if (settled.size() < 2) {
        std::cout << "too short to say more: memory is compared with that of the first minute's end\n";
        return true;
    }
    const double process = settled.back().process - settled.front().process;
    const double card = settled.back().card - settled.front().card;
    std::cout << "growth since the first minute's end: process " << process << " MiB, card " << card
              << " MiB (aim: below " << growthLimit << ", and 0)\n";
    return process < growthLimit && card <= 0;
}

double bareRate(benchmarks::BareScene& bare, std::uint64_t frames) {
    static_cast<void>(bare.picture()); // waits for what went before
    const auto start = Clock::now();
    for (std::uint64_t frame = 0; frame < frames; ++frame) {
        bare.drawFrame(static_cast<float>(frame) * static_cast<float>(secondsOfARound) /
                       static_cast<float>(frames));
    }
    static_cast<void>(bare.picture());
    return static_cast<double>(frames) / std::chrono::duration<double>(Clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void compareRates(const Dx11Context& dx11, int rounds) {
    std::vector<double> shown;
    std::vector<double> alone;
    std::vector<double> ratios;
    static_cast<void>(benchmarks::runInWindow(dx11, {.seconds = 2})); // compiles
    for (int round = 0; round < rounds; ++round) {
        const auto window = benchmarks::runInWindow(dx11, {.seconds = secondsOfARound});
        dx11.context->ClearState();
        benchmarks::BareScene bare(dx11, width, height);
        const double theirs = bareRate(bare, window.frames);
        shown.push_back(window.rate());
        alone.push_back(theirs);
        ratios.push_back(window.rate() / theirs);
    }
    std::cout << std::fixed << std::setprecision(2) << "window " << median(shown) << " frames/s, bare "
              << median(alone) << " frames/s, ratio " << median(ratios) << " (aim: at least 0.95)\n";
}

/// In pictures of 64 by 64 pixels, so that the card is through with the frames in its queue long before the
/// half second of sleep is over, as a real card is.
void compareLoads(const Dx11Context& dx11, int rounds) {
    benchmarks::WindowSetup full{.seconds = secondsOfARound, .extent = 64};
    benchmarks::WindowSetup half = full;
    half.load = 0.5;
    std::vector<double> ratios;
    static_cast<void>(benchmarks::runInWindow(dx11, {.seconds = 2, .extent = 64})); // compiles
    for (int round = 0; round < rounds; ++round) {
        const double at100 = benchmarks::runInWindow(dx11, full).rate();
        const double at50 = benchmarks::runInWindow(dx11, half).rate();
        std::cout << std::fixed << std::setprecision(2) << "load 100: " << at100
                  << " frames/s, load 50: " << at50 << " frames/s" << std::endl;
        ratios.push_back(at50 / at100);
    }
    std::cout << "ratio " << median(ratios) << " (aim: 0.45 to 0.55)\n";
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "xcb");
    qputenv("QT_LOGGING_RULES", "*.debug=false");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const std::string_view what = argc > 1 ? argv[1] : "";
    if (what != "rate" && what != "load" && what != "memory") {
        std::cerr << "usage: stress_run_benchmark rate|load [ROUNDS]\n"
                     "       stress_run_benchmark memory [SECONDS [WINDOW_SIZE]]\n";
        return 2;
    }
    try {
        const auto contexts = createAllDx11Contexts();
        if (contexts.empty()) {
            throw std::runtime_error("there is no Direct3D here");
        }
        if (what == "rate") {
            compareRates(contexts.front(), benchmarks::numberArgument(argc, argv, 2, 7));
            return 0;
        }
        if (what == "load") {
            compareLoads(contexts.front(), benchmarks::numberArgument(argc, argv, 2, 3));
            return 0;
        }
        const auto seconds = benchmarks::numberArgument<std::uint64_t>(argc, argv, 2, 600);
        return watchMemory(contexts.front(), seconds, argc > 3 ? argv[3] : "400x400") ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "stress_run_benchmark: " << error.what() << '\n';
        return 1;
    }
}
