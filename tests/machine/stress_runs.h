#pragma once

#include "host/subprocess.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

// Whole runs of the stress tests on simulated machines of one card.
namespace vexil::host::tests {

using Json = nlohmann::json;

/// A machine of one card with these faults and sensors.
class OneCard {
public:
    explicit OneCard(const Json& faults, const Json& nvapi = Json::object()) {
        const Json card = {{"name", "NVIDIA GeForce RTX 3060"},
                           {"manufacturer", "NVIDIA"},
                           {"vendorId", "10DE"},
                           {"deviceId", "2503"},
                           {"location", "01:00.0"},
                           {"direct3d", {{"faults", faults}}},
                           {"nvapi", nvapi}};
        std::ofstream(file_) << Json{{"schema", "vexil.scenario/1"}, {"cards", Json::array({card})}};
    }
    OneCard(const OneCard&) = delete;
    OneCard& operator=(const OneCard&) = delete;
    ~OneCard() { std::filesystem::remove(file_); }

    [[nodiscard]] std::string machine() const { return "simulated:" + file_.string(); }

private:
    std::filesystem::path file_ = vexil::tests::testFolder() / "scenario.json";
};

/// Sensors that answer.
inline const Json workingSensors = {{"sensors", {{{"celsius", 61}}}}, {"usagePercent", 97}};

struct StressRun {
    int result = 0;
    std::vector<std::string> messages;
    std::vector<int> progress;
    int exitCode = 0;
    double seconds = 0;
};

/// The test of that id for so many minutes, with further options.
inline StressRun runStress(const std::string& machine, const std::string& test, const std::string& minutes,
                           const std::vector<std::string>& options = {}) {
    const auto file = vexil::tests::testFolder() / "report.json";
    std::vector<std::string> arguments = {
        "--machine",           machine,    "run",        "--card", "0100", "--tests", test, "--set",
        "DURATION=" + minutes, "--report", file.string()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const auto end = runProgram(arguments);
    StressRun run;
    run.exitCode = end.code;
    const auto report = Json::parse(std::ifstream(file));
    std::filesystem::remove(file);
    EXPECT_EQ(report["runs"].size(), 1U) << end.out << end.err;
    for (const auto& entry : report["runs"]) {
        run.result = entry["result"];
        run.seconds = entry["durationSeconds"];
        run.progress = entry["progress"].get<std::vector<int>>();
        for (const auto& message : entry["messages"]) {
            EXPECT_EQ(message["kind"], 0);
            run.messages.push_back(message["key"]);
        }
    }
    return run;
}

/// The three lines of a card with `workingSensors` that really drew, in the exact form.
inline void expectResultLines(const std::vector<std::string>& messages) {
    const std::string items = " \t/\t GPU_STRESS_TEST_INFO_TEMPERATURE: 61\xC2\xB0"
                              "C \t/\t GPU_STRESS_TEST_INFO_GPU_USAGE: 97% \t/\t GPU_STRESS_TEST_INFO_FPS: ";
    ASSERT_EQ(messages.size(), 3U);
    const char* const words[] = {"MINIMUM", "MAXIMUM", "AVERAGE"};
    for (std::size_t i = 0; i < 3; ++i) {
        const auto start = words[i] + items;
        ASSERT_TRUE(messages[i].starts_with(start)) << messages[i];
        const auto rate = messages[i].substr(start.size());
        EXPECT_FALSE(rate.empty());
        EXPECT_EQ(rate.find_first_not_of("0123456789"), std::string::npos) << rate;
        EXPECT_NE(rate.front(), '0') << "frames were really drawn";
    }
}

} // namespace vexil::host::tests
