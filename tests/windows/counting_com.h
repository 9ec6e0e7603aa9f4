#pragma once

#include "platform/windows/cim/com_calls.h"

#include <string>
#include <string_view>

namespace vexil::tests {

/// COM as far as its stand-ins are alike: it starts as a test says, hands out texts, and counts what is not
/// given back.
class CountingCom : public platform::ComCalls {
public:
    HRESULT initializeResult = S_OK;
    HRESULT securityResult = S_OK;
    int refusedStart = 0; ///< the number, from 1, of the start of COM that fails
    int refusedText = 0;  ///< the number, from 1, of the text that there is no memory for

    int references = 0; ///< to COM: those given less those taken back
    int textsAlive = 0;
    int texts = 0;
    int starts = 0;
    int interfacesAlive = 0;

    HRESULT initialize(void*, DWORD) override {
        if (++starts == refusedStart) {
            return E_FAIL;
        }
        references += SUCCEEDED(initializeResult) ? 1 : 0;
        return initializeResult;
    }
    HRESULT initializeSecurity(PSECURITY_DESCRIPTOR, LONG, SOLE_AUTHENTICATION_SERVICE*, void*, DWORD, DWORD,
                               void*, DWORD, void*) override {
        return securityResult;
    }
    void uninitialize() override { --references; }
    BSTR allocateText(const OLECHAR* text, UINT length) override {
        if (++texts == refusedText) {
            return nullptr;
        }
        ++textsAlive;
        return SysAllocStringLen(text, length);
    }
    void freeText(BSTR text) override {
        --textsAlive;
        SysFreeString(text);
    }
};

/// An interface that a stand-in hands out.
template <typename Base, typename Fake>
class Handed : public Base {
public:
    explicit Handed(Fake& fake) : fake_(fake) { ++fake_.interfacesAlive; }

protected:
    ~Handed() override { --fake_.interfacesAlive; }
    Fake& fake_;
};

/// ASCII is all that the tests send.
inline std::string narrow(std::wstring_view text) {
    std::string result;
    for (const wchar_t c : text) {
        result += static_cast<char>(c);
    }
    return result;
}
/// As COM hands texts over: null is an empty one.
inline std::string narrow(const wchar_t* text) {
    return text == nullptr ? std::string() : narrow(std::wstring_view(text));
}

/// So that a call with something where nothing belongs reads differently.
inline const char* remark(bool othersEmpty) { return othersEmpty ? "" : ", others not empty"; }

} // namespace vexil::tests
