#include "host/platform/windows/library_imports.h"

#include "host/platform/process.h"
#include "platform/wide_text.h"

#include <windows.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <optional>
#include <set>
#include <vector>

namespace vexil::host::platform {

namespace {

using Bytes = std::vector<char>;

template <typename Record>
std::optional<Record> recordAt(const Bytes& bytes, std::size_t offset) {
    if (offset > bytes.size() || bytes.size() - offset < sizeof(Record)) {
        return std::nullopt;
    }
    Record record;
    std::memcpy(&record, bytes.data() + offset, sizeof record);
    return record;
}

/// A library's file, with addresses as they will be in memory.
class ImageFile {
public:
    explicit ImageFile(const std::filesystem::path& file) {
        std::ifstream stream(file, std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(stream), {});
        const auto start = recordAt<IMAGE_DOS_HEADER>(bytes_, 0);
        if (!start || start->e_magic != IMAGE_DOS_SIGNATURE || start->e_lfanew < 0) {
            return;
        }
        const auto offset = static_cast<std::size_t>(start->e_lfanew);
        headers_ = recordAt<IMAGE_NT_HEADERS64>(bytes_, offset);
        if (!headers_ || headers_->Signature != IMAGE_NT_SIGNATURE) {
            headers_.reset();
            return;
        }
        const std::size_t first =
            offset + offsetof(IMAGE_NT_HEADERS64, OptionalHeader) + headers_->FileHeader.SizeOfOptionalHeader;
        for (std::size_t i = 0; i < headers_->FileHeader.NumberOfSections; ++i) {
            if (const auto section =
                    recordAt<IMAGE_SECTION_HEADER>(bytes_, first + i * sizeof(IMAGE_SECTION_HEADER))) {
                sections_.push_back(*section);
            }
        }
    }

    [[nodiscard]] std::vector<std::string> imports() const {
        std::vector<std::string> names;
        if (!headers_) {
            return names;
        }
        const auto table =
            headers_->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
        for (DWORD address = table; address != 0; address += sizeof(IMAGE_IMPORT_DESCRIPTOR)) {
            const auto place = offsetOf(address);
            const auto import = place ? recordAt<IMAGE_IMPORT_DESCRIPTOR>(bytes_, *place) : std::nullopt;
            if (!import || import->Name == 0) {
                break;
            }
            if (const auto name = offsetOf(import->Name)) {
                names.emplace_back(bytes_.data() + *name,
                                   strnlen(bytes_.data() + *name, bytes_.size() - *name));
            }
        }
        return names;
    }

private:
    [[nodiscard]] std::optional<std::size_t> offsetOf(DWORD address) const {
        for (const auto& section : sections_) {
            if (address >= section.VirtualAddress &&
                address - section.VirtualAddress < section.SizeOfRawData) {
                const std::size_t offset = address - section.VirtualAddress + section.PointerToRawData;
                return offset < bytes_.size() ? std::optional(offset) : std::nullopt;
            }
        }
        return std::nullopt;
    }

    Bytes bytes_;
    std::optional<IMAGE_NT_HEADERS64> headers_;
    std::vector<IMAGE_SECTION_HEADER> sections_;
};

/// Where an import of the library that is no part of the system lies, or nothing.
std::optional<std::filesystem::path> installed(const std::filesystem::path& library,
                                               const std::wstring& name) {
    for (const auto& folder : {library.parent_path(), programFolder()}) {
        std::error_code ignored;
        if (std::filesystem::exists(folder / name, ignored)) {
            return folder / name;
        }
    }
    return std::nullopt;
}

std::string culprit(const std::filesystem::path& library, std::set<std::filesystem::path>& seen) {
    for (const auto& name : ImageFile(library).imports()) {
        const auto wide = vexil::platform::toWide(name);
        const auto file = installed(library, wide);
        if (!file) {
            if (LoadLibraryExW(wide.c_str(), nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32) == nullptr) {
                return "it needs '" + name + "', which is missing";
            }
            continue;
        }
        if (!seen.insert(*file).second) {
            continue;
        }
        if (auto deeper = culprit(*file, seen); !deeper.empty()) {
            return deeper;
        }
        if (LoadLibraryExW(file->c_str(), nullptr, librarySearch) == nullptr) {
            return "it needs '" + name + "', which is broken";
        }
    }
    return {};
}

} // namespace

std::string culpritAmongImports(const std::filesystem::path& library) {
    std::set<std::filesystem::path> seen;
    return culprit(std::filesystem::absolute(library).make_preferred(), seen);
}

} // namespace vexil::host::platform
