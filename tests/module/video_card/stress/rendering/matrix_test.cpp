#include "module/video_card/stress/rendering/matrix.h"

#include <gtest/gtest.h>

#include <cmath>

namespace vexil::module::video_card {
namespace {

void expectNear(const Matrix& actual, const Matrix& expected) {
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            EXPECT_NEAR(actual[row][column], expected[row][column],
                        1e-6F * std::fabs(expected[row][column]) + 1e-6F)
                << row << ", " << column;
        }
    }
}

TEST(Matrix, LooksFromTheEyeOfTheSphere) {
    expectNear(lookToMatrix({0, 0, -50}, {0, 0, 50}, {0, 1, 0}),
               {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 50, 1}}});
}

TEST(Matrix, IsLeftHanded) {
    // Looking along x, what is ahead has depth and what is at z lies to the left.
    expectNear(lookToMatrix({0, 0, 0}, {2, 0, 0}, {0, 1, 0}),
               {{{0, 0, 1, 0}, {0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 0, 1}}});
}

TEST(Matrix, HasAVerticalFieldOf45Degrees) {
    const float height = 1.0F / std::tan(0.3926991F);
    const float range = 20000.0F / 19950.0F;
    expectNear(
        perspectiveMatrix(2 * 0.3926991F, 1920.0F / 1080.0F, 50, 20000),
        {{{height * 1080 / 1920, 0, 0, 0}, {0, height, 0, 0}, {0, 0, range, 1}, {0, 0, -50 * range, 0}}});
}

TEST(Matrix, MapsThePixelsOfAWindowToItsEdges) {
    const float range = 1.0F / 999.9F;
    expectNear(orthographicMatrix(400, 300, 0.1F, 1000),
               {{{2.0F / 400, 0, 0, 0}, {0, 2.0F / 300, 0, 0}, {0, 0, range, 0}, {0, 0, -0.1F * range, 1}}});
}

TEST(Matrix, TurnsBeforeItScales) {
    const float sine = std::sin(0.5F);
    const float cosine = std::cos(0.5F);
    expectNear(
        multiply(rotationYMatrix(0.5F), scalingMatrix(50)),
        {{{50 * cosine, 0, -50 * sine, 0}, {0, 50, 0, 0}, {50 * sine, 0, 50 * cosine, 0}, {0, 0, 0, 1}}});
}

TEST(Matrix, KnowsSineAndCosineOfAnyAngle) {
    for (float angle = -20; angle < 500; angle += 0.37F) {
        const auto [sine, cosine] = scalarSineCosine(angle);
        EXPECT_NEAR(sine, std::sin(static_cast<double>(angle)), 5e-5) << angle;
        EXPECT_NEAR(cosine, std::cos(static_cast<double>(angle)), 5e-5) << angle;
    }
}

TEST(Matrix, MultipliesRowsWithColumns) {
    const Matrix a = {{{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}}};
    const Matrix b = {{{0, 1, 0, 0}, {1, 0, 0, 0}, {0, 0, 2, 0}, {0, 0, 0, 1}}};
    expectNear(multiply(a, b), {{{2, 1, 6, 4}, {6, 5, 14, 8}, {10, 9, 22, 12}, {14, 13, 30, 16}}});
}

} // namespace
} // namespace vexil::module::video_card
