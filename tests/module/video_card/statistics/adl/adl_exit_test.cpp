#include "module/video_card/statistics/adl/adl_context.h"
#include "platform/shared_library.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace vexil::tests {
namespace {

[[noreturn]] void useAdlAndEnd() {
    // Under the vendor's name, so that the process finds it there.
    if (platform::openLibraryPath(VEXIL_FAREWELL_ADL) == nullptr ||
        module::video_card::getADLContext() == nullptr) {
        std::abort();
    }
    std::exit(0);
}

TEST(AdlExit, EndsTheLibraryWithTheProcess) {
    EXPECT_EXIT(useAdlAndEnd(), testing::ExitedWithCode(0), "ADL was ended");
}

} // namespace
} // namespace vexil::tests
