#include "platform/processor.h"

#include "core/shared_api.h"
#include "simulated/scenario/scenario_of_process.h"

#include <algorithm>
#include <exception>

// The processor of a simulated machine, as far as CPUID and the system's list tell of it.
namespace {

using vexil::platform::CpuidRegisters;
using vexil::platform::ProcessorCaption;
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

ProcessorSection processorOfScenario() {
    const auto scenario = vexil::simulated::scenarioOfProcess();
    return scenario ? scenario->processor : ProcessorSection{};
}

} // namespace

extern "C" {

VEXIL_SHARED_API void VexilCpuid(std::uint32_t leaf, CpuidRegisters* registers) {
    *registers = {};
    try {
        answer(processorOfScenario(), leaf, *registers);
    } catch (const std::exception&) {
        // Nothing may be thrown across a plain function.
    }
}

VEXIL_SHARED_API void VexilProcessorCaption(ProcessorCaption* caption) {
    *caption = {};
    try {
        const auto processor = processorOfScenario();
        caption->status = processor.captionStatus;
        caption->listed = processor.listed ? 1 : 0;
        processor.caption.copy(caption->text, sizeof(caption->text) - 1);
    } catch (const std::exception&) {
        // As above.
    }
}
}
