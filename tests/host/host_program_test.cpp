#include "host/cli/host_program.h"
#include "host/core/processor_name.h"
#include "host/core/utf8_path.h"
#include "host/noting_gui.h"
#include "host/platform/process.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <streambuf>

namespace vexil::host {
namespace {

using Json = nlohmann::json;

struct Answer {
    int code = -1;
    std::string out;
    std::string err;
};

class HostProgram : public ::testing::Test {
protected:
    HostProgram() { useCase("scripted"); }

    static void useCase(const char* name) { platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", name); }

    /// The program with the fake module, on what passes for a real machine.
    Answer run(std::vector<std::string> arguments, std::streambuf* output = nullptr) {
        std::ostringstream written;
        std::ostringstream err;
        std::ostream out(output == nullptr ? written.rdbuf() : output);
        const auto folder = platform::programFolder();
        arguments.insert(arguments.end(),
                         {"--module", toUtf8(folder / "fake_modules" / VEXIL_FAKE_MODULE_FILE)});
        const HostEnvironment environment{
            .out = out,
            .err = err,
            .terminal = {},
            .programFolder = folder,
            .userLanguage = userLanguage_,
            .operatingSystem = "Some OS 1",
            .hardwareThreads = hardwareThreads_,
            .hasDisplayController = hasDisplayController_,
            .cancel = cancel_,
            .gui = gui_,
            .direct3dProbe =
                [this] {
                    if (beforeTheRun_) {
                        beforeTheRun_();
                    }
                    return missingDirect3d_;
                },
        };
        const int code = runHost(arguments, environment);
        return {code, written.str(), err.str()};
    }

    void expectUsageError(const std::vector<std::string>& arguments, const std::string& line) {
        const auto answer = run(arguments);
        EXPECT_EQ(answer.code, 2);
        EXPECT_EQ(answer.err, "vxe-host: " + line + '\n');
    }

    std::string userLanguage_ = "en_GB";
    unsigned hardwareThreads_ = 4;
    bool hasDisplayController_ = true;
    std::function<void()> beforeTheRun_; ///< called when the request is known to be good
    std::optional<std::string> missingDirect3d_;
    NotingGui gui_;
    volatile std::uint8_t cancel_ = 0;
};

TEST_F(HostProgram, ListsCardsWithRowsNoticesAndLiveValues) {
    const auto answer = run({"cards"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_TRUE(answer.err.empty());
    for (const char* text : {"This machine\n", "NVIDIA graphics card  0100", "Location",
                             "PCI bus 1, device 0, function 0", "! The installed NVIDIA driver is too old",
                             "Temperature  45 °C", "Fast <Card> & \"Friends\"  0a00"}) {
        EXPECT_NE(answer.out.find(text), std::string::npos) << text << "\nin\n" << answer.out;
    }
}

TEST_F(HostProgram, ListsCardsAsNothingButJson) {
    const auto document = Json::parse(run({"cards", "--json"}).out);
    EXPECT_EQ(document["machine"], "real");
    EXPECT_EQ(document["cards"].size(), 2U);
    EXPECT_EQ(document["cards"][0]["live"]["temperatureCelsius"], 45);
}

TEST_F(HostProgram, SaysKindlyThatThereAreNoCards) {
    useCase("no-cards");
    const auto answer = run({"cards"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_NE(answer.out.find("No video card was found"), std::string::npos);
    EXPECT_EQ(Json::parse(run({"cards", "--json"}).out)["cards"], Json::array());
    EXPECT_EQ(run({"--machine", "real", "run"}).code, 3) << "nothing was proven";
}

TEST_F(HostProgram, SaysInItsFirstLineThatItRunsOnTheSimulatedMachineForLackOfACard) {
    hasDisplayController_ = false;
    const auto answer = run({"run", "--card", "0100", "--tests", "1"});
    platform::setEnvironmentVariable("VEXIL_SCENARIO",
                                     ""); // A simulated machine is one for the whole process.
    EXPECT_EQ(answer.code, 0) << answer.err;
    EXPECT_TRUE(
        answer.out.starts_with("No display controller in this machine: using the built-in simulated one.\n"))
        << answer.out;
    EXPECT_TRUE(run({"cards"}).out.starts_with("This machine\n")) << "what needs no card stays real";
    EXPECT_TRUE(run({"--machine", "real", "run", "--tests", "1"}).out.starts_with("This machine\n"));
}

TEST_F(HostProgram, ListsTestsByGroupWithTheirCardsAndParameters) {
    const auto out = run({"tests"}).out;
    const auto quick = out.find("\nQuick tests\n");
    const auto extended = out.find("\nExtended tests\n");
    const auto tools = out.find("\nTools\n");
    EXPECT_LT(quick, extended);
    EXPECT_LT(extended, tools);
    ASSERT_NE(tools, std::string::npos);
    EXPECT_NE(out.find("not in this module"), std::string::npos);
    EXPECT_NE(out.find("every card"), std::string::npos);
    EXPECT_NE(out.find("DURATION"), std::string::npos);
    EXPECT_NE(out.find("[1:9999]"), std::string::npos);
}

TEST_F(HostProgram, ListsTestsForOneCard) {
    const auto document = Json::parse(run({"tests", "--card", "0a00", "--json"}).out);
    EXPECT_EQ(document["tests"].size(), 16U);
    EXPECT_EQ(document["tests"][0]["supportedBy"], Json::array({"0a00"}));
    EXPECT_EQ(document["tests"][2]["supportedBy"], Json::array());
}

TEST_F(HostProgram, EndsWith0IfEveryRunPassed) {
    useCase("healthy");
    const auto answer = run({"run"});
    EXPECT_EQ(answer.code, 0);
    EXPECT_NE(answer.out.find("Every test passed."), std::string::npos);
    EXPECT_NE(answer.out.find("16 passed"), std::string::npos);
}

TEST_F(HostProgram, SaysWhatACardDoesNotOffer) {
    useCase("healthy");
    EXPECT_NE(run({"run"}).out.find("0a00 Not offered: CUDA memory fault test, CUDA address test"),
              std::string::npos);
    EXPECT_EQ(run({"run", "--card", "0100"}).out.find("Not offered"), std::string::npos);
}

TEST_F(HostProgram, EndsWithTheCodeOfTheWorstRun) {
    struct Case {
        const char* tests;
        int code;
    };
    for (const auto& [tests, code] :
         {Case{"1,4", 0}, Case{"3", 1}, Case{"11", 3}, Case{"15", 3}, Case{"16", 3}, Case{"12", 4},
          Case{"13", 70}, Case{"11,12,13,3", 1}, Case{"11,13,12", 4}}) {
        EXPECT_EQ(run({"run", "--card", "0100", "--tests", tests}).code, code) << tests;
    }
}

TEST_F(HostProgram, ShowsEachRunAndASummary) {
    const auto out = run({"run", "--card", "0100", "--tests", "1,3"}).out;
    for (const char* text :
         {"Video memory test", "Passed", "Surfaces tested: 50/50", "Texture pipeline test", "Failed",
          "A picture read back from the card differs", "Summary", "A card failed.", "1 passed, 1 failed"}) {
        EXPECT_NE(out.find(text), std::string::npos) << text;
    }
}

TEST_F(HostProgram, SetsParameters) {
    EXPECT_NE(run({"run", "--card", "0100", "--tests", "5", "--set", "DURATION=12"})
                  .out.find("Duration (minutes): 12"),
              std::string::npos);
}

TEST_F(HostProgram, LendsItsGuiToTheTestsThatNeedOneOnly) {
    static_cast<void>(run({"cards"}));
    static_cast<void>(run({"tests"}));
    static_cast<void>(run({"run", "--card", "0100", "--tests", "1,3"}));
    EXPECT_TRUE(gui_.uses.empty());
    EXPECT_EQ(run({"run", "--card", "0100", "--tests", "1,5"}).code, 0);
    EXPECT_EQ(gui_.uses, std::vector<std::string>{"visible VIDEO_CARD"});
    EXPECT_EQ(gui_.titles, (std::vector<std::string>{"Video memory test", "Stress test"}));
}

TEST_F(HostProgram, SaysClearlyThatThereIsNoDisplay) {
    gui_.display = false;
    expectUsageError({"run", "--tests", "5"},
                     "test 5 (Stress test) needs a display for its window, and none can be reached");
    const auto extended = run({"run", "--tests", "extended"}).out;
    EXPECT_NE(extended.find("Not offered: Stress test"), std::string::npos) << extended;
    EXPECT_NE(extended.find("no display can be reached"), std::string::npos) << extended;
    EXPECT_NE(run({"tests"}).out.find("no display can be reached"), std::string::npos);
    EXPECT_EQ(run({"run", "--tests", "4"}).out.find("display"), std::string::npos);
    EXPECT_TRUE(gui_.uses.empty());
}

TEST_F(HostProgram, RefusesAnInvalidValueBeforeTheRun) {
    expectUsageError({"run", "--card", "0100", "--tests", "1,5", "--set", "DURATION=long"},
                     "'long' is no value for DURATION of test 5 (Stress test), which takes [1:9999]");
    expectUsageError({"run", "--card", "0100", "--tests", "1", "--set", "DURATION=5"},
                     "unknown parameter 'DURATION': the chosen tests have none");
    EXPECT_TRUE(gui_.titles.empty()) << "no test was started";
}

TEST_F(HostProgram, WritesReportsOfBothForms) {
    const auto folder = vexil::tests::testFolder();
    const auto json = toUtf8(folder / "program.json");
    const auto html = toUtf8(folder / "program.html");
    const auto answer =
        run({"run", "--card", "0100", "--tests", "1,3,13", "--report", json, "--report", html});
    EXPECT_EQ(answer.code, 1);
    std::ifstream stream(folder / "program.json");
    const auto report = Json::parse(stream);
    EXPECT_EQ(report["exitCode"], 1);
    EXPECT_EQ(report["host"]["os"], "Some OS 1");
    EXPECT_EQ(report["module"]["version"], "5.2.0");
    EXPECT_EQ(report["runs"].size(), 3U);
    EXPECT_EQ(report["runs"][0]["progress"], (Json{0, 2, 50, 100}));
    EXPECT_EQ(report["runs"][2]["error"], "the test ended with an exception: scripted");
    EXPECT_EQ(report["cards"].size(), 2U);
    EXPECT_TRUE(std::filesystem::exists(folder / "program.html"));
    EXPECT_NE(answer.out.find("Report written to " + json), std::string::npos);
}

TEST_F(HostProgram, FindsAnUnwritableReportOutBeforeTheRun) {
    const auto path = toUtf8(vexil::tests::testFolder() / "no" / "such" / "r.json");
    const auto good = vexil::tests::testFolder() / "good.json";
    std::filesystem::remove(good);
    const auto answer = run({"run", "--report", toUtf8(good), "--report", path});
    EXPECT_EQ(answer.code, 2);
    EXPECT_TRUE(answer.err.starts_with("vxe-host: the report '" + path + "' cannot be written: "));
    EXPECT_EQ(std::ranges::count(answer.err, '\n'), 1);
    EXPECT_TRUE(answer.out.empty());
    EXPECT_FALSE(std::filesystem::exists(good)) << "nothing half-written";
}

TEST_F(HostProgram, EndsWith70WhereAReportCanNoLongerBeWrittenUnlessACardHasFailed) {
    const auto folder = vexil::tests::testFolder() / "gone";
    for (const auto& [tests, code] : {std::pair{"1", 70}, {"3", 1}, {"12", 4}}) {
        std::filesystem::create_directory(folder);
        beforeTheRun_ = [&] { std::filesystem::remove_all(folder); };
        const auto path = toUtf8(folder / "r.json");
        const auto answer = run({"run", "--card", "0100", "--tests", tests, "--report", path});
        EXPECT_EQ(answer.code, code) << tests;
        EXPECT_TRUE(answer.err.starts_with("vxe-host: the report '" + path + "' cannot be written: "));
        EXPECT_EQ(std::ranges::count(answer.err, '\n'), 1);
        EXPECT_NE(answer.out.find("Summary"), std::string::npos) << "the verdict is shown all the same";
        EXPECT_FALSE(std::filesystem::exists(folder));
    }
}

TEST_F(HostProgram, NamesWhatIsUnknown) {
    expectUsageError({"run", "--card", "0300"}, "unknown card '0300': the machine has 0100, 0a00");
    expectUsageError({"tests", "--card", "0300"}, "unknown card '0300': the machine has 0100, 0a00");
    expectUsageError({"run", "--tests", "1", "--set", "SPEED=1"},
                     "unknown parameter 'SPEED': the chosen tests have none");
    expectUsageError({"run", "--tests", "21"},
                     "test 21 (Wireframe stress test) is not available in this module");
    expectUsageError({"run", "--card", "0a00", "--tests", "11"},
                     "card 0a00 does not support test 11 (CUDA memory fault test)");
    expectUsageError({"run", "--tests", "5", "--set", "DURATION=0"},
                     "'0' is no value for DURATION of test 5 (Stress test), which takes [1:9999]");
    expectUsageError({"--machine", "virtual", "cards"},
                     "unknown machine 'virtual': there is real, simulated and simulated:SCENARIO");
    expectUsageError({"--language", "tlh", "cards"},
                     "unknown language 'tlh': there is en, or name the path of a language file");
    EXPECT_EQ(run({"run", "--tests", "2"}).code, 2);
}

TEST_F(HostProgram, AnswersBadOptionsInOneLine) {
    for (const auto& arguments : {std::vector<std::string>{"--colour"}, {"paint"}, {"run", "--tests"}, {}}) {
        const auto answer = run(arguments);
        EXPECT_EQ(answer.code, 2);
        EXPECT_TRUE(answer.err.starts_with("vxe-host: ")) << answer.err;
        EXPECT_EQ(std::ranges::count(answer.err, '\n'), 1) << answer.err;
        EXPECT_TRUE(answer.out.empty());
    }
}

TEST_F(HostProgram, KeepsAnErrorOnOneLineWhateverTheUserNames) {
    expectUsageError({"run", "--card", "01\n00"}, "unknown card '01 00': the machine has 0100, 0a00");
    expectUsageError({"--machine", "a\r\nb", "cards"},
                     "unknown machine 'a  b': there is real, simulated and simulated:SCENARIO");
}

/// Takes nothing, as a disk that is full.
class FullBuffer final : public std::streambuf {
protected:
    int_type overflow(int_type) override { return traits_type::eof(); }
    int sync() override { return -1; }
};

TEST_F(HostProgram, EndsWith70WhereItsOutputCannotBeWritten) {
    FullBuffer full;
    for (const auto& arguments : {std::vector<std::string>{"cards"},
                                  {"cards", "--json"},
                                  {"tests", "--json"},
                                  {"run", "--tests", "1"},
                                  {"--help"}}) {
        const auto answer = run(arguments, &full);
        EXPECT_EQ(answer.code, 70) << arguments.back();
        EXPECT_EQ(answer.err, "vxe-host: the output cannot be written\n");
    }
    EXPECT_EQ(run({"run", "--card", "0100", "--tests", "3"}, &full).code, 1)
        << "the card has failed all the same";
    EXPECT_EQ(run({"run", "--card", "0100", "--tests", "12"}, &full).code, 4);
}

TEST_F(HostProgram, HelpsAndTellsItsVersion) {
    const auto help = run({"--help"});
    EXPECT_EQ(help.code, 0);
    EXPECT_NE(help.out.find("--machine"), std::string::npos);
    const auto runHelp = run({"run", "--help"});
    EXPECT_EQ(runHelp.code, 0);
    EXPECT_NE(runHelp.out.find("--fail-fast"), std::string::npos);
    EXPECT_EQ(run({"--version"}).out, "vxe-host 5.2.0\n");
}

TEST_F(HostProgram, TakesItsOwnOptionsBehindTheCommandToo) {
    EXPECT_EQ(run({"cards", "--machine", "real", "--language", "en"}).code, 0);
}

TEST_F(HostProgram, EndsWith3InsteadOfWaitingOnAMachineWithOneProcessor) {
    useCase("no-worker");
    hardwareThreads_ = 1;
    const auto answer = run({"run", "--tests", "1"});
    EXPECT_EQ(answer.code, 3);
    EXPECT_NE(answer.out.find("This machine has one processor."), std::string::npos);
    EXPECT_NE(answer.out.find("2 not run"), std::string::npos);
    EXPECT_EQ(run({"cards"}).code, 0) << "the cards are still listed";
    EXPECT_EQ(run({"tests"}).code, 0);
}

TEST_F(HostProgram, NamesTheMissingLibraryOfDirect3dAndStillListsTheCards) {
    missingDirect3d_ = "d3d.lib";
    const auto cards = run({"cards"});
    EXPECT_EQ(cards.code, 0);
    EXPECT_NE(cards.out.find("a library cannot be loaded: d3d.lib"), std::string::npos);
    EXPECT_NE(cards.out.find("NVIDIA graphics card"), std::string::npos);
    EXPECT_EQ(Json::parse(run({"tests", "--json"}).out)["tests"][0]["supportedBy"], Json::array());
    expectUsageError({"run", "--tests", "1"},
                     "test 1 (Video memory test) needs Direct3D, and 'd3d.lib' cannot be loaded");
    EXPECT_EQ(run({"run", "--card", "0100", "--tests", "11,12"}).code, 4);
}

TEST_F(HostProgram, TellsWhyAScanEndedAsAnInternalError) {
    useCase("scan-throws");
    const auto answer = run({"cards"});
    EXPECT_EQ(answer.code, 70);
    EXPECT_EQ(answer.err,
              "vxe-host: no card could be listed, the scan ended with: Unknown processor: Fake 9000 "
              "(processor: " +
                  processorName() + ")\n");
}

TEST_F(HostProgram, StartsNothingElseOnceItIsStopped) {
    cancel_ = 1;
    const auto answer = run({"run", "--card", "0100", "--tests", "1,4"});
    EXPECT_EQ(answer.code, 3);
    EXPECT_NE(answer.out.find("2 not run"), std::string::npos);
}

TEST_F(HostProgram, StopsAtTheFirstFailureIfAskedTo) {
    EXPECT_NE(run({"run", "--card", "0100", "--tests", "3,1", "--fail-fast"}).out.find("1 not run"),
              std::string::npos);
}

TEST_F(HostProgram, RunsTheSecondOfTwoCardsWithOneIdAsWell) {
    useCase("same-id");
    const auto document = Json::parse(run({"cards", "--json"}).out);
    EXPECT_EQ(document["cards"][0]["id"], document["cards"][1]["id"]);
    EXPECT_NE(run({"run", "--card", "0100", "--tests", "1"}).out.find("2 passed"), std::string::npos);
}

} // namespace
} // namespace vexil::host
