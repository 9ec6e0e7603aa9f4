#include "fake_wbem.h"

#include "refusing_wbem.h"

#include <algorithm>

namespace vexil::tests {

namespace {

std::string guidText(REFGUID guid) {
    wchar_t text[40] = {};
    StringFromGUID2(guid, text, 40);
    return narrow(text);
}

template <typename Base>
class Watched : public Handed<Base, FakeWbem> {
public:
    Watched(FakeWbem& fake, const char* name) : Handed<Base, FakeWbem>(fake), name_(name) {}

protected:
    ~Watched() override { this->fake_.calls.push_back(std::string("release ") + name_); }

private:
    const char* name_;
};

class Object final : public Watched<RefusingWbemClassObject> {
public:
    Object(FakeWbem& fake, const FakeObject& properties) : Watched(fake, "object"), properties_(properties) {}

    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE* type,
                                  LONG* flavor) override {
        fake_.calls.push_back("Get " + narrow(name) +
                              remark(flags == 0 && type == nullptr && flavor == nullptr));
        const auto found = properties_.find(name);
        return found == properties_.end() ? static_cast<HRESULT>(WBEM_E_NOT_FOUND)
                                          : found->second.copyTo(*value);
    }

private:
    const FakeObject& properties_;
};

class Enumerator final : public Watched<RefusingEnumWbemClassObject> {
public:
    explicit Enumerator(FakeWbem& fake) : Watched(fake, "enumerator") {}

    HRESULT STDMETHODCALLTYPE Next(LONG timeout, ULONG count, IWbemClassObject** objects,
                                   ULONG* returned) override {
        fake_.calls.push_back("Next " + std::to_string(timeout) + " " + std::to_string(count));
        *returned = 0;
        if (next_ == fake_.objects.size()) {
            return WBEM_S_FALSE;
        }
        *objects = new Object(fake_, fake_.objects[next_++]);
        *returned = 1;
        return WBEM_S_NO_ERROR;
    }

private:
    std::size_t next_ = 0;
};

class Services final : public Watched<RefusingWbemServices> {
public:
    explicit Services(FakeWbem& fake) : Watched(fake, "services") {}

    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR language, const BSTR query, LONG flags,
                                        IWbemContext* context, IEnumWbemClassObject** enumerator) override {
        fake_.calls.push_back("ExecQuery " + narrow(language) + " " + std::to_string(flags) + " " +
                              narrow(query) + remark(context == nullptr));
        if (SUCCEEDED(fake_.executeResult) && fake_.givesEnumerator) {
            *enumerator = new Enumerator(fake_);
        }
        return fake_.executeResult;
    }
};

class Locator final : public Watched<RefusingWbemLocator> {
public:
    explicit Locator(FakeWbem& fake) : Watched(fake, "locator") {}

    HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR nameSpace, const BSTR user, const BSTR password,
                                            const BSTR locale, LONG flags, const BSTR authority,
                                            IWbemContext* context, IWbemServices** services) override {
        fake_.calls.push_back("ConnectServer " + narrow(nameSpace) +
                              remark(user == nullptr && password == nullptr && locale == nullptr &&
                                     flags == 0 && authority == nullptr && context == nullptr));
        if (SUCCEEDED(fake_.connectResult) && fake_.givesServices) {
            *services = new Services(fake_);
        }
        return fake_.connectResult;
    }
};

/// An array of `size` elements whose bytes `fill` writes.
template <typename Element, typename Fill>
FakeValue arrayOf(VARTYPE type, std::size_t size, const Fill& fill) {
    FakeValue value;
    SAFEARRAY* array = SafeArrayCreateVector(type, 0, static_cast<ULONG>(size));
    void* data = nullptr;
    SafeArrayAccessData(array, &data);
    for (std::size_t i = 0; i < size; ++i) {
        static_cast<Element*>(data)[i] = fill(i);
    }
    SafeArrayUnaccessData(array);
    V_VT(&value.variant()) = static_cast<VARTYPE>(VT_ARRAY | type);
    V_ARRAY(&value.variant()) = array;
    return value;
}

} // namespace

FakeValue FakeValue::text(const std::wstring& text) {
    FakeValue value;
    V_VT(&value.value_) = VT_BSTR;
    V_BSTR(&value.value_) = SysAllocString(text.c_str());
    return value;
}

FakeValue FakeValue::number(LONG number) {
    FakeValue value;
    V_VT(&value.value_) = VT_I4;
    V_I4(&value.value_) = number;
    return value;
}

FakeValue FakeValue::texts(const std::vector<std::wstring>& texts) {
    return arrayOf<BSTR>(VT_BSTR, texts.size(),
                         [&](std::size_t i) { return SysAllocString(texts[i].c_str()); });
}

FakeValue FakeValue::bytes(const std::string& bytes) {
    return arrayOf<char>(VT_UI1, bytes.size(), [&](std::size_t i) { return bytes[i]; });
}

HRESULT FakeWbem::initialize(void* reserved, DWORD model) {
    calls.push_back("CoInitializeEx " + std::to_string(model) + remark(reserved == nullptr));
    return CountingCom::initialize(reserved, model);
}

HRESULT FakeWbem::initializeSecurity(PSECURITY_DESCRIPTOR descriptor, LONG serviceCount,
                                     SOLE_AUTHENTICATION_SERVICE* services, void* reserved1,
                                     DWORD authenticationLevel, DWORD impersonationLevel,
                                     void* authenticationList, DWORD capabilities, void* reserved3) {
    calls.push_back("CoInitializeSecurity " + std::to_string(authenticationLevel) + " " +
                    std::to_string(impersonationLevel) + " " + std::to_string(capabilities) +
                    remark(descriptor == nullptr && serviceCount == -1 && services == nullptr &&
                           reserved1 == nullptr && authenticationList == nullptr && reserved3 == nullptr));
    return securityResult;
}

HRESULT FakeWbem::createInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID interfaceId,
                                 void** object) {
    calls.push_back("CoCreateInstance " + guidText(classId) + " " + std::to_string(context) + " " +
                    guidText(interfaceId) + remark(outer == nullptr));
    if (SUCCEEDED(createResult)) {
        *object = static_cast<IWbemLocator*>(new Locator(*this));
    }
    return createResult;
}

HRESULT FakeWbem::setProxyBlanket(IUnknown*, DWORD authenticationService, DWORD authorizationService,
                                  OLECHAR* principal, DWORD authenticationLevel, DWORD impersonationLevel,
                                  RPC_AUTH_IDENTITY_HANDLE identity, DWORD capabilities) {
    calls.push_back("CoSetProxyBlanket " + std::to_string(authenticationService) + " " +
                    std::to_string(authorizationService) + " " + std::to_string(authenticationLevel) + " " +
                    std::to_string(impersonationLevel) + " " + std::to_string(capabilities) +
                    remark(principal == nullptr && identity == nullptr));
    return blanketResult;
}

void FakeWbem::uninitialize() {
    calls.push_back("CoUninitialize");
    CountingCom::uninitialize();
}

} // namespace vexil::tests
