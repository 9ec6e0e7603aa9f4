#include "module/video_card/direct3d/dx11_reset_guard.h"
#include "support/card_under_test.h"
#include "support/lock_at_reset.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace vexil::tests {
namespace {

using module::video_card::Dx11ResetGuard;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(Dx11ResetGuard, ClearsAndFlushesTheOldContextOnceAndMakesANewDevice) {
    CardUnderTest card;
    const auto lock = card.device->lock();
    const auto before = *lock.slot();
    {
        const Dx11ResetGuard guard(lock);
        EXPECT_THAT(card.log->take(), IsEmpty()) << "nothing happens before the end";
    }
    EXPECT_THAT(card.log->take(), ElementsAre("ClearState()", "Flush()",
                                              "D3D11CreateDevice(0, null, 32, [45056], 1, 7, null)"));
    ASSERT_TRUE(lock.slot());
    EXPECT_NE(lock.slot()->device, before.device);
    EXPECT_NE(lock.slot()->context, before.context);
}

TEST(Dx11ResetGuard, KeepsAdapterFactoryAndDescription) {
    CardUnderTest card;
    const auto lock = card.device->lock();
    const auto before = *lock.slot();
    { const Dx11ResetGuard guard(lock); }
    EXPECT_EQ(lock.slot()->adapterInfo.adapter, before.adapterInfo.adapter);
    EXPECT_EQ(lock.slot()->adapterInfo.factory, before.adapterInfo.factory);
    EXPECT_EQ(lock.slot()->adapterInfo.desc.VendorId, 0x10DEU);
}

TEST(Dx11ResetGuard, LetsGoOfTheOldDevice) {
    CardUnderTest card;
    const auto lock = card.device->lock();
    const std::weak_ptr<ID3D11Device> device = lock.slot()->device;
    const std::weak_ptr<ID3D11DeviceContext> context = lock.slot()->context;
    { const Dx11ResetGuard guard(lock); }
    EXPECT_TRUE(device.expired());
    EXPECT_TRUE(context.expired());
}

TEST(Dx11ResetGuard, ActsWhenTheScopeIsLeftByAnException) {
    CardUnderTest card;
    const auto lock = card.device->lock();
    const auto before = lock.slot()->device;
    try {
        const Dx11ResetGuard guard(lock);
        throw std::runtime_error("on the way");
    } catch (const std::runtime_error&) {
    }
    EXPECT_NE(lock.slot()->device, before);
}

TEST(Dx11ResetGuard, HoldsTheCardsLockUntilTheNewDeviceIsThere) {
    CardUnderTest card;
    const LockAtReset watch(card.device);
    std::unique_ptr<module::video_card::Dx11Context>* slot = nullptr;
    {
        const auto lock = card.device->lock();
        slot = &lock.slot();
        const Dx11ResetGuard guard(lock);
    }
    EXPECT_THAT(watch.held(), ElementsAre(true));
    EXPECT_TRUE(watch.isFreeAgain());
    const auto again = card.device->lock();
    EXPECT_EQ(&again.slot(), slot);
    EXPECT_TRUE(again.slot()->device);
}

TEST(Dx11ResetGuardDeathTest, EndsTheProcessWhereNoNewDeviceCanBeMade) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    CardSetup setup;
    setup.direct3d.faults = {
        {simulated::Direct3DFault::Kind::failingCall, 2, "D3D11CreateDevice", 0, 0, 0x887A0004}};
    EXPECT_DEATH(
        {
            CardUnderTest card(setup);
            const auto lock = card.device->lock();
            const Dx11ResetGuard guard(lock);
        },
        "");
}

} // namespace
} // namespace vexil::tests
