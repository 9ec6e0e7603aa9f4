#include "host/core/exit_code.h"
#include "host/core/module_library.h"
#include "host/core/processor_name.h"
#include "host/core/session.h"
#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <fstream>

namespace vexil::host {
namespace {

std::filesystem::path built(const char* file) { return platform::programFolder() / "fake_modules" / file; }

std::string errorOf(const std::filesystem::path& file, bool namedByUser = true) {
    try {
        const ModuleLibrary library(file, namedByUser);
    } catch (const HostError& error) {
        EXPECT_EQ(error.code(), namedByUser ? ExitCode::Usage : ExitCode::InternalError);
        EXPECT_EQ(std::string(error.what()).find('\n'), std::string::npos);
        return error.what();
    }
    return "no error";
}

std::string refusal(const std::filesystem::path& file) {
    return "the module '" + toUtf8(file) + "' cannot be loaded: ";
}

class ModuleLibraries : public ::testing::Test {
protected:
    ModuleLibraries() { platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", ""); }
    ~ModuleLibraries() override { platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", ""); }
};

TEST_F(ModuleLibraries, GiveTheModuleOfTheExport) {
    const ModuleLibrary library(built(VEXIL_FAKE_MODULE_FILE), true);
    EXPECT_EQ(library.module().moduleId(), 7);
    EXPECT_EQ(library.module().testIds().size(), 16U);
}

TEST_F(ModuleLibraries, NameAFileThatIsNotThere) {
    const auto file = built("no_such_module.so");
    EXPECT_EQ(errorOf(file), refusal(file) + "there is no such file");
    EXPECT_EQ(errorOf(file, false), refusal(file) + "there is no such file");
}

TEST_F(ModuleLibraries, NameAFileThatCannotBeThere) {
    const auto file = built(std::string(300, 'a').c_str());
    EXPECT_EQ(errorOf(file), refusal(file) + "there is no such file");
}

TEST_F(ModuleLibraries, NameAFileThatIsNoLibrary) {
    const auto file = vexil::tests::testFolder() / "no_library.so";
    std::ofstream(file) << "text";
    EXPECT_TRUE(errorOf(file).starts_with(refusal(file)));
    EXPECT_GT(errorOf(file).size(), refusal(file).size());
    std::filesystem::remove(file);
}

TEST_F(ModuleLibraries, NameAMissingExport) {
    const auto file = built(VEXIL_FAKE_MODULE_WITHOUT_DESTROY_FILE);
    EXPECT_EQ(errorOf(file), refusal(file) + "it does not export DestroyModuleInstance");
}

TEST_F(ModuleLibraries, NameAnExportThatGivesNoModule) {
    platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "gives-no-module");
    const auto file = built(VEXIL_FAKE_MODULE_FILE);
    EXPECT_EQ(errorOf(file), refusal(file) + "CreateModuleInstance gave no module");
}

TEST_F(ModuleLibraries, AreUnloadedWithTheirSessionAgainAndAgain) {
    for (int i = 0; i < 50; ++i) {
        const Session session({}, platform::programFolder(), toUtf8(built(VEXIL_FAKE_MODULE_FILE)));
        ASSERT_EQ(session.cards().size(), 2U);
        EXPECT_EQ(session.records()[1].id, "0a00");
    }
}

TEST_F(ModuleLibraries, WhoseScanThrowsAreAnInternalErrorWithTheReason) {
    platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "scan-throws");
    try {
        const Session session({}, platform::programFolder(), toUtf8(built(VEXIL_FAKE_MODULE_FILE)));
        FAIL();
    } catch (const InternalError& error) {
        EXPECT_EQ(error.what(),
                  "no card could be listed, the scan ended with: Unknown processor: Fake 9000 (processor: " +
                      processorName() + ')');
    }
}

} // namespace
} // namespace vexil::host
