#include "platform/windows/cim/com_calls.h"

namespace vexil::platform {

namespace {

class SystemComCalls final : public ComCalls {
public:
    HRESULT initialize(void* reserved, DWORD model) override { return CoInitializeEx(reserved, model); }
    HRESULT initializeSecurity(PSECURITY_DESCRIPTOR descriptor, LONG serviceCount,
                               SOLE_AUTHENTICATION_SERVICE* services, void* reserved1,
                               DWORD authenticationLevel, DWORD impersonationLevel, void* authenticationList,
                               DWORD capabilities, void* reserved3) override {
        return CoInitializeSecurity(descriptor, serviceCount, services, reserved1, authenticationLevel,
                                    impersonationLevel, authenticationList, capabilities, reserved3);
    }
    HRESULT createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID interfaceId,
                           void** object) override {
        return CoCreateInstance(classId, outer, context, interfaceId, object);
    }
    HRESULT setProxyBlanket(IUnknown* proxy, DWORD authenticationService, DWORD authorizationService,
                            OLECHAR* principal, DWORD authenticationLevel, DWORD impersonationLevel,
                            RPC_AUTH_IDENTITY_HANDLE identity, DWORD capabilities) override {
        return CoSetProxyBlanket(proxy, authenticationService, authorizationService, principal,
                                 authenticationLevel, impersonationLevel, identity, capabilities);
    }
    void uninitialize() override { CoUninitialize(); }
    BSTR allocateText(const OLECHAR* text, UINT length) override { return SysAllocStringLen(text, length); }
    void freeText(BSTR text) override { SysFreeString(text); }
};

} // namespace

ComCalls& systemComCalls() {
    static SystemComCalls calls;
    return calls;
}

} // namespace vexil::platform
