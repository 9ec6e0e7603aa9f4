#pragma once

#include "platform/windows/cim/com_calls.h"
#include "system/cim/cim_value.h"

#include <string>

namespace vexil::platform {

/// A text as COM takes it. Throws `_com_error` of E_OUTOFMEMORY where there is no memory for it.
class ComText {
public:
    /// Widens by the process's code page; null gives a null text.
    ComText(ComCalls& com, const char* narrow);
    /// Copies; null gives a null text.
    ComText(ComCalls& com, const wchar_t* wide);
    ComText(const ComText&) = delete;
    ComText& operator=(const ComText&) = delete;
    ~ComText();

    [[nodiscard]] BSTR get() const { return text_; }

private:
    ComCalls& com_;
    BSTR text_ = nullptr;
};

/// The text in the process's code page; a null text is an empty one.
[[nodiscard]] std::string narrowText(BSTR text);

/// The value of a variant, without a change to it. Types that the clients give no text become the empty
/// value.
[[nodiscard]] system::CimValue toCimValue(const VARIANT& variant);

} // namespace vexil::platform
