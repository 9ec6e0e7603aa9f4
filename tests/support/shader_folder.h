#pragma once

#include "support/sha256.h"

#include <gtest/gtest.h>

#include <algorithm>
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

// What the tests ask of a folder of shader sources with their bytecode beside them.
namespace vexil::tests {

inline std::string readShaderFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// File names without their extension, of the files with one of these extensions.
inline std::vector<std::filesystem::path> shaderFiles(const std::filesystem::path& folder,
                                                      const std::vector<std::string>& extensions) {
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (std::ranges::count(extensions, entry.path().extension().string()) == 1) {
            files.push_back(entry.path().filename());
        }
    }
    return files;
}

/// A source is written in HLSL, or in instructions.
inline std::vector<std::filesystem::path> shaderSources(const std::filesystem::path& folder) {
    return shaderFiles(folder, {".hlsl", ".dxasm"});
}

/// The hashes beside each bytecode, in a list as sha256sum writes it, are those of source and bytecode.
inline void expectBytecodeOfItsSources(const std::filesystem::path& folder) {
    const auto sources = shaderSources(folder);
    ASSERT_FALSE(sources.empty());
    for (const auto& source : sources) {
        const auto name = source.stem().string();
        std::map<std::string, std::string> hashes;
        std::istringstream lines(readShaderFile(folder / (name + ".dxbc.source")));
        for (std::string hash, file; lines >> hash >> file;) {
            hashes[file] = hash;
        }
        EXPECT_EQ(hashes.size(), 2U) << name;
        for (const auto& file : {source.string(), name + ".dxbc"}) {
            ASSERT_TRUE(hashes.contains(file)) << file;
            const auto content = readShaderFile(folder / file);
            EXPECT_EQ(hashes.at(file), sha256(std::as_bytes(std::span(content))))
                << file << ": run scripts/compile-shaders";
        }
    }
}

inline void expectOneSourceForEachBytecode(const std::filesystem::path& folder) {
    const auto sources = shaderSources(folder);
    for (const auto& bytecode : shaderFiles(folder, {".dxbc"})) {
        EXPECT_EQ(std::ranges::count(sources, bytecode.stem(), [](const auto& path) { return path.stem(); }),
                  1)
            << bytecode;
    }
}

/// The program holds every bytecode of the folder, byte for byte.
inline void expectEmbedded(const std::filesystem::path& folder,
                           const std::map<std::string, std::span<const std::byte>>& embedded) {
    EXPECT_EQ(embedded.size(), shaderFiles(folder, {".dxbc"}).size());
    for (const auto& [name, bytes] : embedded) {
        const auto file = readShaderFile(folder / name);
        ASSERT_EQ(bytes.size(), file.size()) << name;
        EXPECT_EQ(std::memcmp(bytes.data(), file.data(), file.size()), 0) << name;
    }
}

} // namespace vexil::tests
