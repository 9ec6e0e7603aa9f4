#include "module/video_card/direct3d/textured_quad_shaders.h"
#include "support/shader_folder.h"

#include <gtest/gtest.h>

// The compiled shaders in the tree belong to the sources beside them, and the module holds them as they are.
namespace vexil::tests {
namespace {

namespace shaders = module::video_card::shaders;

std::string hashOf(const std::string& content) { return sha256(std::as_bytes(std::span(content))); }

TEST(Sha256, GivesTheHashesOfTheStandard) {
    EXPECT_EQ(hashOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(hashOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(hashOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(ShaderBytecode, BelongsToTheSourceBesideIt) { expectBytecodeOfItsSources(VEXIL_TEST_DATA); }

TEST(ShaderBytecode, HasASourceForEveryFile) { expectOneSourceForEachBytecode(VEXIL_TEST_DATA); }

TEST(ShaderBytecode, StandsInTheProgramAsItIsInTheTree) {
    expectEmbedded(VEXIL_TEST_DATA, {{"textured_quad.vs.dxbc", shaders::texturedQuadVertexShader},
                                     {"textured_quad.ps.dxbc", shaders::texturedQuadPixelShader}});
}

} // namespace
} // namespace vexil::tests
