#include "module/video_card/module.h"
#include "support/fake_machine.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <future>

namespace vexil::module::video_card {
namespace {

/// Hands out the mask of the worker that runs it, by setting it anew.
class MaskTask final : public core::TaskInterface {
public:
    explicit MaskTask(std::promise<DWORD_PTR>& mask) : mask_(mask) {}
    void run() override { mask_.set_value(SetThreadAffinityMask(GetCurrentThread(), 2)); }

private:
    std::promise<DWORD_PTR>& mask_;
};

TEST(WorkerAffinity, IsTheSecondProcessorForTheOnlyWorkerOfTwo) {
    std::promise<DWORD_PTR> mask;
    tests::FakeMachine machine;
    const Module module(machine, 2);
    module.dispatcher()->execute(std::make_unique<MaskTask>(mask));
    EXPECT_EQ(mask.get_future().get(), 2U);
}

} // namespace
} // namespace vexil::module::video_card
