#pragma once

#include "system/cim/cim.h"
#include "system/cim/query_text.h"

#include <filesystem>
#include <map>
#include <string>

// The CIM client over procfs and sysfs. It knows one namespace, that of the machine, and in it the classes of
// `machine_objects.h`; checks and statuses are those of the client over COM, in the same order.
namespace vexil::platform {

class LinuxCim final : public system::Cim {
public:
    /// `root` holds proc, sys and usr.
    explicit LinuxCim(std::filesystem::path root = "/");

    system::CimStatus queryWhere(const char* const* properties, const char* where, const char* className,
                                 std::int32_t count, system::CimRows& rows,
                                 const wchar_t* nameSpace) override;
    system::CimStatus query(const char* const* properties, const char* className, std::int32_t count,
                            system::CimRows& rows, const wchar_t* nameSpace) override;
    /// This client keeps no records: always `NotConnected`, the status of a write step that failed.
    system::CimStatus writeRecord(const std::vector<std::string>& names,
                                  const std::vector<std::string>& values, const char* className,
                                  const wchar_t* nameSpace) override;
    /// No namespace can be removed: always `NoLocator`, the status of that failure.
    system::CimStatus removeNamespace(const wchar_t* root, const wchar_t* parent,
                                      const wchar_t* child) override;

private:
    std::filesystem::path root_;
};

/// `WmiQuery::query` below a root.
[[nodiscard]] system::CimStatus answerWmiQuery(const std::filesystem::path& root,
                                               const system::QueryArguments& arguments,
                                               std::map<std::string, std::string>& values,
                                               const wchar_t* nameSpace);

} // namespace vexil::platform
