#include "host/core/language.h"
#include "host/gui/make_gui.h"
#include "host/platform/process.h"
#include "support/test_folder.h"
#include "support/time_bound.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace vexil::host {
namespace {

constexpr const char* withComma = "de_DE.UTF-8";

/// A machine whose user writes numbers with a comma, whatever is installed on this one.
class NumberFormat : public testing::Test {
protected:
    void SetUp() override {
        const auto folder = vexil::tests::testFolder();
        const auto command = "localedef -i de_DE -f UTF-8 --no-archive " + (folder / withComma).string();
        ASSERT_EQ(std::system(command.c_str()), 0);
        platform::setEnvironmentVariable("LOCPATH", folder.string());
        platform::setEnvironmentVariable("LC_ALL", withComma);
        ASSERT_NE(std::setlocale(LC_NUMERIC, withComma), nullptr);
        ASSERT_STREQ(std::localeconv()->decimal_point, ",");
        std::setlocale(LC_NUMERIC, "C");
    }
};

TEST_F(NumberFormat, OfTheProgramIsLeftAlone) {
    const vexil::tests::TimeBound bound(std::chrono::seconds(30));
    const Language language;
    makeGui()->run(false, language, "VIDEO_CARD",
                   [](GuiSession&) { EXPECT_STREQ(std::localeconv()->decimal_point, "."); });
    EXPECT_STREQ(std::localeconv()->decimal_point, ".");
}

} // namespace
} // namespace vexil::host
