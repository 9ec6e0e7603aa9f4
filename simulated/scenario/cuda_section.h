#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vexil::simulated {

class FieldReader;

// What a scenario says of CUDA. Places in the memory of a card are bytes from its start, and the first large
// block that a program allocates begins there, so that a place is also an offset into the block under test.

/// Calls of one kind that fail, counted from 1 over the life of the simulated driver.
struct CudaFailingCalls {
    static constexpr std::uint64_t forEver = ~std::uint64_t{0};

    std::uint64_t first = 0; ///< 0: none fails
    std::uint64_t count = forEver;

    [[nodiscard]] bool hits(std::uint64_t call) const {
        return first != 0 && call >= first && call - first < count;
    }
};

/// A bit of a word that always reads as it wants.
struct CudaStuckBit {
    std::uint64_t address = 0; ///< of the 32-bit word, a multiple of 4
    unsigned bit = 0;          ///< 0 to 31
    bool value = false;
};

/// A word whose bits tip over when it is read for the nth time after its allocation, and stay so until it is
/// written.
struct CudaReadFlip {
    std::uint64_t address = 0;
    std::uint32_t bits = 1; ///< which of them
    std::uint64_t read = 1; ///< counted from 1
};

/// Address lines that are shorted: a write to one word lands in another. Reads are not affected.
struct CudaShortedWord {
    std::uint64_t from = 0, to = 0;
};

enum class CudaWrongValue : std::uint8_t { OneMore, Negated, NaN, Infinity, Zero };

/// Wrong results of one operation of an arithmetic kernel, in all its columns. NaN and infinity do not exist
/// for integers, where the bits of the float are what comes out.
struct CudaWrongOperation {
    std::string kernel;               ///< name of the kernel
    std::optional<std::uint32_t> row; ///< all rows without one
    CudaWrongValue value = CudaWrongValue::OneMore;
};

/// One card as CUDA sees it.
struct CudaCardSection {
    std::string pciBusId;          ///< as the driver writes it: "0000:0A:00.0"
    std::uint64_t memoryBytes = 0; ///< what can be allocated
    // What the driver reports instead of the truth.
    std::optional<std::uint64_t> reportedTotalBytes, reportedFreeBytes;

    std::vector<CudaStuckBit> stuckBits;
    std::vector<CudaReadFlip> readFlips;
    std::vector<CudaShortedWord> shortedWords;
    std::vector<CudaWrongOperation> wrongOperations;
    CudaFailingCalls failingAllocations, failingFrees, failingCopiesToCard, failingCopiesFromCard,
        failingLaunches;
    std::optional<std::uint64_t> largestAllocation; ///< more than that many bytes in one piece cannot be had
};

/// The CUDA driver of a machine.
struct CudaSection {
    std::int32_t driverVersion = 12040; ///< 1000 * major + 10 * minor
    std::vector<CudaCardSection> cards; ///< in the order in which CUDA numbers them
};

/// Reads the `cuda` object of a card at `location` ("bb:dd.f").
[[nodiscard]] CudaCardSection readCudaCard(FieldReader& reader, const std::string& location);

} // namespace vexil::simulated
