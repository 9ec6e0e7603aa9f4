// What runs on a simulated card: loaded code and launches.
#include "simulated/cuda/simulated_card.h"

#include "module/video_card/cuda/kernels/kernel_support.h"
#include "simulated/cuda/arithmetic_faults.h"

#include <algorithm>
#include <span>
#include <string_view>

namespace vexil::simulated::cuda {

namespace kernels = module::video_card::kernels;

namespace {

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

const char* SimulatedCard::kernelName(CUfunction function) const {
    const std::lock_guard lock(mutex_);
    const SimulatedFunction* const known = loadedFunction(function);
    return known == nullptr ? nullptr : known->plain->name;
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

} // namespace vexil::simulated::cuda
