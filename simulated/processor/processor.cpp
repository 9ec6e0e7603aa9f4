#include "platform/processor.h"

#include "core/shared_api.h"
#include "simulated/scenario/scenario_of_process.h"

#include <algorithm>
#include <exception>

// The processor of a simulated machine, as far as CPUID tells of it.
namespace {

using vexil::platform::CpuidRegisters;
using vexil::simulated::ProcessorSection;

constexpr std::uint32_t lastLeaf = 1;

std::uint32_t fourCharacters(const std::string& text, std::size_t first) {
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;) {
        value = value << 8 | static_cast<unsigned char>(text[first + i]);
    }
    return value;
}

/// The displayed numbers taken apart again, as the processor keeps them.
std::uint32_t signature(const ProcessorSection& processor) {
    const auto family = std::min(processor.family, 15U);
    const auto extendedFamily = processor.family - family;
    return extendedFamily << 20 | (processor.model >> 4) << 16 | family << 8 | (processor.model & 0xF) << 4 |
           processor.stepping;
}

void answer(const ProcessorSection& processor, std::uint32_t leaf, CpuidRegisters& registers) {
    if (leaf == 0) {
        registers = {lastLeaf, fourCharacters(processor.vendor, 0), fourCharacters(processor.vendor, 8),
                     fourCharacters(processor.vendor, 4)};
    } else if (leaf == 1) {
        registers = {signature(processor), 0, 0, 0};
    }
}

} // namespace

extern "C" VEXIL_SHARED_API void VexilCpuid(std::uint32_t leaf, CpuidRegisters* registers) {
    try {
        const auto scenario = vexil::simulated::scenarioOfProcess();
        *registers = {};
        answer(scenario ? scenario->processor : ProcessorSection{}, leaf, *registers);
    } catch (const std::exception&) {
        *registers = {};
    }
}
