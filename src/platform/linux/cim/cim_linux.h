#pragma once

#include "platform/cim_records.h"
#include "system/cim/cim.h"
#include "system/cim/query_text.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>

// The CIM client over procfs and sysfs, and over a file for records. It knows the namespace of the machine,
// with the classes of `machine_objects.h`, and those that were made to hold records; checks and statuses are
// those of the client over COM, in the same order.
namespace vexil::platform {

/// The file of the records in the user's state folder (XDG_STATE_HOME); nothing for a user without a home.
[[nodiscard]] std::optional<std::filesystem::path> recordFile();

class LinuxCim final : public system::Cim {
public:
    /// `root` holds proc, sys and usr.
    explicit LinuxCim(std::filesystem::path root = "/",
                      std::optional<std::filesystem::path> records = recordFile());

    system::CimStatus queryWhere(const char* const* properties, const char* where, const char* className,
                                 std::int32_t count, system::CimRows& rows,
                                 const wchar_t* nameSpace) override;
    system::CimStatus query(const char* const* properties, const char* className, std::int32_t count,
                            system::CimRows& rows, const wchar_t* nameSpace) override;
    /// The whole of it is one transaction, so several processes may write at once, and one that is killed
    /// leaves either a whole record or none. `NoLocator` where the file cannot be used, and `NotConnected`
    /// where a step fails; unlike over COM a record that could not be put is told of.
    system::CimStatus writeRecord(const std::vector<std::string>& names,
                                  const std::vector<std::string>& values, const char* className,
                                  const wchar_t* nameSpace) override;
    system::CimStatus removeNamespace(const wchar_t* root, const wchar_t* parent,
                                      const wchar_t* child) override;

private:
    std::filesystem::path root_;
    std::optional<std::filesystem::path> records_;
};

/// `WmiQuery::query` below a root, where no records are.
[[nodiscard]] system::CimStatus answerWmiQuery(const std::filesystem::path& root,
                                               const system::QueryArguments& arguments,
                                               std::map<std::string, std::string>& values,
                                               const wchar_t* nameSpace);

/// `recordTrouble` of a file.
[[nodiscard]] std::optional<std::string> recordTrouble(const std::optional<std::filesystem::path>& file,
                                                       RecordUse use);

} // namespace vexil::platform
