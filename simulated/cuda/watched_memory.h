#pragma once

#include "simulated/scenario/cuda_section.h"

#include <cstdint>
#include <map>
#include <vector>

namespace vexil::simulated::cuda {

using Word = std::uint32_t;

/// The broken words of a card's memory, as far as that is allocated. What is in memory is what was written
/// there; the faults act on the way in and out.
class WatchedMemory {
public:
    /// Resolves the faults whose words lie in a block of `bytes` that begins at `cardAddress` on the card and
    /// at `host` in this process. Counts of reads start anew.
    void add(const CudaCardSection& card, std::uint64_t cardAddress, std::uint8_t* host, std::uint64_t bytes);
    void remove(const std::uint8_t* host, std::uint64_t bytes);

    [[nodiscard]] bool touches(const std::uint8_t* first, std::uint64_t bytes) const;

    [[nodiscard]] Word load(const Word* word);
    void store(Word* word, Word value);

    /// Copies that go through the faults like the accesses of a kernel.
    void copyIn(std::uint8_t* to, const void* from, std::size_t bytes);
    void copyOut(void* to, const std::uint8_t* from, std::size_t bytes);

    /// Makes the kernels of this thread go through this memory; null ends that.
    static void watch(WatchedMemory* memory);

private:
    struct Fault {
        Word stuckHigh = 0, stuckLow = 0;
        Word flippingBits = 0;
        std::uint64_t flippingRead = 0; ///< 0: never
        std::uint64_t reads = 0;
        Word* landsAt = nullptr; ///< where writes go instead
    };
    using Faults = std::map<Word*, Fault>;

    [[nodiscard]] Fault* find(const Word* word);
    void noteBounds();
    [[nodiscard]] Faults::iterator firstFrom(const std::uint8_t* place);
    [[nodiscard]] std::vector<Faults::iterator> faultsIn(const std::uint8_t* first, std::uint64_t bytes);
    [[nodiscard]] static Word forced(const Fault& fault, Word value);

    Faults faults_;
    const Word* lowest_ = nullptr;
    const Word* highest_ = nullptr;
};

} // namespace vexil::simulated::cuda
