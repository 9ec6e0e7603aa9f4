#include "platform/processor.h"

#include "platform/library_names.h"
#include "platform/shared_library.h"

#include <cpuid.h>

namespace vexil::platform {

namespace {

void append(std::string& text, std::uint32_t reg) {
    for (unsigned byte = 0; byte < 4; ++byte) {
        text += static_cast<char>(reg >> (8 * byte) & 0xFF);
    }
}

/// Whether a processor library is there and has the function.
template <typename Function, typename Question>
bool askLibrary(const char* symbol, const Question& question) {
    void* library = loadedLibrary(processorLibrary());
    if (library == nullptr) {
        return false;
    }
    const auto answer = reinterpret_cast<Function>(librarySymbol(library, symbol));
    if (answer != nullptr) {
        question(answer);
    }
    closeLibrary(library);
    return answer != nullptr;
}

} // namespace

CpuidRegisters cpuid(std::uint32_t leaf) {
    CpuidRegisters registers;
    if (!askLibrary<CpuidFunction>("VexilCpuid", [&](auto answer) { answer(leaf, &registers); })) {
        // A leaf beyond the last one leaves the registers empty.
        __get_cpuid_count(leaf, 0, &registers.eax, &registers.ebx, &registers.ecx, &registers.edx);
    }
    return registers;
}

ProcessorCaption libraryCaption() {
    ProcessorCaption caption;
    askLibrary<ProcessorCaptionFunction>("VexilProcessorCaption", [&](auto answer) { answer(&caption); });
    return caption;
}

bool hasProcessorLibrary() {
    void* library = loadedLibrary(processorLibrary());
    if (library == nullptr) {
        return false;
    }
    closeLibrary(library);
    return true;
}

ProcessorSignature processorSignature(std::uint32_t eax) {
    const auto family = eax >> 8 & 0xF;
    const auto model = eax >> 4 & 0xF;
    const auto extendedFamily = eax >> 20 & 0xFF;
    const auto extendedModel = eax >> 16 & 0xF;
    // Both vendors define the extended fields for these families only.
    const bool extendsModel = family == 6 || family == 15;
    return {family == 15 ? family + extendedFamily : family,
            extendsModel ? extendedModel << 4 | model : model, eax & 0xF};
}

std::string processorVendor(const CpuidRegisters& leaf0) {
    std::string text;
    append(text, leaf0.ebx);
    append(text, leaf0.edx);
    append(text, leaf0.ecx);
    return text;
}

} // namespace vexil::platform
