#pragma once

#include "counting_com.h"

#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vexil::tests {

/// A class as a repository keeps it, with its instances by key.
struct FakeClass {
    std::vector<std::pair<std::wstring, long>> properties; ///< with CIM's number of the type
    std::wstring key;                                      ///< the property with the qualifier
    std::map<long, std::map<std::wstring, std::wstring>> instances;
};

/// COM and a WMI repository in memory that takes writes: namespaces, classes with a key, instances that may
/// be new only. What changes it is written down, and one step can be made to fail.
class FakeRepository final : public CountingCom {
public:
    using Namespace = std::map<std::wstring, FakeClass>;
    std::map<std::wstring, Namespace> namespaces = {{L"ROOT", {}}};

    int failingStep = 0;         ///< the number, from 1, of the step that fails
    HRESULT failure = E_FAIL;    ///< and what it answers
    HRESULT callStatus = S_OK;   ///< what a call that returned at once came to
    bool givesCallResult = true; ///< for such a call
    /// Called once, when a query has found its rows and nobody has read them.
    std::function<void()> afterQuery;

    std::vector<std::string> steps;

    /// Writes a step down; true if it is the one that fails.
    bool fails(const std::string& step);

    HRESULT createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID interfaceId,
                           void** object) override;
    HRESULT setProxyBlanket(IUnknown* proxy, DWORD authenticationService, DWORD authorizationService,
                            OLECHAR* principal, DWORD authenticationLevel, DWORD impersonationLevel,
                            RPC_AUTH_IDENTITY_HANDLE identity, DWORD capabilities) override;
};

} // namespace vexil::tests
