#include "simulated/cuda/simulated_driver.h"

#include "simulated/scenario/scenario.h"

#include <exception>

namespace vexil::simulated::cuda {

namespace {

thread_local SimulatedCard* currentCard = nullptr;

} // namespace

SimulatedDriver::SimulatedDriver() {
    initialisation_ = CUDA_ERROR_NO_DEVICE;
    const auto file = scenarioFileOfProcess();
    if (!file) {
        return;
    }
    try {
        const Scenario scenario = loadScenario(*file);
        CudaSection section;
        section.driverVersion = scenario.cudaDriverVersion;
        for (const auto& card : scenario.cards) {
            if (card.cuda) {
                section.cards.push_back(*card.cuda);
            }
        }
        configure(section);
    } catch (const std::exception&) {
        // Whoever chose the scenario has checked it before; to a program that loads the driver it is a broken
        // one.
        initialisation_ = CUDA_ERROR_UNKNOWN;
    }
}

SimulatedDriver& SimulatedDriver::instance() {
    static auto* const driver = new SimulatedDriver;
    return *driver;
}

void SimulatedDriver::configure(const CudaSection& section) {
    const std::lock_guard lock(mutex_);
    version_ = section.driverVersion;
    cards_.clear();
    for (const auto& card : section.cards) {
        cards_.push_back(std::make_unique<SimulatedCard>(card));
    }
    contexts_.assign(cards_.size(), {});
    initialisation_ = cards_.empty() ? CUDA_ERROR_NO_DEVICE : CUDA_SUCCESS;
}

void SimulatedDriver::observe(std::function<void(const char*)> observer) { observer_ = std::move(observer); }

void SimulatedDriver::observeLaunches(std::function<void(const CardLaunch&)> observer) {
    launchObserver_ = std::move(observer);
}

void SimulatedDriver::enter(const char* call) const {
    if (observer_) {
        observer_(call);
    }
}

void SimulatedDriver::enter(const CardLaunch& launch) const {
    if (launchObserver_) {
        launchObserver_(launch);
    }
}

SimulatedCard* SimulatedDriver::card(int ordinal) const {
    return ordinal >= 0 && ordinal < count() ? cards_[static_cast<std::size_t>(ordinal)].get() : nullptr;
}

CardState SimulatedDriver::state(int ordinal) const {
    const SimulatedCard* const known = card(ordinal);
    if (known == nullptr) {
        return {};
    }
    const std::lock_guard lock(mutex_);
    return {known->allocations(), known->requests(), known->launches(),
            contexts_[static_cast<std::size_t>(ordinal)].retained};
}

CUresult SimulatedDriver::retain(int ordinal, CUcontext* context) {
    SimulatedCard* const known = card(ordinal);
    if (known == nullptr) {
        return CUDA_ERROR_INVALID_DEVICE;
    }
    const std::lock_guard lock(mutex_);
    auto& primary = contexts_[static_cast<std::size_t>(ordinal)];
    ++primary.retained;
    primary.live = true;
    *context = reinterpret_cast<CUcontext>(known);
    return CUDA_SUCCESS;
}

CUresult SimulatedDriver::release(int ordinal) {
    SimulatedCard* const known = card(ordinal);
    if (known == nullptr) {
        return CUDA_ERROR_INVALID_DEVICE;
    }
    const std::lock_guard lock(mutex_);
    auto& primary = contexts_[static_cast<std::size_t>(ordinal)];
    if (primary.retained == 0) {
        return CUDA_ERROR_INVALID_CONTEXT;
    }
    if (--primary.retained == 0) {
        known->reset();
        primary.live = false;
    }
    return CUDA_SUCCESS;
}

CUresult SimulatedDriver::reset(int ordinal) {
    SimulatedCard* const known = card(ordinal);
    if (known == nullptr) {
        return CUDA_ERROR_INVALID_DEVICE;
    }
    const std::lock_guard lock(mutex_);
    known->reset();
    contexts_[static_cast<std::size_t>(ordinal)].live = false;
    return CUDA_SUCCESS;
}

CUresult SimulatedDriver::setCurrent(CUcontext context) {
    auto* const wanted = reinterpret_cast<SimulatedCard*>(context);
    const std::lock_guard lock(mutex_);
    for (std::size_t ordinal = 0; ordinal < cards_.size(); ++ordinal) {
        if (cards_[ordinal].get() == wanted && contexts_[ordinal].live) {
            currentCard = wanted;
            return CUDA_SUCCESS;
        }
    }
    currentCard = nullptr;
    return wanted == nullptr ? CUDA_SUCCESS : CUDA_ERROR_INVALID_CONTEXT;
}

SimulatedCard* SimulatedDriver::current() const {
    const std::lock_guard lock(mutex_);
    for (std::size_t ordinal = 0; ordinal < cards_.size(); ++ordinal) {
        if (cards_[ordinal].get() == currentCard && contexts_[ordinal].live) {
            return currentCard;
        }
    }
    return nullptr;
}

} // namespace vexil::simulated::cuda
