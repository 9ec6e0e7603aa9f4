#include "module/video_card/direct3d/math_operations/math_op_shaders.h"
#include "simulated/direct3d/work_faults.h"
#include "support/shader_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <set>
#include <span>
#include <string>
#include <vector>

// The seven compute shaders.
namespace vexil::tests {
namespace {

namespace shaders = module::video_card::shaders;

TEST(ComputeShaders, BelongToTheSourcesBesideThem) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(ComputeShaders, HaveOneSourceEach) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

TEST(ComputeShaders, StandInTheProgramAsTheyAreInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"standard_int.cs.dxbc", shaders::StandardIntShader},
                                     {"advanced_int.cs.dxbc", shaders::AdvancedIntShader},
                                     {"standard_float.cs.dxbc", shaders::StandardFloatShader},
                                     {"advanced_float.cs.dxbc", shaders::AdvancedFloatShader},
                                     {"dot_product.cs.dxbc", shaders::DotProductShader},
                                     {"standard_double.cs.dxbc", shaders::StandardDoubleShader},
                                     {"advanced_double.cs.dxbc", shaders::AdvancedDoubleShader}});
}

TEST(ComputeShaders, ForDoublesSayThatTheyNeedThem) {
    EXPECT_TRUE(simulated::needsDoubles(shaders::StandardDoubleShader));
    EXPECT_TRUE(simulated::needsDoubles(shaders::AdvancedDoubleShader));
    EXPECT_FALSE(simulated::needsDoubles(shaders::AdvancedFloatShader));
    EXPECT_FALSE(simulated::needsDoubles(shaders::StandardIntShader));
}

using Words = std::vector<std::uint32_t>;

/// The content of a chunk of a compiled shader, as 32-bit words.
Words chunkOf(std::span<const std::byte> bytecode, const char* name) {
    constexpr std::size_t countAt = 28;
    const auto word = [&](std::size_t offset) {
        std::uint32_t value = 0;
        std::memcpy(&value, bytecode.subspan(offset, sizeof value).data(), sizeof value);
        return value;
    };
    for (std::size_t chunk = 0; chunk < word(countAt); ++chunk) {
        const auto offset = word(countAt + 4 + 4 * chunk);
        if (std::memcmp(bytecode.subspan(offset, 4).data(), name, 4) == 0) {
            Words words(word(offset + 4) / sizeof(std::uint32_t));
            std::memcpy(words.data(), bytecode.subspan(offset + 8).data(), words.size() * sizeof words[0]);
            return words;
        }
    }
    return {};
}

namespace opcode {
constexpr std::uint32_t switchBegin = 0x4C, switchEnd = 0x17, customData = 0x35, globalFlags = 0x6A,
                        input = 0x5F, threadGroup = 0x9B, accessView = 0x9E, resource = 0xA2,
                        loadStructured = 0xA7;
}

/// `cs_5_0` in the first word of the code: the kind of shader, then the two halves of the model.
constexpr std::uint32_t computeShader50 = 0x00050050;
/// Kinds of operands: which thread of all a thread is, and which group it belongs to.
constexpr std::uint32_t threadNumber = 0x20, groupNumber = 0x21;

/// What a shader declares, and where it reads its buffers.
struct Declarations {
    std::uint32_t version = 0;          ///< kind of shader and shader model
    std::set<std::uint32_t> ownNumbers; ///< the kinds of operands by which a thread knows itself
    Words flags;                        ///< double arithmetic is bit 12, its extended instructions are bit 17
    Words threadGroup;                  ///< extents
    Words inputs;                       ///< strides by slot
    Words output;                       ///< slot and stride
    std::vector<int> readsInCases;      ///< of each slot, how often within a case
    std::vector<int> readsBefore;       ///< of each slot, how often in front of the cases
};

Declarations declarationsOf(std::span<const std::byte> bytecode) {
    Declarations found;
    const auto code = chunkOf(bytecode, "SHEX");
    bool inCases = false;
    // Version and length come first.
    found.version = code.at(0);
    for (std::size_t at = 2; at < code.size();) {
        const auto kind = code[at] & 0x7FF;
        const std::size_t length = kind == opcode::customData ? code[at + 1] : code[at] >> 24 & 0x7F;
        const Words operands(code.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                             code.begin() + static_cast<std::ptrdiff_t>(at + length));
        switch (kind) {
        case opcode::globalFlags:
            found.flags.push_back(code[at] & 0xFFF800);
            break;
        case opcode::input:
            found.ownNumbers.insert(operands[0] >> 12 & 0xFF);
            break;
        case opcode::threadGroup:
            found.threadGroup = operands;
            break;
        case opcode::resource:
            EXPECT_EQ(operands[1], found.inputs.size());
            found.inputs.push_back(operands[2]);
            found.readsBefore.push_back(0);
            found.readsInCases.push_back(0);
            break;
        case opcode::accessView:
            found.output = {operands[1], operands[2]};
            break;
        case opcode::loadStructured:
            ++(inCases ? found.readsInCases : found.readsBefore).at(operands.back());
            break;
        default:
            inCases = kind == opcode::switchBegin || (inCases && kind != opcode::switchEnd);
        }
        at += length;
    }
    return found;
}

struct TableShader {
    const char* name;
    std::span<const std::byte> bytecode;
    std::uint32_t elementBytes;
    bool hasThirdOperand;
};

class TableShaders : public testing::TestWithParam<TableShader> {};

INSTANTIATE_TEST_SUITE_P(
    Of, TableShaders,
    testing::Values(TableShader{"StandardIntegers", shaders::StandardIntShader, 4, false},
                    TableShader{"AdvancedIntegers", shaders::AdvancedIntShader, 4, true},
                    TableShader{"StandardFloats", shaders::StandardFloatShader, 4, true},
                    TableShader{"AdvancedFloats", shaders::AdvancedFloatShader, 4, true},
                    TableShader{"StandardDoubles", shaders::StandardDoubleShader, 8, false},
                    TableShader{"AdvancedDoubles", shaders::AdvancedDoubleShader, 8, true}),
    [](const auto& shader) { return std::string(shader.param.name); });

TEST_P(TableShaders, RunFiveThreadsInAGroupOverStructuredBuffers) {
    const auto& shader = GetParam();
    const auto found = declarationsOf(shader.bytecode);
    EXPECT_EQ(found.threadGroup, (Words{5, 1, 1}));
    EXPECT_EQ(found.inputs, Words(shader.hasThirdOperand ? 3 : 2, shader.elementBytes));
    EXPECT_EQ(found.output, (Words{0, shader.elementBytes}));
}

TEST_P(TableShaders, AreForTheFifthShaderModelAndLookAtTheirThreadAndGroupNumbersOnly) {
    const auto found = declarationsOf(GetParam().bytecode);
    EXPECT_EQ(found.version, computeShader50);
    EXPECT_THAT(found.ownNumbers, testing::ElementsAre(threadNumber, groupNumber));
}

TEST_P(TableShaders, ReadTheThirdOperandOnlyInTheCaseThatUsesIt) {
    const auto found = declarationsOf(GetParam().bytecode);
    using Counts = std::vector<int>;
    EXPECT_EQ(found.readsBefore, GetParam().hasThirdOperand ? (Counts{1, 1, 0}) : (Counts{1, 1}));
    EXPECT_EQ(found.readsInCases, GetParam().hasThirdOperand ? (Counts{0, 0, 1}) : (Counts{0, 0}));
}

TEST_P(TableShaders, DeclareDoublesWithTheirExtendedInstructionsIfTheyComputeInThem) {
    const bool doubles = GetParam().elementBytes == 8;
    EXPECT_EQ(declarationsOf(GetParam().bytecode).flags, doubles ? Words{1U << 12 | 1U << 17} : Words());
    EXPECT_EQ(chunkOf(GetParam().bytecode, "SFI0"), doubles ? (Words{0x21, 0}) : Words());
}

TEST(DotProductShader, RunsOneThreadInAGroupOverBuffersOfVectors) {
    const auto found = declarationsOf(shaders::DotProductShader);
    EXPECT_EQ(found.threadGroup, (Words{1, 1, 1}));
    EXPECT_EQ(found.inputs, (Words{8, 8, 12, 12, 16, 16}));
    EXPECT_EQ(found.output, (Words{0, 4}));
    EXPECT_EQ(found.readsBefore, std::vector<int>(6, 1));
}

TEST(DotProductShader, IsForTheFifthShaderModelAndLooksAtNoThreadOrGroupNumber) {
    const auto found = declarationsOf(shaders::DotProductShader);
    EXPECT_EQ(found.version, computeShader50);
    EXPECT_THAT(found.ownNumbers, testing::IsEmpty());
}

} // namespace
} // namespace vexil::tests
