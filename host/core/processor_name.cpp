#include "host/core/processor_name.h"

#include "platform/processor.h"

#include <algorithm>
#include <cctype>

namespace vexil::host {

std::string processorName() {
    auto vendor = platform::processorVendor(platform::cpuid(0));
    std::ranges::replace_if(
        vendor, [](unsigned char c) { return std::isprint(c) == 0; }, '?');
    const auto signature = platform::processorSignature(platform::cpuid(1).eax);
    return vendor + " family " + std::to_string(signature.family) + " model " +
           std::to_string(signature.model) + " stepping " + std::to_string(signature.stepping);
}

} // namespace vexil::host
