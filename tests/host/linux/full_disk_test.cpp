#include "host/core/exit_code.h"
#include "host/core/sample_file.h"

#include <gtest/gtest.h>

#include <string>

namespace vexil::host {
namespace {

TEST(SampleFileOnLinux, SaysThatADiskIsFull) {
    SampleFile file("/dev/full"); // which takes nothing, whatever is written to it
    try {
        file.begin();
        FAIL();
    } catch (const InternalError& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with("the file '/dev/full' cannot be written: "));
    }
}

} // namespace
} // namespace vexil::host
