#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

// The map of the suite's folders. Nothing here creates one: that is the host's work.
namespace vexil::system {

/// The numbers are the suite's own. Folders 2 to 5 and 7 to 10 are the account's, and lie in folder 2.
enum class FolderKind : std::int32_t {
    Maker = 0,
    Product = 1,
    Account = 2,
    Logs = 3,
    Kvrt = 4,
    Scripts = 5,
    WorkingScripts = 6, ///< in the working directory
    WebEngine = 7,
    ThermalMonitorLogs = 8,
    Temporary = 9,
    ToolLogs = 10,
};

/// What the suite's folders are secured with, as a security descriptor's text: everything for the system and
/// for administrators, reading and executing for users, inherited by files and folders.
inline constexpr const wchar_t* folderSecurity = L"D:(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)";

/// Characters of a longer account name or working directory do not fit: the text counts as not told.
inline constexpr std::size_t accountNameLimit = 256;
inline constexpr std::size_t workingDirectoryLimit = 260;

/// What the map is made of; see `platform/folder_roots.h`.
class FolderRoots {
public:
    virtual ~FolderRoots() = default;
    virtual std::optional<std::wstring> programData() = 0;
    virtual std::optional<std::wstring> accountName() = 0;
    virtual std::optional<std::wstring> workingDirectory() = 0;
    virtual wchar_t separator() = 0;
};

/// The path of a folder, with a separator at its end; for a number that is no folder, that of the program
/// data. A root that cannot be told is left out of the path, and nobody hears of it.
[[nodiscard]] std::wstring folderPath(FolderRoots& roots, FolderKind kind);

/// The same on this machine, for the account that the process runs as.
[[nodiscard]] std::wstring getFolderPath(FolderKind kind);
/// The same in UTF-8.
[[nodiscard]] std::string getNarrowFolderPath(FolderKind kind);

} // namespace vexil::system
