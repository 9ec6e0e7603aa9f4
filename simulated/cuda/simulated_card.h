#pragma once

#include "module/video_card/cuda/cuda_driver_api.h"
#include "module/video_card/cuda/kernels/kernel_table.h"
#include "simulated/cuda/lazy_memory.h"
#include "simulated/cuda/watched_memory.h"
#include "simulated/scenario/cuda_section.h"

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace vexil::simulated::cuda {

using namespace vexil::cuda;

/// A kernel of a loaded module.
struct SimulatedFunction {
    const module::video_card::kernels::HostKernel* plain = nullptr;
    const module::video_card::kernels::HostKernel* watched = nullptr;
};

/// Loaded device code: the kernels that its PTX has an entry for.
struct SimulatedModule {
    std::map<std::string, SimulatedFunction, std::less<>> functions;
};

/// One card: its memory, what is loaded on it, and its faults. Device addresses are host addresses. Every
/// operation answers as the driver's call of that name would.
class SimulatedCard {
public:
    explicit SimulatedCard(CudaCardSection section) : section_(std::move(section)) {}

    [[nodiscard]] const CudaCardSection& section() const { return section_; }
    [[nodiscard]] std::uint64_t totalBytes() const;

    CUresult memGetInfo(std::size_t* freeBytes, std::size_t* totalBytes);
    CUresult memAlloc(CUdeviceptr* memory, std::size_t bytes);
    CUresult memFree(CUdeviceptr memory);
    CUresult copyToCard(CUdeviceptr to, const void* from, std::size_t bytes);
    CUresult copyFromCard(void* to, CUdeviceptr from, std::size_t bytes);
    CUresult copyOnCard(CUdeviceptr to, CUdeviceptr from, std::size_t bytes);
    CUresult setWords(CUdeviceptr to, unsigned value, std::size_t words);
    CUresult loadModule(CUmodule* module, const void* image);
    CUresult unloadModule(CUmodule module);
    CUresult getFunction(CUfunction* function, CUmodule module, const char* name);
    /// Null for a function that is not loaded.
    [[nodiscard]] const char* kernelName(CUfunction function) const;
    CUresult launch(CUfunction function, unsigned blocks, unsigned threads, void** arguments);
    /// Ends everything that stands on the card.
    void reset();

    /// What is allocated: sizes in the order of their places on the card, small ones last.
    [[nodiscard]] std::vector<std::uint64_t> allocations() const;
    /// Sizes that were asked for, whether or not there was room, in order.
    [[nodiscard]] std::vector<std::uint64_t> requests() const;
    [[nodiscard]] std::uint64_t launches() const;

private:
    struct Allocation {
        LazyMemory memory;
        std::uint64_t cardAddress = 0;
        bool large = false;
    };

    [[nodiscard]] std::uint64_t usedBytes() const;
    [[nodiscard]] std::uint64_t placeFor(std::uint64_t bytes) const;
    [[nodiscard]] bool holds(CUdeviceptr memory, std::size_t bytes) const;
    [[nodiscard]] SimulatedFunction* loadedFunction(CUfunction function) const;
    void runBlock(const SimulatedFunction& function, unsigned block, unsigned threads, void** arguments);
    [[nodiscard]] bool walksThroughFaults(const SimulatedFunction& function, unsigned block,
                                          void** arguments) const;

    const CudaCardSection section_;
    std::map<CUdeviceptr, Allocation> allocations_;
    std::vector<std::unique_ptr<SimulatedModule>> modules_;
    WatchedMemory watched_;
    std::vector<std::uint64_t> requests_;
    std::uint64_t allocationCalls_ = 0, freeCalls_ = 0, toCardCalls_ = 0, fromCardCalls_ = 0,
                  launchCalls_ = 0;
    mutable std::mutex mutex_; ///< the card does one thing at a time
};

} // namespace vexil::simulated::cuda
