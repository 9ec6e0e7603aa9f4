#include "platform/linux/kernel_graphics/drm_clients.h"

#include "support/recorded_tree.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace vexil::tests {
namespace {

namespace fs = std::filesystem;
using platform::DrmClients;

constexpr const char* address = "0000:0a:00.0";

std::vector<std::uint64_t> ids(const std::vector<platform::DrmFdInfo>& clients) {
    std::vector<std::uint64_t> numbers;
    for (const auto& client : clients) {
        numbers.push_back(client.clientId);
    }
    std::ranges::sort(numbers);
    return numbers;
}

using Ids = std::vector<std::uint64_t>;

void addClient(RecordedTree& tree, unsigned process, unsigned file, unsigned client) {
    const auto folder = "proc/" + std::to_string(process);
    tree.addLink(folder + "/fd/" + std::to_string(file), "/dev/dri/renderD128");
    tree.addFile(folder + "/fdinfo/" + std::to_string(file),
                 "drm-driver: amdgpu\ndrm-pdev: " + std::string(address) +
                     "\ndrm-client-id: " + std::to_string(client) + "\n");
}

TEST(DrmClients, AreReadOnceEachWhateverFilesTheyHaveOpen) {
    const RecordedTree tree(fs::path(VEXIL_TEST_DATA) / "amdgpu.tree");
    EXPECT_EQ(ids(DrmClients(tree.root() / "proc").read(address)), (Ids{11, 23}));
}

TEST(DrmClients, AreThoseOfTheCardOnly) {
    const RecordedTree tree(fs::path(VEXIL_TEST_DATA) / "i915.tree");
    DrmClients clients(tree.root() / "proc");
    EXPECT_EQ(ids(clients.read("0000:00:02.0")), Ids{7});
    EXPECT_EQ(ids(clients.read("0000:01:00.0")), Ids{3});
    EXPECT_TRUE(clients.read("0000:02:00.0").empty());
}

TEST(DrmClients, AreNoneWithoutProcesses) {
    const RecordedTree tree;
    EXPECT_TRUE(DrmClients(tree.root() / "proc").read(address).empty());
    EXPECT_TRUE(DrmClients(tree.root()).read(address).empty());
}

TEST(DrmClients, PassOverFilesThatCannotBeRead) {
    RecordedTree tree;
    // What the kernel answers for a process that ends just now: a file that is gone, or cannot be read.
    tree.addLink("proc/10/fd/3", "/dev/dri/renderD128");
    tree.addLink("proc/11/fd/3", "/dev/dri/renderD128");
    tree.addFolder("proc/11/fdinfo/3");
    tree.addFile("proc/12/fd", "no folder");
    addClient(tree, 20, 3, 77);
    DrmClients clients(tree.root() / "proc");
    EXPECT_EQ(ids(clients.read(address)), Ids{77});
    EXPECT_EQ(ids(clients.read(address)), Ids{77});
}

TEST(DrmClients, ForgetAProcessThatEnded) {
    RecordedTree tree(fs::path(VEXIL_TEST_DATA) / "amdgpu.tree");
    DrmClients clients(tree.root() / "proc");
    static_cast<void>(clients.read(address));
    tree.remove("proc/3456");
    EXPECT_EQ(ids(clients.read(address)), Ids{11});
}

TEST(DrmClients, AreSeenAtOnceInANewProcess) {
    RecordedTree tree;
    for (unsigned process = 1; process <= 40; ++process) {
        for (unsigned file = 0; file < 20; ++file) {
            tree.addLink("proc/" + std::to_string(process) + "/fd/" + std::to_string(file), "/dev/null");
        }
    }
    DrmClients clients(tree.root() / "proc");
    static_cast<void>(clients.read(address));
    addClient(tree, 5000, 3, 77);
    EXPECT_EQ(ids(clients.read(address)), Ids{77});
}

TEST(DrmClients, AreSeenAfterSomeCallsInAnOldProcess) {
    RecordedTree tree;
    for (unsigned process = 1; process <= 40; ++process) {
        for (unsigned file = 0; file < 20; ++file) {
            tree.addLink("proc/" + std::to_string(process) + "/fd/" + std::to_string(file), "/dev/null");
        }
    }
    DrmClients clients(tree.root() / "proc");
    static_cast<void>(clients.read(address));
    addClient(tree, 17, 30, 77);
    // 40 processes with 22 entries and the cost of opening, 128 a call: five processes a call, or eight
    // calls.
    int calls = 1;
    while (clients.read(address).empty() && calls < 20) {
        ++calls;
    }
    EXPECT_LE(calls, 9);
}

} // namespace
} // namespace vexil::tests
