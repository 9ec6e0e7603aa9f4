#include "module/video_card/catalogue.h"
#include "module/video_card/device.h"
#include "module/video_card/module.h"
#include "support/fake_machine.h"
#include "support/plain_test.h"

#include <gtest/gtest.h>

#include <iterator>
#include <map>
#include <set>
#include <typeinfo>

namespace vexil::module::video_card {
namespace {

class ModuleTest : public testing::Test {
protected:
    tests::FakeMachine machine_;
    Module module_{machine_, 2};
};

TEST_F(ModuleTest, SaysWhatItIs) {
    EXPECT_EQ(module_.moduleId(), 7);
    EXPECT_EQ(module_.shortName(), "VC");
    EXPECT_EQ(module_.nameKey(), "VIDEO_CARD");
    const auto version = module_.moduleVersion();
    EXPECT_EQ(version.major, 5);
    EXPECT_EQ(version.minor, 2);
    EXPECT_EQ(version.patch, 0);
    EXPECT_EQ(version.label, "");
}

TEST_F(ModuleTest, ListsTheCatalogueInOrder) {
    const auto ids = module_.testIds();
    ASSERT_EQ(ids.size(), catalogue.size());
    EXPECT_EQ(std::vector<std::int32_t>(ids.begin(), ids.begin() + 3), (std::vector<std::int32_t>{1, 3, 11}));
    EXPECT_EQ(std::vector<std::int32_t>(ids.end() - 3, ids.end()), (std::vector<std::int32_t>{90, 5, 21}));
}

TEST_F(ModuleTest, HasNoToolIdsAndNoDescriptionHoweverOftenItIsAsked) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(module_.toolIds().empty());
        EXPECT_EQ(module_.description(), "");
    }
}

TEST_F(ModuleTest, MakesNoTestForAnIdThatDoesNotExist) {
    for (const int id : {0, 2, 6, 10, 22, 89, 91, -1}) {
        EXPECT_EQ(module_.createTest(id), nullptr) << id;
    }
}

TEST_F(ModuleTest, MakesEachTestWithTheDescriptorOfItsRow) {
    for (const auto& row : catalogue) {
        const auto test = module_.createTest(row.id);
        ASSERT_NE(test, nullptr) << row.id;
        EXPECT_EQ(test->id(), row.id);
        EXPECT_EQ(test->descriptor().name, row.name);
        EXPECT_EQ(test->descriptor().tooltip, row.tooltip);
        EXPECT_EQ(test->descriptor().group, row.group);
        EXPECT_EQ(test->descriptor().groupRank, row.groupRank);
        EXPECT_FALSE(test->requiresExclusiveRun());
    }
}

/// What a card must have for a test to be offered.
enum class Need { nothing, videoCard, cuda, direct3d, hardwareDirect3d };

TEST_F(ModuleTest, OffersEachTestForTheCardsThatItCanWorkOn) {
    using enum Need;
    const std::map<std::int32_t, Need> needs = {
        {1, nothing},
        {4, nothing},
        {3, direct3d},
        {5, hardwareDirect3d},
        {21, hardwareDirect3d},
        {17, hardwareDirect3d},
        {18, hardwareDirect3d},
        {11, cuda},
        {12, cuda},
        {13, cuda},
        {14, cuda},
        {15, cuda},
        {16, cuda},
        {19, cuda},
        {20, cuda},
        {90, videoCard},
    };
    const auto bareCard = [&] {
        return std::make_shared<Device>(AdapterRecord(),
                                        DeviceServices{machine_.strings(), machine_.numbers(), 0});
    };
    const auto cardWith = [&](UINT vendor, UINT deviceId) {
        auto card = bareCard();
        Dx11Context context;
        context.adapterInfo.desc.VendorId = vendor;
        context.adapterInfo.desc.DeviceId = deviceId;
        card->setDirect3D(context);
        return card;
    };
    const auto withCuda = bareCard();
    withCuda->setCuda({"01:00.0", 0});
    const struct {
        std::shared_ptr<core::Device> device;
        std::set<Need> has;
    } cards[] = {
        {nullptr, {nothing}},
        {std::make_shared<tests::PlainDevice>("0100"), {nothing}},
        {bareCard(), {nothing, videoCard}},
        {withCuda, {nothing, videoCard, cuda}},
        {cardWith(0x10DE, 0x2503), {nothing, videoCard, direct3d, hardwareDirect3d}},
        {cardWith(0x1414, 0x8C), {nothing, videoCard, direct3d}}, // the adapter that the system emulates
    };
    ASSERT_EQ(needs.size(), catalogue.size());
    for (const auto& [id, need] : needs) {
        for (std::size_t i = 0; i < std::size(cards); ++i) {
            const auto& card = cards[i];
            EXPECT_EQ(module_.createTest(id)->isSupported(card.device.get(), card.device),
                      card.has.contains(need))
                << "test " << id << ", card " << i;
        }
    }
}

TEST_F(ModuleTest, MakesTheTwoStressTestsOfOneClass) {
    const auto window = module_.createTest(5);
    const auto wireframe = module_.createTest(21);
    EXPECT_EQ(typeid(*window), typeid(*wireframe));
    EXPECT_EQ(window->parameters().size(), 5U);
    EXPECT_EQ(wireframe->parameters().size(), 1U);
}

TEST_F(ModuleTest, HandsOutFurtherOwnersOfItsScannerAndDispatcher) {
    EXPECT_EQ(module_.deviceScanner(), module_.deviceScanner());
    EXPECT_EQ(module_.dispatcher(), module_.dispatcher());
    EXPECT_NE(module_.deviceScanner(), nullptr);
    EXPECT_NE(module_.dispatcher(), nullptr);
}

TEST_F(ModuleTest, TouchesNoDeviceUntilTheHostScans) {
    EXPECT_TRUE(machine_.list.filters.empty());
    EXPECT_EQ(machine_.calls, (std::vector<std::string>{"acquire list", "load library"}));
}

} // namespace
} // namespace vexil::module::video_card
