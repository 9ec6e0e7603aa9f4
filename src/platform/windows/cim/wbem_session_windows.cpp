#include "platform/windows/cim/wbem_session.h"

#include "platform/windows/cim/com_variant.h"

#include <utility>

namespace vexil::platform {

using system::CimStatus;

namespace {

constexpr CLSID locatorClass = {0x4590F811, 0x1D3A, 0x11D0, {0x89, 0x1F, 0x00, 0xAA, 0x00, 0x4B, 0x2E, 0x24}};
constexpr IID locatorInterface = {
    0xDC12A687, 0x737F, 0x11CF, {0x88, 0x4D, 0x00, 0xAA, 0x00, 0x4B, 0x2E, 0x24}};

constexpr LONG forwardOnlyAndImmediately = WBEM_FLAG_FORWARD_ONLY | WBEM_FLAG_RETURN_IMMEDIATELY;
static_assert(forwardOnlyAndImmediately == 48);

CimStatus startCom(ComCalls& com) {
    const HRESULT mode = com.initialize(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(mode) && mode != RPC_E_CHANGED_MODE) {
        return CimStatus::ComNotInitialized;
    }
    if (!initializeComSecurity(com)) {
        if (SUCCEEDED(mode)) {
            com.uninitialize();
        }
        return CimStatus::SecurityNotInitialized;
    }
    return mode == RPC_E_CHANGED_MODE ? comModeDiffers : CimStatus::Success;
}

} // namespace

bool initializeComSecurity(ComCalls& com) {
    // -1 leaves the choice of authentication services to COM.
    const HRESULT result = com.initializeSecurity(nullptr, -1, nullptr, nullptr, RPC_C_AUTHN_LEVEL_DEFAULT,
                                                  RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE, nullptr);
    return SUCCEEDED(result) || result == RPC_E_TOO_LATE;
}

ComScope::ComScope(ComCalls& com) : com_(com), started_(startCom(com)) {}

ComScope::~ComScope() {
    if (started_ == CimStatus::Success) {
        com_.uninitialize();
    }
}

CimStatus ComScope::status() const { return started_ == comModeDiffers ? CimStatus::Success : started_; }

ComObject<IWbemLocator> createLocator(ComCalls& com) {
    void* locator = nullptr;
    if (FAILED(com.createInstance(locatorClass, nullptr, CLSCTX_INPROC_SERVER, locatorInterface, &locator))) {
        return nullptr;
    }
    return ComObject<IWbemLocator>(static_cast<IWbemLocator*>(locator));
}

ComObject<IWbemServices> connectServer(ComCalls& com, IWbemLocator& locator, const wchar_t* nameSpace) {
    const ComText path(com, nameSpace);
    IWbemServices* services = nullptr;
    const HRESULT connected =
        locator.ConnectServer(path.get(), nullptr, nullptr, nullptr, 0, nullptr, nullptr, &services);
    ComObject<IWbemServices> owned(services);
    return FAILED(connected) ? nullptr : std::move(owned);
}

WbemSession::WbemSession(ComCalls& com, const wchar_t* nameSpace) : com_(com) {
    locator_ = createLocator(com);
    connection_.located = locator_ != nullptr;
    if (!locator_) {
        return;
    }
    services_ = connectServer(com, *locator_, nameSpace);
    if (!services_) {
        return;
    }
    connection_.connected = true;
    connection_.blanketSet = SUCCEEDED(com.setProxyBlanket(services_.get(), RPC_C_AUTHN_WINNT,
                                                           RPC_C_AUTHZ_NONE, nullptr, RPC_C_AUTHN_LEVEL_CALL,
                                                           RPC_C_IMP_LEVEL_IMPERSONATE, nullptr, EOAC_NONE));
}

CimStatus WbemSession::execute(const system::QueryArguments& arguments) {
    text_ = system::buildQueryText(connection_, arguments);
    if (text_.status != CimStatus::Success) {
        return text_.status;
    }
    const ComText language(com_, L"WQL");
    const ComText query(com_, text_.text.get());
    IEnumWbemClassObject* enumerator = nullptr;
    const HRESULT executed =
        services_->ExecQuery(language.get(), query.get(), forwardOnlyAndImmediately, nullptr, &enumerator);
    enumerator_.reset(enumerator);
    return FAILED(executed) || !enumerator_ ? CimStatus::QueryFailed : CimStatus::Success;
}

bool WbemSession::next() {
    object_.reset();
    IWbemClassObject* object = nullptr;
    ULONG returned = 0;
    enumerator_->Next(static_cast<LONG>(WBEM_INFINITE), 1, &object, &returned);
    object_.reset(object);
    return returned != 0 && object_;
}

CimStatus WbemSession::readProperties(const system::QueryArguments& arguments, const UseProperty& use) {
    auto status = CimStatus::Success;
    for (std::int32_t i = 0; i < arguments.count; ++i) {
        const ComText name(com_, arguments.properties[i]);
        Variant value;
        if (SUCCEEDED(object_->Get(name.get(), 0, value.address(), nullptr, nullptr))) {
            use(i, value.get());
        } else {
            status = CimStatus::PropertyNotRead;
        }
    }
    return status;
}

} // namespace vexil::platform
