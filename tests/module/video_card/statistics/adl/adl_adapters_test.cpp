#include "module/video_card/statistics/adl/adl_adapters.h"

#include "adl_loader.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <tuple>

namespace vexil::tests {
namespace {

using namespace module::video_card;
namespace adl = platform::adl;

using Place = std::tuple<int, int, int>;

adl::AdapterInfo record(int index, const Place& place) {
    adl::AdapterInfo info{};
    info.iAdapterIndex = index;
    std::tie(info.iBusNumber, info.iDeviceNumber, info.iFunctionNumber) = place;
    return info;
}

/// The indices of what a set keeps of records at these places, numbered from 0.
std::vector<int> kept(const std::vector<Place>& places) {
    AdlAdapterSet set;
    int index = 0;
    for (const auto& place : places) {
        set.insert(record(index++, place));
    }
    std::vector<int> indices;
    for (const auto& adapter : set.adapters()) {
        indices.push_back(adapter.iAdapterIndex);
    }
    return indices;
}

using Indices = std::vector<int>;

TEST(AdlOrder, PutsARecordBeforeAnotherOnlyIfAllThreeNumbersAreLess) {
    const auto before = [](const Place& a, const Place& b) {
        return comesBefore(record(0, a), record(0, b));
    };
    EXPECT_TRUE(before({1, 0, 0}, {2, 1, 1}));
    EXPECT_FALSE(before({1, 0, 0}, {2, 0, 0}));
    EXPECT_FALSE(before({1, 0, 0}, {2, 1, 0}));
    EXPECT_FALSE(before({1, 0, 0}, {1, 1, 1}));
    EXPECT_FALSE(before({2, 1, 1}, {1, 0, 0}));
    EXPECT_TRUE(before({-1, -1, -1}, {0, 0, 0})) << "the numbers are signed";
}

TEST(AdlInsertionRule, CollapsesTheAdaptersOfOneCardIntoTheFirstSeen) {
    EXPECT_EQ(kept({{3, 0, 0}, {3, 0, 0}, {3, 0, 1}}), Indices{0});
    EXPECT_EQ(kept({{3, 0, 1}, {3, 0, 0}}), Indices{0});
}

TEST(AdlInsertionRule, CollapsesASecondCardWithTheSameDeviceAndFunction) {
    EXPECT_EQ(kept({{3, 0, 0}, {7, 0, 0}}), Indices{0});
    EXPECT_EQ(kept({{7, 0, 0}, {3, 0, 0}}), Indices{0}) << "the first seen, not the lower";
}

TEST(AdlInsertionRule, KeepsCardsThatDifferInAllThreeInAscendingOrder) {
    EXPECT_EQ(kept({{1, 0, 0}, {2, 1, 1}}), (Indices{0, 1}));
    EXPECT_EQ(kept({{2, 1, 1}, {1, 0, 0}}), (Indices{1, 0}));
    EXPECT_EQ(kept({{5, 5, 5}, {1, 1, 1}, {3, 3, 3}, {3, 3, 4}, {9, 9, 9}}), (Indices{1, 2, 0, 4}));
}

TEST(AdlInsertionRule, DropsARecordThatEqualsOnlyAMemberBehindTheOneItComesAfter) {
    EXPECT_EQ(kept({{1, 1, 1}, {3, 3, 3}, {2, 4, 2}}), (Indices{0, 1}));
}

/// The walk down an ordered set, step by step.
class Tree {
public:
    void insert(const adl::AdapterInfo& adapter) {
        auto* place = &root_;
        const Node* remembered = nullptr;
        while (*place) {
            if (comesBefore((*place)->adapter, adapter)) {
                place = &(*place)->right;
            } else {
                remembered = place->get();
                place = &(*place)->left;
            }
        }
        if (remembered == nullptr || comesBefore(adapter, remembered->adapter)) {
            *place = std::make_unique<Node>(Node{adapter, nullptr, nullptr});
        }
    }
    [[nodiscard]] Indices inOrder() const {
        Indices indices;
        collect(root_.get(), indices);
        return indices;
    }

private:
    struct Node {
        adl::AdapterInfo adapter;
        std::unique_ptr<Node> left, right;
    };
    static void collect(const Node* node, Indices& indices) {
        if (node != nullptr) {
            collect(node->left.get(), indices);
            indices.push_back(node->adapter.iAdapterIndex);
            collect(node->right.get(), indices);
        }
    }
    std::unique_ptr<Node> root_;
};

TEST(AdlInsertionRule, KeepsWhatTheWalkDownATreeWouldKeep) {
    std::mt19937 engine(7);
    std::uniform_int_distribution<int> number(-2, 9);
    std::size_t longest = 0;
    for (int round = 0; round < 2000; ++round) {
        std::vector<Place> places(12);
        Tree tree;
        int index = 0;
        for (auto& place : places) {
            place = {number(engine), number(engine), number(engine)};
            tree.insert(record(index++, place));
        }
        ASSERT_EQ(kept(places), tree.inOrder());
        longest = std::max(longest, tree.inOrder().size());
    }
    EXPECT_GT(longest, 3U);
}

TEST(AdlLocation, IsBusDeviceAndFunctionInLowerCaseHexadecimal) {
    EXPECT_EQ(adlLocation(record(0, {3, 0, 0})), "03:00.0");
    EXPECT_EQ(adlLocation(record(0, {10, 31, 15})), "0a:1f.f");
    EXPECT_EQ(adlLocation(record(0, {256, 0, 16})), "100:00.10") << "padded, never cut";
    EXPECT_EQ(adlLocation(record(0, {-1, 0, 0})), "ffffffff:00.0");
}

class ActiveAdapters : public testing::Test {
protected:
    [[nodiscard]] Indices list() {
        Indices indices;
        const auto context = adl_.contexts.get();
        const auto set = listActiveAdapters(*context);
        for (const auto& adapter : set.adapters()) {
            indices.push_back(adapter.iAdapterIndex);
        }
        return indices;
    }
    static simulated::AdlMachine machine() {
        simulated::AdlCardSection first;
        first.adapters = {adapterAt(10, 1, 0, 0)};
        simulated::AdlCardSection second;
        second.adapters = {adapterAt(11, 2, 1, 1)};
        return {{}, {first, second}};
    }

    AdlFixture adl_;
};

TEST_F(ActiveAdapters, AreAllOfThem) {
    simulated::setAdlMachine(machine());
    EXPECT_EQ(list(), (Indices{10, 11}));
}

TEST_F(ActiveAdapters, AreNoneIfTheCountOrTheListFails) {
    for (const char* function : {"ADL_Adapter_NumberOfAdapters_Get", "ADL_Adapter_AdapterInfo_Get"}) {
        auto changed = machine();
        changed.library.statuses = {{function, -1}};
        simulated::setAdlMachine(changed);
        EXPECT_TRUE(list().empty()) << function;
        changed.library.statuses = {{function, 1}};
        simulated::setAdlMachine(changed);
        EXPECT_TRUE(list().empty()) << function << ": a warning is no success either";
    }
}

TEST_F(ActiveAdapters, AreNoneForACountOfZeroOrOneThatMakesNoSense) {
    for (const std::int32_t count : {0, -1, std::numeric_limits<std::int32_t>::min(), 1'366'095,
                                     std::numeric_limits<std::int32_t>::max()}) {
        auto changed = machine();
        changed.library.adapterCount = count;
        simulated::setAdlMachine(changed);
        EXPECT_TRUE(list().empty()) << count;
    }
}

TEST_F(ActiveAdapters, AreThoseThatFitIfTheCountIsTooSmall) {
    auto changed = machine();
    changed.library.adapterCount = 1;
    simulated::setAdlMachine(changed);
    EXPECT_EQ(list(), Indices{10});
}

TEST_F(ActiveAdapters, ReadZeroedRecordsWhereTheLibraryWritesFewerThanItCounted) {
    auto changed = machine();
    changed.library.adapterCount = 5;
    changed.cards[0].adapters = {adapterAt(0, 1, 1, 1)};
    simulated::setAdlMachine(changed);
    // The three unwritten records name adapter 0 at 0, 0, 0: before the first, and once.
    EXPECT_EQ(list(), (Indices{0, 0}));
}

TEST_F(ActiveAdapters, AreWithoutThoseThatAreInactiveOrDoNotTell) {
    auto changed = machine();
    changed.cards[0].adapters[0].active = 0;
    simulated::setAdlMachine(changed);
    EXPECT_EQ(list(), Indices{11});
    changed.cards[0].adapters[0] = adapterAt(10, 1, 0, 0);
    changed.cards[0].adapters[0].activeStatus = -1;
    simulated::setAdlMachine(changed);
    EXPECT_EQ(list(), Indices{11});
    changed.cards[0].adapters[0].activeStatus = 0;
    changed.cards[0].adapters[0].active = -7;
    simulated::setAdlMachine(changed);
    EXPECT_EQ(list(), (Indices{10, 11})) << "anything but zero is active";
}

std::int32_t sentBytes = 0;
bool sentZeroes = false;
adl::Status lookAtBuffer(adl::AdapterInfo* adapters, std::int32_t bytes) {
    sentBytes = bytes;
    const auto* first = reinterpret_cast<const unsigned char*>(adapters);
    sentZeroes = std::all_of(first, first + bytes, [](unsigned char byte) { return byte == 0; });
    return adl::error;
}

TEST_F(ActiveAdapters, AreAskedForWithAZeroedBufferAndItsSizeInBytes) {
    adl_.loader.replacements["ADL_Adapter_AdapterInfo_Get"] = addressOf(lookAtBuffer);
    simulated::setAdlMachine(machine());
    EXPECT_TRUE(list().empty());
    EXPECT_EQ(sentBytes, 2 * 1572);
    EXPECT_TRUE(sentZeroes);
}

} // namespace
} // namespace vexil::tests
