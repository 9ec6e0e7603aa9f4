#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "host/subprocess.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace vexil::host {
namespace {

/// The real program, with the fake module, and a state folder of the test's own.
class LogFile : public ::testing::Test {
protected:
    LogFile() {
        platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "healthy");
        platform::setEnvironmentVariable("XDG_STATE_HOME", folder_.string());
    }

    static tests::ProgramEnd run(std::vector<std::string> arguments) {
        const auto module = platform::programFolder() / "fake_modules" / VEXIL_FAKE_MODULE_FILE;
        arguments.insert(arguments.end(),
                         {"--machine", "real", "--language", "en", "--module", toUtf8(module)});
        return tests::runProgram(arguments);
    }
    static std::size_t recordCount() {
        return nlohmann::json::parse(run({"log", "list", "--json"}).out)["records"].size();
    }

    std::filesystem::path folder_ = vexil::tests::testFolder();
    std::filesystem::path file_ = folder_ / "vexil" / "cim.sqlite3";
};

TEST_F(LogFile, KeepsResultsFromRunToRunUntilItIsCleared) {
    EXPECT_EQ(run({"log", "list"}).out, "Log of results  " + file_.string() + "\nThe log is empty.\n");
    EXPECT_FALSE(std::filesystem::exists(file_));
    const std::vector<std::string> arguments = {"run", "--card", "0100", "--tests", "1,3", "--log"};
    const auto first = run(arguments);
    EXPECT_EQ(first.code, 0) << first.err;
    EXPECT_EQ(run(arguments).code, 0);
    EXPECT_EQ(recordCount(), 4U);
    EXPECT_EQ(run({"log", "clear"}).out, "Removed from the log: 4 results\n");
    EXPECT_EQ(recordCount(), 0U);
    EXPECT_EQ(run(arguments).code, 0);
    EXPECT_EQ(recordCount(), 2U);
}

TEST_F(LogFile, ThatIsNoDatabaseIsNamedAndLeftAsItIs) {
    std::filesystem::create_directories(file_.parent_path());
    const std::string content(2000, 'x');
    std::ofstream(file_) << content;
    const std::string reason =
        ": file is not a database; it was left as it is: move it away to begin a new one\n";
    const auto place = "vxe-host: the log '" + file_.string() + "' cannot be ";
    const auto ran = run({"run", "--log"});
    EXPECT_EQ(ran.code, 2);
    EXPECT_EQ(ran.err, place + "written" + reason);
    EXPECT_TRUE(ran.out.empty());
    EXPECT_EQ(run({"log", "list"}).err, place + "read" + reason);
    const auto cleared = run({"log", "clear"});
    EXPECT_EQ(cleared.code, 2);
    EXPECT_EQ(cleared.err, place + "read" + reason);
    std::ifstream stream(file_);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), content);
}

TEST_F(LogFile, InAPlaceThatCannotBeWrittenToIsNamed) {
    std::ofstream(file_.parent_path()) << "a file where a folder should be";
    const auto ran = run({"run", "--log"});
    EXPECT_EQ(ran.code, 2);
    EXPECT_EQ(ran.err, "vxe-host: the log '" + file_.string() +
                           "' cannot be written: the folder cannot be made: Not a directory\n");
}

} // namespace
} // namespace vexil::host
