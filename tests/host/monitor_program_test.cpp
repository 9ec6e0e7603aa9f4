#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "host/subprocess.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace vexil::host {
namespace {

/// The program as a user starts it, with the fake module or on the simulated machine.
class MonitorProgram : public ::testing::Test {
protected:
    MonitorProgram() { platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "scripted"); }

    [[nodiscard]] static tests::ProgramEnd monitor(const std::vector<std::string>& options) {
        const auto module = platform::programFolder() / "fake_modules" / VEXIL_FAKE_MODULE_FILE;
        std::vector<std::string> arguments = {"--machine", "real",         "--language", "en",
                                              "--module",  toUtf8(module), "monitor"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return tests::runProgram(arguments);
    }
    /// The rows of the file by card, without the line of names.
    [[nodiscard]] std::map<std::string, std::vector<std::vector<std::string>>> rows() const {
        std::map<std::string, std::vector<std::vector<std::string>>> result;
        std::ifstream stream(csv_);
        std::string line;
        std::getline(stream, line);
        EXPECT_EQ(line, "time,elapsed_seconds,card,name,temperature_celsius,usage_percent,free_memory_bytes");
        while (std::getline(stream, line)) {
            EXPECT_FALSE(stream.eof()) << "a line without its end: " << line;
            std::vector<std::string> fields(1);
            for (const char c : line) {
                c == ',' ? static_cast<void>(fields.emplace_back()) : fields.back().push_back(c);
            }
            EXPECT_EQ(fields.size(), 7U) << line;
            result[fields.at(2)].push_back(fields);
        }
        return result;
    }
    [[nodiscard]] std::string scenario(const std::string& processor) const {
        auto file = toUtf8(folder_ / "scenario.json");
        std::ofstream(file)
            << R"({"schema": "vexil.scenario/1", "processor": )" << processor
            << R"(, "cards": [{"vendorId": "10DE", "deviceId": "2503", "location": "01:00.0"}]})";
        return file;
    }

    std::filesystem::path folder_ = vexil::tests::testFolder();
    std::string csv_ = toUtf8(folder_ / "samples.csv");
};

TEST_F(MonitorProgram, WritesTwentyRowsForEachSimulatedCardAndEndsWith0) {
    const auto end = tests::runProgram(
        {"--machine", "simulated", "monitor", "--interval", "0.2", "--count", "20", "--csv", csv_});
    EXPECT_EQ(end.code, 0) << end.err;
    const auto cards = rows();
    ASSERT_EQ(cards.size(), 3U);
    for (const auto& [id, samples] : cards) {
        ASSERT_EQ(samples.size(), 20U) << id;
        // The last sample is due 19 intervals after the first, however busy the machine is.
        EXPECT_GE(std::stod(samples.back()[1]), 3.8);
    }
    EXPECT_EQ(cards.at("0100")[0][4], "44");
    EXPECT_EQ(cards.at("0100")[19][5], "3");
    EXPECT_EQ(cards.at("0100")[19][6], "3221225472") << "11 GiB, of which 32 bits are left";
    EXPECT_EQ(cards.at("0a00")[0][4], "51");
    EXPECT_EQ(cards.at("0a00")[0][5], "0") << "the load of an AMD card comes from the kernel";
    EXPECT_EQ(cards.at("0a00")[19][6], "11811160064") << "12 GiB less 1 GiB";
    EXPECT_EQ(cards.at("0002")[0][4], "45") << "the processor's temperature";
    EXPECT_EQ(cards.at("0002")[19][6], "") << "nothing tells the memory of an Intel card";
}

TEST_F(MonitorProgram, TellsLoadAndFreeMemoryInTheListOfCardsAsWell) {
    const auto end = tests::runProgram({"--machine", "simulated", "cards", "--json"});
    const auto cards = nlohmann::json::parse(end.out)["cards"];
    ASSERT_EQ(cards.size(), 3U);
    EXPECT_EQ(
        cards[0]["live"],
        (nlohmann::json{{"temperatureCelsius", 44}, {"usagePercent", 3}, {"freeMemoryBytes", 3221225472U}}));
    EXPECT_EQ(cards[2]["live"]["usagePercent"], 0);
    EXPECT_TRUE(cards[2]["live"]["freeMemoryBytes"].is_null());
}

TEST_F(MonitorProgram, ShowsExtremesOfOneCardIfAskedTo) {
    const auto end = monitor({"--card", "0a00", "--interval", "0.1", "--count", "2"});
    EXPECT_EQ(end.code, 0) << end.err;
    EXPECT_NE(end.out.find("  Temperature       45 °C     45.0 °C       45 °C\n"), std::string::npos)
        << end.out;
    EXPECT_EQ(end.out.find("0100"), std::string::npos);
    EXPECT_EQ(end.out.find('\x1b'), std::string::npos);
    EXPECT_EQ(end.out.find("Ctrl-C"), std::string::npos) << "it ends by itself";
}

TEST_F(MonitorProgram, NamesBadArgumentsAndTheirRange) {
    struct Case {
        const char* option;
        const char* value;
        const char* line;
    };
    for (const auto& [option, value, line] :
         {Case{"--interval", "0", "--interval: '0' is no number of seconds from 0.1 to 3600"},
          Case{"--interval", "-1", "--interval: '-1' is no number of seconds from 0.1 to 3600"},
          Case{"--interval", "nan", "--interval: 'nan' is no number of seconds from 0.1 to 3600"},
          Case{"--interval", "3600.1", "--interval: '3600.1' is no number of seconds from 0.1 to 3600"},
          Case{"--interval", "1s", "--interval: '1s' is no number of seconds from 0.1 to 3600"},
          Case{"--count", "0", "--count: '0' is no whole number from 1 to 1000000000"},
          Case{"--count", "1.5", "--count: '1.5' is no whole number from 1 to 1000000000"},
          Case{"--count", "1000000001", "--count: '1000000001' is no whole number from 1 to 1000000000"},
          Case{"--card", "0300", "unknown card '0300': the machine has 0100, 0a00"}}) {
        const auto end = monitor({option, value, "--csv", csv_});
        EXPECT_EQ(end.code, 2) << option << ' ' << value;
        EXPECT_EQ(end.err, std::string("vxe-host: ") + line + '\n');
        EXPECT_FALSE(std::filesystem::exists(csv_));
    }
    EXPECT_EQ(monitor({"--interval", "3600", "--count", "1"}).code, 0) << "the last in the range";
}

TEST_F(MonitorProgram, NamesAFileThatCannotBeWritten) {
    const auto end = monitor({"--count", "1", "--csv", "/no/such/folder/x.csv"});
    EXPECT_EQ(end.code, 2);
    EXPECT_TRUE(end.err.starts_with("vxe-host: the file '/no/such/folder/x.csv' cannot be written: "))
        << end.err;
    EXPECT_TRUE(end.out.empty()) << "found out before the scan";
}

TEST_F(MonitorProgram, EndsWith3WhereThereIsNothingToMonitor) {
    platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "no-cards");
    const auto end = monitor({"--csv", csv_});
    EXPECT_EQ(end.code, 3);
    EXPECT_NE(end.out.find("No video card was found"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(csv_));
}

TEST_F(MonitorProgram, NamesAnUnknownProcessorForWhichNoCardIsListed) {
    const auto file = scenario(R"({"vendor": "CentaurHauls", "family": 6, "model": 15, "stepping": 8})");
    for (const char* command : {"cards", "tests", "run", "monitor"}) {
        const auto end = tests::runProgram({"--machine", "simulated:" + file, command});
        EXPECT_EQ(end.code, 70) << command;
        EXPECT_EQ(end.err, "vxe-host: no card could be listed, the scan ended with: Failed to initialize the "
                           "TemperatureMonitor object because the CPU vendor is unknown. (processor: "
                           "CentaurHauls family 6 model 15 stepping 8)\n");
    }
}

TEST_F(MonitorProgram, NamesAnAmdFamilyForWhichNoCardIsListed) {
    const auto file = scenario(R"({"vendor": "AuthenticAMD", "family": 26, "model": 68, "stepping": 0})");
    const auto end = tests::runProgram({"--machine", "simulated:" + file, "cards"});
    EXPECT_EQ(end.code, 70);
    EXPECT_EQ(end.err,
              "vxe-host: no card could be listed, the scan ended with: The AMD Family 26 and Model 68 "
              "is not supported. Throwing exception... (processor: AuthenticAMD family 26 model 68 "
              "stepping 0)\n");
}

TEST_F(MonitorProgram, SaysWhyNoCardIsListedForAProcessorWhoseCaptionTellsNothing) {
    for (const char* field :
         {R"("caption": "AMD64 Family 25 Stepping 0")", R"("captionStatus": 21)", R"("listed": false)"}) {
        const auto file =
            scenario(R"({"vendor": "AuthenticAMD", "family": 25, "model": 33, "stepping": 2, )" +
                     std::string(field) + "}");
        for (const char* command : {"cards", "monitor"}) {
            const auto end = tests::runProgram({"--machine", "simulated:" + file, command});
            EXPECT_EQ(end.code, 70) << field;
            EXPECT_EQ(end.err, "vxe-host: no card could be listed, the scan ended with: Failed to create a "
                               "TemperatureAmd because it was unable to obtain family or model. (processor: "
                               "AuthenticAMD family 25 model 33 stepping 2)\n");
        }
    }
}

TEST_F(MonitorProgram, NamesAProcessorWhoseCaptionEndsTooEarly) {
    const auto file = scenario(
        R"({"vendor": "AuthenticAMD", "family": 25, "model": 33, "stepping": 2, "caption": "Model 33 Family"})");
    const auto end = tests::runProgram({"--machine", "simulated:" + file, "cards"});
    EXPECT_EQ(end.code, 70);
    // What the subscript that is out of range says is the library's own.
    EXPECT_TRUE(end.err.starts_with("vxe-host: no card could be listed, the scan ended with: ")) << end.err;
    EXPECT_TRUE(end.err.ends_with(" (processor: AuthenticAMD family 25 model 33 stepping 2)\n")) << end.err;
    EXPECT_EQ(std::ranges::count(end.err, '\n'), 1);
}

TEST_F(MonitorProgram, TellsTheLoadOfAnAmdCardBesideWhatItsOwnInterfaceTells) {
    const auto file = toUtf8(folder_ / "amd.json");
    std::ofstream(file) << R"({"schema": "vexil.scenario/1", "cards": [
        {"vendorId": "1002", "deviceId": "73DF", "location": "0a:00.0",
         "adl": {"overdriveSupported": 1, "overdriveVersion": 7, "millidegrees": 51000,
                 "memoryBytes": "0x300000000", "usedMegabytes": 1024},
         "kernelGraphics": {"engines": [{"loadPercent": 12}, {"loadPercent": 36.5}]}}]})";
    const auto end = tests::runProgram({"--machine", "simulated:" + file, "cards", "--json"});
    ASSERT_EQ(end.code, 0) << end.err;
    const auto live = nlohmann::json::parse(end.out)["cards"][0]["live"];
    EXPECT_EQ(live["temperatureCelsius"], 51);
    EXPECT_TRUE(live["usagePercent"] == 37 || live["usagePercent"] == 38) << live;
    EXPECT_FALSE(live["freeMemoryBytes"].is_null()) << live;
}

} // namespace
} // namespace vexil::host
