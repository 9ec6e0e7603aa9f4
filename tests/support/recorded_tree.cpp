#include "support/recorded_tree.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>

namespace vexil::tests {

namespace fs = std::filesystem;

namespace {

fs::path newFolder() {
    std::random_device random;
    for (;;) {
        auto folder = fs::temp_directory_path() / ("vexil-tree-" + std::to_string(random()));
        if (fs::create_directory(folder)) {
            return folder;
        }
    }
}

/// What stands behind the word that begins an entry.
std::optional<std::string> behind(const std::string& line, const std::string& word) {
    return line.starts_with(word) ? std::optional(line.substr(word.size())) : std::nullopt;
}

std::size_t hexadecimal(const std::string& word) {
    std::size_t number = 0;
    const auto* const end = word.data() + word.size();
    if (word.empty() || std::from_chars(word.data(), end, number, 16).ptr != end) {
        throw std::runtime_error("not a hexadecimal number: " + word);
    }
    return number;
}

/// The content that the lines of a @bytes entry describe.
std::string bytesOf(const std::string& lines) {
    std::string content;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        const auto colon = line.find(':');
        if (colon == std::string::npos) {
            throw std::runtime_error("no line of bytes: " + line);
        }
        auto place = hexadecimal(line.substr(0, colon));
        std::istringstream bytes(line.substr(colon + 1));
        for (std::string byte; bytes >> byte; ++place) {
            content.resize(std::max(content.size(), place + 1));
            content[place] = static_cast<char>(hexadecimal(byte));
        }
    }
    return content;
}

} // namespace

RecordedTree::RecordedTree() : root_(newFolder()) {}

RecordedTree::RecordedTree(const fs::path& file) : RecordedTree() {
    std::ifstream stream(file);
    if (!stream) {
        throw std::runtime_error("no recorded tree " + file.string());
    }
    std::optional<std::string> path;
    bool isBytes = false;
    std::string content;
    const auto finishFile = [&] {
        if (path) {
            addFile(*path, isBytes ? bytesOf(content) : content);
        }
        path.reset();
        content.clear();
    };
    for (std::string line; std::getline(stream, line);) {
        if (!line.starts_with('@')) {
            content += line + "\n";
            continue;
        }
        finishFile();
        if (path = behind(line, "@bytes "); path) {
            isBytes = true;
        } else if (path = behind(line, "@file "); path) {
            isBytes = false;
        } else if (const auto folder = behind(line, "@folder ")) {
            addFolder(*folder);
        } else if (const auto link = behind(line, "@link ");
                   link && link->find(" -> ") != std::string::npos) {
            const auto arrow = link->find(" -> ");
            addLink(link->substr(0, arrow), link->substr(arrow + 4));
        } else {
            throw std::runtime_error(file.string() + ": not an entry: " + line);
        }
    }
    finishFile();
}

RecordedTree::~RecordedTree() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

void RecordedTree::addFile(const std::string& path, const std::string& content) {
    std::ofstream(place(path), std::ios::binary) << content;
}

void RecordedTree::addLink(const std::string& path, const std::string& target) {
    fs::create_symlink(target, place(path));
}

void RecordedTree::addFolder(const std::string& path) { fs::create_directories(root_ / path); }

void RecordedTree::remove(const std::string& path) { fs::remove_all(root_ / path); }

fs::path RecordedTree::place(const std::string& path) const {
    fs::create_directories((root_ / path).parent_path());
    return root_ / path;
}

} // namespace vexil::tests
