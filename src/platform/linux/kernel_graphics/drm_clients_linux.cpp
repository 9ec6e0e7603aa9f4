#include "platform/linux/kernel_graphics/drm_clients.h"

#include <dirent.h>
#include <unistd.h>

#include <charconv>
#include <fstream>
#include <limits>
#include <set>
#include <string_view>
#include <utility>

namespace vexil::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view graphicsDevices = "/dev/dri/";

/// An open folder. Its entries are read by hand, since a query must not take long.
class Folder {
public:
    explicit Folder(const fs::path& path) : folder_(opendir(path.c_str())) {}
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        if (folder_ != nullptr) {
            closedir(folder_);
        }
    }

    /// Null at the end, and for a folder that cannot be read.
    [[nodiscard]] const char* next() const {
        const dirent* entry = folder_ == nullptr ? nullptr : readdir(folder_);
        return entry == nullptr ? nullptr : entry->d_name;
    }

    [[nodiscard]] bool pointsToGraphics(const char* link) const {
        char target[graphicsDevices.size()];
        const auto length = readlinkat(dirfd(folder_), link, target, sizeof(target));
        return length == static_cast<ssize_t>(sizeof(target)) &&
               std::string_view(target, sizeof(target)) == graphicsDevices;
    }

private:
    DIR* folder_;
};

std::set<unsigned> processes(const fs::path& procRoot) {
    std::set<unsigned> ids;
    const Folder folder(procRoot);
    while (const char* name = folder.next()) {
        const std::string_view text = name;
        unsigned id = 0;
        if (std::from_chars(name, name + text.size(), id).ptr == name + text.size()) {
            ids.insert(ids.end(), id);
        }
    }
    return ids;
}

std::string readText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text;
    // Unlike an iterator, getline does not throw where the process ends between opening and reading.
    std::getline(stream, text, '\0');
    return text;
}

} // namespace

std::size_t DrmClients::examine(unsigned process) {
    auto& files = files_[process];
    files.clear();
    lastExamined_ = process;
    const auto path = procRoot_ / std::to_string(process);
    // Opening the folder costs as much as some links.
    std::size_t links = 4;
    // A process that ends meanwhile, or belongs to somebody else, has no files.
    const Folder folder(path / "fd");
    while (const char* name = folder.next()) {
        ++links;
        if (folder.pointsToGraphics(name)) {
            files.push_back(path / "fdinfo" / name);
        }
    }
    return links;
}

void DrmClients::refresh() {
    const auto present = processes(procRoot_);
    std::erase_if(files_, [&](const auto& known) { return !present.contains(known.first); });
    std::size_t left = std::exchange(first_, false) ? std::numeric_limits<std::size_t>::max() : linksOfCall;
    const auto look = [&](unsigned process) {
        const auto links = examine(process);
        left = links < left ? left - links : 0;
    };

    const auto resumeBehind = lastExamined_;
    std::set<unsigned> known;
    for (const auto& [process, files] : files_) {
        known.insert(process);
    }
    for (const auto process : present) {
        if (left > 0 && !known.contains(process)) {
            look(process);
        }
    }
    // Then on from where the last call stopped, and around; a process may open a card at any time.
    auto next = known.upper_bound(resumeBehind);
    for (std::size_t visited = 0; left > 0 && visited < known.size(); ++visited) {
        if (next == known.end()) {
            next = known.begin();
        }
        look(*next++);
    }
}

std::vector<DrmFdInfo> DrmClients::read(const std::string& pciAddress) {
    refresh();
    std::vector<DrmFdInfo> clients;
    std::set<std::uint64_t> seen;
    for (const auto& [process, files] : files_) {
        for (const auto& file : files) {
            auto info = parseDrmFdInfo(readText(file));
            if (info && info->pciAddress == pciAddress && seen.insert(info->clientId).second) {
                clients.push_back(std::move(*info));
            }
        }
    }
    return clients;
}

} // namespace vexil::platform
