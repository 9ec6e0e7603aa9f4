#include "host/core/direct3d_need.h"
#include "host/core/exit_code.h"
#include "host/core/run_plan.h"
#include "host/core/run_reporter.h"
#include "host/core/test_catalogue.h"
#include "host/fake_module/fake_module.h"
#include "host/fake_module/fake_tests.h"

#include <gtest/gtest.h>

#include <set>

namespace vexil::host {
namespace {

using tests::FakeCase;
using tests::FakeId;
using tests::FakeModule;
using Ids = std::vector<std::int32_t>;

/// A parameter that notes what it is set to.
class Listening final : public core::TestParameter {
public:
    Listening(const std::string& key, std::vector<std::string>& heard)
        : TestParameter({key, "", "", "", 2, 0, ""}), heard_(heard) {}
    [[nodiscard]] bool isValid(std::string) const override { return true; }
    void setValue(std::string text) override { heard_.push_back(std::move(text)); }

private:
    std::vector<std::string>& heard_;
};

class ListeningTest final : public core::Test {
public:
    explicit ListeningTest(std::vector<std::string>& heard)
        : Test({}), key_("KEY", heard), other_("OTHER", heard) {
        addParameter(&key_);
        addParameter(&other_);
    }
    std::uint8_t execute(const core::TestRunArguments&) override { return core::TestResult::Passed; }
    [[nodiscard]] bool isSupported(core::Device*, std::shared_ptr<core::Device>) const override {
        return true;
    }

private:
    Listening key_;
    Listening other_;
};

class ListeningModule final : public FakeModule {
public:
    ListeningModule() : FakeModule(FakeCase::Healthy) {}
    [[nodiscard]] std::unique_ptr<core::Test> createTest(std::int32_t) const override {
        return std::make_unique<ListeningTest>(heard);
    }
    mutable std::vector<std::string> heard;
};

class RunPlans : public ::testing::Test {
protected:
    [[nodiscard]] RunPlan plan(const RunRequest& request) const {
        return planRuns(module_, cards_, request, {});
    }
    [[nodiscard]] Ids idsOf(const RunRequest& request, std::size_t card) const {
        Ids ids;
        for (const auto& run : plan(request).runs) {
            if (run.card == card) {
                ids.push_back(run.test->id());
            }
        }
        return ids;
    }
    [[nodiscard]] std::string errorOf(const RunRequest& request) const {
        try {
            static_cast<void>(plan(request));
        } catch (const UsageError& error) {
            return error.what();
        }
        return "no error";
    }

    FakeModule module_{FakeCase::Scripted};
    std::vector<Card> cards_ = scanCards(module_);
};

TEST_F(RunPlans, CoverTheQuickTestsOfEveryCardByDefault) {
    EXPECT_EQ(idsOf({}, 0), (Ids{1, 3, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20}));
    EXPECT_EQ(idsOf({}, 1), (Ids{1, 3, 17, 18}));
}

TEST_F(RunPlans, GoCardByCard) {
    const auto runs = plan({"all", "1,4", {}}).runs;
    ASSERT_EQ(runs.size(), 4U);
    EXPECT_EQ(runs[0].card, 0U);
    EXPECT_EQ(runs[1].card, 0U);
    EXPECT_EQ(runs[2].card, 1U);
    EXPECT_EQ(runs[2].test->id(), 1);
}

TEST_F(RunPlans, NoteWhatACardDoesNotOffer) {
    const auto missing = plan({}).notOffered;
    ASSERT_EQ(missing.size(), 1U);
    EXPECT_EQ(missing[0].card, 1U);
    EXPECT_EQ(missing[0].names.size(), 8U);
    EXPECT_EQ(missing[0].names[0], "CUDA_MEMORY_FAULT_TEST");
}

TEST_F(RunPlans, TakeTheExtendedTestsThatTheModuleMakes) {
    EXPECT_EQ(idsOf({"all", "extended", {}}, 0), (Ids{4, 5}));
}

TEST_F(RunPlans, MeanQuickAndExtendedTestsByAllAndNoTool) {
    EXPECT_EQ(idsOf({"all", "all", {}}, 1), (Ids{1, 3, 17, 18, 4, 5}));
}

TEST_F(RunPlans, RunAToolThatIsAskedForByItsId) { EXPECT_EQ(idsOf({"all", "90", {}}, 0), Ids{90}); }

TEST_F(RunPlans, KeepTheOrderOfTheIdsAndTakeEachOnce) {
    EXPECT_EQ(idsOf({"0100", "4,1,4", {}}, 0), (Ids{4, 1}));
    EXPECT_EQ(idsOf({"0a00", "17,quick", {}}, 1), (Ids{17, 1, 3, 18}));
}

TEST_F(RunPlans, CoverTheChosenCardOnly) {
    EXPECT_TRUE(idsOf({"0a00", "1", {}}, 0).empty());
    EXPECT_EQ(idsOf({"0a00", "1", {}}, 1), Ids{1});
}

TEST_F(RunPlans, NameAnUnknownCard) {
    EXPECT_EQ(errorOf({"0300", "1", {}}), "unknown card '0300': the machine has 0100, 0a00");
}

TEST_F(RunPlans, NameAnUnknownTest) {
    const std::string known =
        ": the module has 1, 3, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 4, 90, 5, 21, and the "
        "words quick, extended and all";
    EXPECT_EQ(errorOf({"all", "2", {}}), "unknown test '2'" + known);
    EXPECT_EQ(errorOf({"all", "1,fast", {}}), "unknown test 'fast'" + known);
    EXPECT_EQ(errorOf({"all", "1x", {}}), "unknown test '1x'" + known);
    EXPECT_EQ(errorOf({"all", "1,,3", {}}), "unknown test ''" + known);
    EXPECT_EQ(errorOf({"all", "", {}}), "no test is named: --tests takes ids, quick, extended or all");
}

TEST_F(RunPlans, NameATestThatTheModuleDoesNotMake) {
    EXPECT_EQ(errorOf({"all", "21", {}}), "test 21 (WIREFRAME_STRESS_TEST) is not available in this module");
}

TEST_F(RunPlans, RefuseATestByIdThatTheChosenCardDoesNotSupport) {
    EXPECT_EQ(errorOf({"0a00", "1,11", {}}), "card 0a00 does not support test 11 (CUDA_MEMORY_FAULT_TEST)");
}

TEST_F(RunPlans, RefuseATestByIdThatNoCardSupports) {
    cards_.erase(cards_.begin());
    EXPECT_EQ(errorOf({"all", "11", {}}),
              "no card of this machine supports test 11 (CUDA_MEMORY_FAULT_TEST)");
}

TEST_F(RunPlans, RunATestByIdOnTheCardsThatSupportIt) {
    EXPECT_EQ(idsOf({"all", "11", {}}, 0), Ids{11});
    EXPECT_TRUE(idsOf({"all", "11", {}}, 1).empty());
}

TEST_F(RunPlans, SetAParameterOfTheTestsThatHaveIt) {
    const auto runs = plan({"0100", "1,5", {"DURATION=42"}}).runs;
    ASSERT_EQ(runs.size(), 2U);
    RunReporter reporter;
    core::TestRunArguments arguments{{}, nullptr, &reporter, nullptr};
    EXPECT_EQ(runs[1].test->execute(arguments), core::TestResult::Passed);
    EXPECT_EQ(reporter.messages().at(0).key, "DURATION_(MINUTES): 42");
}

TEST_F(RunPlans, TakeTheLastOfTwoValuesAndAnEqualsSignInAValueAsText) {
    const auto runs = plan({"0100", "5", {"DURATION=42", "DURATION=43"}}).runs;
    RunReporter reporter;
    core::TestRunArguments arguments{{}, nullptr, &reporter, nullptr};
    static_cast<void>(runs.at(0).test->execute(arguments));
    EXPECT_EQ(reporter.messages().at(0).key, "DURATION_(MINUTES): 43");
    EXPECT_EQ(errorOf({"0100", "5", {"DURATION=4=2"}}),
              "'4=2' is no value for DURATION of test 5 (STRESS_TEST), which takes [1:9999]");
}

TEST_F(RunPlans, ShowAParameterTheLastOfTwoValuesOnly) {
    // A parameter may understand some values only as a change of what it was before.
    const ListeningModule module;
    static_cast<void>(planRuns(module, cards_, {"0100", "1", {"KEY=first", "OTHER=1", "KEY=second"}}, {}));
    EXPECT_EQ(module.heard, (std::vector<std::string>{"1", "second"}));
}

TEST_F(RunPlans, RefuseAValueWithTheRangeOfItsParameter) {
    EXPECT_EQ(errorOf({"0100", "5", {"DURATION=long"}}),
              "'long' is no value for DURATION of test 5 (STRESS_TEST), which takes [1:9999]");
}

TEST_F(RunPlans, NameAnUnknownParameter) {
    EXPECT_EQ(errorOf({"0100", "1,5", {"SPEED=1"}}),
              "unknown parameter 'SPEED': the chosen tests have DURATION");
    EXPECT_EQ(errorOf({"0100", "1", {"DURATION=1"}}),
              "unknown parameter 'DURATION': the chosen tests have none");
    EXPECT_EQ(errorOf({"0100", "5", {"duration=1"}}),
              "unknown parameter 'duration': the chosen tests have DURATION");
}

TEST_F(RunPlans, KnowTheParametersOfTheChosenTestsOnAMachineWithoutCards) {
    cards_.clear();
    EXPECT_EQ(errorOf({"all", "5", {"DURATION=1"}}), "no error");
    EXPECT_EQ(errorOf({"all", "5", {"SPEED=1"}}),
              "unknown parameter 'SPEED': the chosen tests have DURATION");
    EXPECT_EQ(errorOf({"all", "5", {"DURATION=long"}}),
              "'long' is no value for DURATION of test 5 (STRESS_TEST), which takes [1:9999]");
}

TEST_F(RunPlans, KnowTheParametersOfATestThatIsNotOffered) {
    const auto withoutDisplay = planRuns(module_, cards_, {"0100", "extended", {"DURATION=1"}}, {},
                                         {.missingDirect3d = std::nullopt, .display = false});
    ASSERT_EQ(withoutDisplay.runs.size(), 1U);
    EXPECT_EQ(withoutDisplay.runs[0].test->id(), 4);
}

TEST_F(RunPlans, NameASettingThatIsNone) {
    EXPECT_EQ(errorOf({"0100", "5", {"DURATION"}}), "'DURATION' sets no parameter: --set takes KEY=VALUE");
    EXPECT_EQ(errorOf({"0100", "5", {"=5"}}), "'=5' sets no parameter: --set takes KEY=VALUE");
}

TEST_F(RunPlans, AreEmptyOnAMachineWithoutCards) {
    cards_.clear();
    EXPECT_TRUE(plan({"all", "1", {}}).runs.empty());
    EXPECT_EQ(errorOf({"0100", "1", {}}), "unknown card '0100': the machine has none");
}

TEST_F(RunPlans, OfferNothingOnACardThatIsGone) {
    cards_[0].device.reset();
    EXPECT_FALSE(isOffered(*module_.createTest(FakeId::passes), cards_[0]));
}

TEST_F(RunPlans, LeaveOutWhatNeedsDirect3dWhereItIsMissing) {
    const auto withoutIt = planRuns(module_, cards_, {"0100", "all", {}}, {}, {"d3d.lib"});
    std::set<std::int32_t> ids;
    for (const auto& run : withoutIt.runs) {
        ids.insert(run.test->id());
    }
    EXPECT_EQ(ids, (std::set<std::int32_t>{11, 12, 13, 14, 15, 16, 19, 20}));
    EXPECT_EQ(withoutIt.notOffered.at(0).names.size(), 6U) << "1, 3, 17, 18, 4 and 5, as 21 is never made";
}

TEST_F(RunPlans, NameTheMissingLibraryWhereNothingElseIsLeft) {
    const auto errorWithout = [&](const RunRequest& request) -> std::string {
        try {
            static_cast<void>(planRuns(module_, cards_, request, {}, {"d3d.lib"}));
        } catch (const UsageError& error) {
            return error.what();
        }
        return "no error";
    };
    EXPECT_EQ(errorWithout({"0100", "11,1", {}}),
              "test 1 (VIDEO_MEMORY_TEST) needs Direct3D, and 'd3d.lib' cannot be loaded");
    EXPECT_EQ(errorWithout({"0a00", "11", {}}),
              "card 0a00 does not support test 11 (CUDA_MEMORY_FAULT_TEST)");
    EXPECT_EQ(errorWithout({"0a00", "quick", {}}),
              "no test is left to run: the chosen ones need Direct3D, and 'd3d.lib' cannot be loaded");
    EXPECT_EQ(errorWithout({"0100", "quick", {}}), "no error");
}

TEST(TestCatalogue, OffersNothingThroughDirect3dWhereItIsMissing) {
    FakeModule module(FakeCase::Scripted);
    const auto cards = scanCards(module);
    for (const auto& entry : listTests(module, cards, {"d3d.lib"})) {
        EXPECT_EQ(entry.supportedBy.empty(), needsDirect3d(entry.descriptor.id) || !entry.available);
    }
}

TEST(TestCatalogue, ListsEveryIdOfTheModuleInItsOrder) {
    FakeModule module(FakeCase::Scripted);
    const auto cards = scanCards(module);
    const auto entries = listTests(module, cards);
    ASSERT_EQ(entries.size(), 16U);
    EXPECT_EQ(entries[0].descriptor.id, 1);
    EXPECT_TRUE(entries[0].available);
    EXPECT_EQ(entries[0].supportedBy, (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(entries[2].supportedBy, std::vector<std::size_t>{0});
    EXPECT_EQ(entries[14].parameters.at(0).key, "DURATION");
}

TEST(TestCatalogue, DescribesAnIdThatTheModuleDoesNotMake) {
    FakeModule module(FakeCase::Scripted);
    const auto entries = listTests(module, {});
    EXPECT_FALSE(entries[15].available);
    EXPECT_EQ(entries[15].descriptor.name, "WIREFRAME_STRESS_TEST");
    EXPECT_EQ(entries[15].descriptor.tooltip, "WIREFRAME_STRESS_TEST_DESCRIPTION");
    EXPECT_EQ(entries[15].descriptor.group, "EXTENDED_TESTS");
    EXPECT_EQ(entries[15].descriptor.groupRank, 2);
    EXPECT_EQ(descriptorOfUnavailable(77).name, "TEST_77");
}

} // namespace
} // namespace vexil::host
