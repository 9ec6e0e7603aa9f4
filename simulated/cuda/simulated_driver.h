#pragma once

#include "simulated/cuda/control.h"
#include "simulated/cuda/simulated_card.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace vexil::simulated::cuda {

/// The driver of the process. The scenario says what is in the machine; a test may say it afresh at any time
/// at which no call is running.
class SimulatedDriver final : public Control {
public:
    SimulatedDriver();

    /// Never destroyed: programs call the driver from their exit handlers.
    static SimulatedDriver& instance();

    void configure(const CudaSection& section) override;
    void observe(std::function<void(const char*)> observer) override;
    void observeLaunches(std::function<void(const CardLaunch&)> observer) override;
    [[nodiscard]] CardState state(int ordinal) const override;

    /// To be called at the start of every entry point, with its name.
    void enter(const char* call) const;
    /// To be called with every launch, behind `enter`.
    void enter(const CardLaunch& launch) const;

    [[nodiscard]] std::int32_t version() const { return version_; }
    [[nodiscard]] int count() const { return static_cast<int>(cards_.size()); }
    /// Why the machine has no usable description, if it has none.
    [[nodiscard]] CUresult initialisation() const { return initialisation_; }
    /// Null for a number that no card has.
    [[nodiscard]] SimulatedCard* card(int ordinal) const;

    CUresult retain(int ordinal, CUcontext* context);
    CUresult release(int ordinal);
    CUresult reset(int ordinal);
    CUresult setCurrent(CUcontext context);
    /// The card of this thread's context; null without one, or when it has been reset since.
    [[nodiscard]] SimulatedCard* current() const;

private:
    struct Context {
        int retained = 0;
        bool live = false; ///< made by the first use after a reset
    };

    std::int32_t version_ = 0;
    CUresult initialisation_ = CUDA_SUCCESS;
    std::vector<std::unique_ptr<SimulatedCard>> cards_;
    std::vector<Context> contexts_;
    std::function<void(const char*)> observer_;
    std::function<void(const CardLaunch&)> launchObserver_;
    mutable std::mutex mutex_;
};

} // namespace vexil::simulated::cuda
