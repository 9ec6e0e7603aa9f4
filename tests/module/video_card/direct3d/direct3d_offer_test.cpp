#include "module/video_card/direct3d/direct3d_offer.h"

#include "module/video_card/device.h"
#include "support/plain_test.h"
#include "text_handlers.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>

namespace vexil::tests {
namespace {

using module::video_card::Device;
using module::video_card::hasDirect3D;
using module::video_card::hasHardwareDirect3D;

std::shared_ptr<Device> cardWithout() {
    static sal::TextHandler strings;
    static sal::NumberText numbers;
    module::video_card::AdapterRecord record;
    record.location = "01:00.0";
    return std::make_shared<Device>(record, module::video_card::DeviceServices{strings, numbers, 0});
}

/// A card whose Direct3D is described but has no device.
std::shared_ptr<Device> cardWith(UINT vendor, UINT device) {
    module::video_card::Dx11Context context;
    context.adapterInfo.desc.VendorId = vendor;
    context.adapterInfo.desc.DeviceId = device;
    auto card = cardWithout();
    card->setDirect3D(context);
    return card;
}

TEST(Direct3DOffer, IsMadeForACardWithDirect3D) {
    const auto card = cardWith(0x10DE, 0x2503);
    EXPECT_TRUE(hasDirect3D(card.get()));
    EXPECT_TRUE(hasHardwareDirect3D(card.get()));
}

TEST(Direct3DOffer, IsNotMadeForACardWithoutDirect3D) {
    const auto card = cardWithout();
    EXPECT_FALSE(hasDirect3D(card.get()));
    EXPECT_FALSE(hasHardwareDirect3D(card.get()));
}

TEST(Direct3DOffer, IsNotMadeForAnythingThatIsNoVideoCard) {
    PlainDevice other("0100");
    EXPECT_FALSE(hasDirect3D(&other));
    EXPECT_FALSE(hasHardwareDirect3D(&other));
    EXPECT_FALSE(hasDirect3D(nullptr));
    EXPECT_FALSE(hasHardwareDirect3D(nullptr));
}

TEST(Direct3DOffer, LeavesTheSoftwareAdapterToTheTestsThatTakeAnyAdapter) {
    const auto software = cardWith(5140, 140);
    EXPECT_TRUE(hasDirect3D(software.get()));
    EXPECT_FALSE(hasHardwareDirect3D(software.get()));
    EXPECT_TRUE(hasHardwareDirect3D(cardWith(5140, 141).get())) << "another device of that vendor";
    EXPECT_TRUE(hasHardwareDirect3D(cardWith(0x10DE, 140).get())) << "that number of another vendor";
}

TEST(Direct3DOffer, IsMadeUnderTheCardsLock) {
    const auto card = cardWith(0x10DE, 0x2503);
    for (const auto question : {hasDirect3D, hasHardwareDirect3D}) {
        std::future<bool> asking;
        {
            const auto lock = card->lock();
            asking = std::async(std::launch::async, [&] { return question(card.get()); });
            EXPECT_EQ(asking.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
        }
        EXPECT_TRUE(asking.get());
    }
}

} // namespace
} // namespace vexil::tests
