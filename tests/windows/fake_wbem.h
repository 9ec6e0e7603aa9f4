#pragma once

#include "counting_com.h"

#include <map>
#include <string>
#include <vector>

namespace vexil::tests {

/// A value that an object gives out, freed with it.
class FakeValue {
public:
    FakeValue() { VariantInit(&value_); }
    FakeValue(const FakeValue& other) : FakeValue() { other.copyTo(value_); }
    FakeValue& operator=(const FakeValue&) = delete;
    ~FakeValue() { VariantClear(&value_); }

    [[nodiscard]] static FakeValue text(const std::wstring& text);
    [[nodiscard]] static FakeValue number(LONG number);
    [[nodiscard]] static FakeValue texts(const std::vector<std::wstring>& texts);
    [[nodiscard]] static FakeValue bytes(const std::string& bytes);
    /// For every other type; the caller fills it.
    [[nodiscard]] VARIANT& variant() { return value_; }
    HRESULT copyTo(VARIANT& copy) const { return VariantCopy(&copy, &value_); }

private:
    mutable VARIANT value_; ///< which COM's own copy takes for writable
};

/// Its properties; reading another one fails.
using FakeObject = std::map<std::wstring, FakeValue>;

/// COM and one WMI namespace, in memory. What reaches it is written down; the fields of the first group and
/// of the base say how it answers.
class FakeWbem final : public CountingCom {
public:
    HRESULT createResult = S_OK;
    HRESULT connectResult = S_OK;
    HRESULT blanketResult = S_OK;
    HRESULT executeResult = S_OK;
    bool givesServices = true;
    bool givesEnumerator = true;
    std::vector<FakeObject> objects;

    std::vector<std::string> calls;

    HRESULT initialize(void* reserved, DWORD model) override;
    HRESULT initializeSecurity(PSECURITY_DESCRIPTOR descriptor, LONG serviceCount,
                               SOLE_AUTHENTICATION_SERVICE* services, void* reserved1,
                               DWORD authenticationLevel, DWORD impersonationLevel, void* authenticationList,
                               DWORD capabilities, void* reserved3) override;
    HRESULT createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID interfaceId,
                           void** object) override;
    HRESULT setProxyBlanket(IUnknown* proxy, DWORD authenticationService, DWORD authorizationService,
                            OLECHAR* principal, DWORD authenticationLevel, DWORD impersonationLevel,
                            RPC_AUTH_IDENTITY_HANDLE identity, DWORD capabilities) override;
    void uninitialize() override;
};

} // namespace vexil::tests
