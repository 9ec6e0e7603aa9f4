#include "kernel_comparison.h"

#include "kernel_cases.h"
#include "module/video_card/cuda/cuda_runtime.h"
#include "registered_kernels.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

namespace vexil::hardware {

namespace {

using namespace module::video_card;
using tests::plain_walk::Access;
using tests::plain_walk::Case;
using tests::plain_walk::Chunk;
using tests::plain_walk::list;
using tests::plain_walk::Word;

constexpr std::uint32_t chunkBytes = 1 << 20;
constexpr std::uint32_t chunks = 20;
constexpr std::uint32_t blocks = 16;

using Bytes = std::vector<std::uint8_t>;

Bytes randomBytes(std::size_t size, unsigned seed) {
    Bytes bytes(size);
    std::mt19937_64 source(seed);
    for (std::size_t at = 0; at < size; at += sizeof(std::uint64_t)) {
        const std::uint64_t word = source();
        std::memcpy(bytes.data() + at, &word, sizeof word);
    }
    return bytes;
}

struct CardMemory {
    std::uint8_t *block = nullptr, *reference = nullptr, *flag = nullptr;
};

void walk(void (*walkChunk)(const Chunk&, const Access&, const Word*), Bytes& memory, const CardMemory& card,
          std::uint8_t& flag, const Bytes& reference) {
    // As the card does it: launches of 16 chunks, each with its own base.
    for (std::uint32_t first = 0; first < chunks; first += blocks) {
        for (std::uint32_t chunk = first; chunk < std::min(first + blocks, chunks); ++chunk) {
            std::uint8_t* const begin = memory.data() + std::size_t{chunk} * chunkBytes;
            walkChunk({begin, memory.data() + std::size_t{first} * chunkBytes, memory.data() + memory.size(),
                       chunkBytes, &flag,
                       reinterpret_cast<std::uintptr_t>(card.block) -
                           reinterpret_cast<std::uintptr_t>(memory.data())},
                      {}, reinterpret_cast<const Word*>(reference.data()));
        }
    }
}

void launch(const Case& test, const CardMemory& card) {
    CudaRuntime& cuda = CudaRuntime::instance();
    for (std::uint32_t first = 0; first < chunks; first += blocks) {
        Word bytes = chunkBytes;
        std::uint8_t *base = card.block + std::size_t{first} * chunkBytes,
                     *end = card.block + std::size_t{chunks} * chunkBytes;
        std::uint8_t *flag = card.flag, *reference = card.reference;
        auto arguments = list(&bytes, &base, &end);
        const auto rest = test.arguments(&flag, &reference);
        arguments.insert(arguments.end(), rest.begin(), rest.end());
        cuda.cudaLaunchKernel(registeredKernel(test.kernel), {blocks}, {1}, arguments.data(), 0, nullptr);
        cuda.cudaDeviceSynchronize();
    }
}

/// One kernel over memory with that content.
bool agrees(const Case& test, Bytes memory, const Bytes& reference, const CardMemory& card) {
    CudaRuntime& cuda = CudaRuntime::instance();
    std::uint8_t flagOfCard = 1, flagOfWalk = 1;
    cuda.cudaMemcpy(card.block, memory.data(), memory.size(), cudaMemcpyHostToDevice);
    cuda.cudaMemcpy(card.reference, reference.data(), reference.size(), cudaMemcpyHostToDevice);
    cuda.cudaMemcpy(card.flag, &flagOfCard, 1, cudaMemcpyHostToDevice);
    launch(test, card);
    Bytes byCard(memory.size());
    cuda.cudaMemcpy(byCard.data(), card.block, byCard.size(), cudaMemcpyDeviceToHost);
    cuda.cudaMemcpy(&flagOfCard, card.flag, 1, cudaMemcpyDeviceToHost);
    walk(test.walk, memory, card, flagOfWalk, reference);
    return cuda.cudaGetLastError() == cudaSuccess && flagOfCard == flagOfWalk && byCard == memory;
}

} // namespace

int compareKernels(std::int32_t device) {
    CudaRuntime& cuda = CudaRuntime::instance();
    cuda.cudaSetDevice(device);
    CardMemory card;
    if (cuda.cudaMalloc(&card.block, std::size_t{chunks} * chunkBytes) != cudaSuccess ||
        cuda.cudaMalloc(&card.reference, chunkBytes) != cudaSuccess ||
        cuda.cudaMalloc(&card.flag, 1) != cudaSuccess) {
        std::printf("no memory on the card for the comparison\n");
        return 1;
    }
    int failures = 0;
    const Bytes reference = randomBytes(chunkBytes, 2);
    for (const Case& test : tests::plain_walk::allCases()) {
        Bytes right = randomBytes(std::size_t{chunks} * chunkBytes, 1);
        const bool onRandom = agrees(test, right, reference, card);
        std::uint8_t ignored = 1;
        if (test.prepare != nullptr) {
            walk(test.prepare, right, card, ignored, reference);
        }
        const bool onRight = agrees(test, right, reference, card);
        right[right.size() - 4097] ^= 0x20;
        const bool onOneWrong = agrees(test, right, reference, card);
        failures += onRandom && onRight && onOneWrong ? 0 : 1;
        std::printf("  %-38s %s\n", test.kernel, onRandom && onRight && onOneWrong ? "equal" : "DIFFERENT");
    }
    cuda.cudaFree(card.block);
    cuda.cudaFree(card.reference);
    cuda.cudaFree(card.flag);
    cuda.cudaDeviceReset();
    return failures;
}

} // namespace vexil::hardware
