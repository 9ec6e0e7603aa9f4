#include "host/cli/host_program.h"
#include "host/core/utf8_path.h"
#include "host/noting_gui.h"
#include "host/platform/process.h"
#include "support/memory_cim.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <memory>
#include <sstream>

namespace vexil::host {
namespace {

using Json = nlohmann::json;
using system::CimStatus;
using vexil::platform::RecordUse;
using ::vexil::tests::MemoryCim;

struct Answer {
    int code = -1;
    std::string out;
    std::string err;
};

/// The program with the fake module and a log in memory.
class LogCommand : public ::testing::Test {
protected:
    LogCommand() { platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "scripted"); }

    Answer run(std::vector<std::string> arguments) {
        std::ostringstream out;
        std::ostringstream err;
        const auto folder = platform::programFolder();
        arguments.insert(arguments.end(),
                         {"--module", toUtf8(folder / "fake_modules" / VEXIL_FAKE_MODULE_FILE)});
        const HostEnvironment environment{
            .out = out,
            .err = err,
            .terminal = traits_,
            .programFolder = folder,
            .userLanguage = "en_GB",
            .operatingSystem = "Some OS 1",
            .hardwareThreads = 4,
            .hasDisplayController = true,
            .cancel = cancel_,
            .gui = gui_,
            .direct3dProbe = [] { return std::nullopt; },
            .logPlace =
                [this] {
                    return LogPlace{cim_, "the place", [this](RecordUse) { return trouble_; }};
                },
        };
        const int code = runHost(arguments, environment);
        return {code, out.str(), err.str()};
    }

    void addRecord(const std::string& card, const std::string& status, const std::string& start,
                   const std::string& duration) {
        cim_->hasNamespace = true;
        cim_->records.push_back({{"Id", std::to_string(cim_->nextId++)},
                                 {"ModuleName", "VIDEO_CARD"},
                                 {"DeviceUdi", "PCI/0a:00.0"},
                                 {"DeviceDisplayName", card},
                                 {"TestName", "VIDEO_MEMORY_TEST"},
                                 {"TestStatus", status},
                                 {"TestStartTimestamp", start},
                                 {"TestDuration", duration}});
    }

    std::shared_ptr<MemoryCim> cim_ = std::make_shared<MemoryCim>();
    std::optional<std::string> trouble_;
    TerminalTraits traits_;
    NotingGui gui_;
    volatile std::uint8_t cancel_ = 0;
};

TEST_F(LogCommand, ShowsWhatARunLogged) {
    const auto ran = run({"run", "--card", "0100", "--tests", "1,3", "--log"});
    EXPECT_EQ(ran.code, 1) << "as without a log";
    EXPECT_TRUE(ran.err.empty()) << ran.err;
    EXPECT_NE(ran.out.find("Results logged in the place"), std::string::npos);
    ASSERT_EQ(cim_->records.size(), 2U);
    EXPECT_EQ(cim_->records[0]["ModuleName"], "VIDEO_CARD");
    EXPECT_EQ(cim_->records[0]["DeviceDisplayName"], "NVIDIA graphics card");
    EXPECT_EQ(cim_->records[0]["TestName"], "VIDEO_MEMORY_TEST");
    EXPECT_EQ(cim_->records[0]["TestStatus"], "Passed");
    EXPECT_EQ(cim_->records[1]["TestStatus"], "Failed");
    EXPECT_EQ(cim_->records[1]["TestStartTimestamp"].size(), std::string("2026-01-31T23:59:59.123Z").size());

    const auto listed = run({"log", "list"});
    EXPECT_EQ(listed.code, 0);
    for (const char* text :
         {"Log of results  the place", "NVIDIA graphics card  Video memory test      Passed",
          "NVIDIA graphics card  Texture pipeline test  Failed", "2 results"}) {
        EXPECT_NE(listed.out.find(text), std::string::npos) << text << "\nin\n" << listed.out;
    }
}

TEST_F(LogCommand, LogsNothingUnlessItIsAsked) {
    run({"run", "--card", "0100", "--tests", "1"});
    EXPECT_TRUE(cim_->records.empty());
}

TEST_F(LogCommand, ListsATableOfReadableTimes) {
    addRecord("Aurora 9", "Passed", "2026-01-31T23:59:59.123Z", "12.346");
    addRecord("Borealis", "Failed", "2026-02-01T00:00:12.000Z", "125.000");
    EXPECT_EQ(run({"log", "list"}).out,
              "Log of results  the place\n"
              "\n"
              "    #  Started (UTC)        Card      Test               Result  Time\n"
              "  + 0  2026-01-31 23:59:59  Aurora 9  Video memory test  Passed  12.3 s\n"
              "  x 1  2026-02-01 00:00:12  Borealis  Video memory test  Failed  2:05 min\n"
              "\n"
              "2 results\n");
}

TEST_F(LogCommand, ShowsWhatItDoesNotUnderstandAsItStands) {
    addRecord("Aurora 9", "Scorched", "yesterday", "long");
    const auto out = run({"log", "list"}).out;
    for (const char* text : {"yesterday", "Scorched", "long", "1 result\n"}) {
        EXPECT_NE(out.find(text), std::string::npos) << text;
    }
}

TEST_F(LogCommand, StaysInsideTheTerminal) {
    traits_.width = 80;
    addRecord("A card with a name that is far too long for any terminal", "Passed",
              "2026-01-31T23:59:59.123Z", "12.346");
    std::istringstream out(run({"log", "list"}).out);
    for (std::string line; std::getline(out, line);) {
        EXPECT_LE(columns(line), 80U) << line;
    }
}

TEST_F(LogCommand, ListsAsNothingButJson) {
    addRecord("Aurora 9", "Passed", "2026-01-31T23:59:59.123Z", "12.346");
    const auto document = Json::parse(run({"log", "list", "--json"}).out);
    EXPECT_EQ(document, (Json{{"schema", "vexil.log/1"},
                              {"place", "the place"},
                              {"records",
                               {{{"id", 0},
                                 {"moduleName", "VIDEO_CARD"},
                                 {"deviceUdi", "PCI/0a:00.0"},
                                 {"deviceDisplayName", "Aurora 9"},
                                 {"testName", "VIDEO_MEMORY_TEST"},
                                 {"testStatus", "Passed"},
                                 {"testStartTimestamp", "2026-01-31T23:59:59.123Z"},
                                 {"testDuration", "12.346"}}}}}));
}

TEST_F(LogCommand, SaysThatItIsEmpty) {
    EXPECT_EQ(run({"log", "list"}).out, "Log of results  the place\nThe log is empty.\n");
    EXPECT_EQ(Json::parse(run({"log", "list", "--json"}).out)["records"], Json::array());
    EXPECT_EQ(run({"log", "clear"}).out, "The log is empty.\n");
}

TEST_F(LogCommand, TakesANamespaceWithoutTheClassForAnEmptyLog) {
    cim_->hasNamespace = true;
    cim_->lacksClass = true;
    EXPECT_EQ(run({"log", "list"}).code, 0);
    EXPECT_EQ(run({"log", "clear"}).code, 0);
    cim_->hasNamespace = true;
    EXPECT_EQ(run({"run", "--log", "--card", "0100", "--tests", "1"}).code, 0);
    EXPECT_EQ(cim_->records.size(), 1U);
}

TEST_F(LogCommand, ClearsAndSaysHowMuch) {
    addRecord("Aurora 9", "Passed", "", "");
    addRecord("Aurora 9", "Passed", "", "");
    const auto answer = run({"log", "clear"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_EQ(answer.out, "Removed from the log: 2 results\n");
    EXPECT_TRUE(cim_->records.empty());
}

TEST_F(LogCommand, WarnsThatItsNumbersHaveRunOut) {
    cim_->nextId = 5002;
    for (int i = 0; i < 5000; ++i) {
        addRecord("Aurora 9", "Passed", "", "");
    }
    EXPECT_NE(run({"log", "list"}).out.find("The log takes no more results"), std::string::npos);
    const auto answer = run({"run", "--log"});
    EXPECT_EQ(answer.code, 2);
    EXPECT_TRUE(answer.out.empty()) << "no test was run";
}

TEST_F(LogCommand, RunsNothingThatCannotBeLogged) {
    trouble_ = "it is nailed shut";
    const auto answer = run({"run", "--log"});
    EXPECT_EQ(answer.code, 2);
    EXPECT_EQ(answer.err, "vxe-host: the log 'the place' cannot be written: it is nailed shut\n");
    EXPECT_TRUE(answer.out.empty());
    for (const char* action : {"list", "clear"}) {
        const auto refused = run({"log", action});
        EXPECT_EQ(refused.code, 2);
        EXPECT_EQ(refused.err, "vxe-host: the log 'the place' cannot be read: it is nailed shut\n");
    }
}

TEST_F(LogCommand, EndsWith70IfARunIsNotLoggedUnlessACardFailed) {
    cim_->writeStatus = CimStatus::NotConnected;
    const auto passed = run({"run", "--card", "0100", "--tests", "1", "--log"});
    EXPECT_EQ(passed.code, 70);
    EXPECT_EQ(
        passed.err,
        "vxe-host: the log 'the place' did not take 1 of the results: a step of it failed (status 19)\n");
    EXPECT_EQ(passed.out.find("Results logged"), std::string::npos);
    EXPECT_EQ(run({"run", "--card", "0100", "--tests", "3", "--log"}).code, 1);
}

TEST_F(LogCommand, NeedsListOrClear) {
    const auto answer = run({"log"});
    EXPECT_EQ(answer.code, 2);
    EXPECT_EQ(answer.err, "vxe-host: log needs to know what to do: list or clear\n");
    EXPECT_EQ(run({"log", "burn"}).code, 2);
    EXPECT_EQ(run({"log", "clear", "--json"}).code, 2);
    const auto help = run({"log", "--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_NE(help.out.find("clear"), std::string::npos);
}

} // namespace
} // namespace vexil::host
