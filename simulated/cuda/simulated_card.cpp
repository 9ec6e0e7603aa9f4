#include "simulated/cuda/simulated_card.h"

#include "module/video_card/cuda/kernels/kernel_support.h"
#include "simulated/cuda/arithmetic_faults.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace vexil::simulated::cuda {

namespace kernels = module::video_card::kernels;

namespace {

/// Smaller pieces come out of what the driver keeps for itself and leave the card's memory as it is, so that
/// the large block of a test always begins at its start.
constexpr std::uint64_t largeBytes = 1U << 20;

std::uint8_t* host(CUdeviceptr memory) { return reinterpret_cast<std::uint8_t*>(memory); }

template <typename T>
T argument(void** arguments, int place) {
    return *static_cast<T*>(arguments[place]);
}

const kernels::HostKernel* findKernel(std::span<const kernels::HostKernel> table, std::string_view name) {
    const auto found = std::ranges::find(table, name, &kernels::HostKernel::name);
    return found == table.end() ? nullptr : &*found;
}

/// Calls `visit` with the name of each entry point of a PTX text.
template <typename Visit>
void forEachEntry(std::string_view ptx, Visit&& visit) {
    constexpr std::string_view directive = ".entry ";
    for (auto at = ptx.find(directive); at != std::string_view::npos; at = ptx.find(directive, at)) {
        at += directive.size();
        visit(ptx.substr(at, ptx.find_first_of(" (\n", at) - at));
    }
}

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

CUresult SimulatedCard::loadModule(CUmodule* module, const void* image) {
    const std::lock_guard lock(mutex_);
    const std::string_view ptx = static_cast<const char*>(image);
    if (ptx.find(".version") == std::string_view::npos) {
        return CUDA_ERROR_INVALID_PTX;
    }
    auto loaded = std::make_unique<SimulatedModule>();
    forEachEntry(ptx, [&](std::string_view name) {
        const SimulatedFunction function{findKernel(kernels::plain::kernelTable(), name),
                                         findKernel(kernels::watched::kernelTable(), name)};
        if (function.plain != nullptr) {
            loaded->functions.emplace(name, function);
        }
    });
    *module = reinterpret_cast<CUmodule>(loaded.get());
    modules_.push_back(std::move(loaded));
    return CUDA_SUCCESS;
}

CUresult SimulatedCard::unloadModule(CUmodule module) {
    const std::lock_guard lock(mutex_);
    const auto erased = std::erase_if(
        modules_, [&](const auto& loaded) { return reinterpret_cast<CUmodule>(loaded.get()) == module; });
    return erased == 0 ? CUDA_ERROR_INVALID_HANDLE : CUDA_SUCCESS;
}

CUresult SimulatedCard::getFunction(CUfunction* function, CUmodule module, const char* name) {
    const std::lock_guard lock(mutex_);
    for (const auto& loaded : modules_) {
        if (reinterpret_cast<CUmodule>(loaded.get()) == module) {
            const auto found = loaded->functions.find(name);
            if (found == loaded->functions.end()) {
                return CUDA_ERROR_NOT_FOUND;
            }
            *function = reinterpret_cast<CUfunction>(&found->second);
            return CUDA_SUCCESS;
        }
    }
    return CUDA_ERROR_INVALID_HANDLE;
}

SimulatedFunction* SimulatedCard::loadedFunction(CUfunction function) const {
    for (const auto& loaded : modules_) {
        for (auto& [name, known] : loaded->functions) {
            if (reinterpret_cast<CUfunction>(&known) == function) {
                return &known;
            }
        }
    }
    return nullptr;
}

bool SimulatedCard::walksThroughFaults(const SimulatedFunction& function, unsigned block,
                                       void** arguments) const {
    if (!function.plain->walksChunks) {
        return false;
    }
    const auto chunkBytes = argument<std::uint32_t>(arguments, 0);
    const auto* const base = argument<const std::uint8_t*>(arguments, 1);
    if (watched_.touches(base + block * chunkBytes, chunkBytes)) {
        return true;
    }
    const int reference = function.plain->referenceArgument;
    return reference >= 0 &&
           watched_.touches(argument<const std::uint8_t*>(arguments, reference), chunkBytes);
}

void SimulatedCard::runBlock(const SimulatedFunction& function, unsigned block, unsigned threads,
                             void** arguments) {
    // Only the blocks that meet a broken word pay for the watching.
    const bool watch = walksThroughFaults(function, block, arguments);
    WatchedMemory::watch(watch ? &watched_ : nullptr);
    for (unsigned thread = 0; thread < threads; ++thread) {
        kernels::launchPosition = {block, threads, thread};
        (watch ? function.watched : function.plain)->run(arguments);
    }
}

CUresult SimulatedCard::launch(CUfunction function, unsigned blocks, unsigned threads, void** arguments) {
    const std::lock_guard lock(mutex_);
    const SimulatedFunction* const known = loadedFunction(function);
    if (known == nullptr) {
        return CUDA_ERROR_INVALID_HANDLE;
    }
    if (section_.failingLaunches.hits(++launchCalls_)) {
        return CUDA_ERROR_LAUNCH_OUT_OF_RESOURCES;
    }
    if (blocks == 0 || threads == 0) {
        return CUDA_ERROR_INVALID_VALUE;
    }
    for (unsigned block = 0; block < blocks; ++block) {
        runBlock(*known, block, threads, arguments);
    }
    if (!known->plain->walksChunks) {
        spoilResults(section_.wrongOperations, known->plain->name, argument<std::uint32_t*>(arguments, 3),
                     blocks, threads);
    }
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
