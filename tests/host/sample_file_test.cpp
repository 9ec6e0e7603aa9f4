#include "host/core/exit_code.h"
#include "host/core/sample_file.h"
#include "host/core/utf8_path.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

namespace vexil::host {
namespace {

class SampleFiles : public ::testing::Test {
protected:
    SampleFiles() {
        sample_.time = std::chrono::system_clock::time_point(std::chrono::milliseconds(1'700'000'000'250));
        sample_.elapsed = std::chrono::duration<double>(12.3456);
        sample_.cards = {{45, 7, 1024}, {}};
    }

    [[nodiscard]] std::string contents() const {
        std::ifstream stream(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::filesystem::path path_ = vexil::tests::testFolder() / "samples.csv";
    Sample sample_;
    std::vector<core::DeviceRecord> cards_{{"0100", "", "Fast", {}, {}, {}, {}, true},
                                           {"0a00", "", "Slow", {}, {}, {}, {}, true}};
};

TEST_F(SampleFiles, HoldALineOfNamesAndALineForEachCard) {
    SampleFile file(toUtf8(path_));
    file.begin();
    file.write(sample_, cards_);
    EXPECT_EQ(contents(),
              "time,elapsed_seconds,card,name,temperature_celsius,usage_percent,free_memory_bytes\n"
              "2023-11-14T22:13:20.250Z,12.346,0100,Fast,45,7,1024\n"
              "2023-11-14T22:13:20.250Z,12.346,0a00,Slow,,,\n");
}

TEST_F(SampleFiles, HoldEverySampleAsSoonAsItIsWritten) {
    SampleFile file(toUtf8(path_));
    file.begin();
    for (std::size_t lines = 1; lines < 6; lines += 2) {
        const auto text = contents();
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), static_cast<std::ptrdiff_t>(lines));
        EXPECT_EQ(text.back(), '\n');
        file.write(sample_, cards_);
    }
}

TEST_F(SampleFiles, PutAwkwardNamesInQuotationMarks) {
    core::DeviceRecord card;
    card.name = "Fast, 12\" \"Friends\"";
    EXPECT_EQ(sampleRow(sample_, 0, card),
              "2023-11-14T22:13:20.250Z,12.346,,\"Fast, 12\"\" \"\"Friends\"\"\",45,7,1024\n");
    card.name = "two\nlines";
    EXPECT_NE(sampleRow(sample_, 0, card).find(",\"two\nlines\","), std::string::npos);
}

TEST_F(SampleFiles, KeepTheSignOfATemperatureAndAllDigitsOfAMemory) {
    sample_.cards[0] = {-40, 100, 18446744073709551615U};
    EXPECT_NE(sampleRow(sample_, 0, cards_[0]).find(",-40,100,18446744073709551615\n"), std::string::npos);
}

TEST_F(SampleFiles, LeaveAnOlderFileAloneUntilTheyBegin) {
    std::ofstream(path_) << "older";
    SampleFile file(toUtf8(path_));
    EXPECT_EQ(contents(), "older");
    file.begin();
    EXPECT_TRUE(contents().starts_with("time,"));
    EXPECT_EQ(contents().find("older"), std::string::npos);
}

TEST_F(SampleFiles, LeaveNothingBehindBeforeTheyBegin) {
    const SampleFile file(toUtf8(path_));
    EXPECT_FALSE(std::filesystem::exists(path_));
}

TEST_F(SampleFiles, NameAFileThatCannotBeWritten) {
    for (const auto& place : {path_ / "below" / "x.csv", vexil::tests::testFolder()}) {
        try {
            const SampleFile file(toUtf8(place));
            ADD_FAILURE() << place;
        } catch (const UsageError& error) {
            EXPECT_TRUE(
                std::string(error.what()).starts_with("the file '" + toUtf8(place) + "' cannot be written: "))
                << error.what();
        }
    }
}

} // namespace
} // namespace vexil::host
