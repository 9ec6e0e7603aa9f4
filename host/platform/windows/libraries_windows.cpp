#include "host/platform/libraries.h"

#include "host/platform/windows/library_imports.h"

#include "platform/wide_text.h"

#include <windows.h>

#include <algorithm>
#include <cctype>

namespace vexil::host::platform {

namespace {

std::string lastErrorText() {
    const DWORD error = GetLastError();
    wchar_t buffer[512] = {};
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        error, 0, buffer, 512, nullptr);
    auto text = vexil::platform::toUtf8({buffer, length});
    text.erase(std::ranges::find_if(text, [](char c) { return c == '\r' || c == '\n'; }), text.end());
    return "error " + std::to_string(error) + (text.empty() ? std::string() : ": " + text);
}

void* open(const std::filesystem::path& file, std::string& reason) {
    void* library =
        LoadLibraryExW(std::filesystem::absolute(file).make_preferred().c_str(), nullptr, librarySearch);
    if (library == nullptr) {
        reason = lastErrorText();
        // The system says that something is missing, and not what.
        const auto culprit = culpritAmongImports(file);
        reason = culprit.empty() ? '\'' + vexil::platform::toUtf8(file.filename().native()) + "': " + reason
                                 : culprit + " (" + reason + ')';
    }
    return library;
}

} // namespace

const char* moduleFileName() { return "vxe_module_video_card.dll"; }

void* openModule(const std::filesystem::path& file, std::string& reason) { return open(file, reason); }

// A loaded library answers to its file name in the whole process here.
void* openForProcess(const std::filesystem::path& file, std::string& reason) { return open(file, reason); }

const char* hostProgramFileName() { return "vxe-host-program.dll"; }

void* symbolOf(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

bool isLibraryFileName(const std::string& name) {
    auto lower = name;
    std::ranges::transform(lower, lower.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return lower.ends_with(".dll");
}

} // namespace vexil::host::platform
