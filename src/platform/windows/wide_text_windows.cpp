#include "platform/wide_text.h"

#include <windows.h>

namespace vexil::platform {

namespace {

std::wstring widen(UINT codePage, std::string_view text) {
    const int size = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(codePage, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string narrow(UINT codePage, std::wstring_view wide) {
    const int size = static_cast<int>(wide.size());
    const int length = WideCharToMultiByte(codePage, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(codePage, 0, wide.data(), size, text.data(), length, nullptr, nullptr);
    return text;
}

} // namespace

std::wstring toWide(std::string_view utf8) { return widen(CP_UTF8, utf8); }
std::string toUtf8(std::wstring_view wide) { return narrow(CP_UTF8, wide); }

std::string toProcessText(std::string_view utf8) { return narrow(CP_ACP, toWide(utf8)); }
std::string fromProcessText(std::string_view text) { return toUtf8(widen(CP_ACP, text)); }

} // namespace vexil::platform
