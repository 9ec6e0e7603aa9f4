#include "host/platform/child_process.h"

#include "platform/wide_text.h"

#include <windows.h>

#include <memory>

namespace vexil::host::platform {

using vexil::platform::toUtf8;
using vexil::platform::toWide;

namespace {

struct CloseHandleOnce {
    void operator()(void* handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, CloseHandleOnce>;

/// As the program takes its command line apart again: a quotation mark inside is escaped, and so are the
/// backslashes that stand before one.
std::wstring quoted(const std::wstring& argument) {
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : argument) {
        if (character == L'"') {
            text.append(backslashes + 1, L'\\');
        }
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        text += character;
    }
    return text.append(backslashes, L'\\') + L'"';
}

std::string lastError() {
    const DWORD error = GetLastError();
    wchar_t text[512] = {};
    if (FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0, text,
                       512, nullptr) == 0) {
        return "error " + std::to_string(error);
    }
    auto line = toUtf8(text);
    line.erase(line.find_last_not_of("\r\n .") + 1);
    return line;
}

Handle openForChild(const wchar_t* file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    void* handle =
        CreateFileW(file, access, FILE_SHARE_READ, &inherited, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

} // namespace

std::optional<int> runChild(const std::filesystem::path& program, const std::vector<std::string>& arguments,
                            const std::filesystem::path& output, std::string& reason) {
    auto commandLine = quoted(program.wstring());
    for (const auto& argument : arguments) {
        commandLine += L' ' + quoted(toWide(argument));
    }
    const auto written = openForChild(output.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    const auto nothing = openForChild(L"NUL", GENERIC_READ, OPEN_EXISTING);
    if (!written || !nothing) {
        reason = lastError();
        return std::nullopt;
    }
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = nothing.get();
    startup.hStdOutput = written.get();
    startup.hStdError = written.get();
    PROCESS_INFORMATION child{};
    if (CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                       &startup, &child) == FALSE) {
        reason = lastError();
        return std::nullopt;
    }
    const Handle thread(child.hThread);
    const Handle process(child.hProcess);
    DWORD code = 0;
    if (WaitForSingleObject(process.get(), INFINITE) != WAIT_OBJECT_0 ||
        GetExitCodeProcess(process.get(), &code) == FALSE) {
        reason = lastError();
        return std::nullopt;
    }
    // A crash ends a program with the code of its exception, which has the two highest bits set.
    if (code >= 0xC0000000U) {
        reason = "it was ended by an exception";
        return std::nullopt;
    }
    return static_cast<int>(code);
}

} // namespace vexil::host::platform
