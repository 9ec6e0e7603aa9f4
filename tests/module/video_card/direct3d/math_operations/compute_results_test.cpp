#include "module/video_card/direct3d/math_operations/almost_equal.h"
#include "module/video_card/direct3d/math_operations/compute_run.h"
#include "module/video_card/direct3d/math_operations/double_tables.h"
#include "module/video_card/direct3d/math_operations/float_tables.h"
#include "module/video_card/direct3d/math_operations/int_tables.h"
#include "module/video_card/direct3d/math_operations/math_op_shaders.h"
#include "support/card_under_test.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

// What this machine's Direct3D makes of the tables. The output begins with numbers that no operation gives,
// so that what comes back was computed.
namespace vexil::tests {
namespace {

using namespace module::video_card;
using Bytecode = std::span<const std::byte>;

template <typename T>
constexpr T untouched = static_cast<T>(-777777);

class ComputeResults : public testing::Test {
protected:
    ComputeResults() : dx11_(card_.device->dx11Context()) {}

    ComShared<ID3D11ComputeShader> create(Bytecode bytecode) {
        ID3D11ComputeShader* shader = nullptr;
        EXPECT_EQ(dx11_.device->CreateComputeShader(bytecode.data(), bytecode.size(), nullptr, &shader),
                  S_OK);
        return shareCom(shader);
    }

    template <typename T>
    std::vector<T> run(Bytecode bytecode, const std::vector<StructuredContent>& inputs, std::size_t results,
                       UINT groups) {
        const std::vector<T> before(results, untouched<T>);
        std::vector<T> after(results);
        const auto shader = create(bytecode);
        const auto result = runCompute(*dx11_.device, *dx11_.context, shader.get(),
                                       {inputs, {std::as_bytes(std::span(before)), sizeof(T)}, groups},
                                       [&](std::span<const std::byte> output) {
                                           std::memcpy(after.data(), output.data(), output.size());
                                           return true;
                                       });
        EXPECT_EQ(result, core::TestResult::Passed);
        return after;
    }

    /// The results of a table, row after row, with `extraRows` behind it.
    template <typename T>
    std::vector<T> runTable(Bytecode bytecode, std::span<const MathOpRow<T>> rows,
                            std::size_t extraRows = 0) {
        MathOpTable<T> table;
        table.load(rows);
        const auto size = (rows.size() + extraRows) * mathOpColumns;
        for (auto* column : {&table.input0, &table.input1, &table.input2}) {
            column->resize(size, T{1});
        }
        return run<T>(bytecode, {contentOf(table.input0), contentOf(table.input1), contentOf(table.input2)},
                      size, static_cast<UINT>(rows.size() + extraRows));
    }

    template <typename T>
    static StructuredContent contentOf(const std::vector<T>& values) {
        return {std::as_bytes(std::span(values)), sizeof(T)};
    }

    CardUnderTest card_;
    Dx11Context dx11_;
};

template <typename T>
long long steps(T result, T expected) {
    using Bits = std::conditional_t<sizeof(T) == 4, std::int32_t, std::int64_t>;
    return static_cast<long long>(std::bit_cast<Bits>(result)) -
           static_cast<long long>(std::bit_cast<Bits>(expected));
}

template <typename T>
void expectExact(const std::vector<T>& results, std::span<const MathOpRow<T>> rows) {
    for (std::size_t i = 0; i < rows.size() * mathOpColumns; ++i) {
        const auto& row = rows[i / mathOpColumns];
        EXPECT_EQ(results[i], row.expected[i % mathOpColumns])
            << row.operation << ", column " << i % mathOpColumns;
    }
}

TEST_F(ComputeResults, OfIntegersAreTheStoredOnes) {
    expectExact<std::int32_t>(runTable<std::int32_t>(shaders::StandardIntShader, standardIntRows),
                              standardIntRows);
    expectExact<std::int32_t>(runTable<std::int32_t>(shaders::AdvancedIntShader, advancedIntRows),
                              advancedIntRows);
}

TEST_F(ComputeResults, OfStandardFloatsAreTheStoredOnes) {
    expectExact<float>(runTable<float>(shaders::StandardFloatShader, standardFloatRows), standardFloatRows);
}

TEST_F(ComputeResults, OfDoublesAreComputedAndAreTheStoredOnes) {
    expectExact<double>(runTable<double>(shaders::StandardDoubleShader, standardDoubleRows),
                        standardDoubleRows);
    expectExact<double>(runTable<double>(shaders::AdvancedDoubleShader, advancedDoubleRows),
                        advancedDoubleRows);
}

TEST_F(ComputeResults, OfAdvancedFloatsAreWithinTheTolerancesOfTheirRows) {
    const auto results = runTable<float>(shaders::AdvancedFloatShader, advancedFloatRows);
    for (std::size_t i = 0; i < results.size(); ++i) {
        const auto& row = advancedFloatRows[i / mathOpColumns];
        const auto& tolerance = advancedFloatTolerances[i / mathOpColumns];
        const auto expected = row.expected[i % mathOpColumns];
        EXPECT_TRUE(
            almostEqual(results[i], expected, tolerance.absolute, tolerance.relative, tolerance.maxUlps))
            << row.operation << ", column " << i % mathOpColumns << ": " << results[i] << " for " << expected
            << ", " << steps(results[i], expected) << " ULP";
        if (steps(results[i], expected) != 0) {
            RecordProperty(std::string("row") + std::to_string(i / mathOpColumns) + "column" +
                               std::to_string(i % mathOpColumns),
                           std::to_string(steps(results[i], expected)) + " ULP");
        }
    }
}

TEST_F(ComputeResults, OfEveryCaseOfTheStandardFloatShaderAreThoseOfTheAdvancedOne) {
    // The cases behind the three rows of its own table.
    std::vector<FloatRow> rows(standardFloatRows.begin(), standardFloatRows.end());
    rows.insert(rows.end(), advancedFloatRows.begin(), advancedFloatRows.end());
    const auto results = runTable<float>(shaders::StandardFloatShader, std::span<const FloatRow>(rows));
    const auto advanced = runTable<float>(shaders::AdvancedFloatShader, advancedFloatRows);
    const std::vector<float> behind(results.begin() + 15, results.end());
    EXPECT_EQ(behind, advanced);
}

TEST_F(ComputeResults, OfDotProductsAreWithinOneUlpFromTheFirstElementAlone) {
    const auto& v = dotProductVectors;
    const auto padded = [](std::span<const float> vector) {
        std::vector<float> content(vector.begin(), vector.end());
        content.resize(3 * vector.size(), 1e6F);
        return content;
    };
    const std::vector<std::vector<float>> contents = {padded(v.vec2A), padded(v.vec2B), padded(v.vec3A),
                                                      padded(v.vec3B), padded(v.vec4A), padded(v.vec4B)};
    std::vector<StructuredContent> inputs;
    for (const auto& content : contents) {
        inputs.push_back(
            {std::as_bytes(std::span(content)), static_cast<UINT>(content.size() / 3 * sizeof(float))});
    }
    const auto results = run<float>(shaders::DotProductShader, inputs, 3, 3);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_TRUE(almostEqual(results[i], dotProductsExpected[i], 0.0F, 0.0F, 1))
            << i << ": " << steps(results[i], dotProductsExpected[i]) << " ULP";
    }
}

template <typename T>
void expectZeros(const std::vector<T>& results, std::size_t from) {
    for (std::size_t i = from * mathOpColumns; i < results.size(); ++i) {
        EXPECT_EQ(results[i], T{0}) << i;
    }
}

TEST_F(ComputeResults, OfGroupsThatNoCaseIsForAreZero) {
    expectZeros(runTable<std::int32_t>(shaders::StandardIntShader, standardIntRows, 2), 3);
    expectZeros(runTable<std::int32_t>(shaders::AdvancedIntShader, advancedIntRows, 2), 3);
    expectZeros(runTable<float>(shaders::StandardFloatShader, standardFloatRows, 13), 14);
    expectZeros(runTable<float>(shaders::AdvancedFloatShader, advancedFloatRows, 2), 11);
    expectZeros(runTable<double>(shaders::StandardDoubleShader, standardDoubleRows, 2), 3);
    expectZeros(runTable<double>(shaders::AdvancedDoubleShader, advancedDoubleRows, 2), 4);
}

TEST_F(ComputeResults, AreWhatTheOutputHeldBeforeWithoutAShader) {
    const std::vector<float> before = {1, 2, 3};
    std::vector<float> after(3);
    const auto result = runCompute(*dx11_.device, *dx11_.context, nullptr, {{}, contentOf(before), 1},
                                   [&](std::span<const std::byte> output) {
                                       std::memcpy(after.data(), output.data(), output.size());
                                       return true;
                                   });
    EXPECT_EQ(result, core::TestResult::Passed);
    EXPECT_EQ(after, before);
}

TEST_F(ComputeResults, DivideNegativeIntegersTowardsZero) {
    const IntRow row{
        "a / b", {7, -7, 7, -7, -2147483647}, {2, 2, -2, -2, 2}, {}, {3, -3, -3, 3, -1073741823}};
    const std::vector<IntRow> rows = {
        {"", {}, {1, 1, 1, 1, 1}, {}, {}}, {"", {}, {1, 1, 1, 1, 1}, {}, {}}, row};
    const auto results = runTable<std::int32_t>(shaders::StandardIntShader, std::span<const IntRow>(rows));
    for (std::size_t column = 0; column < mathOpColumns; ++column) {
        EXPECT_EQ(results[10 + column], row.expected[column]) << column;
    }
}

} // namespace
} // namespace vexil::tests
