#include "system/folders.h"

#include "platform/folder_roots.h"
#include "platform/shared_library.h"
#include "platform/wide_text.h"

#include <gtest/gtest.h>

#include <cwchar>
#include <filesystem>
#include <string>

namespace {

using vexil::system::FolderKind;
using vexil::system::folderPath;
using vexil::system::FolderRoots;

class FakeRoots final : public FolderRoots {
public:
    std::optional<std::wstring> programData() override {
        ++asked;
        return data;
    }
    std::optional<std::wstring> accountName() override {
        ++asked;
        return account;
    }
    std::optional<std::wstring> workingDirectory() override {
        ++asked;
        return working;
    }
    wchar_t separator() override { return slash; }

    std::optional<std::wstring> data = L"C:\\ProgramData";
    std::optional<std::wstring> account = L"ada";
    std::optional<std::wstring> working = L"D:\\work";
    wchar_t slash = L'\\';
    int asked = 0;
};

std::wstring path(FakeRoots& roots, std::int32_t kind) { return folderPath(roots, FolderKind{kind}); }

struct FolderCase {
    std::int32_t kind;
    const wchar_t* path;
};

class FolderMap : public testing::TestWithParam<FolderCase> {};

TEST_P(FolderMap, HasThePathOfEachNumber) {
    FakeRoots roots;
    EXPECT_EQ(path(roots, GetParam().kind), GetParam().path);
}

TEST_P(FolderMap, AsksForEveryRootEachTime) {
    FakeRoots roots;
    (void)path(roots, GetParam().kind);
    EXPECT_EQ(roots.asked, 3);
}

const FolderCase folderCases[] = {
    {0, L"C:\\ProgramData\\Norvane\\"},
    {1, L"C:\\ProgramData\\Norvane\\VXE\\"},
    {2, L"C:\\ProgramData\\Norvane\\VXE\\ada\\"},
    {3, L"C:\\ProgramData\\Norvane\\VXE\\ada\\logs\\"},
    {4, L"C:\\ProgramData\\Norvane\\VXE\\ada\\kvrt\\"},
    {5, L"C:\\ProgramData\\Norvane\\VXE\\ada\\scripts\\"},
    {6, L"D:\\work\\scripts\\"},
    {7, L"C:\\ProgramData\\Norvane\\VXE\\ada\\QtWebEngine\\"},
    {8, L"C:\\ProgramData\\Norvane\\VXE\\ada\\logs_thermal_monitor_tool\\"},
    {9, L"C:\\ProgramData\\Norvane\\VXE\\ada\\temp\\"},
    {10, L"C:\\ProgramData\\Norvane\\VXE\\ada\\logs_tools\\"},
    {11, L"C:\\ProgramData\\"},
    {-1, L"C:\\ProgramData\\"},
};

INSTANTIATE_TEST_SUITE_P(Table, FolderMap, testing::ValuesIn(folderCases), [](const auto& tested) {
    return tested.param.kind < 0 ? std::string("Negative") : "Number" + std::to_string(tested.param.kind);
});

TEST(Folders, BeginWithASeparatorAloneWhereTheProgramDataFolderIsNotTold) {
    FakeRoots roots;
    roots.data = std::nullopt;
    EXPECT_EQ(path(roots, 0), L"\\Norvane\\");
    EXPECT_EQ(path(roots, 11), L"\\");
}

TEST(Folders, KeepTheSeparatorOfAnAccountThatIsNotTold) {
    FakeRoots roots;
    roots.account = std::nullopt;
    EXPECT_EQ(path(roots, 9), L"C:\\ProgramData\\Norvane\\VXE\\\\temp\\");
}

TEST(Folders, LeaveOutAWorkingDirectoryThatIsNotTold) {
    FakeRoots roots;
    roots.working = std::nullopt;
    EXPECT_EQ(path(roots, 6), L"\\scripts\\");
}

TEST(Folders, HoldAnAccountNameOf256CharactersAndNoLongerOne) {
    FakeRoots roots;
    roots.account = std::wstring(256, L'a');
    EXPECT_EQ(path(roots, 2), L"C:\\ProgramData\\Norvane\\VXE\\" + std::wstring(256, L'a') + L"\\");
    roots.account = std::wstring(257, L'a');
    EXPECT_EQ(path(roots, 2), L"C:\\ProgramData\\Norvane\\VXE\\\\");
}

TEST(Folders, HoldAWorkingDirectoryOf260CharactersAndNoLongerOne) {
    FakeRoots roots;
    roots.working = std::wstring(260, L'w');
    EXPECT_EQ(path(roots, 6), std::wstring(260, L'w') + L"\\scripts\\");
    roots.working = std::wstring(261, L'w');
    EXPECT_EQ(path(roots, 6), L"\\scripts\\");
}

TEST(Folders, HaveTheSeparatorOfThePlatformInTheirOwnNamesOnly) {
    FakeRoots roots;
    roots.slash = L'/';
    roots.data = L"/data\\of";
    EXPECT_EQ(path(roots, 3), L"/data\\of/Norvane/VXE/ada/logs/");
    roots.working = L"/w";
    EXPECT_EQ(path(roots, 6), L"/w/scripts/");
}

TEST(Folders, AreSecuredForSystemAdministratorsAndUsers) {
    EXPECT_STREQ(vexil::system::folderSecurity, L"D:(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)");
}

TEST(Folders, OfThisMachineHoldAccountAndWorkingDirectory) {
    const auto slash = static_cast<wchar_t>(vexil::platform::pathSeparator());
    const auto account = vexil::platform::accountName();
    ASSERT_TRUE(account && !account->empty());
    const auto temporary = vexil::system::getFolderPath(FolderKind::Temporary);
    const auto tail = *account + slash + L"temp" + slash;
    EXPECT_EQ(temporary.substr(temporary.size() - tail.size()), tail);
    EXPECT_EQ(vexil::system::getFolderPath(FolderKind::WorkingScripts),
              std::filesystem::current_path().wstring() + slash + L"scripts" + slash);
}

TEST(Folders, HaveTheSameNarrowPath) {
    for (std::int32_t kind = 0; kind <= 11; ++kind) {
        EXPECT_EQ(vexil::system::getNarrowFolderPath(FolderKind{kind}),
                  vexil::platform::toUtf8(vexil::system::getFolderPath(FolderKind{kind})));
    }
}

} // namespace
