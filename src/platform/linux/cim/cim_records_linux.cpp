#include "platform/cim_records.h"

#include "platform/linux/cim/cim_linux.h"
#include "platform/linux/cim/record_store.h"

#include <system_error>

namespace vexil::platform {

namespace fs = std::filesystem;

std::optional<std::string> recordTrouble(const std::optional<fs::path>& file, RecordUse use) {
    if (!file) {
        return "the user has no home folder";
    }
    try {
        const bool writes = use == RecordUse::Write;
        std::error_code error;
        if (!writes && !fs::exists(*file, error)) {
            return error ? std::optional(error.message()) : std::nullopt;
        }
        RecordStore store(*file, writes ? Database::Access::Write : Database::Access::Read);
        store.verify();
        if (writes) {
            store.proveWritable();
            store.commit();
        }
        return std::nullopt;
    } catch (const UnfitDatabase& failure) {
        return std::string(failure.what()) + "; it was left as it is: move it away to begin a new one";
    } catch (const DatabaseError& failure) {
        return failure.what();
    }
}

std::string recordPlace() {
    const auto file = recordFile();
    return file ? file->string() : "vexil/cim.sqlite3";
}

std::optional<std::string> recordTrouble(RecordUse use) { return recordTrouble(recordFile(), use); }

} // namespace vexil::platform
