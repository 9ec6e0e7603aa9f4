#include "core/test.h"
#include "support/plain_test.h"

#include <gtest/gtest.h>

#include <string>

namespace vexil::core {
namespace {

/// Describes itself under another key each time that it is asked.
class ChangingParameter final : public TestParameter {
public:
    explicit ChangingParameter(std::string key) : TestParameter({}), key_(std::move(key)) {}

    [[nodiscard]] TestParameterDescription description() const override {
        TestParameterDescription description;
        description.key = key_ + std::to_string(++asked_);
        return description;
    }
    [[nodiscard]] bool isValid(std::string) const override { return true; }

private:
    std::string key_;
    mutable int asked_ = 0;
};

class TestWithParameters final : public core::Test {
public:
    TestWithParameters() : core::Test({7, "name", "tooltip", {}, "group", 1, "", "", 0}) {
        addParameter(&second_);
        addParameter(&first_);
    }

    std::uint8_t execute(const TestRunArguments&) override { return TestResult::Passed; }
    [[nodiscard]] bool isSupported(Device*, std::shared_ptr<Device>) const override { return true; }

    ChangingParameter first_{"A"};
    ChangingParameter second_{"B"};
};

TEST(TestBase, HoldsACopyOfItsDescriptor) {
    const TestWithParameters test;
    EXPECT_EQ(test.id(), 7);
    EXPECT_EQ(test.descriptor().name, "name");
    EXPECT_EQ(test.descriptor().tooltip, "tooltip");
    EXPECT_EQ(test.descriptor().group, "group");
}

TEST(TestBase, ListsItsParametersInTheOrderInWhichTheyWereAdded) {
    TestWithParameters test;
    ASSERT_EQ(test.parameters().size(), 2U);
    EXPECT_EQ(test.parameters()[0].parameter, &test.second_);
    EXPECT_EQ(test.parameters()[1].parameter, &test.first_);
}

TEST(TestBase, TakesTheKeyOfAParameterFromItsDescriptionOnceWhenItIsAdded) {
    const TestWithParameters test;
    EXPECT_EQ(test.parameters()[0].key, "B1");
    EXPECT_EQ(test.parameters()[1].key, "A1");
}

TEST(TestBase, RunsBesideOthersForAMinuteAndHasNoParametersByItself) {
    const tests::PlainTest test(3);
    EXPECT_FALSE(test.requiresExclusiveRun());
    EXPECT_EQ(test.expectedDurationMinutes(), 1U);
    EXPECT_TRUE(test.parameters().empty());
}

} // namespace
} // namespace vexil::core
