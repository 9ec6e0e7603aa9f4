#include "module/cpu/amd_processor.h"

#include "module/cpu/amd_registers.h"
#include "support/fake_cpu_machine.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexil::tests {
namespace {

using namespace module::cpu;

constexpr const char* lookUpError =
    "Failed to create a TemperatureAmd because it was unable to obtain family or model.";

std::string errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

void expectProcessor(const std::string& caption, std::int32_t family, std::int32_t model) {
    const auto processor = parseCaption(caption);
    EXPECT_EQ(processor.family, family) << caption;
    EXPECT_EQ(processor.model, model) << caption;
}

TEST(ParseCaption, TakesTheWordsBehindFamilyAndModel) {
    expectProcessor("AMD64 Family 25 Model 33 Stepping 0", 25, 33);
    expectProcessor("Model 33 Family 25", 25, 33);
}

TEST(ParseCaption, TakesTheFirstWordThatContainsTheLabel) {
    expectProcessor("xFamilyx 1 Family 2 aModel 3 Model 4", 1, 3);
}

TEST(ParseCaption, MakesZeroOfWhatIsNoNumber) {
    expectProcessor("Family x Model 33", 0, 33);
    expectProcessor("Family 99999999999 Model 33", 0, 33);
    expectProcessor("Family  25 Model 33", 0, 33); // the word between two blanks is an empty one
}

TEST(ParseCaption, FailsWithoutTheWordModel) {
    EXPECT_EQ(errorOf([] { static_cast<void>(parseCaption("AMD64 Family 25 Stepping 0")); }), lookUpError);
    EXPECT_EQ(errorOf([] { static_cast<void>(parseCaption("AMD64 Model 25")); }), lookUpError);
    EXPECT_EQ(errorOf([] { static_cast<void>(parseCaption("")); }), lookUpError);
}

TEST(ParseCaption, FailsOutOfRangeForACaptionThatEndsWithFamily) {
    EXPECT_THROW(static_cast<void>(parseCaption("AMD64 Model 33 Family")), std::out_of_range);
    EXPECT_THROW(static_cast<void>(parseCaption("AMD64 Family 3 Model ")), std::out_of_range)
        << "an empty word at the end is dropped";
}

TEST(LookUpAmdProcessor, AsksForTheCaptionOfTheFirstProcessor) {
    FakeCpuMachine machine;
    machine.caption = "AMD64 Family 23 Model 113 Stepping 0";
    const auto processor = lookUpAmdProcessor(*machine.makeCim());
    EXPECT_EQ(processor.family, 23);
    EXPECT_EQ(processor.model, 113);
    EXPECT_EQ(machine.queries, std::vector<std::string>{"Caption of Win32_Processor, 1"});
}

TEST(LookUpAmdProcessor, FailsWithoutAnAnswer) {
    FakeCpuMachine machine;
    EXPECT_EQ(errorOf([&] { static_cast<void>(lookUpAmdProcessor(*machine.makeCim())); }), lookUpError)
        << "no rows";
    machine.caption = "AMD64 Family 23 Model 113 Stepping 0";
    machine.cimStatus = system::CimStatus::NotConnected;
    EXPECT_EQ(errorOf([&] { static_cast<void>(lookUpAmdProcessor(*machine.makeCim())); }), lookUpError)
        << "a failed query";
}

struct ReaderCase {
    AmdProcessor processor;
    AmdReader reader;
};

TEST(ReaderFor, ChoosesByFamilyAndModel) {
    const std::vector<ReaderCase> cases = {
        {{21, 0}, readFamily15Early}, {{21, 15}, readFamily15Early}, {{21, 16}, readNorthBridge},
        {{21, 95}, readNorthBridge},  {{21, 96}, readFamily15Late},  {{21, 127}, readFamily15Late},
        {{21, 128}, readNorthBridge}, {{22, 0}, readNorthBridge},    {{22, 999}, readNorthBridge},
        {{23, 1}, readZen},           {{23, 113}, readZen},          {{25, 0}, readZen},
        {{25, 33}, readZen},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(readerFor(row.processor), row.reader)
            << "family " << row.processor.family << " model " << row.processor.model;
    }
}

TEST(ReaderFor, NamesFamilyAndModelOfAProcessorThatItDoesNotKnow) {
    EXPECT_EQ(errorOf([] {
                  static_cast<void>(readerFor({26, 2}));
              }),
              "The AMD Family 26 and Model 2 is not supported. Throwing exception...");
    for (const std::int32_t family : {0, 15, 16, 20, 24, 26}) {
        EXPECT_THROW(static_cast<void>(readerFor({family, 1})), std::runtime_error) << family;
    }
}

} // namespace
} // namespace vexil::tests
