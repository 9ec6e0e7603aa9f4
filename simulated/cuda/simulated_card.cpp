#include "simulated/cuda/simulated_card.h"

#include <algorithm>
#include <cstring>

namespace vexil::simulated::cuda {

namespace {

/// Smaller pieces come out of what the driver keeps for itself and leave the card's memory as it is, so that
/// the large block of a test always begins at its start.
constexpr std::uint64_t largeBytes = 1U << 20;

std::uint8_t* host(CUdeviceptr memory) { return reinterpret_cast<std::uint8_t*>(memory); }

} // namespace

std::uint64_t SimulatedCard::totalBytes() const {
    return section_.reportedTotalBytes.value_or(section_.memoryBytes);
}

std::uint64_t SimulatedCard::usedBytes() const {
    std::uint64_t used = 0;
    for (const auto& [address, allocation] : allocations_) {
        used += allocation.large ? allocation.memory.size() : 0;
    }
    return used;
}

CUresult SimulatedCard::memGetInfo(std::size_t* freeBytes, std::size_t* total) {
    const std::lock_guard lock(mutex_);
    *freeBytes = section_.reportedFreeBytes.value_or(section_.memoryBytes - usedBytes());
    *total = totalBytes();
    return CUDA_SUCCESS;
}

std::uint64_t SimulatedCard::placeFor(std::uint64_t bytes) const {
    std::vector<std::pair<std::uint64_t, std::uint64_t>> taken;
    for (const auto& [address, allocation] : allocations_) {
        if (allocation.large) {
            taken.emplace_back(allocation.cardAddress, allocation.cardAddress + allocation.memory.size());
        }
    }
    std::ranges::sort(taken);
    std::uint64_t place = 0;
    for (const auto& [begin, end] : taken) {
        if (begin - place >= bytes) {
            break;
        }
        place = end;
    }
    return place;
}

CUresult SimulatedCard::memAlloc(CUdeviceptr* memory, std::size_t bytes) {
    const std::lock_guard lock(mutex_);
    requests_.push_back(bytes);
    if (bytes == 0) {
        return CUDA_ERROR_INVALID_VALUE;
    }
    if (section_.failingAllocations.hits(++allocationCalls_) ||
        bytes > section_.largestAllocation.value_or(bytes)) {
        return CUDA_ERROR_OUT_OF_MEMORY;
    }
    const bool large = bytes >= largeBytes;
    const std::uint64_t place = large ? placeFor(bytes) : 0;
    if (large && (bytes > section_.memoryBytes || place > section_.memoryBytes - bytes)) {
        return CUDA_ERROR_OUT_OF_MEMORY;
    }
    Allocation allocation{LazyMemory(bytes), place, large};
    std::uint8_t* const begin = allocation.memory.begin();
    if (begin == nullptr) {
        return CUDA_ERROR_OUT_OF_MEMORY;
    }
    *memory = reinterpret_cast<CUdeviceptr>(begin);
    allocations_.emplace(*memory, std::move(allocation));
    if (large) {
        watched_.add(section_, place, begin, bytes);
    }
    return CUDA_SUCCESS;
}

CUresult SimulatedCard::memFree(CUdeviceptr memory) {
    const std::lock_guard lock(mutex_);
    if (section_.failingFrees.hits(++freeCalls_)) {
        return CUDA_ERROR_UNKNOWN;
    }
    const auto found = allocations_.find(memory);
    if (found == allocations_.end()) {
        return CUDA_ERROR_INVALID_VALUE;
    }
    watched_.remove(found->second.memory.begin(), found->second.memory.size());
    allocations_.erase(found);
    return CUDA_SUCCESS;
}

bool SimulatedCard::holds(CUdeviceptr memory, std::size_t bytes) const {
    auto next = allocations_.upper_bound(memory);
    if (next == allocations_.begin()) {
        return false;
    }
    const LazyMemory& block = std::prev(next)->second.memory;
    const auto offset = static_cast<std::uint64_t>(host(memory) - block.begin());
    return offset <= block.size() && bytes <= block.size() - offset;
}

CUresult SimulatedCard::copyToCard(CUdeviceptr to, const void* from, std::size_t bytes) {
    const std::lock_guard lock(mutex_);
    if (section_.failingCopiesToCard.hits(++toCardCalls_)) {
        return CUDA_ERROR_UNKNOWN;
    }
    if (!holds(to, bytes)) {
        return CUDA_ERROR_INVALID_VALUE;
    }
    watched_.copyIn(host(to), from, bytes);
    return CUDA_SUCCESS;
}

CUresult SimulatedCard::copyFromCard(void* to, CUdeviceptr from, std::size_t bytes) {
    const std::lock_guard lock(mutex_);
    if (section_.failingCopiesFromCard.hits(++fromCardCalls_)) {
        return CUDA_ERROR_UNKNOWN;
    }
    if (!holds(from, bytes)) {
        return CUDA_ERROR_INVALID_VALUE;
    }
    watched_.copyOut(to, host(from), bytes);
    return CUDA_SUCCESS;
}

CUresult SimulatedCard::copyOnCard(CUdeviceptr to, CUdeviceptr from, std::size_t bytes) {
    const std::lock_guard lock(mutex_);
    if (!holds(to, bytes) || !holds(from, bytes)) {
        return CUDA_ERROR_INVALID_VALUE;
    }
    std::memmove(host(to), host(from), bytes);
    return CUDA_SUCCESS;
}

CUresult SimulatedCard::setWords(CUdeviceptr to, unsigned value, std::size_t words) {
    const std::lock_guard lock(mutex_);
    if (!holds(to, words * sizeof(Word))) {
        return CUDA_ERROR_INVALID_VALUE;
    }
    std::fill_n(reinterpret_cast<Word*>(to), words, value);
    return CUDA_SUCCESS;
}

void SimulatedCard::reset() {
    const std::lock_guard lock(mutex_);
    for (const auto& [address, allocation] : allocations_) {
        watched_.remove(allocation.memory.begin(), allocation.memory.size());
    }
    allocations_.clear();
    modules_.clear();
}

std::vector<std::uint64_t> SimulatedCard::allocations() const {
    const std::lock_guard lock(mutex_);
    std::vector<std::pair<std::pair<bool, std::uint64_t>, std::uint64_t>> found;
    for (const auto& [address, allocation] : allocations_) {
        found.push_back({{!allocation.large, allocation.cardAddress}, allocation.memory.size()});
    }
    std::ranges::sort(found);
    std::vector<std::uint64_t> sizes;
    std::ranges::transform(found, std::back_inserter(sizes), [](const auto& entry) { return entry.second; });
    return sizes;
}

std::vector<std::uint64_t> SimulatedCard::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

std::uint64_t SimulatedCard::launches() const {
    const std::lock_guard lock(mutex_);
    return launchCalls_;
}

} // namespace vexil::simulated::cuda
