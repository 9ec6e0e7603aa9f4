#include "arguments.h"
#include "stress/bare_scene.h"

#include <chrono>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

// Draws one frame of the stress test's scene and writes it as a picture (portable pixmap).

namespace {

void write(const std::string& file, unsigned width, unsigned height, const std::vector<std::byte>& pixels) {
    std::ofstream out(file, std::ios::binary);
    out << "P6\n" << width << ' ' << height << "\n255\n";
    for (std::size_t pixel = 0; pixel < pixels.size(); pixel += 4) {
        for (const std::size_t channel : {2U, 1U, 0U}) {
            out.put(static_cast<char>(pixels[pixel + channel]));
        }
    }
}

void drawTo(const std::string& file, unsigned width, unsigned height, float seconds) {
    using namespace vexil;
    const auto contexts = module::video_card::createAllDx11Contexts();
    if (contexts.empty()) {
        throw std::runtime_error("there is no Direct3D here");
    }
    benchmarks::BareScene scene(contexts.front(), width, height);
    scene.drawScene(seconds);
    static_cast<void>(scene.picture());
    const auto start = std::chrono::steady_clock::now();
    scene.drawScene(seconds);
    const auto pixels = scene.picture();
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    std::cout << file << ": " << time.count() << " ms\n";
    write(file, width, height, pixels);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5) {
        std::cerr << "usage: stress_scene_picture WIDTH HEIGHT SECONDS FILE.ppm\n";
        return 2;
    }
    try {
        drawTo(argv[4], vexil::benchmarks::numberArgument(argc, argv, 1, 1U),
               vexil::benchmarks::numberArgument(argc, argv, 2, 1U),
               vexil::benchmarks::numberArgument(argc, argv, 3, 0.0F, 0.0F));
    } catch (const std::exception& error) {
        std::cerr << "stress_scene_picture: " << error.what() << '\n';
        return 1;
    }
}
