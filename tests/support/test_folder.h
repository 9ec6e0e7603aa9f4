#pragma once

#include <algorithm>
#include <filesystem>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace vexil::tests {

/// The folder of this process among the temporary files, gone with the process.
class ProcessFolder {
public:
    ProcessFolder() {
        std::random_device random;
        do {
            path_ = std::filesystem::temp_directory_path() / ("vexil-tests-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(path_));
    }
    ~ProcessFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ProcessFolder(const ProcessFolder&) = delete;
    ProcessFolder& operator=(const ProcessFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

/// A folder for the files of the running test alone, so that tests can run side by side.
inline std::filesystem::path testFolder() {
    static const ProcessFolder process;
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    auto name = std::string(test->test_suite_name()) + '.' + test->name();
    std::ranges::replace(name, '/', '_');
    auto folder = process.path() / name;
    std::filesystem::create_directories(folder);
    return folder;
}

} // namespace vexil::tests
