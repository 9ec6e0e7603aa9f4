// usage: vexil_style_sheet_fuzz SECONDS CORPUS [SEED]: exercises the stylesheet code with generated texts for
// as long, which is worth the time in a build with the address sanitizer. Ends with 1 at the first text that
// does not hold.
#include "style_sheet_exercise.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>

int main(int argc, char** argv) {
    if (argc < 3) {
        std::cerr << "usage: " << argv[0] << " SECONDS CORPUS [SEED]\n";
        return 2;
    }
    const auto seed =
        argc > 3 ? static_cast<std::uint32_t>(std::strtoul(argv[3], nullptr, 10)) : std::random_device()();
    std::cout << "seed " << seed << std::endl;
    vexil::test::StyleSheetGenerator generator(seed, vexil::test::readCorpus(argv[2]));
    const auto end =
        std::chrono::steady_clock::now() + std::chrono::seconds(std::strtol(argv[1], nullptr, 10));
    std::uint64_t texts = 0;
    for (; std::chrono::steady_clock::now() < end; ++texts) {
        const auto text = generator.next();
        const auto complaint = vexil::test::exerciseStyleSheet(text);
        if (!complaint.empty()) {
            std::cerr << complaint << ", in text " << texts << ":\n" << text << '\n';
            return 1;
        }
    }
    std::cout << texts << " texts held\n";
    return 0;
}
