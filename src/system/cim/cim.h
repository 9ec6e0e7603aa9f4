#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

// The CIM client: facts about the system by queries, and records of test results. Nothing here throws for an
// ordinary failure; every operation answers a status.
namespace vexil::system {

/// The small integer that both clients, `Cim` and `WmiQuery`, answer with.
enum class CimStatus : std::int32_t {
    Success = 0,
    ComNotInitialized = 16,      ///< `CoInitializeEx` failed
    SecurityNotInitialized = 17, ///< `CoInitializeSecurity` failed
    NoLocator = 18,              ///< the locator could not be created, or a namespace object not be removed
    NotConnected = 19,           ///< no such namespace, or no services object; also a failed step of a write
    BlanketNotSet = 20,          ///< `CoSetProxyBlanket` failed
    QueryFailed = 21,            ///< the query was refused, or gave no enumerator
    PropertyNotRead = 23,        ///< a property could not be read from an object; the query ran to its end
    NullProperty = 25,           ///< the array of properties or one of its entries is null
    NullClass = 26,
    NoProperties = 27, ///< the property count is zero or negative
    TextNotBuilt = 28, ///< no memory for the text of the query
    NullWhere = 29,    ///< only `Cim::queryWhere`
};

/// One object: a heap text for each requested property, in the order of the request.
using CimRow = std::vector<char*>;
/// The objects that a query found. The caller owns it and gives it back with `Cim::freeRows`.
using CimRows = std::vector<CimRow*>*;

/// The namespace that describes the machine.
inline constexpr const wchar_t* machineNamespace = L"ROOT\\CIMV2";

/// The class by which WQL knows the definitions of a namespace's classes. They are asked for as a whole, "*",
/// and by the property `__CLASS`, their name; as rows they cannot be read.
inline constexpr const char* definitionClass = "meta_class";

/// The operations stand in the order of their slots. `properties` is an array of `count` names; a query that
/// finds no object, or does not answer `Success`, leaves `rows` null.
class Cim {
public:
    virtual ~Cim() = default;
    virtual CimStatus queryWhere(const char* const* properties, const char* where, const char* className,
                                 std::int32_t count, CimRows& rows, const wchar_t* nameSpace) = 0;
    virtual CimStatus query(const char* const* properties, const char* className, std::int32_t count,
                            CimRows& rows, const wchar_t* nameSpace) = 0;
    /// Appends a record to a class, with `values` as texts under `names`.
    virtual CimStatus writeRecord(const std::vector<std::string>& names,
                                  const std::vector<std::string>& values, const char* className,
                                  const wchar_t* nameSpace) = 0;
    /// Removes the namespace `child` of `root`\`parent`, and `parent` with its last child.
    virtual CimStatus removeNamespace(const wchar_t* root, const wchar_t* parent, const wchar_t* child) = 0;
    /// Frees the texts, the rows and the vector, and makes the pointer null. A null address, a null pointer
    /// and null entries are skipped.
    virtual void freeRows(CimRows* rows);
};

/// The client of this platform.
[[nodiscard]] std::unique_ptr<Cim> makeCim();

} // namespace vexil::system
