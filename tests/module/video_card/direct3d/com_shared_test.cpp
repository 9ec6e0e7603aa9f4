#include "module/video_card/direct3d/com_create.h"

#include <gtest/gtest.h>

namespace vexil::tests {
namespace {

using module::video_card::ComShared;
using module::video_card::createCom;
using module::video_card::shareCom;

/// Counts what is done with its references.
struct Counted {
    int added = 0;
    int released = 0;

    unsigned AddRef() { return static_cast<unsigned>(++added); }
    unsigned Release() { return static_cast<unsigned>(++released); }
};

TEST(ComShared, ReleasesItsObjectOnceWithItsLastOwner) {
    Counted object;
    {
        const auto first = shareCom(&object);
        const auto second = first;
        ComShared<Counted> third = second;
        third.reset();
        EXPECT_EQ(first.get(), &object);
        EXPECT_EQ(object.released, 0);
    }
    EXPECT_EQ(object.released, 1);
    EXPECT_EQ(object.added, 0) << "the maker's reference is the only one";
}

TEST(ComShared, HoldsNothingForANullObject) {
    const auto owner = shareCom(static_cast<Counted*>(nullptr));
    EXPECT_EQ(owner, nullptr);
    EXPECT_EQ(owner.use_count(), 0);
}

TEST(ComShared, TakesWhatACallMakesAndKeepsWhatItHasWhenTheCallFails) {
    Counted old;
    Counted made;
    {
        auto owner = shareCom(&old);
        const auto fail = [&](Counted**) { return E_OUTOFMEMORY; };
        EXPECT_EQ(createCom(owner, fail), E_OUTOFMEMORY);
        EXPECT_EQ(owner.get(), &old);
        EXPECT_EQ(old.released, 0);

        const auto make = [&](Counted** out) {
            *out = &made;
            return S_OK;
        };
        EXPECT_EQ(createCom(owner, make), S_OK);
        EXPECT_EQ(owner.get(), &made);
        EXPECT_EQ(old.released, 1);
    }
    EXPECT_EQ(made.released, 1);
}

} // namespace
} // namespace vexil::tests
