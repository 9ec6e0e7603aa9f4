#pragma once

#include <cstdint>
#include <string>

namespace vexil::platform {

/// What the CPUID instruction leaves in the registers.
struct CpuidRegisters {
    std::uint32_t eax = 0;
    std::uint32_t ebx = 0;
    std::uint32_t ecx = 0;
    std::uint32_t edx = 0;
};

/// The signature of `VexilCpuid`, which a processor library exports.
using CpuidFunction = void (*)(std::uint32_t leaf, CpuidRegisters* registers);

/// How the system's list of processors describes this one.
struct ProcessorCaption {
    std::int32_t status = 0;  ///< of the query for it
    std::uint32_t listed = 1; ///< 0: the list is empty
    char text[256] = {};      ///< empty: what vendor, family, model and stepping give
};

/// The signature of `VexilProcessorCaption`, which a processor library exports.
using ProcessorCaptionFunction = void (*)(ProcessorCaption* caption);

/// Asks the processor. A simulated machine has a processor of its own: where the process already holds the
/// library `processorLibrary()`, that one answers. It is never searched for.
[[nodiscard]] CpuidRegisters cpuid(std::uint32_t leaf);

/// Whether such a library answers.
[[nodiscard]] bool hasProcessorLibrary();

/// What that library says of the caption; as it is by itself without one.
[[nodiscard]] ProcessorCaption libraryCaption();

/// Family, model and stepping in their displayed form, with the extended fields added in.
struct ProcessorSignature {
    std::uint32_t family = 0;
    std::uint32_t model = 0;
    std::uint32_t stepping = 0;
};

/// Out of EAX of leaf 1.
[[nodiscard]] ProcessorSignature processorSignature(std::uint32_t eax);

/// The 12 characters of leaf 0: "GenuineIntel", "AuthenticAMD".
[[nodiscard]] std::string processorVendor(const CpuidRegisters& leaf0);

} // namespace vexil::platform
