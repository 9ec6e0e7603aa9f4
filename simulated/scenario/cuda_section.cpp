#include "simulated/scenario/cuda_section.h"

#include "simulated/scenario/field_reader.h"

#include <algorithm>
#include <cctype>
#include <limits>

namespace vexil::simulated {

namespace {

constexpr std::uint64_t anyNumber = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t anyWord = std::numeric_limits<std::uint32_t>::max();

std::uint64_t readWordAddress(FieldReader& reader, const std::string& field) {
    const auto address = reader.number(field, 0, anyNumber);
    if (address % sizeof(std::uint32_t) != 0) {
        reader.fail(field, "must be the place of a 32-bit word, a multiple of 4");
    }
    return address;
}

CudaFailingCalls readFailingCalls(FieldReader& reader, const std::string& field) {
    CudaFailingCalls calls;
    if (auto object = reader.object(field)) {
        calls.first = object->number("first", 1, anyNumber);
        calls.count = object->number("count", 1, anyNumber, CudaFailingCalls::forEver);
        object->finish();
    }
    return calls;
}

std::optional<std::uint64_t> readOptionalNumber(FieldReader& reader, const std::string& field) {
    return reader.has(field) ? std::optional(reader.number(field, 0, anyNumber)) : std::nullopt;
}

void readMemoryFaults(FieldReader& reader, CudaCardSection& card) {
    for (auto& fault : reader.objects("stuckBits")) {
        card.stuckBits.push_back({readWordAddress(fault, "address"),
                                  static_cast<unsigned>(fault.number("bit", 0, 31)),
                                  fault.number("value", 0, 1) == 1});
        fault.finish();
    }
    for (auto& fault : reader.objects("readFlips")) {
        card.readFlips.push_back({readWordAddress(fault, "address"),
                                  static_cast<std::uint32_t>(fault.number("bits", 1, anyWord, 1)),
                                  fault.number("read", 1, anyNumber, 1)});
        fault.finish();
    }
    for (auto& fault : reader.objects("shortedWords")) {
        card.shortedWords.push_back({readWordAddress(fault, "from"), readWordAddress(fault, "to")});
        fault.finish();
    }
}

void readWrongOperations(FieldReader& reader, CudaCardSection& card) {
    for (auto& fault : reader.objects("wrongOperations")) {
        CudaWrongOperation wrong;
        const auto kernel =
            fault.choice("kernel", {"standardInteger", "advancedInteger", "standardFloat", "advancedFloat"});
        constexpr const char* names[] = {
            "cuda_kernel_standard_execute_integer", "cuda_kernel_advanced_execute_integer",
            "cuda_kernel_standard_execute_float", "cuda_kernel_advanced_execute_float"};
        wrong.kernel = names[kernel];
        if (fault.has("row")) {
            wrong.row = static_cast<std::uint32_t>(fault.number("row", 0, anyWord));
        }
        wrong.value = static_cast<CudaWrongValue>(
            fault.choice("value", {"oneMore", "negated", "nan", "infinity", "zero"}));
        card.wrongOperations.push_back(wrong);
        fault.finish();
    }
}

} // namespace

CudaCardSection readCudaCard(FieldReader& reader, const std::string& location) {
    CudaCardSection card;
    card.pciBusId = "0000:" + location;
    std::ranges::transform(card.pciBusId, card.pciBusId.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    card.memoryBytes = reader.number("memoryMiB", 1, 1U << 20) << 20;
    card.reportedTotalBytes = readOptionalNumber(reader, "reportedTotalBytes");
    card.reportedFreeBytes = readOptionalNumber(reader, "reportedFreeBytes");
    readMemoryFaults(reader, card);
    readWrongOperations(reader, card);
    card.failingAllocations = readFailingCalls(reader, "failingAllocations");
    card.largestAllocation = readOptionalNumber(reader, "largestAllocationBytes");
    card.failingFrees = readFailingCalls(reader, "failingFrees");
    card.failingCopiesToCard = readFailingCalls(reader, "failingCopiesToCard");
    card.failingCopiesFromCard = readFailingCalls(reader, "failingCopiesFromCard");
    card.failingLaunches = readFailingCalls(reader, "failingLaunches");
    reader.finish();
    return card;
}

} // namespace vexil::simulated
