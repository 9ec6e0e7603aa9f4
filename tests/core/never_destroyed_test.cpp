#include "core/never_destroyed.h"

#include <gtest/gtest.h>

namespace vexil::core {
namespace {

struct Counted {
    Counted(int& count, int number) : destructions(count), value(number) {}
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() { ++destructions; }

    int& destructions;
    int value;
};

TEST(NeverDestroyed, HoldsOneObjectMadeFromItsArguments) {
    int destructions = 0;
    NeverDestroyed<Counted> held(destructions, 7);
    EXPECT_EQ(held.get().value, 7);
    held.get().value = 8;
    EXPECT_EQ(held.get().value, 8);
    EXPECT_EQ(destructions, 0);
}

TEST(NeverDestroyed, EndsWithoutTheEndOfItsObject) {
    int destructions = 0;
    { const NeverDestroyed<Counted> held(destructions, 7); }
    EXPECT_EQ(destructions, 0);
}

TEST(NeverDestroyed, TakesNoMemoryBesideItsObject) {
    EXPECT_EQ(sizeof(NeverDestroyed<Counted>), sizeof(Counted));
    EXPECT_EQ(alignof(NeverDestroyed<Counted>), alignof(Counted));
}

} // namespace
} // namespace vexil::core
