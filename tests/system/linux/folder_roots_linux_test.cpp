#include "platform/folder_roots.h"
#include "platform/linux/user_folders.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;
using vexil::platform::programDataFolder;
using vexil::platform::userFolder;

class LinuxFolderRoots : public testing::Test {
protected:
    void SetUp() override {
        setenv("HOME", "/home/ada", 1);
        unsetenv("XDG_DATA_HOME");
    }
};

TEST_F(LinuxFolderRoots, TakeTheVariableOfTheKind) {
    setenv("XDG_DATA_HOME", "/elsewhere/data", 1);
    EXPECT_EQ(programDataFolder(), L"/elsewhere/data");
}

TEST_F(LinuxFolderRoots, LieBelowTheHomeFolderWithoutTheVariable) {
    EXPECT_EQ(programDataFolder(), L"/home/ada/.local/share");
    setenv("XDG_DATA_HOME", "", 1);
    EXPECT_EQ(programDataFolder(), L"/home/ada/.local/share");
}

TEST_F(LinuxFolderRoots, DoNotTakeARelativePath) {
    setenv("XDG_DATA_HOME", "data", 1);
    EXPECT_EQ(programDataFolder(), L"/home/ada/.local/share");
}

TEST_F(LinuxFolderRoots, HaveNoSeparatorAtTheirEnd) {
    setenv("XDG_DATA_HOME", "/elsewhere/data/", 1);
    EXPECT_EQ(programDataFolder(), L"/elsewhere/data");
}

TEST_F(LinuxFolderRoots, TakeTheHomeOfTheUserDatabaseWithoutTheVariable) {
    unsetenv("HOME");
    const passwd* entry = getpwuid(geteuid());
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(userFolder("XDG_DATA_HOME", ".local/share"), fs::path(entry->pw_dir) / ".local/share");
}

TEST_F(LinuxFolderRoots, NameTheAccountOfTheProcess) {
    const passwd* entry = getpwuid(geteuid());
    ASSERT_NE(entry, nullptr);
    const std::string name = entry->pw_name;
    EXPECT_EQ(vexil::platform::accountName(), std::wstring(name.begin(), name.end()));
}

TEST_F(LinuxFolderRoots, TellNoWorkingDirectoryThatIsGone) {
    const auto before = fs::current_path();
    const auto folder = vexil::tests::testFolder() / "gone";
    fs::create_directory(folder);
    fs::current_path(folder);
    fs::remove(folder);
    EXPECT_EQ(vexil::platform::workingDirectory(), std::nullopt);
    fs::current_path(before);
    EXPECT_EQ(vexil::platform::workingDirectory(), before.wstring());
}

} // namespace
