#include "system/folders.h"

#include "platform/folder_roots.h"
#include "platform/shared_library.h"
#include "platform/wide_text.h"

#include <algorithm>
#include <array>

namespace vexil::system {

namespace {

enum class Root { ProgramData, Account, WorkingDirectory };

struct Folder {
    FolderKind kind;
    Root root;
    const wchar_t* path; ///< below its root, with "\" for the separator
};

// clang-format off
constexpr std::array folders = {
    Folder{FolderKind::Maker,              Root::ProgramData,      L"Norvane\\"},
    Folder{FolderKind::Product,            Root::ProgramData,      L"Norvane\\VXE\\"},
    Folder{FolderKind::Account,            Root::Account,          L""},
    Folder{FolderKind::Logs,               Root::Account,          L"logs\\"},
    Folder{FolderKind::Kvrt,               Root::Account,          L"kvrt\\"},
    Folder{FolderKind::Scripts,            Root::Account,          L"scripts\\"},
    Folder{FolderKind::WorkingScripts,     Root::WorkingDirectory, L"\\scripts\\"},
    Folder{FolderKind::WebEngine,          Root::Account,          L"QtWebEngine\\"},
    Folder{FolderKind::ThermalMonitorLogs, Root::Account,          L"logs_thermal_monitor_tool\\"},
    Folder{FolderKind::Temporary,          Root::Account,          L"temp\\"},
    Folder{FolderKind::ToolLogs,           Root::Account,          L"logs_tools\\"},
};
// clang-format on
static_assert(folders.size() == 11 && folders.back().kind == FolderKind{10});

std::wstring within(std::optional<std::wstring> text, std::size_t limit) {
    return text && text->size() <= limit ? *std::move(text) : std::wstring();
}

class PlatformFolderRoots final : public FolderRoots {
public:
    std::optional<std::wstring> programData() override { return platform::programDataFolder(); }
    std::optional<std::wstring> accountName() override { return platform::accountName(); }
    std::optional<std::wstring> workingDirectory() override { return platform::workingDirectory(); }
    wchar_t separator() override { return static_cast<wchar_t>(platform::pathSeparator()); }
};

} // namespace

std::wstring folderPath(FolderRoots& roots, FolderKind kind) {
    const wchar_t separator = roots.separator();
    const auto separated = [&](std::wstring path) {
        std::ranges::replace(path, L'\\', separator);
        return path;
    };
    // Every root is asked each time, whichever is needed: none of the answers is kept.
    const auto base = roots.programData().value_or(std::wstring()) + separator;
    const auto account =
        base + separated(L"Norvane\\VXE\\") + within(roots.accountName(), accountNameLimit) + separator;
    const auto working = within(roots.workingDirectory(), workingDirectoryLimit);
    const auto folder =
        std::ranges::find_if(folders, [&](const Folder& candidate) { return candidate.kind == kind; });
    if (folder == folders.end()) {
        return base;
    }
    const auto& root = folder->root == Root::ProgramData ? base
                       : folder->root == Root::Account   ? account
                                                         : working;
    return root + separated(folder->path);
}

std::wstring getFolderPath(FolderKind kind) {
    PlatformFolderRoots roots;
    return folderPath(roots, kind);
}

std::string getNarrowFolderPath(FolderKind kind) { return platform::toUtf8(getFolderPath(kind)); }

} // namespace vexil::system
