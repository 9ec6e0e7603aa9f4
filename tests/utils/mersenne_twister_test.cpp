#include "support/processor_codes.h"
#include "utils/mersenne_twister.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace vexil::utils {
namespace {

/// Seeds at the edges of the seeding formula, and those that tests of the module use.
constexpr std::uint32_t seeds[] = {0, 1, 123, 999, 5489, 0x600DCAFE, 0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};

/// Around the block of 624 words, the two halves of its twist (227 and 397) and the widths of vectors.
constexpr std::size_t lengths[] = {0,   1,   15,  16,  17,  63,   64,   226,  227,  228,   396,   397,
                                   398, 623, 624, 625, 640, 1247, 1248, 1249, 5000, 65536, 100003};

/// One run for each version of the loops that this processor can execute.
class MersenneTwisterCodes : public testing::TestWithParam<const MersenneTwisterCode*> {
protected:
    static const MersenneTwisterCode& code() { return *GetParam(); }
};

INSTANTIATE_TEST_SUITE_P(Every, MersenneTwisterCodes,
                         testing::ValuesIn(tests::codesOfThisProcessor(mersenneTwisterCodes())),
                         [](const auto& code) { return std::string(code.param->name); });

TEST_P(MersenneTwisterCodes, DrawsTheWordsOfTheStandardEngine) {
    for (const auto seed : seeds) {
        std::mt19937 standard(seed);
        MersenneTwister engine(seed, code());
        for (int i = 0; i < 3000; ++i) {
            ASSERT_EQ(engine(), standard()) << "seed " << seed << ", draw " << i;
        }
    }
}

TEST_P(MersenneTwisterCodes, FillsWordsWithTheDrawsOfTheStandardEngine) {
    for (const auto seed : seeds) {
        for (const auto length : lengths) {
            std::mt19937 standard(seed);
            MersenneTwister engine(seed, code());
            std::vector<std::uint32_t> expected(length);
            std::vector<std::uint32_t> words(length);
            std::ranges::generate(expected, std::ref(standard));
            engine.fill(words);
            ASSERT_EQ(words, expected) << "seed " << seed << ", length " << length;
            ASSERT_EQ(engine(), standard()) << "the draw behind, seed " << seed << ", length " << length;
        }
    }
}

TEST_P(MersenneTwisterCodes, FillsBytesWithTheLowBitsOfEachDrawOfTheStandardEngine) {
    for (const auto seed : seeds) {
        for (const auto length : lengths) {
            std::mt19937 standard(seed);
            MersenneTwister engine(seed, code());
            std::vector<std::uint8_t> expected(length);
            std::vector<std::uint8_t> bytes(length);
            std::ranges::generate(expected, [&] { return static_cast<std::uint8_t>(standard()); });
            engine.fillLowBytes(bytes);
            ASSERT_EQ(bytes, expected) << "seed " << seed << ", length " << length;
            ASSERT_EQ(engine(), standard()) << "the draw behind, seed " << seed << ", length " << length;
        }
    }
}

TEST_P(MersenneTwisterCodes, GoesOnWhereTheLastFillEnded) {
    std::mt19937 standard(123);
    MersenneTwister engine(123, code());
    for (const auto length : lengths) {
        std::vector<std::uint8_t> bytes(length);
        engine.fillLowBytes(bytes);
        for (const auto byte : bytes) {
            ASSERT_EQ(byte, static_cast<std::uint8_t>(standard())) << "length " << length;
        }
        ASSERT_EQ(engine(), standard());
    }
}

TEST_P(MersenneTwisterCodes, WritesNothingBehindWhatItFills) {
    for (const auto length : lengths) {
        std::vector<std::uint8_t> bytes(length + 64, 0xA5);
        MersenneTwister(1, code()).fillLowBytes(std::span(bytes).first(length));
        EXPECT_TRUE(std::all_of(bytes.begin() + static_cast<std::ptrdiff_t>(length), bytes.end(),
                                [](auto byte) { return byte == 0xA5; }))
            << "length " << length;
    }
}

TEST(MersenneTwister, HasTheStandardsTenThousandthDraw) {
    // The value that the C++ standard gives for a default-constructed engine.
    MersenneTwister engine;
    engine.discard(9999);
    EXPECT_EQ(engine(), 4123659995U);
}

TEST(MersenneTwister, StartsAnewWhenSeeded) {
    MersenneTwister engine(7);
    engine.discard(1000);
    engine.seed(123);
    std::mt19937 standard(123);
    EXPECT_EQ(engine(), standard());
}

TEST(MersenneTwister, DiscardsLikeTheStandardEngine) {
    for (const auto length : lengths) {
        std::mt19937 standard(42);
        MersenneTwister engine(42);
        standard.discard(length);
        engine.discard(length);
        ASSERT_EQ(engine(), standard()) << length;
    }
}

TEST(MersenneTwister, DrivesTheStandardDistributions) {
    static_assert(std::uniform_random_bit_generator<MersenneTwister>);
    std::mt19937 standard(5);
    MersenneTwister engine(5);
    std::uniform_int_distribution<int> expected(1, 1000);
    std::uniform_int_distribution<int> drawn(1, 1000);
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(drawn(engine), expected(standard));
    }
}

TEST(MersenneTwister, TakesTheFirstCodeThatTheProcessorHas) {
    for (const auto& code : mersenneTwisterCodes()) {
        if (code.isSupported()) {
            EXPECT_EQ(&code, &bestMersenneTwisterCode());
            return;
        }
    }
    FAIL() << "the last one runs on every processor";
}

} // namespace
} // namespace vexil::utils
