#include "platform/shared_library.h"
#include "support/test_folder.h"
#include "system/win_module.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

const fs::path planted = VEXIL_PLANTED_LIBRARY;

/// Whether a program that runs in the folder, with that search path, loads what its arguments name. The
/// system's loader reads the path only as a program starts.
bool loadsIn(const fs::path& folder, const std::string& searchPath, const std::string& arguments) {
    const auto command = "cd '" + folder.string() + "' && LD_LIBRARY_PATH='" + searchPath + "' '" +
                         VEXIL_LIBRARY_PROBE + "' " + arguments;
    return std::system(command.c_str()) == 0;
}

/// The same in the folder of the planted library, of which the bare name is asked for.
bool loadsPlantedLibrary(const std::string& searchPath, const std::string& options = {}) {
    return loadsIn(planted.parent_path(), searchPath, options + planted.filename().string());
}

TEST(LoadWithASearchPath, RefusesTheWorkingDirectoryInEveryWayToWriteIt) {
    EXPECT_FALSE(loadsPlantedLibrary("."));
    EXPECT_FALSE(loadsPlantedLibrary("/usr/lib:"));
    EXPECT_FALSE(loadsPlantedLibrary(":/usr/lib"));
    EXPECT_FALSE(loadsPlantedLibrary("../planted"));
    EXPECT_FALSE(loadsPlantedLibrary("/usr/lib;."));
    EXPECT_FALSE(loadsPlantedLibrary(planted.parent_path().string()));
}

TEST(LoadWithASearchPath, TakesAFolderThatIsNotTheWorkingDirectory) {
    EXPECT_TRUE(loadsIn("/", planted.parent_path(), planted.filename().string()));
}

TEST(LoadWithASearchPath, RefusesTheWorkingDirectoryThoughTheHostHasTakenThePathAway) {
    EXPECT_FALSE(loadsPlantedLibrary(".", "--unset LD_LIBRARY_PATH "))
        << "the system's loader keeps the path that it read";
}

TEST(LoadWithASearchPath, TakesANameWithABackslashForNoReasonToSearch) {
    const auto folder = vexil::tests::testFolder();
    fs::copy_file(planted, folder / "sub\\x.so");
    EXPECT_FALSE(loadsIn(folder, ".", "'sub\\x.so'"));
    EXPECT_TRUE(loadsIn(folder, ".", "'./sub\\x.so'")) << "by its path it is loaded";
}

TEST(LoadWithASearchPath, FindsTheSystemsLibrariesAllTheSame) {
    const auto command = std::string("LD_LIBRARY_PATH=. '") + VEXIL_LIBRARY_PROBE + "' libm.so.6";
    EXPECT_EQ(std::system(command.c_str()), 0);
}

TEST(OpenTrustedLibrary, AnswersWithTheLibraryThatIsLoadedUnderTheName) {
    constexpr const char* name = "vexil_planted_name.so"; // which the library has, and no file
    EXPECT_EQ(vexil::platform::openTrustedLibrary(name), nullptr);
    void* library = vexil::platform::openLibraryPath(planted.string());
    ASSERT_NE(library, nullptr);
    void* same = vexil::platform::openTrustedLibrary(name);
    EXPECT_EQ(same, library);
    vexil::platform::closeLibrary(same);
    vexil::platform::closeLibrary(library);
}

TEST(OpenTrustedLibrary, IsNotMisledAboutItsOwnFolderByAChangeOfTheWorkingDirectory) {
    const auto home = vexil::tests::testFolder() / "home";
    const auto trap = vexil::tests::testFolder() / "trap";
    const auto library = planted.filename().string();
    for (const auto& folder : {home, trap}) {
        fs::create_directory(folder);
        fs::copy_file(VEXIL_LIBRARY_PROBE, folder / "probe");
    }
    fs::copy_file(planted, trap / library);
    // Started by a path that means another file in the folder that it goes to.
    const auto command = "cd '" + home.string() + "' && ./probe " + library + " '" + trap.string() + "'";
    EXPECT_NE(std::system(command.c_str()), 0);
    fs::copy_file(planted, home / library);
    EXPECT_EQ(std::system(command.c_str()), 0) << "what stands beside the program is still found";
}

TEST(OpenTrustedLibrary, FindsWhatStandsBesideTheProgram) {
    const auto beside = fs::read_symlink("/proc/self/exe").parent_path() / "vexil_beside.so";
    fs::copy_file(planted, beside, fs::copy_options::overwrite_existing);
    void* library = vexil::platform::openTrustedLibrary("vexil_beside.so");
    EXPECT_NE(library, nullptr);
    vexil::platform::closeLibrary(library);
    fs::remove(beside);
}

TEST(LibrarySymbol, IsNullForALibraryThatWasNotLoaded) {
    EXPECT_EQ(vexil::platform::librarySymbol(nullptr, "malloc"), nullptr);
    vexil::platform::closeLibrary(nullptr);
}

} // namespace
