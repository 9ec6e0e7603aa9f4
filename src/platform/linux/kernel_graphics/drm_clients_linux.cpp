#include "platform/linux/kernel_graphics/drm_clients.h"

#include <charconv>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>
#include <utility>
#include <system_error>

namespace vexil::platform {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view graphicsDevices = "/dev/dri/";

std::set<unsigned> processes(const fs::path& procRoot) {
    std::set<unsigned> ids;
    std::error_code error;
    for (fs::directory_iterator entry(procRoot, error), end; !error && entry != end; entry.increment(error)) {
        const auto name = entry->path().filename().string();
        unsigned id = 0;
        const auto* last = name.data() + name.size();
        if (std::from_chars(name.data(), last, id).ptr == last) {
            ids.insert(id);
        }
    }
    return ids;
}

std::string readText(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

std::size_t DrmClients::examine(unsigned process) {
    auto& files = files_[process];
    files.clear();
    lastExamined_ = process;
    const auto folder = procRoot_ / std::to_string(process);
    std::size_t links = 1;
    std::error_code error;
    // A process that ends meanwhile, or belongs to somebody else, has no files.
    for (fs::directory_iterator entry(folder / "fd", error), end; !error && entry != end;
         entry.increment(error), ++links) {
        std::error_code unreadable;
        const auto target = fs::read_symlink(entry->path(), unreadable);
        if (!unreadable && target.native().starts_with(graphicsDevices)) {
            files.push_back(folder / "fdinfo" / entry->path().filename());
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
