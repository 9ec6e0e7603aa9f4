#pragma once

#include "core/test.h"
#include "module/video_card/device.h"
#include "simulated/cuda/control.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vexil::tests {

/// What a test told its host, in order: "42" for a progress, the key for a message.
class RecordingReporter final : public core::TestReporter {
public:
    std::vector<std::string> events;
    std::vector<unsigned> progress;
    std::vector<std::string> messages;

    void setProgress(std::uint8_t percent) override {
        events.push_back(std::to_string(percent));
        progress.push_back(percent);
    }
    void report(const core::TestMessage& message) override {
        EXPECT_EQ(message.kind, 0);
        events.push_back(message.key);
        messages.push_back(message.key);
    }
    void interact(std::unique_ptr<core::InputInteraction>&) override {
        ADD_FAILURE() << "nobody was to be asked";
    }
};

/// The names and ids of the tests, as the tables of cases use them.
enum CudaTestId : std::int32_t {
    memoryFault = 11,
    address = 12,
    movingInversion = 13,
    blockMove = 14,
    randomSequence = 15,
    moduloX = 16,
    standardMath = 19,
    advancedMath = 20
};
inline constexpr CudaTestId memoryTests[] = {memoryFault, address,        movingInversion,
                                             blockMove,   randomSequence, moduloX};
inline constexpr CudaTestId allCudaTests[] = {memoryFault,    address, movingInversion, blockMove,
                                              randomSequence, moduloX, standardMath,    advancedMath};

/// What lies between the memory of a card and the block that a memory test takes of it.
inline constexpr std::uint32_t untestedMiB = 32;

/// Runs CUDA tests on cards that the test describes.
class CudaTest : public testing::Test {
protected:
    CudaTest();
    ~CudaTest() override;

    /// A healthy card whose block under test will be that large.
    [[nodiscard]] static simulated::CudaCardSection cardWith(std::uint32_t testedMiB);
    static void configure(const simulated::CudaCardSection& card, std::int32_t driverVersion = 12040);
    [[nodiscard]] static simulated::cuda::Control& driver();
    [[nodiscard]] static std::unique_ptr<core::Test> makeCudaTest(CudaTestId id);

    [[nodiscard]] static std::shared_ptr<module::video_card::Device> makeDevice();
    [[nodiscard]] static std::shared_ptr<module::video_card::Device> deviceWithoutCuda();

    /// A card on which everything works but the launches, which do nothing: fast, and whatever is done around
    /// them happens.
    static void configureWithoutLaunches(std::uint32_t testedMiB);
    /// How many launches, and so polls, an undisturbed run makes over 17 MiB.
    unsigned launchesOf(CudaTestId id);
    static void expectReleased();
    /// Takes the context from this thread, so that a call of the driver that has already begun fails.
    static void loseContext();

    /// Runs a test on the card; the reporter and the flags are those of the fixture.
    std::uint8_t run(CudaTestId id);
    [[nodiscard]] core::TestRunArguments arguments();
    /// From the nth call of that entry point on, counted from 1, `action` has happened before the call does
    /// anything.
    void at(std::string_view call, unsigned nth, std::function<void()> action);

    RecordingReporter reporter;
    std::uint8_t cancel = 0;
    std::shared_ptr<core::SystemEventState> events = std::make_shared<core::SystemEventState>();
    std::shared_ptr<module::video_card::Device> device; ///< has the CUDA number 0
};

} // namespace vexil::tests
