#include "platform/shared_library.h"
#include "support/test_folder.h"
#include "system/win_module.h"

#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

namespace fs = std::filesystem;

TEST(LoadWithASearchPath, ABareNameIsNotLoadedFromThePath) {
    const fs::path planted = VEXIL_PLANTED_LIBRARY;
    SetEnvironmentVariableW(L"PATH", fs::absolute(planted).parent_path().wstring().c_str());
    EXPECT_EQ(getModule()->load(planted.filename().string().c_str(), 1), nullptr);
}

TEST(Load, PassesByALibraryOfThatNameThatStandsElsewhere) {
    const fs::path planted = VEXIL_PLANTED_LIBRARY;
    const auto name = planted.filename().string();
    void* library = vexil::platform::openLibraryPath(planted.string());
    ASSERT_NE(library, nullptr);
    EXPECT_EQ(getModule()->load(name.c_str(), 1), nullptr);
    void* loaded = vexil::system::loadedOrFound(*getModule(), name);
    EXPECT_EQ(loaded, library) << "who wants what is there asks for it";
    vexil::platform::closeLibrary(loaded);
    vexil::platform::closeLibrary(library);
}

TEST(Load, FindsASystemLibraryByItsBareName) {
    void* library = getModule()->load("version.dll", 1);
    ASSERT_NE(library, nullptr);
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(static_cast<HMODULE>(library), path, MAX_PATH);
    const auto folder = vexil::platform::systemLibraryFolder();
    ASSERT_TRUE(folder.has_value());
    EXPECT_EQ(_wcsicmp(fs::path(path).parent_path().wstring().c_str(), fs::path(*folder).wstring().c_str()),
              0);
    getModule()->release(library);
}

TEST(Load, FindsWhatALibraryOfAPathImportsBesideIt) {
    const auto before = fs::current_path();
    fs::current_path(vexil::tests::testFolder());
    void* library = getModule()->load(VEXIL_IMPORTING_LIBRARY, 1);
    fs::current_path(before);
    ASSERT_NE(library, nullptr);
    const auto answer = reinterpret_cast<int (*)()>(getModule()->resolve(library, "importedAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 43);
    getModule()->release(library);
}

TEST(Load, TakesTheNameForUtf8) {
    const auto folder = vexil::tests::testFolder() / L"\u00E9\u4E2D";
    fs::create_directory(folder);
    fs::copy_file(VEXIL_PLANTED_LIBRARY, folder / "p.dll");
    const auto name = (folder / "p.dll").u8string();
    void* library = getModule()->load(std::string(name.begin(), name.end()).c_str(), 1);
    EXPECT_NE(library, nullptr);
    getModule()->release(library);
}

} // namespace
