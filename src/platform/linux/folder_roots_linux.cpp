#include "platform/folder_roots.h"

#include "platform/linux/user_folders.h"
#include "platform/wide_text.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <system_error>
#include <vector>

namespace vexil::platform {

namespace {

struct Account {
    std::string name;
    std::string home;
};

std::optional<Account> account() {
    // Far above what any entry of the user database needs.
    std::vector<char> buffer(65536);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr) {
        return std::nullopt;
    }
    return Account{found->pw_name, found->pw_dir};
}

std::optional<std::filesystem::path> absolutePath(const char* variable) {
    const char* value = std::getenv(variable);
    return value == nullptr || *value != '/' ? std::nullopt : std::optional<std::filesystem::path>(value);
}

} // namespace

std::optional<std::filesystem::path> userFolder(const char* variable, const char* usual) {
    if (auto chosen = absolutePath(variable)) {
        return chosen;
    }
    auto home = absolutePath("HOME");
    if (!home) {
        const auto owner = account();
        if (!owner || !owner->home.starts_with('/')) {
            return std::nullopt;
        }
        home = owner->home;
    }
    return *home / usual;
}

std::optional<std::wstring> programDataFolder() {
    const auto folder = userFolder("XDG_DATA_HOME", ".local/share");
    if (!folder) {
        return std::nullopt;
    }
    // A slash at the end of the variable is not the path's own.
    return toWide((folder->has_filename() ? *folder : folder->parent_path()).string());
}

std::optional<std::wstring> accountName() {
    const auto owner = account();
    return owner ? std::optional(toWide(owner->name)) : std::nullopt;
}

std::optional<std::wstring> workingDirectory() {
    std::error_code error;
    const auto folder = std::filesystem::current_path(error);
    return error ? std::nullopt : std::optional(toWide(folder.string()));
}

} // namespace vexil::platform
