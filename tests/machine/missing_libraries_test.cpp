#include "host/platform/process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>

// The programs in a folder of their own where something is missing: what does a user get to read?
namespace vexil::host::tests {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

struct End {
    int code = -1;
    std::string text; ///< of both outputs
};

class MissingLibraries : public ::testing::Test {
protected:
    MissingLibraries() {
        // On the file system of the programs, since a hard link needs that.
        const auto programs = platform::programFolder();
        folder_ = programs.parent_path() / ("missing_libraries_" + std::to_string(std::random_device()()));
        fs::create_directory(folder_);
        for (const auto& entry : fs::directory_iterator(programs)) {
            const auto name = entry.path().filename().string();
            if (name == "vxe-host" || name.find(".so") != std::string::npos) {
                link(entry, folder_ / name);
            }
        }
        for (const char* name : {"languages", "scenarios"}) {
            fs::create_directory_symlink(programs / name, folder_ / name);
        }
        fs::create_directory(folder_ / "simulated");
        for (const auto& entry : fs::directory_iterator(programs / "simulated")) {
            link(entry, folder_ / "simulated" / entry.path().filename());
        }
    }
    ~MissingLibraries() override { fs::remove_all(folder_); }

    void remove(const char* library) const { ASSERT_TRUE(fs::remove(folder_ / library)) << library; }

    End run(const std::string& arguments) const {
        const auto command = '"' + (folder_ / "vxe-host").string() + "\" " + arguments + " 2>&1";
        End end;
        FILE* output = popen(command.c_str(), "r");
        std::array<char, 256> piece{};
        while (std::fgets(piece.data(), piece.size(), output) != nullptr) {
            end.text += piece.data();
        }
        end.code = pclose(output) >> 8;
        return end;
    }

private:
    static void link(const fs::directory_entry& entry, const fs::path& place) {
        // The libraries of Direct3D are links to where they are installed.
        entry.is_symlink() ? fs::copy_symlink(entry, place) : fs::create_hard_link(entry, place);
    }

    fs::path folder_;
};

/// The lines behind the one that names the machine.
std::ptrdiff_t linesOf(const std::string& text) { return std::ranges::count(text, '\n'); }

TEST_F(MissingLibraries, ARunWithAllOfThemIsFine) {
    const auto end = run("--machine simulated cards");
    EXPECT_EQ(end.code, 0);
    EXPECT_THAT(end.text, HasSubstr("NVIDIA GeForce RTX 3060"));
    EXPECT_THAT(end.text, Not(HasSubstr("cannot be loaded")));
}

class MissingDirect3D : public MissingLibraries, public ::testing::WithParamInterface<const char*> {
protected:
    // Where there is a display, the window system of the machine is used in place of the headless one.
    MissingDirect3D() { unsetenv("DISPLAY"); }
};

INSTANTIATE_TEST_SUITE_P(EachLibrary, MissingDirect3D,
                         ::testing::Values("libdxvk_dxgi.so.0", "libdxvk_d3d11.so.0",
                                           "libvexil_headless_sdl.so"),
                         [](const auto& library) {
                             std::string name = library.param;
                             std::ranges::replace(name, '.', '_');
                             return name;
                         });

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

TEST_F(MissingLibraries, NamesAMissingModuleInOneLine) {
    remove("libvxe_module_video_card.so");
    for (const char* command : {"cards --json", "tests --json"}) {
        const auto end = run(command);
        EXPECT_EQ(end.code, 70);
        EXPECT_EQ(linesOf(end.text), 1) << end.text;
        EXPECT_THAT(end.text, AllOf(HasSubstr("libvxe_module_video_card.so"), HasSubstr("no such file")));
    }
    EXPECT_EQ(run("run").code, 70);
}

TEST_F(MissingLibraries, NamesAMissingLibraryOfTheSuiteInOneLine) {
    remove("libsal.so");
    const auto end = run("cards --json");
    EXPECT_EQ(end.code, 70);
    EXPECT_EQ(linesOf(end.text), 1) << end.text;
    EXPECT_THAT(end.text, HasSubstr("libsal.so"));
}

} // namespace
} // namespace vexil::host::tests
