#include "platform/windows/cim/com_text.h"

#include <comdef.h>

#include <cstring>
#include <cwchar>
#include <vector>

namespace vexil::platform {

using system::CimValue;

namespace {

/// Without a text the memory is the caller's to write to.
BSTR allocate(ComCalls& com, const wchar_t* text, std::size_t length) {
    if (BSTR copy = com.allocateText(text, static_cast<UINT>(length))) {
        return copy;
    }
    throw _com_error(E_OUTOFMEMORY);
}

/// The elements of a one-dimensional array, locked in memory.
template <typename Element>
std::vector<Element> elements(SAFEARRAY* array) {
    std::vector<Element> copies;
    Element* data = nullptr;
    if (array == nullptr || SafeArrayAccessData(array, reinterpret_cast<void**>(&data)) != S_OK) {
        return copies;
    }
    copies.assign(data, data + array->rgsabound[0].cElements);
    SafeArrayUnaccessData(array);
    return copies;
}

std::vector<std::string> narrowTexts(SAFEARRAY* array) {
    std::vector<std::string> texts;
    // The copied pointers stay the array's own.
    for (BSTR text : elements<BSTR>(array)) {
        texts.push_back(narrowText(text));
    }
    return texts;
}

} // namespace

ComText::ComText(ComCalls& com, const char* narrow) : com_(com) {
    if (narrow == nullptr) {
        return;
    }
    const int size = static_cast<int>(std::strlen(narrow));
    const int length = MultiByteToWideChar(CP_ACP, 0, narrow, size, nullptr, 0);
    text_ = allocate(com, nullptr, static_cast<std::size_t>(length));
    MultiByteToWideChar(CP_ACP, 0, narrow, size, text_, length);
}

ComText::ComText(ComCalls& com, const wchar_t* wide) : com_(com) {
    if (wide != nullptr) {
        text_ = allocate(com, wide, std::wcslen(wide));
    }
}

ComText::~ComText() {
    if (text_ != nullptr) {
        com_.freeText(text_);
    }
}

std::string narrowText(BSTR text) {
    const int size = static_cast<int>(SysStringLen(text));
    const int length = WideCharToMultiByte(CP_ACP, 0, text, size, nullptr, 0, nullptr, nullptr);
    std::string narrow(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_ACP, 0, text, size, narrow.data(), length, nullptr, nullptr);
    return narrow;
}

CimValue toCimValue(const VARIANT& variant) {
    switch (V_VT(&variant)) {
    case VT_I4:
        return std::int32_t{V_I4(&variant)};
    case VT_I2:
        return std::int16_t{V_I2(&variant)};
    case VT_UI2:
        return std::uint16_t{V_UI2(&variant)};
    case VT_I1:
        return static_cast<std::uint8_t>(V_I1(&variant));
    case VT_UI1:
        return std::uint8_t{V_UI1(&variant)};
    case VT_BOOL:
        return V_BOOL(&variant) != VARIANT_FALSE;
    case VT_BSTR:
        return narrowText(V_BSTR(&variant));
    case VT_ARRAY | VT_BSTR:
        return narrowTexts(V_ARRAY(&variant));
    case VT_ARRAY | VT_UI1:
        return elements<std::uint8_t>(V_ARRAY(&variant));
    default:
        return {};
    }
}

} // namespace vexil::platform
