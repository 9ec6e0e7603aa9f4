// Calls of the driver whose result no test looks at: they fail, and the run goes on as if they had not.
#include "cuda_fixture.h"

#include "module/video_card/cuda/cuda_runtime.h"

namespace vexil::tests {

using module::video_card::CudaRuntime;

class CudaUnexaminedCalls : public CudaTest {};

TEST_F(CudaUnexaminedCalls, AreTheWaitsForALaunch) {
    for (const CudaTestId id : allCudaTests) {
        SCOPED_TRACE(testing::Message() << "test " << id);
        configure(cardWith(20));
        reporter = {};
        EXPECT_EQ(run(id), core::TestResult::Passed);
        const auto undisturbed = reporter.events;
        const auto launches = driver().state(0).launches;

        configure(cardWith(20));
        reporter = {};
        std::uint64_t waits = 0;
        driver().observe([&](const char* call) {
            if (std::string_view(call) == "cuCtxSynchronize") {
                ++waits;
                loseContext();
            }
        });
        EXPECT_EQ(run(id), core::TestResult::Passed);
        EXPECT_EQ(reporter.events, undisturbed);
        EXPECT_EQ(waits, launches);
        EXPECT_EQ(CudaRuntime::instance().cudaGetLastError(), cuda::CUDA_ERROR_INVALID_CONTEXT)
            << "the waits have failed";
        expectReleased();
    }
}

TEST_F(CudaUnexaminedCalls, AreTheResetsOfTheDevice) {
    for (const CudaTestId id : allCudaTests) {
        SCOPED_TRACE(testing::Message() << "test " << id);
        configure(cardWith(20));
        reporter = {};
        // The last one of the run: without the card the float stage of an arithmetic test could not follow.
        const unsigned lastReset = id == standardMath || id == advancedMath ? 2 : 1;
        bool failed = false;
        at("cuDevicePrimaryCtxReset_v2", lastReset, [&] {
            driver().configure({12040, {}}); // no card, and so none to reset
            failed = true;
        });
        EXPECT_EQ(run(id), core::TestResult::Passed);
        EXPECT_TRUE(reporter.messages.empty());
        EXPECT_TRUE(failed);
        EXPECT_EQ(CudaRuntime::instance().cudaGetLastError(), cuda::CUDA_ERROR_INVALID_DEVICE);
    }
}

} // namespace vexil::tests
