#pragma once

#include "system/cim/cim.h"

#include <array>
#include <cstddef>
#include <cstdint>

// What management tools find in the repository: namespaces, properties and bounds of a class of records. It
// is fixed, since tools outside this system read it.
namespace vexil::system {

/// The outermost namespace, which is always there, and the two that the suite makes in it.
inline constexpr const wchar_t* rootNamespace = L"ROOT";
inline constexpr const wchar_t* suiteNamespaceName = L"Norvane";
inline constexpr const wchar_t* suiteNamespace = L"ROOT\\Norvane";
inline constexpr const wchar_t* recordNamespaceName = L"Norvane_Diagnostics";
inline constexpr const wchar_t* recordNamespace = L"ROOT\\Norvane\\Norvane_Diagnostics";

/// CIM's numbers of the types in use.
enum class CimType : std::int32_t { Text = 8, Unsigned32 = 19 };

/// The key of a record.
inline constexpr const char* recordKey = "Id";

/// The other properties, all texts, in the order of their creation.
inline constexpr std::array recordTexts = {
    "ModuleName", "DeviceUdi",          "DeviceDisplayName", "TestName",
    "TestStatus", "TestStartTimestamp", "TestDuration",
};
static_assert(recordTexts.size() == 7);

/// Records of one class at most.
inline constexpr std::size_t recordLimit = 5000;

/// The ids that a class holds, and what follows from them for the next record.
class RecordIds {
public:
    void add(std::int32_t id);

    /// The largest id plus 1, so that none is used again while a larger one exists; 0 for the first record.
    /// Ids are 32 bits that COM takes as signed: behind 2147483647, which only another program writes, comes
    /// the number with the next bits.
    [[nodiscard]] std::int32_t next() const {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(largest_) + 1);
    }
    /// Whether the oldest record must go before another comes.
    [[nodiscard]] bool full() const { return count_ >= recordLimit; }
    /// The smallest id, which is looked for below 5001 only: where all ids lie above, it is 5001, and there
    /// is no such record to delete. A class that got so far takes no more records until it is made anew.
    [[nodiscard]] std::int32_t oldest() const { return smallest_; }
    /// Whether the class got so far.
    [[nodiscard]] bool exhausted() const { return full() && !holdsOldest_; }

private:
    std::size_t count_ = 0;
    std::int32_t largest_ = -1;
    std::int32_t smallest_ = static_cast<std::int32_t>(recordLimit) + 1;
    bool holdsOldest_ = false;
};

/// The id in a row whose first property is the key.
[[nodiscard]] std::int32_t recordId(const CimRow& row);

} // namespace vexil::system
