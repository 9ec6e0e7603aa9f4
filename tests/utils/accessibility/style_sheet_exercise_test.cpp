#include "style_sheet_exercise.h"

#include <gtest/gtest.h>

namespace vexil::test {
namespace {

TEST(StyleSheetExercise, SurvivesTheCorpus) {
    const auto corpus = readCorpus(VEXIL_TEST_DATA);
    ASSERT_GE(corpus.size(), 10U);
    for (const auto& text : corpus) {
        EXPECT_EQ(exerciseStyleSheet(text), "") << text;
    }
}

TEST(StyleSheetExercise, SurvivesTwentyThousandTexts) {
    StyleSheetGenerator generator(20261121, readCorpus(VEXIL_TEST_DATA));
    for (int i = 0; i < 20000; ++i) {
        const auto text = generator.next();
        ASSERT_EQ(exerciseStyleSheet(text), "") << text;
    }
}

TEST(StyleSheetExercise, MakesTheSameTextsFromTheSameSeed) {
    StyleSheetGenerator one(7, {"a { b: c }"});
    StyleSheetGenerator other(7, {"a { b: c }"});
    for (int i = 0; i < 100; ++i) {
        ASSERT_EQ(one.next(), other.next());
    }
}

} // namespace
} // namespace vexil::test
