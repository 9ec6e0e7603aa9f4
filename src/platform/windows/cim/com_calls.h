#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

namespace vexil::platform {

/// The functions of COM that the CIM clients call, with COM's own arguments. Everything external comes from
/// here, so that tests can stand in for it.
class ComCalls {
public:
    virtual ~ComCalls() = default;
    virtual HRESULT initialize(void* reserved, DWORD model) = 0;
    virtual HRESULT initializeSecurity(PSECURITY_DESCRIPTOR descriptor, LONG serviceCount,
                                       SOLE_AUTHENTICATION_SERVICE* services, void* reserved1,
                                       DWORD authenticationLevel, DWORD impersonationLevel,
                                       void* authenticationList, DWORD capabilities, void* reserved3) = 0;
    virtual HRESULT createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID interfaceId,
                                   void** object) = 0;
    virtual HRESULT setProxyBlanket(IUnknown* proxy, DWORD authenticationService, DWORD authorizationService,
                                    OLECHAR* principal, DWORD authenticationLevel, DWORD impersonationLevel,
                                    RPC_AUTH_IDENTITY_HANDLE identity, DWORD capabilities) = 0;
    virtual void uninitialize() = 0;
    /// Null if there is no memory. Of a null text only the length is taken.
    virtual BSTR allocateText(const OLECHAR* text, UINT length) = 0;
    virtual void freeText(BSTR text) = 0;
};

/// The real ones.
[[nodiscard]] ComCalls& systemComCalls();

} // namespace vexil::platform
