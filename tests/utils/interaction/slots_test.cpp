#include "core/input_interaction.h"
#include "core/test_parameter.h"
#include "utils/interaction/abstract_widget_wrapper.h"
#include "utils/interaction/test_context.h"
#include "utils/interaction/widget_task.h"

#include <gtest/gtest.h>

#include <cstring>

namespace vexil::utils {
namespace {

/// The place of a virtual operation in the table, as both compilers encode a pointer to it: its offset
/// plus 1.
template <typename Operation>
std::ptrdiff_t slotOf(Operation operation) {
    std::ptrdiff_t encoded = 0;
    std::memcpy(&encoded, &operation, sizeof encoded);
    return (encoded - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// A destructor has two places: one that frees the object as well, and one that does not.
constexpr std::ptrdiff_t behindDestructor = 2;

TEST(Slots, OfAnInteractionHaveTheDestructorInTheMiddle) {
    EXPECT_EQ(slotOf(&core::InputInteraction::ask), 0);
    EXPECT_EQ(slotOf(&core::InputInteraction::present), 1 + behindDestructor);
}

TEST(Slots, OfAContextStandInTheOrderThatTheSuiteCalls) {
    EXPECT_EQ(slotOf(&TestContext::unused1), behindDestructor);
    EXPECT_EQ(slotOf(&TestContext::unused2), behindDestructor + 1);
    EXPECT_EQ(slotOf(&TestContext::unused3), behindDestructor + 2);
    EXPECT_EQ(slotOf(&TestContext::unused4), behindDestructor + 3);
    EXPECT_EQ(slotOf(&TestContext::isCancelled), behindDestructor + 4);
    EXPECT_EQ(slotOf(&TestContext::unused6), behindDestructor + 5);
    EXPECT_EQ(slotOf(&TestContext::values), behindDestructor + 6);
    EXPECT_EQ(slotOf(&TestContext::entries), behindDestructor + 7);
}

TEST(Slots, OfWidgetsStandBehindTheirDestructors) {
    EXPECT_EQ(slotOf(&AbstractWidgetWrapper::showWidget), behindDestructor);
    EXPECT_EQ(slotOf(&WidgetTaskInterface::show), behindDestructor);
}

TEST(Slots, OfAParameterStandInTheOrderThatHostsCall) {
    EXPECT_EQ(slotOf(&core::TestParameter::description), behindDestructor);
    EXPECT_EQ(slotOf(&core::TestParameter::isValid), behindDestructor + 1);
    EXPECT_EQ(slotOf(&core::TestParameter::setValue), behindDestructor + 2);
}

TEST(Slots, CallWhatTheyStandFor) {
    class Noting final : public core::InputInteraction {
    public:
        explicit Noting(std::string& calls) : calls_(calls) {}
        ~Noting() override { calls_ += "destroyed "; }
        void ask() override { calls_ += "ask "; }
        void present() override { calls_ += "present "; }

    private:
        std::string& calls_;
    };
    std::string calls;
    core::InputInteraction* object = new Noting(calls);
    using Slot = void (*)(core::InputInteraction*);
    const auto* table = *reinterpret_cast<Slot const* const*>(object);
    table[0](object);
    table[3](object);
    table[2](object);
    EXPECT_EQ(calls, "ask present destroyed ");
}

} // namespace
} // namespace vexil::utils
