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
#include <string_view>
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

/// The files beside it that a source includes.
inline std::vector<std::string> includedFiles(const std::string& source) {
    static constexpr std::string_view directive = "#include \"";
    std::vector<std::string> files;
    std::istringstream lines(source);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(directive)) {
            files.push_back(line.substr(directive.size(), line.rfind('"') - directive.size()));
        }
    }
    return files;
}

/// The hashes beside each bytecode, in a list as sha256sum writes it, are those of the source, of what it
/// includes and of the bytecode.
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
        auto files = includedFiles(readShaderFile(folder / source));
        files.insert(files.end(), {source.string(), name + ".dxbc"});
        EXPECT_EQ(hashes.size(), files.size()) << name;
        for (const auto& file : files) {
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
