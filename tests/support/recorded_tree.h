#pragma once

#include <filesystem>
#include <string>

namespace vexil::tests {

/// A machine's files in a folder of their own, which goes with the object. They are written in one text:
///     # a note                    before the first entry
///     @file PATH                  the lines up to the next entry are its content
///     @bytes PATH                 the lines up to the next entry are "OFFSET: BYTE BYTE ...", all of it
///                                 hexadecimal, as `lspci -xxx` prints it; other bytes are 0
///     @link PATH -> TARGET
///     @folder PATH
/// Paths are relative to the root of the machine; the folders that they need are made.
class RecordedTree {
public:
    /// An empty machine.
    RecordedTree();
    /// The machine of a `.tree` file. Throws `std::runtime_error` if that cannot be read or understood.
    explicit RecordedTree(const std::filesystem::path& file);
    RecordedTree(const RecordedTree&) = delete;
    RecordedTree& operator=(const RecordedTree&) = delete;
    ~RecordedTree();

    [[nodiscard]] const std::filesystem::path& root() const { return root_; }
    void addFile(const std::string& path, const std::string& content);
    void addLink(const std::string& path, const std::string& target);
    void addFolder(const std::string& path);
    void remove(const std::string& path);

private:
    [[nodiscard]] std::filesystem::path place(const std::string& path) const;

    std::filesystem::path root_;
};

} // namespace vexil::tests
