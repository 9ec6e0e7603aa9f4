#include "host/subprocess.h"
#include "support/environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

// The whole way on a machine with one processor, where the module's pool has no worker.
namespace vexil::host::tests {
namespace {

using ::testing::HasSubstr;

class OneProcessor : public ::testing::Test {
protected:
    OneProcessor() { vexil::tests::setEnvironment("LD_PRELOAD", VEXIL_ONE_PROCESSOR); }
    ~OneProcessor() override { unsetenv("LD_PRELOAD"); }
};

TEST_F(OneProcessor, RunsNothingAndTheHostSaysSoInsteadOfWaitingForEver) {
    const auto end = runProgram({"--machine", "simulated", "--language", "en", "run", "--tests", "1,90"});
    EXPECT_EQ(end.code, 3);
    EXPECT_EQ(end.err, "");
    EXPECT_THAT(end.out, HasSubstr("This machine has one processor."));
    EXPECT_THAT(end.out, HasSubstr("6 not run"));
}

TEST_F(OneProcessor, ListsItsCardsWithoutTheTemperatureThatAWorkerWouldRead) {
    const auto end = runProgram({"--machine", "simulated", "cards", "--json"});
    EXPECT_EQ(end.code, 0);
    const auto cards = nlohmann::json::parse(end.out)["cards"];
    ASSERT_EQ(cards.size(), 3U);
    EXPECT_TRUE(cards[0]["live"]["temperatureCelsius"].is_null());
    EXPECT_TRUE(cards[0]["live"]["usagePercent"].is_number());
}

} // namespace
} // namespace vexil::host::tests
