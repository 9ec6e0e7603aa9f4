#include "arguments.h"
#include "module/video_card/direct3d/texture_pipeline/texture_pass.h"
#include "module/video_card/direct3d/texture_pipeline/transposition.h"
#include "timing.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <utility>
#include <vector>

// What a pass of the texture pipeline test costs, step by step, over the same pass with an image that is
// already there and a picture that nobody looks at. Both in turns and in one process, on the first adapter.
namespace {

using namespace vexil::benchmarks;
using namespace vexil::module::video_card;

constexpr double passAim = 1.4;
constexpr double comparisonAim = 2;

enum Step { image, create, drawAndCopy, map, compare, release, steps };
constexpr const char* stepNames[] = {"image", "create", "draw and copy", "map", "compare", "release"};
using Times = std::array<std::vector<double>, steps>;

/// Passes on one device, as the test makes them.
class Passes {
public:
    explicit Passes(const Dx11Context& dx11) : dx11_(dx11), blank_(patternPixels) {
        static constexpr D3D11_VIEWPORT viewport{0, 0, patternExtent, patternExtent, 0, 0};
        dx11_.context->RSSetViewports(1, &viewport);
        require(SUCCEEDED(quad_.create(*dx11_.device)));
        fillPattern(0, image_);
    }

    /// One whole pass; the time of each step goes to `times`. Without checks the image is the one at hand.
    double run(std::uint32_t seed, bool withChecks, Times& times) {
        const auto begin = last_ = Clock::now();
        if (withChecks) {
            fillPattern(seed, image_);
            end(times, Step::image);
        }
        {
            TexturePass pass(dx11_, quad_);
            require(pass.create(blank_, image_));
            end(times, Step::create);
            pass.draw();
            end(times, Step::drawAndCopy);
            require(pass.readBack(picture_));
            end(times, Step::map);
            if (withChecks) {
                require(!firstTranspositionError(PatternPixels(image_), PatternPixels(picture_)));
                end(times, Step::compare);
            }
        }
        end(times, Step::release);
        return milliseconds(last_ - begin);
    }

    /// The comparison alone, over the images of the last pass, and `memcmp` over as many bytes, in turns.
    void timeComparison() const {
        const PatternImage copy = image_;
        const auto codes = transpositionCodes();
        std::vector<double> plain;
        std::vector<std::vector<double>> times(codes.size());
        for (int round = 0; round < 300; ++round) {
            plain.push_back(medianTime(1, [&] {
                require(std::memcmp(copy.data(), image_.data(), patternPixels * sizeof(image_[0])) == 0);
            }));
            for (std::size_t i = 0; i < codes.size(); ++i) {
                if (codes[i].isSupported()) {
                    times[i].push_back(medianTime(
                        1, [&] { require(codes[i].isTransposed(image_.data(), picture_.data())); }));
                }
            }
        }
        for (const auto& [title, part] : {std::pair{"median", 0.5}, std::pair{"fastest tenth", 0.1}}) {
            const double time = quantile(plain, part);
            std::printf("comparison of two images of 4 MiB, %s (aim: at most %.1f memcmp)\n", title,
                        comparisonAim);
            std::printf("  memcmp          %6.3f ms\n", time);
            for (std::size_t i = 0; i < codes.size(); ++i) {
                const double own = quantile(times[i], part);
                std::printf("  %-15s %6.3f ms %5.2f memcmp\n", codes[i].name, own, own / time);
            }
        }
    }

private:
    static void require(bool holds) {
        if (!holds) {
            throw std::runtime_error("a pass went wrong");
        }
    }
    void end(Times& times, Step step) {
        const auto now = Clock::now();
        times[step].push_back(milliseconds(now - last_));
        last_ = now;
    }

    Dx11Context dx11_;
    PatternQuad quad_;
    PatternImage blank_;
    PatternImage image_;
    PatternImage picture_;
    Clock::time_point last_;
};

void print(const char* title, double part, const Times& times, const std::vector<double>& whole,
           const std::vector<double>& bare) {
    const double test = quantile(whole, part);
    std::printf("%s\n  bare pass         %6.2f ms\n  pass of the test  %6.2f ms\n", title,
                quantile(bare, part), test);
    for (std::size_t step = 0; step < times.size(); ++step) {
        const double time = quantile(times[step], part);
        std::printf("    %-15s %6.2f ms %5.1f %%\n", stepNames[step], time, 100 * time / test);
    }
    std::printf("  ratio             %6.2f (aim: at most %.1f)\n", test / quantile(bare, part), passAim);
}

} // namespace

int main(int argc, char** argv) try {
    const int passes = numberArgument(argc, argv, 1, 1000);
    Passes work(createDx11Context(enumerateAdapters().at(0)));
    Times times;
    Times ignored;
    std::vector<double> whole;
    std::vector<double> bare;
    for (int pass = 0; pass < passes; ++pass) {
        whole.push_back(work.run(static_cast<std::uint32_t>(pass), true, times));
        bare.push_back(work.run(0, false, ignored));
    }
    work.run(0, true, ignored);
    print("median", 0.5, times, whole, bare);
    print("fastest tenth", 0.1, times, whole, bare);
    work.timeComparison();
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return EXIT_FAILURE;
}
