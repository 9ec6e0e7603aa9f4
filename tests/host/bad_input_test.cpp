#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "host/subprocess.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

// What a user gets who asks for what is not there: one line on standard error that names it, an exit code,
// and no file.
namespace vexil::host {
namespace {

using Arguments = std::vector<std::string>;

constexpr const char* knownTests =
    "the module has 1, 3, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 4, 90, 5, 21, and "
    "the words quick, extended and all";

std::string fakeModule(const char* file) { return toUtf8(platform::programFolder() / "fake_modules" / file); }

/// The path of a file of the running test, with that content.
std::string fileWith(const char* name, const std::string& content) {
    const auto file = vexil::tests::testFolder() / name;
    std::ofstream(file) << content;
    return toUtf8(file);
}

struct BadInput {
    const char* name;
    /// Of the program, less `--module`; made by the running test, which has a folder of its own.
    std::function<Arguments()> arguments;
    /// The line, behind the program's name; one that ends with "*" is its beginning.
    std::function<std::string()> line;
    int code = 2;
};

void PrintTo(const BadInput& input, std::ostream* out) { *out << input.name; }

const auto module = [] { return fakeModule(VEXIL_FAKE_MODULE_FILE); };
const auto run = [](Arguments options) {
    options.insert(options.begin(), {"--machine", "real", "--module", module(), "run"});
    return options;
};
const auto scenario = [](const std::string& file) {
    return Arguments{"--machine", "simulated:" + file, "--module", module(), "run"};
};
const auto text = [](const std::string& line) { return [line] { return line; }; };

const BadInput badInputs[] = {
    {"UnknownCard",
     [] {
         return run({"--card", "0300"});
     },
     text("unknown card '0300': the machine has 0100, 0a00")},
    {"UnknownTest",
     [] {
         return run({"--tests", "2"});
     },
     text(std::string("unknown test '2': ") + knownTests)},
    {"UnknownTestWord",
     [] {
         return run({"--tests", "1,slow"});
     },
     text(std::string("unknown test 'slow': ") + knownTests)},
    {"UnknownParameter",
     [] {
         return run({"--tests", "5", "--set", "SPEED=1"});
     },
     text("unknown parameter 'SPEED': the chosen tests have DURATION")},
    {"UnknownValue",
     [] {
         return run({"--tests", "5", "--set", "DURATION=long"});
     },
     text("'long' is no value for DURATION of test 5 (Stress test), which takes [1:9999]")},
    {"NoSetting",
     [] {
         return run({"--tests", "5", "--set", "DURATION"});
     },
     text("'DURATION' sets no parameter: --set takes KEY=VALUE")},
    {"UnknownOption", [] { return run({"--colour"}); },
     text("The following argument was not expected: --colour")},
    {"UnknownMachine",
     [] {
         return Arguments{"--machine", "virtual", "--module", module(), "run"};
     },
     text("unknown machine 'virtual': there is real, simulated and simulated:SCENARIO")},
    {"UnknownScenario", [] { return scenario("sick"); },
     text("unknown scenario 'sick': built in is byte_flip, *")},
    {"UnknownScenarioField",
     [] { return scenario(fileWith("s.json", R"({"schema": "vexil.scenario/1", "crads": []})")); },
     [] {
         return toUtf8(vexil::tests::testFolder() / "s.json") +
                ": crads: is not a field of a scenario here; *";
     }},
    {"UnknownScenarioFieldOfACard",
     [] {
         return scenario(fileWith("s.json", R"({"schema": "vexil.scenario/1", "cards": [{"vendorId": "10DE",
             "deviceId": "2503", "location": "01:00.0", "direct3d": {"faults": [{"kind": "fire"}]}}]})"));
     },
     [] {
         return toUtf8(vexil::tests::testFolder() / "s.json") +
                ": cards[0].direct3d.faults[0].kind: \"fire\" is none of *";
     }},
    {"ScenarioThatIsNoJson", [] { return scenario(fileWith("s.json", "cards: none")); },
     [] { return toUtf8(vexil::tests::testFolder() / "s.json") + ": is no JSON: *"; }},
    {"ScenarioThatIsAFolder", [] { return scenario(toUtf8(vexil::tests::testFolder())); },
     [] { return toUtf8(vexil::tests::testFolder()) + ": cannot be *"; }},
    {"ModuleThatIsNotThere",
     [] {
         return Arguments{"--machine", "real", "--module", "none.so", "run"};
     },
     text("the module 'none.so' cannot be loaded: there is no such file")},
    {"ModuleThatIsNoLibrary",
     [] {
         return Arguments{"--machine", "real", "--module", fileWith("no_library.so", "text"), "run"};
     },
     [] {
         return "the module '" + toUtf8(vexil::tests::testFolder() / "no_library.so") +
                "' cannot be loaded: *";
     }},
    {"ModuleThatLacksAnExport",
     [] {
         return Arguments{"--machine", "real", "--module", fakeModule(VEXIL_FAKE_MODULE_WITHOUT_DESTROY_FILE),
                          "run"};
     },
     [] {
         return "the module '" + fakeModule(VEXIL_FAKE_MODULE_WITHOUT_DESTROY_FILE) +
                "' cannot be loaded: it does not export DestroyModuleInstance";
     }},
    {"ReportInAFolderThatIsNotThere",
     [] {
         return run({"--report", toUtf8(vexil::tests::testFolder() / "none" / "r.json")});
     },
     [] {
         return "the report '" + toUtf8(vexil::tests::testFolder() / "none" / "r.json") +
                "' cannot be written: *";
     }},
    {"ReportOfAnUnknownForm",
     [] {
         return run({"--report", "r.txt"});
     },
     text("the report 'r.txt' has no known form: its name must end with .json or .html")},
    {"UnknownLanguage",
     [] {
         return run({"--language", "tlh"});
     },
     text("unknown language 'tlh': there is en, or name the path of a language file")},
};

class BadInputs : public ::testing::TestWithParam<BadInput> {
protected:
    BadInputs() {
        platform::setEnvironmentVariable("VEXIL_FAKE_MODULE", "scripted");
        platform::setEnvironmentVariable("LANG", "en");
    }
};

INSTANTIATE_TEST_SUITE_P(Each, BadInputs, ::testing::ValuesIn(badInputs),
                         [](const auto& input) { return std::string(input.param.name); });

TEST_P(BadInputs, AreNamedInOneLineWithAnExitCodeAndLeaveNoReport) {
    const auto& input = GetParam();
    const auto report = vexil::tests::testFolder() / "report.json";
    auto arguments = input.arguments();
    arguments.insert(arguments.end(), {"--report", toUtf8(report)});
    const auto end = tests::runProgram(arguments);
    EXPECT_EQ(end.code, input.code);
    EXPECT_EQ(std::ranges::count(end.err, '\n'), 1) << end.err;
    auto line = "vxe-host: " + input.line();
    if (line.ends_with('*')) {
        line.pop_back();
        EXPECT_TRUE(end.err.starts_with(line)) << end.err;
        EXPECT_GT(end.err.size(), line.size() + 1) << "a reason";
    } else {
        EXPECT_EQ(end.err, line + '\n');
    }
    EXPECT_FALSE(std::filesystem::exists(report));
    EXPECT_FALSE(std::filesystem::exists(report.string() + ".partial"));
}

} // namespace
} // namespace vexil::host
