#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

// Module code is written once. What differs between operating systems stands in a few folders, in files that
// repeat their folder as a suffix.
namespace {

namespace fs = std::filesystem;

const fs::path root = VEXIL_SOURCE_DIR;

constexpr std::array guarded = {"src", "host"};
constexpr std::array platformRooms = {"src/platform", "host/platform"};

const std::regex
    platformMacro(R"(\b(_WIN32|_WIN64|WIN32|__linux__|__linux|__unix__|__MINGW32__|__MINGW64__|__APPLE__|)"
                  R"(Q_OS_[A-Z0-9]+)\b)");
const std::regex platformHeader(
    R"re(^\s*#\s*include\s*[<"](windows|winbase|winnt|winuser|winsvc|shlobj|setupapi|wbemidl|comdef|objbase|unistd|)re"
    R"re(dlfcn|pthread|sched|fcntl|poll|signal|termios|pwd|sys/[a-z_]+|linux/[a-z_]+|X11/[A-Za-z]+)\.h[>"])re",
    std::regex::icase);

bool isSource(const fs::path& file) {
    return file.extension() == ".cpp" || file.extension() == ".h" || file.extension() == ".cu";
}

bool standsIn(const fs::path& file, const char* room) {
    return fs::relative(file, root).generic_string().starts_with(std::string(room) + "/");
}

std::vector<fs::path> sourcesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (isSource(entry.path())) {
            files.push_back(entry.path());
        }
    }
    return files;
}

bool matches(const std::string& line, const std::regex& pattern) { return std::regex_search(line, pattern); }

TEST(PlatformBoundary, KeepsMacrosAndHeadersOfSystemsOutOfModuleAndHost) {
    std::size_t seen = 0;
    for (const char* folder : guarded) {
        for (const auto& file : sourcesBelow(root / folder)) {
            if (standsIn(file, platformRooms[0]) || standsIn(file, platformRooms[1])) {
                continue;
            }
            ++seen;
            std::ifstream stream(file);
            for (std::string line; std::getline(stream, line);) {
                EXPECT_FALSE(matches(line, platformMacro) || matches(line, platformHeader))
                    << file << ": " << line;
            }
        }
    }
    EXPECT_GT(seen, 50U) << "the sources were not found";
}

TEST(PlatformBoundary, RepeatsTheFolderOfAPlatformInTheNameOfItsSources) {
    for (const char* folder : {"src/platform", "host/platform", "suite"}) {
        for (const auto& file : sourcesBelow(root / folder)) {
            const auto path = file.generic_string();
            if (file.extension() != ".cpp") {
                continue;
            }
            for (const std::string platform : {"linux", "windows"}) {
                const bool inFolder = path.find("/" + platform + "/") != std::string::npos;
                const bool named = file.stem().string().ends_with("_" + platform);
                EXPECT_EQ(inFolder, named) << path;
            }
        }
    }
}

TEST(PlatformBoundary, TellsAPlatformLineFromAnother) {
    EXPECT_TRUE(matches("#if defined(_WIN32)", platformMacro));
    EXPECT_TRUE(matches("#include <windows.h>", platformHeader));
    EXPECT_TRUE(matches("  # include <sys/stat.h>", platformHeader));
    EXPECT_FALSE(matches("#include <d3d11.h>", platformHeader));
    EXPECT_FALSE(matches("#include <system_error>", platformHeader));
    EXPECT_FALSE(matches("int linuxBoxes;", platformMacro));
}

} // namespace
