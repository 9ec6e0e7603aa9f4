#include "simulated/direct3d/real_library.h"

#include "platform/shared_library.h"
#include "simulated/direct3d/own_folder.h"

#include <map>
#include <mutex>
#include <string>

namespace vexil::simulated {

namespace {

void* openReal(const std::string& name) {
    const auto own = ownFolder();
    const auto separator = platform::pathSeparator();
    if (const auto end = own.find_last_of(separator); end != std::string::npos) {
        if (void* const library = platform::openLibraryPath(own.substr(0, end + 1) + name)) {
            return library;
        }
    }
    const auto folder = platform::systemLibraryFolder();
    return folder ? platform::openLibraryPath(*folder + separator + name) : nullptr;
}

} // namespace

void* realSymbol(const char* library, const char* symbol) {
    static std::mutex mutex;
    static std::map<std::string, void*> libraries;
    const std::lock_guard lock(mutex);
    const auto [entry, isNew] = libraries.try_emplace(library, nullptr);
    if (isNew) {
        entry->second = openReal(library);
    }
    return entry->second == nullptr ? nullptr : platform::librarySymbol(entry->second, symbol);
}

} // namespace vexil::simulated
