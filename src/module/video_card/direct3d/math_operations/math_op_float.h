#pragma once

#include "module/video_card/direct3d/math_operations/float_tables.h"
#include "module/video_card/direct3d/math_operations/math_op.h"

#include <array>
#include <type_traits>

namespace vexil::module::video_card {

/// Operations on floats, in advanced mode the dot products too. Each row of the table and each dot product
/// has tolerances of its own.
class DirectComputeMathOpFloat final : public DirectComputeMathOp {
public:
    DirectComputeMathOpFloat(std::int32_t mode, ComShared<ID3D11Device> device,
                             ComShared<ID3D11DeviceContext> context);

    std::uint8_t execute(std::int32_t mode, ID3D11ComputeShader* shader,
                         ID3D11ComputeShader* dotShader) override;
    std::uint8_t runOperations(ID3D11ComputeShader* shader) override;
    std::uint8_t runDotProducts(ID3D11ComputeShader* dotShader) override;
    void prepareStandard() override;
    void prepareAdvanced() override;

private:
    static constexpr std::size_t rows = advancedFloatRows.size();
    static constexpr std::size_t dotProducts = dotProductsExpected.size();

    /// Everything behind the table, as one run of memory: the card gets more of it than a vector is long,
    /// because its buffers have room for as many vectors as there are dot products.
    struct Fields {
        std::uint32_t dotRowCount = dotProducts;
        std::uint32_t dotValuesPerRow = 1;
        DotProductVectors vectors{};
        std::array<std::int32_t, rows> maxUlps{-1};
        std::array<float, rows> absoluteTolerance{-1};
        std::array<float, rows> relativeTolerance{-1};
        std::array<std::int32_t, dotProducts> dotMaxUlps{-1};
        std::array<float, dotProducts> dotAbsoluteTolerance{-1};
        std::array<float, dotProducts> dotRelativeTolerance{-1};
    };
    static_assert(std::is_standard_layout_v<Fields> && sizeof(DotProductVectors) == 72);

    /// The content of a buffer of vectors, from `vector` (one of `fields_.vectors`) on.
    template <typename Vector>
    [[nodiscard]] StructuredContent dotContent(const Vector& vector) const;

    MathOpTable<float> table_;
    Fields fields_;
};

} // namespace vexil::module::video_card
