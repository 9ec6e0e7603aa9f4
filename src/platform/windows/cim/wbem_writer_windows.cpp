#include "platform/windows/cim/wbem_writer.h"

namespace vexil::platform {

namespace {

struct ReleaseCallResult {
    void operator()(IWbemCallResult* result) const { result->Release(); }
};

static_assert(WBEM_FLAG_RETURN_IMMEDIATELY == 16 && WBEM_FLAG_CREATE_ONLY == 2);

bool stored(HRESULT result) {
    return SUCCEEDED(result) || result == static_cast<HRESULT>(WBEM_E_ALREADY_EXISTS);
}

/// Starts a call that returns at once, and waits for its end without limit.
template <typename Call>
bool waitFor(const Call& call) {
    IWbemCallResult* started = nullptr;
    const HRESULT result = call(&started);
    const std::unique_ptr<IWbemCallResult, ReleaseCallResult> owned(started);
    if (FAILED(result) || !owned) {
        return result == static_cast<HRESULT>(WBEM_E_ALREADY_EXISTS);
    }
    LONG status = 0;
    return SUCCEEDED(owned->GetCallStatus(static_cast<LONG>(WBEM_INFINITE), &status)) &&
           stored(static_cast<HRESULT>(status));
}

} // namespace

WbemWriter::WbemWriter(ComCalls& com) : com_(com), locator_(createLocator(com)) {}

bool WbemWriter::connect(const wchar_t* nameSpace) {
    services_.reset();
    if (locator_) {
        services_ = connectServer(com_, *locator_, nameSpace);
    }
    return services_ != nullptr;
}

ClassObject WbemWriter::object(BSTR path) {
    IWbemClassObject* found = nullptr;
    const HRESULT result = services_->GetObject(path, 0, nullptr, &found, nullptr);
    ClassObject owned(found);
    return FAILED(result) ? nullptr : std::move(owned);
}

bool WbemWriter::deleteObject(const std::wstring& path) {
    const ComText text(com_, path.c_str());
    return SUCCEEDED(services_->DeleteInstance(text.get(), 0, nullptr, nullptr));
}

bool WbemWriter::putClass(IWbemClassObject& added) {
    return waitFor([&](IWbemCallResult** result) {
        return services_->PutClass(&added, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, result);
    });
}

bool WbemWriter::putInstance(IWbemClassObject& added) {
    return waitFor([&](IWbemCallResult** result) {
        return services_->PutInstance(&added, WBEM_FLAG_RETURN_IMMEDIATELY, nullptr, result);
    });
}

void WbemWriter::putNewInstance(IWbemClassObject& added) {
    services_->PutInstance(&added, WBEM_FLAG_CREATE_ONLY, nullptr, nullptr);
}

ClassObject spawnInstance(IWbemClassObject* owner) {
    IWbemClassObject* instance = nullptr;
    const HRESULT result = owner == nullptr ? E_POINTER : owner->SpawnInstance(0, &instance);
    ClassObject owned(instance);
    return FAILED(result) ? nullptr : std::move(owned);
}

bool putText(IWbemClassObject& object, const wchar_t* name, BSTR text) {
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = text;
    return SUCCEEDED(object.Put(name, 0, &value, 0));
}

bool putNumber(IWbemClassObject& object, const wchar_t* name, LONG number) {
    VARIANT value;
    VariantInit(&value);
    V_VT(&value) = VT_I4;
    V_I4(&value) = number;
    return SUCCEEDED(object.Put(name, 0, &value, 0));
}

} // namespace vexil::platform
