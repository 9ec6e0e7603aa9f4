#include "host/subprocess.h"
#include "support/environment.h"
#include "support/virtual_display.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// The matrix of faults and tests, as a user with a display has it.
namespace vexil::host::tests {
namespace {

TEST(SelfCheckOnAMachine, SaysOfEverySimulatedCardWhatIsRequired) {
    const vexil::tests::VirtualDisplay display("1280x1024x24");
    ASSERT_TRUE(display.name()) << "no X server could be started";
    vexil::tests::setEnvironment("DISPLAY", *display.name());
    const auto end = runProgram({"selfcheck"});
    EXPECT_EQ(end.code, 0) << end.out << end.err;
    EXPECT_THAT(end.out, testing::HasSubstr(" outcomes as required, 0 otherwise, "));
    EXPECT_THAT(end.out, testing::Not(testing::HasSubstr("not run"))) << "nothing is left out";
}

} // namespace
} // namespace vexil::host::tests
