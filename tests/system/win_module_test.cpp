#include "system/win_module.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

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

TEST(GetModule, HandsOutOneLoaderForTheWholeModule) { EXPECT_EQ(getModule(), getModule()); }

} // namespace
