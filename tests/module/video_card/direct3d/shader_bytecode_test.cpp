#include "module/video_card/direct3d/textured_quad_shaders.h"
#include "support/sha256.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <span>
#include <sstream>
#include <string>
#include <vector>

// The compiled shaders in the tree belong to the sources beside them, and the module holds them as they are.
namespace vexil::tests {
namespace {

namespace shaders = module::video_card::shaders;

const std::filesystem::path folder = VEXIL_TEST_DATA;

std::string readFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::string hashOf(const std::string& content) { return sha256(std::as_bytes(std::span(content))); }

/// The hashes by file name, of a list as sha256sum writes it.
std::map<std::string, std::string> hashList(const std::filesystem::path& path) {
    std::map<std::string, std::string> hashes;
    std::istringstream lines(readFile(path));
    for (std::string hash, name; lines >> hash >> name;) {
        hashes[name] = hash;
    }
    return hashes;
}

std::vector<std::string> namesWith(const std::string& extension) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() == extension) {
            names.push_back(entry.path().stem().string());
        }
    }
    return names;
}

TEST(Sha256, GivesTheHashesOfTheStandard) {
    EXPECT_EQ(hashOf(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(hashOf("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(hashOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(ShaderBytecode, BelongsToTheSourceBesideIt) {
    const auto names = namesWith(".hlsl");
    ASSERT_FALSE(names.empty());
    for (const auto& name : names) {
        const auto hashes = hashList(folder / (name + ".dxbc.source"));
        EXPECT_EQ(hashes.size(), 2U) << name;
        for (const auto& file : {name + ".hlsl", name + ".dxbc"}) {
            ASSERT_TRUE(hashes.contains(file)) << file;
            EXPECT_EQ(hashes.at(file), hashOf(readFile(folder / file)))
                << file << ": run scripts/compile-shaders";
        }
    }
}

TEST(ShaderBytecode, HasASourceForEveryFile) {
    const auto sources = namesWith(".hlsl");
    for (const auto& name : namesWith(".dxbc")) {
        EXPECT_EQ(std::count(sources.begin(), sources.end(), name), 1) << name;
    }
}

TEST(ShaderBytecode, StandsInTheProgramAsItIsInTheTree) {
    const std::map<std::string, std::span<const std::byte>> embedded = {
        {"textured_quad.vs.dxbc", shaders::texturedQuadVertexShader},
        {"textured_quad.ps.dxbc", shaders::texturedQuadPixelShader},
    };
    for (const auto& [name, bytes] : embedded) {
        const auto file = readFile(folder / name);
        ASSERT_EQ(bytes.size(), file.size()) << name;
        EXPECT_EQ(std::memcmp(bytes.data(), file.data(), file.size()), 0) << name;
    }
}

} // namespace
} // namespace vexil::tests
