#include "module/video_card/direct3d/math_operations/double_tables.h"
#include "module/video_card/direct3d/math_operations/float_tables.h"
#include "module/video_card/direct3d/math_operations/int_tables.h"
#include "module/video_card/direct3d/math_operations/math_op_shaders.h"
#include "module/video_card/direct3d/math_operations/math_op_test.h"
#include "support/card_under_test.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

// The order and the arguments of the Direct3D calls of the arithmetic tests, as they reached the device.
namespace vexil::tests {
namespace {

using namespace module::video_card;
using testing::ElementsAreArray;
using Lines = std::vector<std::string>;

template <typename Content>
std::string markOf(const Content& content) {
    return simulated::contentMark(std::as_bytes(std::span(content)));
}

template <typename TestClass>
Lines callsOfRun() {
    CardUnderTest card;
    TestClass test;
    EXPECT_EQ(card.run(test), core::TestResult::Passed);
    return card.log->take();
}

/// The calls of one dispatch, from the shaders to the next shaders.
std::vector<Lines> splitByDispatch(const Lines& calls) {
    std::vector<Lines> parts;
    bool creates = false;
    for (const auto& call : calls) {
        if (call == "ClearState()") {
            break;
        }
        const bool creation = call.starts_with("CreateBuffer") || call.starts_with("CreateComputeShader");
        if (parts.empty() || (creation && !creates && parts.back().back().starts_with("Unmap"))) {
            parts.emplace_back();
        }
        creates = creation;
        parts.back().push_back(call);
    }
    return parts;
}

/// What a run over a table of 3 rows does, with its objects counted from the given ones.
template <typename T>
Lines tableCalls(std::span<const MathOpRow<T>> rows, const std::string& shaderLine, unsigned shader,
                 unsigned firstBuffer, unsigned firstView, unsigned access) {
    MathOpTable<T> table;
    table.load(rows);
    const auto count = std::to_string(rows.size() * mathOpColumns);
    const auto bytes = std::to_string(rows.size() * mathOpColumns * sizeof(T));
    const auto stride = std::to_string(sizeof(T));
    const auto buffer = [&](unsigned i) { return "buffer#" + std::to_string(firstBuffer + i); };
    const auto view = [&](unsigned i) { return "resourceView#" + std::to_string(firstView + i); };
    const auto accessView = "accessView#" + std::to_string(access);
    const auto creation = "CreateBuffer({" + bytes + ", 0, 136, 0, 64, " + stride + "}, ";
    return {
        shaderLine,
        creation + markOf(table.input0) + ") = " + buffer(0),
        creation + markOf(table.input1) + ") = " + buffer(1),
        creation + markOf(table.input2) + ") = " + buffer(2),
        creation + markOf(table.expected) + ") = " + buffer(3),
        "CreateShaderResourceView(" + buffer(0) + ", {0, 11, 0, " + count + ", 0}) = " + view(0),
        "CreateShaderResourceView(" + buffer(1) + ", {0, 11, 0, " + count + ", 0}) = " + view(1),
        "CreateShaderResourceView(" + buffer(2) + ", {0, 11, 0, " + count + ", 0}) = " + view(2),
        "CreateUnorderedAccessView(" + buffer(3) + ", {0, 1, 0, " + count + ", 0}) = " + accessView,
        "CSSetShader(computeShader#" + std::to_string(shader) + ", null, 0)",
        "CSSetShaderResources(0, 1, [" + view(0) + "])",
        "CSSetShaderResources(1, 1, [" + view(1) + "])",
        "CSSetShaderResources(2, 1, [" + view(2) + "])",
        "CSSetUnorderedAccessViews(0, 1, [" + accessView + "], null)",
        "Dispatch(" + std::to_string(rows.size()) + ", 1, 1)",
        "CreateBuffer({" + bytes + ", 3, 0, 131072, 0, " + stride + "}, null) = " + buffer(4),
        "CopyResource(" + buffer(4) + ", " + buffer(3) + ")",
        "Map(" + buffer(4) + ", 0, 1, 0)",
        "Unmap(" + buffer(4) + ", 0)",
    };
}

std::string shaderLine(std::span<const std::byte> bytecode, unsigned number) {
    return "CreateComputeShader(" + simulated::contentMark(bytecode) + ", null) = computeShader#" +
           std::to_string(number);
}

TEST(MathOpCalls, OfTheStandardTestAreAnIntegerAFloatAndADoubleDispatch) {
    const auto parts = splitByDispatch(callsOfRun<DirectComputeMathOpStandardTest>());
    ASSERT_EQ(parts.size(), 3U);
    EXPECT_THAT(parts[0], ElementsAreArray(tableCalls<std::int32_t>(
                              standardIntRows, shaderLine(shaders::StandardIntShader, 1), 1, 1, 1, 1)));
    EXPECT_THAT(parts[1], ElementsAreArray(tableCalls<float>(
                              standardFloatRows, shaderLine(shaders::StandardFloatShader, 2), 2, 6, 4, 2)));
    EXPECT_THAT(parts[2],
                ElementsAreArray(tableCalls<double>(
                    standardDoubleRows, shaderLine(shaders::StandardDoubleShader, 3), 3, 11, 7, 3)));
}

TEST(MathOpCalls, OfTheAdvancedTestHaveTheDotProductsBetweenFloatsAndDoubles) {
    const auto parts = splitByDispatch(callsOfRun<DirectComputeMathOpAdvancedTest>());
    ASSERT_EQ(parts.size(), 4U);
    EXPECT_THAT(parts[0], ElementsAreArray(tableCalls<std::int32_t>(
                              advancedIntRows, shaderLine(shaders::AdvancedIntShader, 1), 1, 1, 1, 1)));
    auto floats =
        tableCalls<float>(advancedFloatRows, shaderLine(shaders::AdvancedFloatShader, 2), 2, 6, 4, 2);
    floats.insert(floats.begin() + 1, shaderLine(shaders::DotProductShader, 3));
    EXPECT_THAT(parts[1], ElementsAreArray(floats));
    EXPECT_THAT(parts[3],
                ElementsAreArray(tableCalls<double>(
                    advancedDoubleRows, shaderLine(shaders::AdvancedDoubleShader, 4), 4, 19, 13, 4)));
}

/// The bytes that lie behind each other in the operations: the vectors, then the allowed steps of the rows.
std::vector<std::byte> vectorsAndWhatFollows() {
    std::vector<std::byte> memory(sizeof dotProductVectors + sizeof(std::int32_t) * advancedFloatRows.size());
    std::memcpy(memory.data(), &dotProductVectors, sizeof dotProductVectors);
    for (std::size_t row = 0; row < advancedFloatRows.size(); ++row) {
        std::memcpy(memory.data() + sizeof dotProductVectors + row * sizeof(std::int32_t),
                    &advancedFloatTolerances[row].maxUlps, sizeof(std::int32_t));
    }
    return memory;
}

TEST(MathOpCalls, OfTheDotProductsTakeTheContentOfEachVectorOnOverTheFieldsBehindIt) {
    const auto parts = splitByDispatch(callsOfRun<DirectComputeMathOpAdvancedTest>());
    ASSERT_EQ(parts.size(), 4U);
    const auto memory = vectorsAndWhatFollows();
    const auto runOn = [&](std::size_t from, std::size_t bytes) {
        return simulated::contentMark(std::span(memory).subspan(from, bytes));
    };
    const std::array<float, 3> firstInputs = {1, 0.673399985F, 3};
    const std::string output = "{0, 1, 0, 3, 0}";
    const std::string input = "{0, 11, 0, 3, 0}";
    EXPECT_THAT(parts[2], ElementsAreArray({
                              "CreateBuffer({24, 0, 136, 0, 64, 8}, " + runOn(0, 24) + ") = buffer#11",
                              "CreateBuffer({24, 0, 136, 0, 64, 8}, " + runOn(8, 24) + ") = buffer#12",
                              "CreateBuffer({36, 0, 136, 0, 64, 12}, " + runOn(16, 36) + ") = buffer#13",
                              "CreateBuffer({36, 0, 136, 0, 64, 12}, " + runOn(28, 36) + ") = buffer#14",
                              "CreateBuffer({48, 0, 136, 0, 64, 16}, " + runOn(40, 48) + ") = buffer#15",
                              "CreateBuffer({48, 0, 136, 0, 64, 16}, " + runOn(56, 48) + ") = buffer#16",
                              "CreateBuffer({12, 0, 136, 0, 64, 4}, " + markOf(firstInputs) + ") = buffer#17",
                              "CreateShaderResourceView(buffer#11, " + input + ") = resourceView#7",
                              "CreateShaderResourceView(buffer#12, " + input + ") = resourceView#8",
                              "CreateShaderResourceView(buffer#13, " + input + ") = resourceView#9",
                              "CreateShaderResourceView(buffer#14, " + input + ") = resourceView#10",
                              "CreateShaderResourceView(buffer#15, " + input + ") = resourceView#11",
                              "CreateShaderResourceView(buffer#16, " + input + ") = resourceView#12",
                              "CreateUnorderedAccessView(buffer#17, " + output + ") = accessView#3",
                              std::string("CSSetShader(computeShader#3, null, 0)"),
                              std::string("CSSetShaderResources(0, 1, [resourceView#7])"),
                              std::string("CSSetShaderResources(1, 1, [resourceView#8])"),
                              std::string("CSSetShaderResources(2, 1, [resourceView#9])"),
                              std::string("CSSetShaderResources(3, 1, [resourceView#10])"),
                              std::string("CSSetShaderResources(4, 1, [resourceView#11])"),
                              std::string("CSSetShaderResources(5, 1, [resourceView#12])"),
                              std::string("CSSetUnorderedAccessViews(0, 1, [accessView#3], null)"),
                              std::string("Dispatch(3, 1, 1)"),
                              std::string("CreateBuffer({12, 3, 0, 131072, 0, 4}, null) = buffer#18"),
                              std::string("CopyResource(buffer#18, buffer#17)"),
                              std::string("Map(buffer#18, 0, 1, 0)"),
                              std::string("Unmap(buffer#18, 0)"),
                          }));
}

TEST(MathOpCalls, EndWithTheResetOfTheDevice) {
    const auto calls = callsOfRun<DirectComputeMathOpStandardTest>();
    ASSERT_GE(calls.size(), 4U);
    EXPECT_THAT(Lines(calls.end() - 4, calls.end()),
                ElementsAreArray({"Unmap(buffer#15, 0)", "ClearState()", "Flush()",
                                  "D3D11CreateDevice(0, null, 32, [45056], 1, 7, null)"}));
}

TEST(MathOpCalls, LeaveTheStagingBufferOfAWrongResultMapped) {
    CardSetup setup;
    simulated::Direct3DFault fault;
    fault.kind = simulated::Direct3DFault::Kind::wrongResult;
    setup.direct3d.faults = {fault};
    CardUnderTest card(setup);
    DirectComputeMathOpStandardTest test;
    EXPECT_EQ(card.run(test), core::TestResult::Failed);
    const auto calls = card.log->take();
    ASSERT_GE(calls.size(), 4U);
    EXPECT_EQ(calls[calls.size() - 4], "Map(buffer#5, 0, 1, 0)");
}

} // namespace
} // namespace vexil::tests
