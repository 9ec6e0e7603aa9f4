#include "system/win_module.h"

#include "platform/shared_library.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

using Steps = std::vector<std::string>;

/// Writes down each step, and answers as it is told; a handle is the address of one of its own bytes.
class RecordedCalls final : public vexil::system::LibraryCalls {
public:
    void* openTrusted(const std::string& name) override {
        steps.push_back("trusted " + name);
        return trusted;
    }
    void* openPath(const std::string& path) override {
        steps.push_back("path " + path);
        return pathResult;
    }
    std::optional<std::string> systemFolder() override {
        steps.push_back("system folder");
        return folder;
    }
    char separator() override { return '\\'; }

    Steps steps;
    void* trusted = nullptr;
    void* pathResult = nullptr;
    std::optional<std::string> folder = "C:\\windows\\system32";
    char handles[2] = {};
};

TEST(FindLibrary, StopsAtATrustedFolderThatHasTheLibrary) {
    RecordedCalls calls;
    calls.trusted = &calls.handles[0];
    EXPECT_EQ(findLibrary(calls, "x.dll"), &calls.handles[0]);
    EXPECT_EQ(calls.steps, Steps{"trusted x.dll"});
}

TEST(FindLibrary, EndsWithThePathItselfForANameWithABackslash) {
    RecordedCalls calls;
    calls.pathResult = &calls.handles[1];
    EXPECT_EQ(findLibrary(calls, "sub\\x.dll"), &calls.handles[1]);
    EXPECT_EQ(calls.steps, (Steps{"trusted sub\\x.dll", "path sub\\x.dll"}));
}

TEST(FindLibrary, EndsWithThePathItselfForANameWithASlash) {
    RecordedCalls calls;
    EXPECT_EQ(findLibrary(calls, "sub/x.dll"), nullptr) << "the result of the path is final, found or not";
    EXPECT_EQ(calls.steps, (Steps{"trusted sub/x.dll", "path sub/x.dll"}));
}

TEST(FindLibrary, EndsInTheSystemFolderForABareName) {
    RecordedCalls calls;
    calls.pathResult = &calls.handles[1];
    EXPECT_EQ(findLibrary(calls, "x.dll"), &calls.handles[1]);
    EXPECT_EQ(calls.steps, (Steps{"trusted x.dll", "system folder", "path C:\\windows\\system32\\x.dll"}));
}

TEST(FindLibrary, TakesAnEmptyNameForABareOne) {
    RecordedCalls calls;
    EXPECT_EQ(findLibrary(calls, ""), nullptr);
    EXPECT_EQ(calls.steps, (Steps{"trusted ", "system folder", "path C:\\windows\\system32\\"}));
}

TEST(FindLibrary, GivesUpOnABareNameWithoutASystemFolder) {
    RecordedCalls calls;
    calls.folder.reset();
    calls.pathResult = &calls.handles[1];
    EXPECT_EQ(findLibrary(calls, "x.dll"), nullptr);
    EXPECT_EQ(calls.steps, (Steps{"trusted x.dll", "system folder"}));
}

/// Finds what it is told, and writes down what it was asked for.
class RecordedModule final : public ::Module {
public:
    void* load(const char* name, std::uint32_t flags) override {
        asked.push_back(std::string(name) + " with " + std::to_string(flags));
        return this;
    }
    void* resolve(void*, const char*) override { return nullptr; }
    void release(void*) override {}

    Steps asked;
};

TEST(LoadedOrFound, AsksTheLoaderWithTheFlagsOfEveryCallerForWhatIsNotThere) {
    RecordedModule loader;
    EXPECT_EQ(vexil::system::loadedOrFound(loader, "no-such-library"), &loader);
    EXPECT_EQ(loader.asked, Steps{"no-such-library with 1"});
}

TEST(LoadedOrFound, TakesALibraryOfThatNameThatIsThere) {
    RecordedModule loader;
    void* library = vexil::platform::openLibraryPath(VEXIL_PLANTED_LIBRARY);
    ASSERT_NE(library, nullptr);
    void* loaded = vexil::system::loadedOrFound(loader, VEXIL_PLANTED_NAME);
    EXPECT_EQ(loaded, library);
    EXPECT_TRUE(loader.asked.empty());
    vexil::platform::closeLibrary(loaded);
    vexil::platform::closeLibrary(library);
    EXPECT_EQ(vexil::system::loadedOrFound(loader, VEXIL_PLANTED_LIBRARY), &loader)
        << "a path is the loader's to open";
}

TEST(GetModule, HandsOutOneLoaderForTheWholeModule) {
    EXPECT_NE(getModule(), nullptr);
    EXPECT_EQ(getModule(), getModule());
}

/// Stands in the folder of a library that nobody trusts, for the length of a test.
class InThePlantersFolder : public testing::Test {
protected:
    InThePlantersFolder() { fs::current_path(fs::path(VEXIL_PLANTED_LIBRARY).parent_path()); }
    ~InThePlantersFolder() override { fs::current_path(before_); }

    const std::string bareName_ = fs::path(VEXIL_PLANTED_LIBRARY).filename().string();
    WinModule module_;

private:
    fs::path before_ = fs::current_path();
};

TEST_F(InThePlantersFolder, ABareNameIsNotLoadedFromTheWorkingDirectory) {
    ASSERT_TRUE(fs::exists(bareName_));
    EXPECT_EQ(module_.load(bareName_.c_str(), 1), nullptr);
}

TEST_F(InThePlantersFolder, APathIsLoadedAndItsSymbolsAreResolved) {
    void* library = module_.load(("./" + bareName_).c_str(), 1);
    ASSERT_NE(library, nullptr);
    const auto answer = reinterpret_cast<int (*)()>(module_.resolve(library, "plantedAnswer"));
    ASSERT_NE(answer, nullptr);
    EXPECT_EQ(answer(), 42);
    EXPECT_EQ(module_.resolve(library, "noSuchSymbol"), nullptr);
    module_.release(library);
}

TEST_F(InThePlantersFolder, TheFlagsAreIgnored) {
    for (const std::uint32_t flags : {0U, 1U, 0xFFFFFFFFU}) {
        void* library = module_.load(VEXIL_PLANTED_LIBRARY, flags);
        EXPECT_NE(library, nullptr) << flags;
        module_.release(library);
    }
}

TEST_F(InThePlantersFolder, WhatIsNowhereIsNull) {
    EXPECT_EQ(module_.load("no-such-library", 1), nullptr);
    EXPECT_EQ(module_.load("no/such/library", 1), nullptr);
    EXPECT_EQ(module_.load("", 1), nullptr);
}

} // namespace
