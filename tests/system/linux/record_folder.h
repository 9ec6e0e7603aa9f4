#pragma once

#include "platform/linux/cim/cim_linux.h"
#include "platform/linux/cim/record_store.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vexil::tests {

/// A state folder of a test's own, and the client over it.
class RecordFolderTest : public testing::Test {
protected:
    using Rows = std::vector<std::vector<std::string>>;

    int write(const std::vector<std::string>& names, const std::vector<std::string>& values,
              const char* className = "TestResult", const wchar_t* nameSpace = system::recordNamespace) {
        return static_cast<int>(cim_.writeRecord(names, values, className, nameSpace));
    }
    int write(const std::string& testName) { return write({"TestName"}, {testName}); }
    int remove(const wchar_t* root, const wchar_t* parent, const wchar_t* child) {
        return static_cast<int>(cim_.removeNamespace(root, parent, child));
    }
    int query(const std::vector<const char*>& properties, const char* className = "TestResult",
              const wchar_t* nameSpace = system::recordNamespace) {
        system::CimRows rows = nullptr;
        const auto status = cim_.query(properties.data(), className,
                                       static_cast<std::int32_t>(properties.size()), rows, nameSpace);
        rows_.clear();
        for (std::size_t i = 0; rows != nullptr && i < rows->size(); ++i) {
            rows_.emplace_back(rows->at(i)->begin(), rows->at(i)->end());
        }
        cim_.freeRows(&rows);
        return static_cast<int>(status);
    }
    /// Puts records with these ids there, as writers of long ago have left them.
    void fill(std::int32_t firstId, std::int32_t count) {
        using platform::RecordStore;
        RecordStore store(file_, platform::Database::Access::Write);
        store.addNamespace("ROOT\\Norvane");
        store.addNamespace("ROOT\\Norvane\\Norvane_Diagnostics");
        const auto number = store.addClass("ROOT\\Norvane\\Norvane_Diagnostics", "TestResult");
        for (std::int32_t i = 0; i < count; ++i) {
            store.addRecord(number, firstId + i, {"TestName"}, {"filled"});
        }
        store.commit();
    }
    [[nodiscard]] std::string bytes() const {
        std::ifstream stream(file_, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::filesystem::path folder_ = testFolder();
    std::filesystem::path file_ = folder_ / "state" / "vexil" / "cim.sqlite3";
    platform::LinuxCim cim_{"/", file_};
    Rows rows_;
};

} // namespace vexil::tests
