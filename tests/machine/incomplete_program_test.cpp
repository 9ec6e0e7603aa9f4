#include "host/core/utf8_path.h"
#include "host/platform/child_process.h"
#include "host/platform/process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

// The program in a folder of its own where something is missing or broken: what does a user get to read?
namespace vexil::host::tests {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

struct End {
    int code = -1;
    std::string text; ///< of both outputs
};

#ifdef _WIN32
constexpr const char* programName = "vxe-host.exe";
constexpr const char* libraryEnding = ".dll";
#else
constexpr const char* programName = "vxe-host";
constexpr const char* libraryEnding = ".so";
#endif

class IncompleteProgram : public ::testing::Test {
protected:
    IncompleteProgram() {
        // Beside the programs, on their file system, since a hard link needs that.
        const auto programs = platform::programFolder();
        folder_ = programs.parent_path() / ("incomplete_program_" + std::to_string(std::random_device()()));
        fs::create_directory(folder_);
        for (const auto& entry : fs::directory_iterator(programs)) {
            const auto name = entry.path().filename().string();
            if (name == programName || (!entry.is_directory() && name.find(libraryEnding) != name.npos)) {
                link(entry, folder_ / name);
            }
        }
        for (const char* name :
             {"iconengines", "languages", "platforms", "scenarios", "simulated", "styles"}) {
            if (!fs::exists(programs / name)) {
                continue; // plug-ins that only one home has
            }
            fs::create_directory(folder_ / name);
            for (const auto& entry : fs::directory_iterator(programs / name)) {
                link(entry, folder_ / name / entry.path().filename());
            }
        }
    }
    ~IncompleteProgram() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    void remove(const std::string& file) const { ASSERT_TRUE(fs::remove(folder_ / file)) << file; }
    /// The file is a new one: what it was a link to stays whole.
    void spoil(const std::string& file) const {
        remove(file);
        std::ofstream(folder_ / file) << "this is neither a library nor a language";
    }

    void write(const std::string& file, const std::string& text) const {
        std::ofstream(folder_ / file) << text;
    }

    [[nodiscard]] End run(const std::string& arguments) const {
        std::istringstream words(arguments);
        const std::vector<std::string> list{std::istream_iterator<std::string>(words), {}};
        std::string reason;
        End end;
        const auto output = folder_ / "output.txt";
        const auto code = platform::runChild(folder_ / programName, list, output, reason);
        EXPECT_TRUE(code.has_value()) << reason;
        end.code = code.value_or(-1);
        std::ifstream stream(output, std::ios::binary);
        end.text.assign(std::istreambuf_iterator<char>(stream), {});
        std::erase(end.text, '\r');
        return end;
    }

private:
    static bool usedByThisProgram(const std::string& name) {
        return name.starts_with("lib") && name.ends_with(".dll");
    }
    static void link(const fs::directory_entry& entry, const fs::path& place) {
        if (entry.is_symlink()) {
            fs::copy_symlink(entry, place); // Direct3D, where it is installed
        } else if (usedByThisProgram(place.filename().string())) {
            fs::copy_file(entry, place); // Windows would not let go of another link to it
        } else {
            fs::create_hard_link(entry, place);
        }
    }

    fs::path folder_;
};

/// The lines in which the program says why it ends.
std::vector<std::string> complaintsOf(const std::string& text) {
    std::vector<std::string> complaints;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("vxe-host: ")) {
            complaints.push_back(line);
        }
    }
    return complaints;
}

std::string asTestName(std::string file) {
    std::ranges::replace_if(
        file, [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
    return file;
}

TEST_F(IncompleteProgram, RunsInAFolderWithAllOfItsFiles) {
    const auto end = run("--machine simulated cards");
    EXPECT_EQ(end.code, 0);
    EXPECT_THAT(end.text, AllOf(HasSubstr("NVIDIA GeForce RTX 3060"), Not(HasSubstr("cannot be loaded"))));
}

TEST_F(IncompleteProgram, NamesTheSimulatedLibraryWithoutAFunctionThatAScenarioTakesAway) {
    write("scenarios/lacking.json", R"({"schema": "vexil.scenario/1", "cards": [],
        "kernelGraphics": {"missingFunction": "D3DKMTQueryStatistics"}})");
    const auto end = run("--machine simulated:lacking cards");
    EXPECT_EQ(end.code, 70);
    EXPECT_THAT(
        complaintsOf(end.text),
        ElementsAre(AllOf(HasSubstr("the simulated library without D3DKMTQueryStatistics is missing in"),
                          HasSubstr("simulated_without"))));
}

/// A file without which a command cannot do its work.
struct Needed {
    const char* file;
    const char* command = "--machine simulated cards --json";
};

constexpr const char* offscreenRun = "--machine simulated run --tests 21 --set DURATION=0.1";
#ifdef _WIN32
constexpr Needed neededFiles[] = {
    {"vxe-host-program.dll"},
    {"vxe_module_video_card.dll"},
    {"sal.dll"},
    {"style_manager.dll"},
    {"libgcc_s_seh-1.dll"},
    {"libstdc++-6.dll"},
    {"libwinpthread-1.dll"},
    {"Qt6Core.dll"},
    {"Qt6Gui.dll"},
    {"Qt6Widgets.dll"},
    {"languages/en.json"},
    {"vxe-host-gui.dll", offscreenRun},
    {"platforms/qwindows.dll", offscreenRun},
};
#else
constexpr Needed neededFiles[] = {
    {"libvxe-host-program.so"}, {"libvxe_module_video_card.so"}, {"libsal.so"},
    {"libstyle_manager.so"},    {"languages/en.json"},           {"libvxe-host-gui.so", offscreenRun},
};
#endif

class NeededFile : public IncompleteProgram, public ::testing::WithParamInterface<Needed> {
protected:
    void expectComplaint() const {
        const auto end = run(GetParam().command);
        EXPECT_EQ(end.code, 70);
        const auto name = fs::path(GetParam().file).filename().string();
        EXPECT_THAT(complaintsOf(end.text), ElementsAre(HasSubstr(name))) << end.text;
    }
};

INSTANTIATE_TEST_SUITE_P(Each, NeededFile, ::testing::ValuesIn(neededFiles),
                         [](const auto& needed) { return asTestName(needed.param.file); });

TEST_P(NeededFile, IsNamedInOneLineWhenItIsMissing) {
    remove(GetParam().file);
    expectComplaint();
}

TEST_P(NeededFile, IsNamedInOneLineWhenItIsBroken) {
    spoil(GetParam().file);
    expectComplaint();
}

#ifndef _WIN32 // where Direct3D is no part of the system
class MissingDirect3D : public IncompleteProgram, public ::testing::WithParamInterface<const char*> {
protected:
    // Where there is a display, the window system of the machine is used in place of the headless one.
    MissingDirect3D() { unsetenv("DISPLAY"); }
};

INSTANTIATE_TEST_SUITE_P(EachLibrary, MissingDirect3D,
                         ::testing::Values("libdxvk_dxgi.so.0", "libdxvk_d3d11.so.0",
                                           "libvexil_headless_sdl.so"),
                         [](const auto& library) { return asTestName(library.param); });

TEST_P(MissingDirect3D, StillListsTheCardsAndNamesTheLibrary) {
    remove(GetParam());
    const auto end = run("--machine simulated cards");
    EXPECT_EQ(end.code, 0);
    EXPECT_THAT(end.text, AllOf(HasSubstr(GetParam()), HasSubstr("NVIDIA GeForce RTX 3060"),
                                HasSubstr("AMD Radeon RX 6700 XT"), HasSubstr("Intel UHD Graphics 630")));
    EXPECT_THAT(run("--machine simulated cards --json").text, HasSubstr("\"schema\""));
}

TEST_P(MissingDirect3D, OffersNoTestThatNeedsIt) {
    remove(GetParam());
    const auto end = run("--machine simulated tests --json");
    EXPECT_EQ(end.code, 0);
    for (const char* id : {"1", "3", "4", "17", "18"}) {
        const auto start = end.text.find("\"id\": " + std::string(id) + ",");
        ASSERT_NE(start, std::string::npos) << id << '\n' << end.text;
        const auto support = end.text.find("\"supportedBy\": ", start);
        EXPECT_EQ(end.text.substr(support, 17), "\"supportedBy\": []") << id;
    }
}

TEST_P(MissingDirect3D, RefusesARunOfATestThatNeedsItInOneLineThatNamesIt) {
    remove(GetParam());
    const auto end = run("--machine simulated run --tests 1");
    EXPECT_EQ(end.code, 2);
    EXPECT_THAT(end.text, AllOf(HasSubstr("vxe-host: test 1"), HasSubstr(GetParam())));
}

TEST_P(MissingDirect3D, RunsTheOtherTests) {
    remove(GetParam());
    const auto end = run("--machine simulated run --tests 90 --card 0100");
    EXPECT_EQ(end.code, 0) << end.text;
    EXPECT_THAT(end.text, HasSubstr("1 passed"));
}
#endif

} // namespace
} // namespace vexil::host::tests
