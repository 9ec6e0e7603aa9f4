#include "module/video_card/direct3d/texture_pipeline/transposition.h"
#include "support/processor_codes.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace vexil::module::video_card {
namespace {

PatternImage transposed(const PatternImage& pattern) {
    PatternImage picture(patternPixels);
    for (std::size_t row = 0; row < patternExtent; ++row) {
        for (std::size_t column = 0; column < patternExtent; ++column) {
            picture[column * patternExtent + row] = pattern[row * patternExtent + column];
        }
    }
    return picture;
}

/// A random pattern and its picture, made once.
class TranspositionCodes : public testing::TestWithParam<const TranspositionCode*> {
protected:
    static void SetUpTestSuite() {
        fillPattern(42, pattern_);
        picture_ = transposed(pattern_);
    }
    static const TranspositionCode& code() { return *GetParam(); }
    static bool compare(const PatternImage& picture) {
        return code().isTransposed(pattern_.data(), picture.data());
    }

    static inline PatternImage pattern_;
    static inline PatternImage picture_;
};

INSTANTIATE_TEST_SUITE_P(Every, TranspositionCodes,
                         testing::ValuesIn(tests::codesOfThisProcessor(transpositionCodes())),
                         [](const auto& code) { return std::string(code.param->name); });

TEST_P(TranspositionCodes, TakeThePictureOfAPattern) { EXPECT_TRUE(compare(picture_)); }

TEST_P(TranspositionCodes, RefuseAPictureThatIsNotTransposed) { EXPECT_FALSE(compare(pattern_)); }

TEST_P(TranspositionCodes, SeeASingleBitOfAnyPixelOfATile) {
    auto picture = picture_;
    // All places within the tiles by which images are compared, spread over the tiles of a picture.
    for (std::size_t place = 0; place < 64 * 64; ++place) {
        const std::size_t row = place / 64 + 64 * (place % 16);
        const std::size_t column = place % 64 + 64 * (place / 16 % 16);
        auto& pixel = picture[row * patternExtent + column];
        pixel ^= 1U << (place % 32);
        ASSERT_FALSE(compare(picture)) << "row " << row << ", column " << column;
        pixel ^= 1U << (place % 32);
    }
    EXPECT_TRUE(compare(picture));
}

TEST_P(TranspositionCodes, SeeTwoPixelsThatAreExchanged) {
    auto picture = picture_;
    std::swap(picture[3 * patternExtent + 7], picture[7 * patternExtent + 3]);
    EXPECT_FALSE(compare(picture));
}

TEST_P(TranspositionCodes, TakeImagesThatBeginAnywhere) {
    // A pixel behind the start of a cache line.
    PatternImage pattern(patternPixels + 1);
    PatternImage picture(patternPixels + 1);
    std::copy(pattern_.begin(), pattern_.end(), pattern.begin() + 1);
    std::copy(picture_.begin(), picture_.end(), picture.begin() + 1);
    EXPECT_TRUE(code().isTransposed(pattern.data() + 1, picture.data() + 1));
    picture.back() ^= 1;
    EXPECT_FALSE(code().isTransposed(pattern.data() + 1, picture.data() + 1));
}

class Transposition : public testing::Test {
protected:
    Transposition() {
        fillPattern(7, pattern_);
        picture_ = transposed(pattern_);
    }
    [[nodiscard]] std::optional<std::size_t> firstError() const {
        return firstTranspositionError(PatternPixels(pattern_), PatternPixels(picture_));
    }

    PatternImage pattern_;
    PatternImage picture_;
};

TEST_F(Transposition, PutsRow3Column7ToRow7Column3) {
    EXPECT_EQ(transposedIndex(3 * 1024 + 7), 7U * 1024 + 3);
    picture_[7 * 1024 + 3] ^= 1;
    EXPECT_EQ(firstError(), 3U * 1024 + 7);
}

TEST_F(Transposition, LeavesTheDiagonalAndTheCornersOfItWhereTheyAre) {
    EXPECT_EQ(transposedIndex(0), 0U);
    EXPECT_EQ(transposedIndex(500 * 1024 + 500), 500U * 1024 + 500);
    EXPECT_EQ(transposedIndex(patternPixels - 1), patternPixels - 1);
    EXPECT_EQ(transposedIndex(1023), 1023U * 1024);
}

TEST_F(Transposition, HasNoErrorInThePictureOfItsPattern) { EXPECT_EQ(firstError(), std::nullopt); }

TEST_F(Transposition, FindsTheFirstErrorInTheOrderOfThePattern) {
    // In the order of the picture it would be the other way round.
    picture_[transposedIndex(5 * 1024 + 2)] ^= 1;
    picture_[transposedIndex(2 * 1024 + 1000)] ^= 1;
    EXPECT_EQ(firstError(), 2U * 1024 + 1000);
}

TEST_F(Transposition, FindsAnErrorInTheFirstRow) {
    picture_[transposedIndex(5)] ^= 1;
    EXPECT_EQ(firstError(), 5U);
    picture_.front() ^= 1;
    EXPECT_EQ(firstError(), 0U);
}

TEST_F(Transposition, FindsAnErrorInTheLastPixel) {
    picture_.back() ^= 0x80000000;
    EXPECT_EQ(firstError(), patternPixels - 1);
}

TEST(Pattern, OfAPassIsTheStandardEngineSeededWithItsNumber) {
    PatternImage image;
    for (const std::uint32_t seed : {0U, 1U, 999U}) {
        fillPattern(seed, image);
        ASSERT_EQ(image.size(), 0x100000U);
        std::mt19937 engine(seed);
        for (std::size_t pixel = 0; pixel < patternPixels; ++pixel) {
            ASSERT_EQ(image[pixel], engine()) << "seed " << seed << ", pixel " << pixel;
        }
    }
}

TEST(Pattern, IsNotItsOwnTransposition) {
    PatternImage image;
    fillPattern(0, image);
    EXPECT_FALSE(isTransposed(PatternPixels(image), PatternPixels(image)));
    // An image of equal rows, by contrast, is not told from one that is turned back by columns.
    const PatternImage uniform(patternPixels, 5);
    EXPECT_TRUE(isTransposed(PatternPixels(uniform), PatternPixels(uniform)));
}

TEST(Pattern, BeginsAtACacheLine) {
    for (int i = 0; i < 8; ++i) {
        const PatternImage image(16 + static_cast<std::size_t>(i));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(image.data()) % 64, 0U);
    }
}

} // namespace
} // namespace vexil::module::video_card
