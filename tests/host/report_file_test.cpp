#include "host/core/exit_code.h"
#include "host/core/language.h"
#include "host/core/report_file.h"
#include "host/core/utf8_path.h"
#include "host/sample_report.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <fstream>
#include <iterator>

namespace vexil::host {
namespace {

class ReportFiles : public ::testing::Test {
protected:
    ReportFiles() : folder_(vexil::tests::testFolder()) {}
    ~ReportFiles() override { std::filesystem::remove_all(folder_); }

    [[nodiscard]] std::string path(const std::string& name) const {
        return toUtf8(folder_ / pathFromUtf8(name));
    }
    [[nodiscard]] std::string contents(const std::string& name) const {
        std::ifstream stream(folder_ / pathFromUtf8(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
    [[nodiscard]] std::ptrdiff_t filesInFolder() const {
        return std::distance(std::filesystem::directory_iterator(folder_), {});
    }
    [[nodiscard]] static std::string errorOf(const std::string& path) {
        try {
            const ReportFile file(path);
        } catch (const UsageError& error) {
            return error.what();
        }
        return "no error";
    }

    std::filesystem::path folder_;
};

TEST_F(ReportFiles, AreWrittenInTheFormOfTheirExtension) {
    ReportFile(path("a.json")).write(tests::sampleReport(), {});
    ReportFile(path("b.html")).write(tests::sampleReport(), {});
    EXPECT_EQ(nlohmann::json::parse(contents("a.json"))["schema"], "vexil.report/1");
    EXPECT_TRUE(contents("b.html").starts_with("<!DOCTYPE html>"));
    EXPECT_EQ(filesInFolder(), 2) << "no temporary file is left";
}

TEST_F(ReportFiles, MayHaveANameBeyondAscii) {
    ReportFile(path("Prüfung ✓.json")).write(tests::sampleReport(), {});
    EXPECT_FALSE(contents("Prüfung ✓.json").empty());
}

TEST_F(ReportFiles, LeaveNothingBehindBeforeTheyAreWritten) {
    const ReportFile file(path("a.json"));
    EXPECT_EQ(filesInFolder(), 0);
}

TEST_F(ReportFiles, KeepTheOldReportUntilTheNewOneIsWhole) {
    std::ofstream(folder_ / "a.json") << "old";
    const ReportFile file(path("a.json"));
    EXPECT_EQ(contents("a.json"), "old");
    file.write(tests::sampleReport(), {});
    EXPECT_TRUE(nlohmann::json::accept(contents("a.json")));
}

TEST_F(ReportFiles, RefuseAnUnknownForm) {
    EXPECT_EQ(errorOf(path("a.txt")),
              "the report '" + path("a.txt") + "' has no known form: its name must end with .json or .html");
    EXPECT_NE(errorOf("").find("has no known form"), std::string::npos);
}

TEST_F(ReportFiles, RefuseAFolderThatDoesNotExist) {
    EXPECT_TRUE(errorOf(path("no/such/a.json"))
                    .starts_with("the report '" + path("no/such/a.json") + "' cannot be written: "));
}

TEST_F(ReportFiles, RefuseTheNameOfAFolder) {
    std::filesystem::create_directory(folder_ / "a.json");
    EXPECT_EQ(errorOf(path("a.json")),
              "the report '" + path("a.json") + "' cannot be written: there is something else of this name");
}

TEST_F(ReportFiles, TellAPlaceThatHasBecomeUnwritableAndLeaveNothing) {
    std::filesystem::create_directory(folder_ / "inner");
    const ReportFile file(path("inner/a.json"));
    std::filesystem::remove_all(folder_ / "inner");
    EXPECT_THROW(file.write(tests::sampleReport(), {}), InternalError);
    EXPECT_EQ(filesInFolder(), 0);
}

} // namespace
} // namespace vexil::host
