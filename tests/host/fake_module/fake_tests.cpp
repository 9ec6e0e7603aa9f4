#include "host/fake_module/fake_tests.h"

#include "host/fake_module/fake_module.h"
#include "module/video_card/catalogue.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <set>
#include <stdexcept>
#include <thread>

namespace vexil::host::tests {

namespace {

using core::TestResult;
using core::TestRunArguments;

class WholeNumberParameter final : public core::TestParameter {
public:
    WholeNumberParameter()
        : TestParameter({"DURATION", "DURATION_(MINUTES)", "DEFINES_THE_TEST_DURATION_IN_MINUTES.", "5", 2, 0,
                         "[1:9999]"}) {}

    [[nodiscard]] bool isValid(std::string text) const override {
        return !text.empty() && text.size() <= 4 && text != "0" &&
               std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
    }
    [[nodiscard]] const std::string& value() const { return value_; }
};

/// Tests of the ids whose real ones need CUDA.
const std::set<std::int32_t> cudaIds = {11, 12, 13, 14, 15, 16, 19, 20};

class FakeTest final : public core::Test {
public:
    FakeTest(std::int32_t id, bool scripted)
        : Test(module::video_card::catalogueDescriptor(id)), scripted_(scripted) {
        if (id == FakeId::hasParameter) {
            addParameter(&duration_);
        }
    }

    [[nodiscard]] bool isSupported(core::Device* device, std::shared_ptr<core::Device>) const override {
        const auto* fake = dynamic_cast<FakeDevice*>(device);
        return fake != nullptr && (fake->hasCuda() || !cudaIds.contains(id()));
    }

    std::uint8_t execute(const TestRunArguments& arguments) override {
        auto& reporter = *arguments.reporter;
        if (!scripted_ && id() != FakeId::thermalTool) {
            reporter.setProgress(100);
            return TestResult::Passed;
        }
        switch (id()) {
        case FakeId::fails:
            return leave(reporter, "INCONSISTENCY_FOUND_WHILE_COMPARING_IMAGES", TestResult::Failed);
        case FakeId::notCompleted:
            return leave(reporter,
                         "AN_INTERNAL_ERROR_OCCURRED._|THIS_DOES_NOT_INDICATE_A_FAILURE._|PLEASE_TRY_AGAIN.",
                         TestResult::NotCompleted);
        case FakeId::keepsMemory:
            return leave(reporter, "FAILED_TO_FREE_GPU_MEMORY", TestResult::CleanupFailed);
        case FakeId::throws:
            throw std::runtime_error("scripted");
        case FakeId::waitsForCancel:
            return waitForCancel(arguments);
        case FakeId::notSupported:
            return leave(reporter, "TEST_NOT_SUPPORTED_IN_THIS_DEVICE", TestResult::NotSupported);
        case FakeId::unavailable:
            return TestResult::DeviceUnavailable;
        case FakeId::interrupts:
            std::raise(SIGINT);
            return waitForCancel(arguments);
        case FakeId::interruptsTwice:
            std::raise(SIGINT);
            std::raise(SIGINT);
            std::this_thread::sleep_for(std::chrono::hours(1));
            return TestResult::Passed;
        case FakeId::hasParameter:
            return leave(reporter, "DURATION_(MINUTES): " + duration_.value(), TestResult::Passed);
        case FakeId::thermalTool:
            interruptIfAskedTo();
            reporter.report({0,
                             "{\"deviceId\": \"0100\", \"deviceName\": \"Fast\", \"temperatureCelsius\": 45, "
                             "\"temperatureFahrenheit\": 113}"});
            return TestResult::Passed;
        default:
            return pass(reporter);
        }
    }

private:
    static std::uint8_t leave(core::TestReporter& reporter, const std::string& key, std::uint8_t result) {
        reporter.setProgress(100);
        reporter.report({0, key});
        return result;
    }

    /// The environment tells at which reading of the process, from 1, the user presses Ctrl-C.
    static void interruptIfAskedTo() {
        static std::atomic<int> readings{0};
        const char* text = std::getenv("VEXIL_FAKE_INTERRUPT_AT");
        if (++readings == (text == nullptr ? 0 : std::atoi(text))) {
            std::raise(SIGINT);
        }
    }

    static std::uint8_t pass(core::TestReporter& reporter) {
        for (const std::uint8_t percent : std::array<std::uint8_t, 5>{0, 2, 50, 50, 100}) {
            reporter.setProgress(percent);
        }
        reporter.report({0, "TOTAL_SURFACES_TESTED: 50/50"});
        return TestResult::Passed;
    }

    static std::uint8_t waitForCancel(const TestRunArguments& arguments) {
        while (*arguments.cancelRequested == 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return TestResult::NotCompleted;
    }

    bool scripted_;
    WholeNumberParameter duration_;
};

} // namespace

std::unique_ptr<core::Test> makeFakeTest(std::int32_t id, bool scripted) {
    namespace catalogue = module::video_card;
    if (id == FakeId::neverMade ||
        std::ranges::find(catalogue::catalogue, id, &catalogue::CatalogueRow::id) ==
            catalogue::catalogue.end()) {
        return nullptr;
    }
    return std::make_unique<FakeTest>(id, scripted);
}

} // namespace vexil::host::tests
