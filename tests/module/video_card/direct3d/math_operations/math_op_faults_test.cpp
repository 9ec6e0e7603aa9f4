#include "module/video_card/direct3d/math_operations/math_op_double.h"
#include "module/video_card/direct3d/math_operations/math_op_float.h"
#include "module/video_card/direct3d/math_operations/math_op_int.h"
#include "module/video_card/direct3d/math_operations/math_op_test.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

// What the arithmetic tests make of broken cards: which fault is found, which is not, and what is said of it.
namespace vexil::tests {
namespace {

using core::TestResult;
using module::video_card::DirectComputeMathOp;
using module::video_card::DirectComputeMathOpAdvancedTest;
using module::video_card::DirectComputeMathOpDouble;
using module::video_card::DirectComputeMathOpFloat;
using module::video_card::DirectComputeMathOpInt;
using module::video_card::DirectComputeMathOpStandardTest;
using simulated::Direct3DFault;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using Change = simulated::ArithmeticFault::Change;
using Kind = Direct3DFault::Kind;
using Set = simulated::OperationSet;
using Events = std::vector<std::string>;

const Events wrongValue = {"progress 100", "report 0 MATH_OP_TEST_FAIL_MESSAGE"};
const Events refused = {"progress 100", "report 1 A_VIDEO_CARD_COULD_NOT_EXECUTE_OPERATION"};

struct Outcome {
    std::uint8_t result = 0;
    Events events;
    std::ptrdiff_t dispatches = 0;
};

/// Whatever happened, the card must have a new device and nothing of the old one be left.
template <typename TestClass>
Outcome runOn(std::vector<Direct3DFault> faults) {
    CardSetup setup;
    setup.direct3d.faults = std::move(faults);
    CardUnderTest card(setup);
    const auto device = card.device->dx11Context().device;
    TestClass test;
    const auto result = card.run(test);
    EXPECT_NE(card.device->dx11Context().device, device);
    EXPECT_EQ(device.use_count(), 1) << "something of the run still holds the old device";
    const auto calls = card.log->take();
    return {result, card.reporter.events,
            std::ranges::count_if(calls, [](const auto& call) { return call.starts_with("Dispatch("); })};
}

Outcome run(int test, std::vector<Direct3DFault> faults) {
    return test == 17 ? runOn<DirectComputeMathOpStandardTest>(std::move(faults))
                      : runOn<DirectComputeMathOpAdvancedTest>(std::move(faults));
}

Direct3DFault wrongResult(Set set, std::uint32_t row, std::uint32_t column, Change change) {
    Direct3DFault fault;
    fault.kind = Kind::wrongResult;
    fault.arithmetic = {set, 0, row, column, change};
    return fault;
}

Direct3DFault wrongOperand(Set set, std::uint32_t operand, std::uint32_t row, std::uint32_t column) {
    Direct3DFault fault;
    fault.kind = Kind::wrongOperand;
    fault.arithmetic = {set, operand, row, column, Change::value};
    return fault;
}

Direct3DFault ofKind(Kind kind, Set set = Set::integers) {
    Direct3DFault fault;
    fault.kind = kind;
    fault.arithmetic.set = set;
    return fault;
}

Direct3DFault failingCall(const std::string& call, std::uint32_t number) {
    return {Kind::failingCall, number, call, 0, 0, 0x80004005, {}};
}

TEST(MathOpFaults, AreNoneOnAHealthyCard) {
    for (const int test : {17, 18}) {
        const auto outcome = run(test, {});
        EXPECT_EQ(outcome.result, TestResult::Passed) << test;
        EXPECT_THAT(outcome.events, IsEmpty());
        EXPECT_EQ(outcome.dispatches, test == 17 ? 3 : 4);
    }
}

/// A result that is not what the card computed.
struct ResultRow {
    const char* name;
    int test;
    Set set;
    std::uint32_t row;
    std::uint32_t column;
    Change change;
    bool isFound;
    int dispatches; ///< until it is found, or all
};

class WrongResult : public testing::TestWithParam<ResultRow> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, WrongResult, testing::Values(
    ResultRow{"TheFirstStandardInteger",            17, Set::integers,    0, 0,  Change::value, true,  1},
    ResultRow{"TheLastStandardInteger",             17, Set::integers,    2, 4,  Change::value, true,  1},
    ResultRow{"AnIntegerOneOff",                    17, Set::integers,    1, 3,  Change::ulp,   true,  1},
    ResultRow{"AnIntegerOfTheWrongSign",            18, Set::integers,    2, 1,  Change::sign,  true,  1},
    ResultRow{"AnAdvancedInteger",                  18, Set::integers,    1, 2,  Change::value, true,  1},
    ResultRow{"AStandardFloat",                     17, Set::floats,      1, 2,  Change::value, true,  2},
    ResultRow{"AStandardFloatOneUlpOff",            17, Set::floats,      2, 4,  Change::ulp,   true,  2},
    ResultRow{"AStandardFloatOfTheWrongSign",       17, Set::floats,      0, 0,  Change::sign,  true,  2},
    ResultRow{"AStandardFloatThatIsNoNumber",       17, Set::floats,      0, 0,  Change::nan,   false, 3},
    ResultRow{"TheLastAdvancedFloat",               18, Set::floats,      10, 4, Change::value, true,  2},
    ResultRow{"ASquareRootOneUlpOff",               18, Set::floats,      1, 3,  Change::ulp,   false, 4},
    ResultRow{"AMultiplyAddOneUlpOff",              18, Set::floats,      7, 0,  Change::ulp,   false, 4},
    ResultRow{"AReciprocalOneUlpOff",               18, Set::floats,      10, 0, Change::ulp,   false, 4},
    ResultRow{"AFractionOneUlpOff",                 18, Set::floats,      6, 2,  Change::ulp,   true,  2},
    ResultRow{"AMinimumOneUlpOff",                  18, Set::floats,      8, 4,  Change::ulp,   true,  2},
    ResultRow{"AMaximumOneUlpOff",                  18, Set::floats,      9, 3,  Change::ulp,   true,  2},
    ResultRow{"ASineOneUlpOff",                     18, Set::floats,      4, 1,  Change::ulp,   false, 4},
    ResultRow{"ACosineOfHalfPiOfTheWrongSign",      18, Set::floats,      5, 0,  Change::sign,  false, 4},
    ResultRow{"ACosineOfAnotherAngleOfTheWrongSign", 18, Set::floats,     5, 3,  Change::sign,  true,  2},
    ResultRow{"AnAdvancedFloatOfTheWrongSign",      18, Set::floats,      3, 0,  Change::sign,  true,  2},
    ResultRow{"AnAdvancedFloatThatIsNoNumber",      18, Set::floats,      6, 0,  Change::nan,   false, 4},
    ResultRow{"TheFirstDotProduct",                 18, Set::dotProducts, 0, 0,  Change::value, true,  3},
    ResultRow{"TheLastDotProduct",                  18, Set::dotProducts, 2, 0,  Change::value, true,  3},
    ResultRow{"ADotProductOfTheWrongSign",          18, Set::dotProducts, 1, 0,  Change::sign,  true,  3},
    ResultRow{"ADotProductThatIsNoNumber",          18, Set::dotProducts, 1, 0,  Change::nan,   false, 4},
    ResultRow{"AStandardDouble",                    17, Set::doubles,     1, 1,  Change::value, true,  3},
    ResultRow{"AStandardDoubleOneUlpOff",           17, Set::doubles,     0, 3,  Change::ulp,   true,  3},
    ResultRow{"AStandardDoubleOfTheWrongSign",      17, Set::doubles,     2, 0,  Change::sign,  true,  3},
    ResultRow{"AStandardDoubleThatIsNoNumber",      17, Set::doubles,     2, 4,  Change::nan,   false, 3},
    ResultRow{"TheDoubleElementWithAUlpOfItsOwn",   18, Set::doubles,     0, 3,  Change::ulp,   false, 4},
    ResultRow{"TheDoubleElementBeforeIt",           18, Set::doubles,     0, 2,  Change::ulp,   true,  4},
    ResultRow{"TheDoubleElementBehindIt",           18, Set::doubles,     0, 4,  Change::value, true,  4},
    ResultRow{"ADoubleReciprocalOneUlpOff",         18, Set::doubles,     3, 3,  Change::ulp,   true,  4},
    ResultRow{"ADoubleMinimumOfTheWrongSign",       18, Set::doubles,     1, 1,  Change::sign,  true,  4},
    ResultRow{"AnAdvancedDoubleThatIsNoNumber",     18, Set::doubles,     3, 0,  Change::nan,   false, 4}),
    [](const auto& row) { return row.param.name; });
// clang-format on

TEST_P(WrongResult, IsFoundUnlessTheRuleOfItsElementToleratesIt) {
    const auto& row = GetParam();
    const auto outcome = run(row.test, {wrongResult(row.set, row.row, row.column, row.change)});
    EXPECT_EQ(outcome.result, row.isFound ? TestResult::Failed : TestResult::Passed);
    EXPECT_THAT(outcome.events, ElementsAreArray(row.isFound ? wrongValue : Events()));
    EXPECT_EQ(outcome.dispatches, row.dispatches) << "the stages behind a wrong result are not run";
}

TEST(MathOpFaults, OfEveryElementAreFound) {
    struct Extent {
        int test;
        Set set;
        std::uint32_t rows;
    };
    for (const auto& [test, set, rows] :
         {Extent{17, Set::integers, 3}, Extent{17, Set::floats, 3}, Extent{17, Set::doubles, 3},
          Extent{18, Set::integers, 3}, Extent{18, Set::floats, 11}, Extent{18, Set::doubles, 4}}) {
        for (std::uint32_t element = 0; element < rows * 5; ++element) {
            EXPECT_EQ(run(test, {wrongResult(set, element / 5, element % 5, Change::value)}).result,
                      TestResult::Failed)
                << "test " << test << ", set " << static_cast<int>(set) << ", element " << element;
        }
    }
}

/// An operand that the card reads wrongly is seen only if the card really computes with it.
struct OperandRow {
    const char* name;
    int test;
    Set set;
    std::uint32_t operand;
    std::uint32_t row;
    std::uint32_t column;
};

class WrongOperand : public testing::TestWithParam<OperandRow> {};

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, WrongOperand, testing::Values(
    OperandRow{"AnIntegerSum",           17, Set::integers,    0, 0, 1},
    OperandRow{"AnIntegerMultiplyAdd",   18, Set::integers,    2, 0, 4},
    OperandRow{"AFloatQuotient",         17, Set::floats,      1, 2, 0},
    OperandRow{"AFloatMultiplyAdd",      18, Set::floats,      2, 7, 3},
    OperandRow{"ATwoComponentVector",    18, Set::dotProducts, 0, 0, 1},
    OperandRow{"AThreeComponentVector",  18, Set::dotProducts, 3, 0, 2},
    OperandRow{"AFourComponentVector",   18, Set::dotProducts, 5, 0, 3},
    OperandRow{"ADoubleSum",             17, Set::doubles,     0, 0, 2},
    OperandRow{"ADoubleProduct",         17, Set::doubles,     1, 1, 3},
    OperandRow{"ADoubleQuotient",        17, Set::doubles,     1, 2, 4},
    OperandRow{"ADoubleMultiplyAdd",     18, Set::doubles,     2, 0, 1},
    OperandRow{"ADoubleMinimum",         18, Set::doubles,     0, 1, 4},
    OperandRow{"ADoubleMaximum",         18, Set::doubles,     1, 2, 0},
    OperandRow{"ADoubleReciprocal",      18, Set::doubles,     0, 3, 0}),
    [](const auto& row) { return row.param.name; });
// clang-format on

TEST_P(WrongOperand, GivesAWrongResultBecauseTheCardComputes) {
    const auto& row = GetParam();
    const auto outcome = run(row.test, {wrongOperand(row.set, row.operand, row.row, row.column)});
    EXPECT_EQ(outcome.result, TestResult::Failed);
    EXPECT_THAT(outcome.events, ElementsAreArray(wrongValue));
}

TEST(MathOpFaults, InDoublesAreNotSeenOnACardWithoutThem) {
    const auto fault = wrongOperand(Set::doubles, 0, 0, 2);
    EXPECT_EQ(run(17, {fault}).result, TestResult::Failed);
    EXPECT_EQ(run(17, {fault, ofKind(Kind::noDoubles)}).result, TestResult::Passed);
}

TEST(MathOpFaults, DoNotIncludeMissingDoubles) {
    for (const int test : {17, 18}) {
        const auto outcome = run(test, {ofKind(Kind::noDoubles)});
        EXPECT_EQ(outcome.result, TestResult::Passed) << test;
        EXPECT_THAT(outcome.events, IsEmpty());
        EXPECT_EQ(outcome.dispatches, test == 17 ? 3 : 4) << "the dispatch is made without a shader";
    }
}

TEST(MathOpFaults, DoNotIncludeATableDispatchThatWritesNothing) {
    for (const int test : {17, 18}) {
        for (const auto set : {Set::integers, Set::floats, Set::doubles}) {
            const auto outcome = run(test, {ofKind(Kind::idleDispatch, set)});
            EXPECT_EQ(outcome.result, TestResult::Passed);
            EXPECT_THAT(outcome.events, IsEmpty());
        }
    }
}

TEST(MathOpFaults, IncludeADotProductDispatchThatWritesNothing) {
    // Unlike the tables', its output begins with operands.
    const auto outcome = run(18, {ofKind(Kind::idleDispatch, Set::dotProducts)});
    EXPECT_EQ(outcome.result, TestResult::Failed);
    EXPECT_THAT(outcome.events, ElementsAreArray(wrongValue));
}

TEST(MathOpFaults, DoNotIncludeAShaderThatCannotBeCreatedExceptForDotProducts) {
    for (const std::uint32_t number : {1U, 2U, 3U}) {
        EXPECT_EQ(run(17, {failingCall("CreateComputeShader", number)}).result, TestResult::Passed) << number;
    }
    EXPECT_EQ(run(18, {failingCall("CreateComputeShader", 1)}).result, TestResult::Failed);
    EXPECT_EQ(run(18, {failingCall("CreateComputeShader", 3)}).result, TestResult::Failed);
    EXPECT_EQ(run(18, {failingCall("CreateComputeShader", 4)}).result, TestResult::Passed);
}

TEST(MathOpFaults, OfACallThatCreatesSomethingLeaveTheRunNotCompleted) {
    struct Calls {
        int test;
        const char* name;
        std::uint32_t count; ///< in a whole run
    };
    for (const auto& [test, name, count] :
         {Calls{17, "CreateBuffer", 15}, Calls{17, "CreateShaderResourceView", 9},
          Calls{17, "CreateUnorderedAccessView", 3}, Calls{18, "CreateBuffer", 23},
          Calls{18, "CreateShaderResourceView", 15}, Calls{18, "CreateUnorderedAccessView", 4}}) {
        for (std::uint32_t number = 1; number <= count; ++number) {
            const auto outcome = run(test, {failingCall(name, number)});
            EXPECT_EQ(outcome.result, TestResult::NotCompleted) << test << ", " << name << " " << number;
            EXPECT_THAT(outcome.events, ElementsAreArray(refused)) << test << ", " << name << " " << number;
        }
        EXPECT_EQ(run(test, {failingCall(name, count + 1)}).result, TestResult::Passed) << name;
    }
}

TEST(MathOpFaults, OfAMapThatGivesNoDataLeaveTheRunNotCompleted) {
    for (const int test : {17, 18}) {
        const std::uint32_t maps = test == 17 ? 3 : 4;
        for (std::uint32_t number = 1; number <= maps; ++number) {
            const auto outcome = run(test, {failingCall("Map", number)});
            EXPECT_EQ(outcome.result, TestResult::NotCompleted) << number;
            EXPECT_THAT(outcome.events, ElementsAreArray(refused)) << number;
        }
    }
}

/// The operation classes on their own.
class Operations : public testing::Test {
protected:
    Operations() : dx11_(card_.device->dx11Context()) {}

    template <typename Class>
    Class make(std::int32_t mode) {
        return Class(mode, dx11_.device, dx11_.context);
    }

    /// Those of operations that were prepared for one mode and are executed in another.
    template <typename Class>
    Events dispatchesOf(std::int32_t prepared, std::int32_t executed) {
        auto operations = make<Class>(prepared);
        EXPECT_EQ(operations.execute(executed, nullptr, nullptr), TestResult::Passed);
        auto calls = card_.log->take();
        std::erase_if(calls, [](const auto& call) { return !call.starts_with("Dispatch("); });
        return calls;
    }

    CardUnderTest card_;
    module::video_card::Dx11Context dx11_;
};

TEST_F(Operations, OnFloatsPassInAModeThatIsNone) {
    auto operations = make<DirectComputeMathOpFloat>(2);
    EXPECT_EQ(operations.execute(2, nullptr, nullptr), TestResult::Passed);
    EXPECT_THAT(card_.log->take(), IsEmpty());
}

TEST_F(Operations, OnIntegersAndDoublesRunTheirTableInAnyMode) {
    for (const std::int32_t mode : {0, 1, 2, -1}) {
        EXPECT_THAT(dispatchesOf<DirectComputeMathOpInt>(0, mode), ElementsAre("Dispatch(3, 1, 1)")) << mode;
        EXPECT_THAT(dispatchesOf<DirectComputeMathOpDouble>(0, mode), ElementsAre("Dispatch(3, 1, 1)"))
            << mode;
        EXPECT_THAT(dispatchesOf<DirectComputeMathOpDouble>(1, mode), ElementsAre("Dispatch(4, 1, 1)"))
            << mode;
    }
}

TEST_F(Operations, OnIntegersAndDoublesHaveNoDotProducts) {
    EXPECT_EQ(make<DirectComputeMathOpInt>(1).runDotProducts(nullptr), TestResult::Passed);
    EXPECT_EQ(make<DirectComputeMathOpDouble>(1).runDotProducts(nullptr), TestResult::Passed);
    EXPECT_THAT(card_.log->take(), IsEmpty());
}

TEST(OperationsOnABrokenCard, LeaveTheDotProductsOutWhenTheTableFailed) {
    CardSetup setup;
    // The first dispatch of a device is that of the integers; here it is the float table.
    setup.direct3d.faults = {wrongResult(Set::integers, 0, 0, Change::sign)};
    CardUnderTest card(setup);
    const auto dx11 = card.device->dx11Context();
    DirectComputeMathOpFloat operations(DirectComputeMathOp::advancedMode, dx11.device, dx11.context);
    EXPECT_EQ(operations.execute(DirectComputeMathOp::advancedMode, nullptr, nullptr), TestResult::Failed);
    const auto calls = card.log->take();
    EXPECT_EQ(std::ranges::count(calls, "Dispatch(11, 1, 1)"), 1);
    EXPECT_EQ(std::ranges::count(calls, "Dispatch(3, 1, 1)"), 0);
}

TEST_F(Operations, OnFloatsHaveNoDotProductsInStandardMode) {
    auto operations = make<DirectComputeMathOpFloat>(DirectComputeMathOp::standardMode);
    EXPECT_EQ(operations.execute(DirectComputeMathOp::standardMode, nullptr, nullptr), TestResult::Passed);
    const auto calls = card_.log->take();
    EXPECT_EQ(std::ranges::count(calls, "Dispatch(3, 1, 1)"), 1);
}

} // namespace
} // namespace vexil::tests
