// The events of the machine are locked to be read, and not a moment longer.
#include "cuda_fixture.h"

#include <future>
#include <mutex>

namespace vexil::tests {

namespace {

/// A host that reads the events of the machine whenever a test tells it something.
class ReadingReporter final : public core::TestReporter {
public:
    explicit ReadingReporter(const core::SystemEventState& events) : events_(events) {}

    unsigned told = 0;

    void setProgress(std::uint8_t) override { expectUnlocked(); }
    void report(const core::TestMessage&) override { expectUnlocked(); }
    void interact(std::unique_ptr<core::InputInteraction>&) override {
        ADD_FAILURE() << "nobody was to be asked";
    }

private:
    void expectUnlocked() {
        ++told;
        // From a thread of its own: a thread must not try a mutex that it may hold itself.
        const auto tried = std::async(std::launch::async, [&] {
                               return std::unique_lock(events_.mutex, std::try_to_lock).owns_lock();
                           }).get();
        EXPECT_TRUE(tried) << "told number " << told;
    }

    const core::SystemEventState& events_;
};

} // namespace

class CudaEventLock : public CudaTest {};

TEST_F(CudaEventLock, IsNotHeldWhileATestTellsTheHostSomething) {
    struct Run {
        CudaTestId test;
        const char* call; ///< at which the event happens
        unsigned told;
    };
    // Before the body, in it, before an arithmetic test, and after its first stage.
    const Run runs[] = {{address, "cuDriverGetVersion", 2},
                        {address, "cuCtxSynchronize", 4},
                        {standardMath, "", 2},
                        {standardMath, "cuLaunchKernel", 2}};
    for (const Run& planned : runs) {
        SCOPED_TRACE(testing::Message() << "test " << planned.test << " at " << planned.call);
        configure(cardWith(16));
        events->flags = *planned.call == '\0' ? 0x01 : 0;
        at(planned.call, 1, [&] { events->flags = 0x01; });
        ReadingReporter host(*events);
        auto toHost = arguments();
        toHost.reporter = &host;
        EXPECT_EQ(makeCudaTest(planned.test)->execute(toHost), core::TestResult::NotCompleted);
        EXPECT_EQ(host.told, planned.told);
    }
}

} // namespace vexil::tests
