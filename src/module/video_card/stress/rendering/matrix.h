#pragma once

#include <array>

// Transformations of row vectors, computed as DirectXMath does, whose results the pictures were made with.
namespace vexil::module::video_card {

/// Rows of a 4 by 4 matrix.
using Matrix = std::array<std::array<float, 4>, 4>;
using Vector3 = std::array<float, 3>;

struct SineCosine {
    float sine;
    float cosine;
};

/// By the polynomials of `XMScalarSinCos`; the angle is in radians.
[[nodiscard]] SineCosine scalarSineCosine(float angle);

[[nodiscard]] Matrix identityMatrix();
[[nodiscard]] Matrix scalingMatrix(float factor);
[[nodiscard]] Matrix rotationYMatrix(float angle);
/// Left-handed. `direction` and `up` need not be of length 1.
[[nodiscard]] Matrix lookToMatrix(const Vector3& eye, const Vector3& direction, const Vector3& up);
/// Left-handed; depth from 0 at `nearPlane` to 1 at `farPlane`. The field is vertical, in radians.
[[nodiscard]] Matrix perspectiveMatrix(float field, float aspect, float nearPlane, float farPlane);
/// Left-handed, centred.
[[nodiscard]] Matrix orthographicMatrix(float width, float height, float nearPlane, float farPlane);

/// First `a`, then `b`.
[[nodiscard]] Matrix multiply(const Matrix& a, const Matrix& b);

} // namespace vexil::module::video_card
