#include "host/core/html_report.h"
#include "host/core/json_documents.h"
#include "host/core/test_catalogue.h"
#include "host/core/value_text.h"
#include "host/fake_module/fake_module.h"
#include "host/platform/process.h"
#include "host/sample_report.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace vexil::host {
namespace {

using Json = nlohmann::json;

Language english() { return loadLanguage(platform::programFolder() / "languages", "en", ""); }

TEST(JsonReport, HasTheDocumentedShape) {
    const auto report = Json::parse(reportDocument(tests::sampleReport(), english()));
    EXPECT_EQ(report["schema"], "vexil.report/1");
    EXPECT_EQ(report["host"], (Json{{"version", "5.2.0"}, {"os", "Some OS 1"}}));
    EXPECT_EQ(report["module"],
              (Json{{"id", 7}, {"shortName", "VC"}, {"nameKey", "VIDEO_CARD"}, {"version", "5.2.0"}}));
    EXPECT_EQ(report["machine"], "simulated");
    EXPECT_EQ(report["startedAt"], "2025-12-31T23:59:59.123Z");
    EXPECT_EQ(report["exitCode"], 1);
    const auto& summary = report["summary"];
    EXPECT_EQ(summary["passed"], 1);
    EXPECT_EQ(summary["failed"], 1);
    EXPECT_EQ(summary["noVerdict"], 0);
    EXPECT_EQ(summary["cleanupFailed"], 0);
}

TEST(JsonReport, TellsEachRun) {
    const auto report = Json::parse(reportDocument(tests::sampleReport(), english()));
    ASSERT_EQ(report["runs"].size(), 2U);
    const auto& run = report["runs"][0];
    EXPECT_EQ(run["card"], "0100");
    EXPECT_EQ(run["test"], 1);
    EXPECT_EQ(run["name"], "VIDEO_MEMORY_TEST");
    EXPECT_EQ(run["title"], "Video memory test");
    EXPECT_EQ(run["result"], 1);
    EXPECT_EQ(run["outcome"], "Passed");
    EXPECT_EQ(run["progress"], (Json{0, 2, 100}));
    EXPECT_EQ(run["startedAt"], "2025-12-31T23:59:59.123Z");
    EXPECT_DOUBLE_EQ(run["durationSeconds"].get<double>(), 1.235);
    EXPECT_EQ(run["messages"], Json::array({{{"kind", 0},
                                             {"key", "TOTAL_SURFACES_TESTED: 50/50"},
                                             {"text", "Surfaces tested: 50/50"}}}));
    EXPECT_FALSE(run.contains("error"));
    EXPECT_EQ(report["runs"][1]["messages"][0]["text"], "FIRST_LINE\nSECOND_LINE");
    EXPECT_EQ(report["runs"][1]["messages"][0]["kind"], 1);
}

TEST(JsonReport, TellsAnErrorOfTheProgram) {
    auto report = tests::sampleReport();
    report.outcome.runs[0].error = "broken";
    EXPECT_EQ(Json::parse(reportDocument(report, {}))["runs"][0]["error"], "broken");
}

TEST(JsonCards, HaveTheDocumentedShape) {
    const auto report = tests::sampleReport();
    const auto document = Json::parse(cardsDocument({}, report.cards, report.live, english()));
    EXPECT_EQ(document["schema"], "vexil.cards/1");
    EXPECT_EQ(document["machine"], "real");
    ASSERT_EQ(document["cards"].size(), 2U);
    const auto& card = document["cards"][0];
    EXPECT_EQ(card["id"], "0100");
    EXPECT_EQ(card["udi"], "UDI_1");
    EXPECT_EQ(card["name"], "First <Card>");
    EXPECT_EQ(card["rows"], Json::array({{{"key", "LOCATION"}, {"value", "PCI bus 1"}}}));
    EXPECT_EQ(card["notices"], Json::array({"SOME_NOTICE"}));
    EXPECT_EQ(card["present"], true);
    EXPECT_EQ(card["live"],
              (Json{{"temperatureCelsius", 45}, {"usagePercent", 7}, {"freeMemoryBytes", 1024}}));
    EXPECT_EQ(
        document["cards"][1]["live"],
        (Json{{"temperatureCelsius", nullptr}, {"usagePercent", nullptr}, {"freeMemoryBytes", nullptr}}));
}

TEST(JsonCards, AreAnEmptyListWithoutCards) {
    EXPECT_EQ(Json::parse(cardsDocument({}, {}, {}, {}))["cards"], Json::array());
}

TEST(JsonCards, SurviveANameThatIsNoUtf8) {
    auto report = tests::sampleReport();
    report.cards[0].name = "bad \xff name";
    const auto document = Json::parse(cardsDocument({}, report.cards, report.live, {}));
    EXPECT_EQ(document["cards"][0]["name"], "bad \uFFFD name");
}

TEST(JsonTests, HaveTheDocumentedShape) {
    tests::FakeModule module(tests::FakeCase::Scripted);
    const auto cards = scanCards(module);
    std::vector<core::DeviceRecord> records = {cards[0].record, cards[1].record};
    const auto document = Json::parse(testsDocument({}, listTests(module, cards), records, english()));
    EXPECT_EQ(document["schema"], "vexil.tests/1");
    ASSERT_EQ(document["tests"].size(), 16U);
    const auto& first = document["tests"][0];
    EXPECT_EQ(first["id"], 1);
    EXPECT_EQ(first["name"], "VIDEO_MEMORY_TEST");
    EXPECT_EQ(first["title"], "Video memory test");
    EXPECT_EQ(first["tooltip"], "VIDEO_MEMORY_TEST_TOOL_TIP");
    EXPECT_EQ(first["group"], "QUICK_TESTS");
    EXPECT_EQ(first["groupRank"], 1);
    EXPECT_EQ(first["available"], true);
    EXPECT_EQ(first["expectedDurationMinutes"], 1);
    EXPECT_EQ(first["parameters"], Json::array());
    EXPECT_EQ(first["supportedBy"], (Json{"0100", "0a00"}));
    const auto& parameter = document["tests"][14]["parameters"].at(0);
    EXPECT_EQ(parameter["key"], "DURATION");
    EXPECT_EQ(parameter["name"], "DURATION_(MINUTES)");
    EXPECT_EQ(parameter["description"], "DEFINES_THE_TEST_DURATION_IN_MINUTES.");
    EXPECT_EQ(parameter["default"], "5");
    EXPECT_EQ(parameter["type"], 2);
    EXPECT_EQ(parameter["flags"], 0);
    EXPECT_EQ(parameter["range"], "[1:9999]");
}

TEST(JsonTests, SayThatATestIsNotAvailable) {
    tests::FakeModule module(tests::FakeCase::Scripted);
    const auto last = Json::parse(testsDocument({}, listTests(module, {}), {}, {}))["tests"][15];
    EXPECT_EQ(last["id"], 21);
    EXPECT_EQ(last["available"], false);
    EXPECT_EQ(last["name"], "WIREFRAME_STRESS_TEST");
    EXPECT_EQ(last["supportedBy"], Json::array());
}

TEST(HtmlReport, EscapesWhatReadsLikeMarkup) {
    EXPECT_EQ(escapeHtml("<a href=\"x\">&"), "&lt;a href=&quot;x&quot;&gt;&amp;");
    const auto page = htmlReport(tests::sampleReport(), english());
    EXPECT_NE(page.find("First &lt;Card&gt;"), std::string::npos);
    EXPECT_EQ(page.find("<Card>"), std::string::npos);
}

TEST(HtmlReport, NeedsNothingBesideItself) {
    const auto page = htmlReport(tests::sampleReport(), english());
    for (const char* reference : {"http:", "https:", "src=", "<link", "<script", "url(", "@import"}) {
        EXPECT_EQ(page.find(reference), std::string::npos) << reference;
    }
}

TEST(HtmlReport, TellsVerdictCardsRunsAndOrigin) {
    const auto page = htmlReport(tests::sampleReport(), english());
    for (const char* text :
         {"A card failed.", "1 passed, 1 failed", "Video memory test", "Surfaces tested: 50/50", "1.2 s",
          "1:15 min", "45 °C", "PCI bus 1", "SOME_NOTICE", "FIRST_LINE</div>", "Simulated machine (healthy)",
          "Some OS 1", "2025-12-31 23:59:59 UTC", "<html lang=\"en\">"}) {
        EXPECT_NE(page.find(text), std::string::npos) << text;
    }
}

TEST(HtmlReport, PaintsTheVerdictByTheExitCode) {
    auto report = tests::sampleReport();
    EXPECT_NE(htmlReport(report, {}).find("class=\"verdict bad\""), std::string::npos);
    report.exitCode = ExitCode::AllPassed;
    EXPECT_NE(htmlReport(report, {}).find("class=\"verdict good\""), std::string::npos);
    report.exitCode = ExitCode::NoVerdict;
    EXPECT_NE(htmlReport(report, {}).find("class=\"verdict warn\""), std::string::npos);
}

TEST(Counts, LeaveOutWhatDidNotHappenButThePassed) {
    RunSummary summary;
    EXPECT_EQ(describeCounts(summary, english()), "0 passed");
    summary = {3, 1, 2, 1, 1, 4};
    EXPECT_EQ(describeCounts(summary, english()),
              "3 passed, 1 failed, 1 with memory not released, "
              "2 without a verdict, 1 ended by a program error, 4 not run");
}

} // namespace
} // namespace vexil::host
