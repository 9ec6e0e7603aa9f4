#include "host/platform/process.h"

#include "platform/wide_text.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cstdlib>

namespace vexil::host::platform {

using vexil::platform::toUtf8;
using vexil::platform::toWide;

namespace {

volatile std::uint8_t* cancelByte = nullptr;

BOOL WINAPI interrupted(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    if (*cancelByte != 0) {
        TerminateProcess(GetCurrentProcess(), 130);
    }
    *cancelByte = 1;
    return TRUE;
}

} // namespace

std::vector<std::string> commandLineArguments(int, const char* const*) {
    // The narrow arguments have lost what the system's code page cannot express.
    int count = 0;
    wchar_t** values = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) {
        arguments.push_back(toUtf8(values[i]));
    }
    LocalFree(values);
    return arguments;
}

std::filesystem::path programFile() {
    std::wstring buffer(32768, L'\0');
    const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    buffer.resize(length);
    return buffer;
}

std::filesystem::path programFolder() { return programFile().parent_path(); }

void setEnvironmentVariable(const std::string& name, const std::string& value) {
    // Through the C library: it keeps its own copy beside the system's, and libraries read either.
    _wputenv_s(toWide(name).c_str(), toWide(value).c_str());
}

std::string userLanguage() {
    const auto chosen = environmentVariable("LANG");
    if (chosen && !chosen->empty()) {
        return chosen->substr(0, chosen->find_first_of(".@"));
    }
    wchar_t name[LOCALE_NAME_MAX_LENGTH] = {};
    if (LCIDToLocaleName(GetUserDefaultUILanguage(), name, LOCALE_NAME_MAX_LENGTH, 0) == 0) {
        return {};
    }
    auto language = toUtf8(name);
    std::ranges::replace(language, '-', '_');
    return language;
}

std::string operatingSystem() {
    // The documented call answers with the version that the program's manifest asks for; this one does not.
    OSVERSIONINFOW version{};
    version.dwOSVersionInfoSize = sizeof version;
    const auto system = GetModuleHandleW(L"ntdll.dll");
    const auto tell = reinterpret_cast<LONG(WINAPI*)(OSVERSIONINFOW*)>(
        reinterpret_cast<void*>(GetProcAddress(system, "RtlGetVersion")));
    if (tell == nullptr || tell(&version) != 0) {
        return "Windows";
    }
    return "Windows " + std::to_string(version.dwMajorVersion) + '.' +
           std::to_string(version.dwMinorVersion) + " (build " + std::to_string(version.dwBuildNumber) + ')';
}

void cancelOnInterrupt(volatile std::uint8_t& cancel) {
    cancelByte = &cancel;
    SetConsoleCtrlHandler(interrupted, TRUE);
}

} // namespace vexil::host::platform
