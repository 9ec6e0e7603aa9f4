#pragma once

#include "core/test.h"
#include "module/video_card/cuda/cuda_runtime_types.h"
#include "module/video_card/cuda/sweep.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace vexil::module::video_card {

/// Base of the CUDA memory tests: one large block of device memory, swept in launches of 16 MiB by the
/// kernels of a concrete test, which report a wrong word through a single byte on the card. The verdict is
/// that one bit; neither the place nor the number of wrong words is known to the host.
///
/// An object serves one run: the host never sets `patternOk_` back. Device memory is not held by a class of
/// its own, since the tests promise in which order it is freed, what a failure leaves behind, and one way out
/// that leaves it.
class CudaAbstractTest : public core::Test {
public:
    std::uint8_t execute(const core::TestRunArguments& arguments) override;
    [[nodiscard]] bool requiresExclusiveRun() const override { return false; }
    [[nodiscard]] std::uint32_t expectedDurationMinutes() const override = 0;
    [[nodiscard]] bool isSupported(core::Device* device, std::shared_ptr<core::Device> holder) const override;

protected:
    explicit CudaAbstractTest(std::int32_t id);

    /// The passes of the test. Returns a `TestResult`; whatever it is, the memory has been released by then,
    /// or the failure to release it reported.
    virtual std::uint8_t runBody(const core::TestRunArguments& arguments) = 0;
    virtual bool allocateErrorFlag();
    /// Takes the largest block that fits beside a margin. Byte counts are cut to 32 bits before they become
    /// MiB, so the block never reaches 4 GiB: a settled limit of these tests, with all its wrap-arounds.
    virtual bool allocateTestMemory(const cudaDeviceProp& properties);
    virtual bool releaseErrorFlag();
    /// Stops at the first failure, and then the device is not reset.
    virtual bool releaseAll();

    /// Asked before the body only: releases nothing.
    [[nodiscard]] static bool isAborted(const core::TestRunArguments& arguments);
    /// Asked after every launch. `Passed` means go on; on anything else the memory is released and the run is
    /// over.
    [[nodiscard]] std::uint8_t pollChunk(const core::TestRunArguments& arguments);
    /// True if the memory could not be released, which has been reported then.
    bool releaseOrReport(const core::TestRunArguments& arguments);

    /// Launches the pass's kernel over the next 16 chunks; the argument is the base of the launch.
    using Launch = std::function<void(std::uint8_t* base)>;
    /// One pass over the block. A value ends the run with that result; without one the pass is over, with a
    /// clear flag if it found a wrong word.
    [[nodiscard]] std::optional<std::uint8_t> sweep(const core::TestRunArguments& arguments,
                                                    const SweepPass& pass, const Launch& launch);
    /// A body whose passes are rows with a `sweep` each: makes them in order, then ends. `launch` gets the
    /// row and the base of each launch.
    template <typename Passes, typename LaunchPass>
    [[nodiscard]] std::uint8_t runPasses(const core::TestRunArguments& arguments, const Passes& passes,
                                         const LaunchPass& launch) {
        for (const auto& pass : passes) {
            if (const auto result =
                    sweep(arguments, pass.sweep, [&](std::uint8_t* base) { launch(pass, base); })) {
                return *result;
            }
        }
        return finishBody(arguments);
    }
    /// What follows the last pass: release, verdict, message.
    [[nodiscard]] std::uint8_t finishBody(const core::TestRunArguments& arguments);
    /// The end of a run in which the card and the host could not exchange data. The order of message and
    /// progress is the test's own; hosts that log both see it.
    [[nodiscard]] std::uint8_t finishWithoutCommunication(const core::TestRunArguments& arguments,
                                                          CommunicationErrorOrder order);

    bool patternOk_ = true; ///< the host's copy of the error flag
    /// The card's copy, and until that is allocated the host's.
    std::uint8_t* devicePatternOk_ = reinterpret_cast<std::uint8_t*>(&patternOk_);
    std::uint8_t* memoryBegin_ = nullptr; ///< on the card
    std::uint8_t* memoryEnd_ = nullptr;
    std::uint32_t testedMiB_ = 0;

    static constexpr unsigned blocks = 16;
    static constexpr std::uint32_t chunkBytes = 0x100000; ///< the share of one block
};

} // namespace vexil::module::video_card
