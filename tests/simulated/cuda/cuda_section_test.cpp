#include "simulated/scenario/scenario.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace vexil::tests {

using namespace simulated;

namespace {

Scenario load(const std::string& cuda, const std::string& beside = "") {
    const auto file = testFolder() / "cuda.json";
    std::ofstream(file) << R"({"schema": "vexil.scenario/1", )" << beside
                        << R"("cards": [{"vendorId": "10DE", "deviceId": "2503", "location": "0a:00.0")"
                        << (cuda.empty() ? "" : ", \"cuda\": " + cuda) << "}]}";
    return loadScenario(file.string());
}

std::string errorOf(const std::string& cuda) {
    try {
        static_cast<void>(load(cuda));
        return "none";
    } catch (const ScenarioError& error) {
        const std::string text = error.what();
        return text.substr(text.find(".json: ") + 7);
    }
}

} // namespace

TEST(CudaSection, IsAbsentForACardThatCudaDoesNotList) { EXPECT_FALSE(load("").cards.at(0).cuda); }

TEST(CudaSection, DescribesAHealthyCardByItsMemoryAlone) {
    const auto scenario = load(R"({"memoryMiB": 8192})");
    const auto& card = scenario.cards.at(0).cuda.value();
    EXPECT_EQ(card.pciBusId, "0000:0A:00.0");
    EXPECT_EQ(card.memoryBytes, std::uint64_t{8} << 30);
    EXPECT_FALSE(card.reportedTotalBytes);
    EXPECT_FALSE(card.failingLaunches.hits(1));
    EXPECT_EQ(scenario.cudaDriverVersion, 12040);
    EXPECT_EQ(load(R"({"memoryMiB": 1})", "\"cudaDriverVersion\": 11020, ").cudaDriverVersion, 11020);
}

TEST(CudaSection, ReadsEveryFault) {
    const auto scenario = load(R"({"memoryMiB": 64,
        "reportedTotalBytes": "0x100000000", "reportedFreeBytes": 5, "largestAllocationBytes": 7,
        "stuckBits": [{"address": "0x1000", "bit": 31, "value": 1}],
        "readFlips": [{"address": 8, "bits": "0xFF", "read": 3}, {"address": 12}],
        "shortedWords": [{"from": 4, "to": 16}],
        "wrongOperations": [{"kernel": "advancedFloat", "row": 12, "value": "nan"},
                            {"kernel": "standardInteger", "value": "oneMore"}],
        "failingAllocations": {"first": 1}, "failingFrees": {"first": 2, "count": 3},
        "failingCopiesToCard": {"first": 4}, "failingCopiesFromCard": {"first": 5},
        "failingLaunches": {"first": 6, "count": 1}})");
    const auto& card = scenario.cards.at(0).cuda.value();
    EXPECT_EQ(card.reportedTotalBytes, std::uint64_t{4} << 30);
    EXPECT_EQ(card.reportedFreeBytes, 5U);
    EXPECT_EQ(card.largestAllocation, 7U);
    EXPECT_EQ(card.stuckBits.at(0).address, 0x1000U);
    EXPECT_EQ(card.stuckBits.at(0).bit, 31U);
    EXPECT_TRUE(card.stuckBits.at(0).value);
    EXPECT_EQ(card.readFlips.at(0).bits, 0xFFU);
    EXPECT_EQ(card.readFlips.at(0).read, 3U);
    EXPECT_EQ(card.readFlips.at(1).bits, 1U);
    EXPECT_EQ(card.readFlips.at(1).read, 1U);
    EXPECT_EQ(card.shortedWords.at(0).from, 4U);
    EXPECT_EQ(card.shortedWords.at(0).to, 16U);
    EXPECT_EQ(card.wrongOperations.at(0).kernel, "cuda_kernel_advanced_execute_float");
    EXPECT_EQ(card.wrongOperations.at(0).row, 12U);
    EXPECT_EQ(card.wrongOperations.at(0).value, CudaWrongValue::NaN);
    EXPECT_FALSE(card.wrongOperations.at(1).row);
    EXPECT_EQ(card.failingAllocations.first, 1U);
    EXPECT_EQ(card.failingFrees.count, 3U);
    EXPECT_EQ(card.failingCopiesToCard.first, 4U);
    EXPECT_EQ(card.failingCopiesFromCard.first, 5U);
    EXPECT_EQ(card.failingLaunches.count, 1U);
}

TEST(CudaSection, NamesTheFieldAndTheReasonOfAnError) {
    const std::pair<const char*, const char*> broken[] = {
        {"{}", "cards[0].cuda.memoryMiB: is missing"},
        {R"({"memoryMiB": 1, "stuckBits": [{"address": 2, "bit": 0, "value": 1}]})",
         "cards[0].cuda.stuckBits[0].address: must be the place of a 32-bit word, a multiple of 4"},
        {R"({"memoryMiB": 1, "stuckBits": [{"address": 4, "bit": 0}]})",
         "cards[0].cuda.stuckBits[0].value: is missing"},
        {R"({"memoryMiB": 1, "wrongOperations": [{"kernel": "some", "value": "nan"}]})",
         "cards[0].cuda.wrongOperations[0].kernel: \"some\" is none of standardInteger, advancedInteger, "
         "standardFloat, advancedFloat"},
        {R"({"memoryMiB": 1, "failingFrees": {}})", "cards[0].cuda.failingFrees.first: is missing"},
    };
    for (const auto& [json, error] : broken) {
        EXPECT_EQ(errorOf(json), error) << json;
    }
    EXPECT_TRUE(
        errorOf(R"({"memoryMiB": 1, "stuckBit": []})").starts_with("cards[0].cuda.stuckBit: is not a field"));
}

TEST(CudaFailingCalls, HitsFromTheFirstForAsManyAsItSays) {
    const CudaFailingCalls none{}, always{1, CudaFailingCalls::forEver}, two{3, 2};
    for (std::uint64_t call = 1; call < 9; ++call) {
        EXPECT_FALSE(none.hits(call));
        EXPECT_TRUE(always.hits(call));
        EXPECT_EQ(two.hits(call), call == 3 || call == 4);
    }
}

} // namespace vexil::tests
