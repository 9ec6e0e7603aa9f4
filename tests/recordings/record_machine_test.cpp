#include "support/recorded_tree.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

// scripts/record-machine, on machines that were recorded.
namespace vexil::tests {
namespace {

namespace fs = std::filesystem;

/// The files and links of a tree, by path.
std::map<std::string, std::string> contents(const fs::path& root) {
    std::map<std::string, std::string> entries;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        const auto path = fs::relative(entry.path().parent_path(), root) / entry.path().filename();
        if (entry.is_symlink()) {
            entries[path] = "-> " + fs::read_symlink(entry.path()).string();
        } else if (entry.is_regular_file()) {
            std::ifstream stream(entry.path(), std::ios::binary);
            entries[path] = {std::istreambuf_iterator<char>(stream), {}};
        }
    }
    return entries;
}

int record(const fs::path& root, const fs::path& output) {
    const auto command = "'" VEXIL_RECORD_MACHINE "' '" + root.string() + "' >'" + output.string() + "' 2>&1";
    return std::system(command.c_str());
}

class RecordMachine : public testing::TestWithParam<const char*> {};

TEST_P(RecordMachine, WritesTheMachineThatItWasShown) {
    const RecordedTree machine(std::string(VEXIL_TEST_DATA) + "/" + GetParam() + ".tree");
    const auto output = testFolder() / "again.tree";
    ASSERT_EQ(record(machine.root(), output), 0);
    const RecordedTree again(output);
    auto expected = contents(machine.root());
    EXPECT_FALSE(expected.empty());
    EXPECT_EQ(contents(again.root()), expected);
}

INSTANTIATE_TEST_SUITE_P(Machines, RecordMachine,
                         testing::Values("radeon_rx_vega_64", "radeon_rx_580", "radeon_rx_6900_xt",
                                         "amdgpu_client", "amdgpu_client_of_2024", "i915_client",
                                         "zen_registers", "haswell_registers", "virtual_machine"),
                         [](const auto& each) { return std::string(each.param); });

TEST(RecordMachineScript, LeavesOutWhatIsNoCardsAndWhatIdentifiesTheMachine) {
    RecordedTree machine;
    machine.addFile("sys/bus/pci/devices/0000:01:00.0/class", "0x030000\n");
    machine.addFile("sys/bus/pci/devices/0000:01:00.0/unique_id", "0123456789abcdef\n");
    machine.addFile("sys/bus/pci/devices/0000:02:00.0/class", "0x020000\n");
    machine.addFile("proc/7/comm", "a program\n");
    machine.addFile("proc/7/fdinfo/3", "pos:\t0\n");
    machine.addLink("proc/7/fd/3", "/home/somebody/a file");
    const auto output = testFolder() / "record.tree";
    ASSERT_EQ(record(machine.root(), output), 0);
    const std::map<std::string, std::string> expected = {
        {"sys/bus/pci/devices/0000:01:00.0/class", "0x030000\n"}};
    EXPECT_EQ(contents(RecordedTree(output).root()), expected);
}

TEST(RecordMachineScript, SaysWhereItFindsNoMachine) {
    const RecordedTree empty;
    const auto output = testFolder() / "nothing";
    EXPECT_NE(record(empty.root(), output), 0);
    std::ifstream stream(output);
    std::string line;
    std::getline(stream, line);
    EXPECT_EQ(line, "error: no PCI devices: " + empty.root().string() + "/sys/bus/pci/devices");
}

} // namespace
} // namespace vexil::tests
