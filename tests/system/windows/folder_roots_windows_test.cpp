#include "platform/folder_roots.h"
#include "system/folders.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

namespace {

using vexil::system::FolderKind;

std::wstring variable(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value == nullptr ? std::wstring() : value;
}

TEST(WindowsFolderRoots, AreTheMachinesProgramDataAndTheAccount) {
    const auto data = vexil::platform::programDataFolder();
    ASSERT_TRUE(data);
    EXPECT_EQ(_wcsicmp(data->c_str(), variable(L"ProgramData").c_str()), 0);
    EXPECT_EQ(vexil::platform::accountName(), variable(L"USERNAME"));
    EXPECT_EQ(vexil::system::getFolderPath(FolderKind::Temporary),
              *data + L"\\Norvane\\VXE\\" + variable(L"USERNAME") + L"\\temp\\");
}

TEST(WindowsFolderRoots, TellTheWorkingDirectory) {
    wchar_t before[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, before);
    SetCurrentDirectoryW(L"C:\\windows");
    EXPECT_EQ(vexil::platform::workingDirectory(), L"C:\\windows");
    SetCurrentDirectoryW(before);
}

} // namespace
