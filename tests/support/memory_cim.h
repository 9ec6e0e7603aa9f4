#pragma once

#include "system/cim/cim_rows.h"
#include "system/cim/record_schema.h"

#include <algorithm>
#include <cwchar>
#include <map>
#include <string>
#include <vector>

namespace vexil::tests {

/// A repository with the class of results in memory, and answers that a test chooses.
class MemoryCim final : public system::Cim {
public:
    using Record = std::map<std::string, std::string>;

    std::vector<Record> records; ///< each with its id; in the order that queries give
    bool hasNamespace = false;   ///< made by the first record
    bool lacksClass = false;     ///< there is the namespace only; until the first record
    system::CimStatus queryStatus = system::CimStatus::Success;
    system::CimStatus writeStatus = system::CimStatus::Success;
    int writesUntilFailure = -1; ///< so many succeed before `writeStatus` is NotConnected; -1: all
    std::string lastClass;

    /// Knows the question whether the class of results is there: a definition that is found is no row.
    system::CimStatus queryWhere(const char* const*, const char* where, const char* className, std::int32_t,
                                 system::CimRows& rows, const wchar_t*) override {
        rows = nullptr;
        if (queryStatus != system::CimStatus::Success || std::string(className) != "meta_class" ||
            std::string(where) != "__CLASS = 'TestResult'") {
            return system::CimStatus::QueryFailed;
        }
        return lacksClass ? system::CimStatus::Success : system::CimStatus::PropertyNotRead;
    }
    system::CimStatus query(const char* const* properties, const char* className, std::int32_t count,
                            system::CimRows& rows, const wchar_t* nameSpace) override {
        rows = nullptr;
        if (queryStatus != system::CimStatus::Success) {
            return queryStatus;
        }
        if (!hasNamespace || std::wcscmp(nameSpace, system::recordNamespace) != 0) {
            return system::CimStatus::NotConnected;
        }
        const bool ofNamespaces = std::string(className) == "__Namespace";
        if (lacksClass && !ofNamespaces) {
            return system::CimStatus::QueryFailed;
        }
        system::CimRowCollector collector;
        for (const auto& record : ofNamespaces ? std::vector<Record>() : records) {
            collector.addRow();
            for (std::int32_t i = 0; i < count; ++i) {
                const auto found = record.find(properties[i]);
                collector.addText(found == record.end() ? std::string() : found->second);
            }
        }
        rows = collector.take();
        return queryStatus;
    }
    system::CimStatus writeRecord(const std::vector<std::string>& names,
                                  const std::vector<std::string>& values, const char* className,
                                  const wchar_t* nameSpace) override {
        if (writesUntilFailure == 0) {
            writeStatus = system::CimStatus::NotConnected;
        }
        writesUntilFailure -= writesUntilFailure > 0 ? 1 : 0;
        if (writeStatus != system::CimStatus::Success) {
            return writeStatus;
        }
        hasNamespace = std::wcscmp(nameSpace, system::recordNamespace) == 0;
        lacksClass = false;
        lastClass = className;
        Record record{{"Id", std::to_string(nextId++)}};
        for (std::size_t i = 0; i < names.size(); ++i) {
            record[names[i]] = values[i];
        }
        records.push_back(record);
        return writeStatus;
    }
    system::CimStatus removeNamespace(const wchar_t* root, const wchar_t* parent,
                                      const wchar_t* child) override {
        if (removeStatus == system::CimStatus::Success) {
            removed = std::wstring(root) + L'|' + parent + L'|' + child;
            records.clear();
            hasNamespace = false;
            nextId = 0;
        }
        return removeStatus;
    }

    system::CimStatus removeStatus = system::CimStatus::Success;
    std::wstring removed;
    int nextId = 0;
};

} // namespace vexil::tests
