#include "module/video_card/stress/rendering/matrix.h"

#include <cmath>

namespace vexil::module::video_card {

namespace {

constexpr float pi = 3.141592654F;
constexpr float twoPi = 6.283185307F;
constexpr float halfPi = 1.570796327F;
constexpr float oneOverTwoPi = 0.159154943F;

Vector3 cross(const Vector3& a, const Vector3& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

float dot(const Vector3& a, const Vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

Vector3 normalized(const Vector3& vector) {
    const float length = std::sqrt(dot(vector, vector));
    return {vector[0] / length, vector[1] / length, vector[2] / length};
}

} // namespace

SineCosine scalarSineCosine(float angle) {
    float quotient = oneOverTwoPi * angle;
    quotient = static_cast<float>(static_cast<int>(angle >= 0 ? quotient + 0.5F : quotient - 0.5F));
    // Between -pi and pi, and from there by reflection to where the polynomials hold.
    float y = angle - twoPi * quotient;
    float sign = 1;
    if (y > halfPi) {
        y = pi - y;
        sign = -1;
    } else if (y < -halfPi) {
        y = -pi - y;
        sign = -1;
    }
    const float y2 = y * y;
    const float sine =
        (((((-2.3889859e-08F * y2 + 2.7525562e-06F) * y2 - 0.00019840874F) * y2 + 0.0083333310F) * y2 -
          0.16666667F) *
             y2 +
         1.0F) *
        y;
    const float cosine =
        ((((-2.6051615e-07F * y2 + 2.4760495e-05F) * y2 - 0.0013888378F) * y2 + 0.041666638F) * y2 - 0.5F) *
            y2 +
        1.0F;
    return {sine, sign * cosine};
}

Matrix identityMatrix() { return scalingMatrix(1); }

Matrix scalingMatrix(float factor) {
    Matrix matrix{};
    matrix[0][0] = factor;
    matrix[1][1] = factor;
    matrix[2][2] = factor;
    matrix[3][3] = 1;
    return matrix;
}

Matrix rotationYMatrix(float angle) {
    const auto [sine, cosine] = scalarSineCosine(angle);
    Matrix matrix = identityMatrix();
    matrix[0][0] = cosine;
    matrix[0][2] = -sine;
    matrix[2][0] = sine;
    matrix[2][2] = cosine;
    return matrix;
}

Matrix lookToMatrix(const Vector3& eye, const Vector3& direction, const Vector3& up) {
    const auto forward = normalized(direction);
    const auto right = normalized(cross(up, forward));
    const std::array axes = {right, cross(forward, right), forward};
    Matrix matrix{};
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
        for (std::size_t row = 0; row < 3; ++row) {
            matrix[row][axis] = axes[axis][row];
        }
        matrix[3][axis] = dot(axes[axis], {-eye[0], -eye[1], -eye[2]});
    }
    matrix[3][3] = 1;
    return matrix;
}

Matrix perspectiveMatrix(float field, float aspect, float nearPlane, float farPlane) {
    const auto [sine, cosine] = scalarSineCosine(0.5F * field);
    const float height = cosine / sine;
    const float range = farPlane / (farPlane - nearPlane);
    Matrix matrix{};
    matrix[0][0] = height / aspect;
    matrix[1][1] = height;
    matrix[2][2] = range;
    matrix[2][3] = 1;
    matrix[3][2] = -range * nearPlane;
    return matrix;
}

Matrix orthographicMatrix(float width, float height, float nearPlane, float farPlane) {
    const float range = 1.0F / (farPlane - nearPlane);
    Matrix matrix{};
    matrix[0][0] = 2.0F / width;
    matrix[1][1] = 2.0F / height;
    matrix[2][2] = range;
    matrix[3][2] = -range * nearPlane;
    matrix[3][3] = 1;
    return matrix;
}

Matrix multiply(const Matrix& a, const Matrix& b) {
    Matrix product{};
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            for (std::size_t i = 0; i < 4; ++i) {
                product[row][column] += a[row][i] * b[i][column];
            }
        }
    }
    return product;
}

} // namespace vexil::module::video_card
