#include "fake_repository.h"

#include "refusing_wbem.h"
#include "system/cim/wql.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace vexil::tests {

namespace {

constexpr const wchar_t* namespaceClass = L"__Namespace";

HRESULT code(WBEMSTATUS status) { return static_cast<HRESULT>(status); }

std::wstring widen(const std::string& text) { return {text.begin(), text.end()}; }

template <typename Base>
using Watched = Handed<Base, FakeRepository>;

class CallResult final : public Watched<RefusingWbemCallResult> {
public:
    CallResult(FakeRepository& fake, HRESULT result) : Handed(fake), result_(result) {}

    HRESULT STDMETHODCALLTYPE GetCallStatus(LONG timeout, LONG* status) override {
        if (fake_.fails("GetCallStatus " + std::to_string(timeout))) {
            return fake_.failure;
        }
        *status = FAILED(fake_.callStatus) ? fake_.callStatus : result_;
        return S_OK;
    }

private:
    HRESULT result_;
};

class Qualifiers final : public Watched<RefusingWbemQualifierSet> {
public:
    Qualifiers(FakeRepository& fake, FakeClass& owner, std::wstring property)
        : Handed(fake), owner_(owner), property_(std::move(property)) {}

    HRESULT STDMETHODCALLTYPE Put(LPCWSTR name, VARIANT* value, LONG) override {
        const bool isTrue = V_VT(value) == VT_BOOL && V_BOOL(value) == VARIANT_TRUE;
        if (fake_.fails("Qualifier " + narrow(property_) + "." + narrow(name) + (isTrue ? "=true" : "=?"))) {
            return fake_.failure;
        }
        if (std::wstring(name) == L"Key" && isTrue) {
            owner_.key = property_;
        }
        return S_OK;
    }

private:
    FakeClass& owner_;
    std::wstring property_;
};

/// A class, or an instance of one.
class Object final : public Watched<RefusingWbemClassObject> {
public:
    Object(FakeRepository& fake, std::wstring name, FakeClass schema, bool isInstance)
        : Handed(fake), className(std::move(name)), content(std::move(schema)), isInstance_(isInstance) {
        content.instances.clear();
    }

    std::wstring className;
    FakeClass content;
    std::optional<long> key;
    std::map<std::wstring, std::wstring> values;

    HRESULT STDMETHODCALLTYPE Put(LPCWSTR name, LONG flags, VARIANT* value, CIMTYPE type) override {
        const auto told = "Put " + narrow(name) + '=' + textOf(value) +
                          (value == nullptr ? " type " + std::to_string(type) : std::string()) +
                          remark(flags == 0 && (value == nullptr || type == 0));
        if (fake_.fails(told)) {
            return fake_.failure;
        }
        return isInstance_ ? putValue(name, value) : putProperty(name, value, type);
    }
    HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR name, IWbemQualifierSet** found) override {
        if (fake_.fails("GetPropertyQualifierSet " + narrow(name))) {
            return fake_.failure;
        }
        *found = new Qualifiers(fake_, content, name);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SpawnInstance(LONG flags, IWbemClassObject** instance) override {
        if (fake_.fails("SpawnInstance " + narrow(className) + remark(flags == 0))) {
            return fake_.failure;
        }
        if (className.empty()) {
            return code(WBEM_E_INCOMPLETE_CLASS);
        }
        *instance = new Object(fake_, className, content, true);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Get(LPCWSTR name, LONG, VARIANT* value, CIMTYPE*, LONG*) override {
        if (fake_.fails("Get " + narrow(name))) {
            return fake_.failure;
        }
        if (content.key == name && key) {
            V_VT(value) = VT_I4;
            V_I4(value) = *key;
            return S_OK;
        }
        if (std::ranges::find(content.properties, name, &std::pair<std::wstring, long>::first) ==
            content.properties.end()) {
            return code(WBEM_E_NOT_FOUND);
        }
        const auto found = values.find(name);
        if (found != values.end()) {
            V_VT(value) = VT_BSTR;
            V_BSTR(value) = SysAllocString(found->second.c_str());
        } else {
            V_VT(value) = VT_NULL;
        }
        return S_OK;
    }

private:
    static std::string textOf(const VARIANT* value) {
        return value == nullptr         ? "nothing"
               : V_VT(value) == VT_BSTR ? "text " + narrow(V_BSTR(value))
               : V_VT(value) == VT_I4   ? "number " + std::to_string(V_I4(value))
                                        : "another type";
    }
    HRESULT putProperty(LPCWSTR name, const VARIANT* value, CIMTYPE type) {
        if (std::wstring(name) == L"__CLASS" && value != nullptr && V_VT(value) == VT_BSTR) {
            className = V_BSTR(value);
            return S_OK;
        }
        content.properties.emplace_back(name, type);
        return S_OK;
    }
    HRESULT putValue(LPCWSTR name, const VARIANT* value) {
        const auto property =
            std::ranges::find(content.properties, name, &std::pair<std::wstring, long>::first);
        if (property == content.properties.end()) {
            return code(WBEM_E_NOT_FOUND);
        }
        if (property->second == CIM_UINT32 && V_VT(value) == VT_I4) {
            key = V_I4(value);
        } else if (property->second == CIM_STRING && V_VT(value) == VT_BSTR) {
            values[name] = V_BSTR(value);
        } else {
            return code(WBEM_E_TYPE_MISMATCH);
        }
        return S_OK;
    }

    bool isInstance_;
};

class Enumerator final : public Watched<RefusingEnumWbemClassObject> {
public:
    Enumerator(FakeRepository& fake, std::wstring name, FakeClass content)
        : Handed(fake), name_(std::move(name)), content_(std::move(content)),
          next_(content_.instances.begin()) {}

    HRESULT STDMETHODCALLTYPE Next(LONG, ULONG, IWbemClassObject** objects, ULONG* returned) override {
        *returned = 0;
        if (next_ == content_.instances.end()) {
            return WBEM_S_FALSE;
        }
        FakeClass schema = content_;
        schema.instances.clear();
        auto* object = new Object(fake_, name_, std::move(schema), true);
        object->key = next_->first;
        object->values = next_->second;
        ++next_;
        *objects = object;
        *returned = 1;
        return WBEM_S_NO_ERROR;
    }

private:
    std::wstring name_;
    FakeClass content_;
    std::map<long, std::map<std::wstring, std::wstring>>::const_iterator next_;
};

class Services final : public Watched<RefusingWbemServices> {
public:
    Services(FakeRepository& fake, std::wstring path) : Handed(fake), path_(std::move(path)) {}

    HRESULT STDMETHODCALLTYPE GetObject(const BSTR name, LONG flags, IWbemContext* context,
                                        IWbemClassObject** object, IWbemCallResult** result) override {
        const std::wstring wanted = name == nullptr ? L"" : name;
        if (fake_.fails("GetObject " + narrow(wanted) +
                        remark(flags == 0 && context == nullptr && result == nullptr))) {
            return fake_.failure;
        }
        if (wanted.empty()) {
            *object = new Object(fake_, L"", {}, false);
        } else if (wanted == namespaceClass) {
            *object = new Object(fake_, wanted, {{{L"Name", CIM_STRING}}, L"Name", {}}, false);
        } else if (const auto found = classes().find(wanted); found != classes().end()) {
            *object = new Object(fake_, wanted, found->second, false);
        } else {
            return code(WBEM_E_NOT_FOUND);
        }
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject* added, LONG flags, IWbemContext* context,
                                       IWbemCallResult** result) override {
        auto& object = static_cast<Object&>(*added);
        if (fake_.fails("PutClass " + narrow(object.className) + " flags " + std::to_string(flags) +
                        remark(context == nullptr))) {
            return fake_.failure;
        }
        classes()[object.className] = object.content;
        return answer(result, S_OK);
    }

    HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject* added, LONG flags, IWbemContext* context,
                                          IWbemCallResult** result) override {
        auto& object = static_cast<Object&>(*added);
        if (fake_.fails("PutInstance " + narrow(object.className) + " flags " + std::to_string(flags) +
                        remark(context == nullptr))) {
            return fake_.failure;
        }
        if (object.className == namespaceClass) {
            // An existing one is merely updated.
            fake_.namespaces.try_emplace(path_ + L'\\' + object.values[L"Name"]);
            return answer(result, S_OK);
        }
        auto& instances = classes()[object.className].instances;
        if ((flags & WBEM_FLAG_CREATE_ONLY) != 0 && instances.contains(*object.key)) {
            return answer(result, code(WBEM_E_ALREADY_EXISTS));
        }
        instances[*object.key] = object.values;
        return answer(result, S_OK);
    }

    HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR object, LONG flags, IWbemContext* context,
                                             IWbemCallResult** result) override {
        if (fake_.fails("DeleteInstance " + narrow(object) +
                        remark(flags == 0 && context == nullptr && result == nullptr))) {
            return fake_.failure;
        }
        const std::wstring wanted = object;
        const std::wstring prefix = std::wstring(namespaceClass) + L".Name='";
        if (wanted.starts_with(prefix) && wanted.ends_with(L'\'')) {
            const auto name = wanted.substr(prefix.size(), wanted.size() - prefix.size() - 1);
            return fake_.namespaces.erase(path_ + L'\\' + name) != 0 ? S_OK : code(WBEM_E_NOT_FOUND);
        }
        const auto key = wanted.find(L".Id=");
        const auto owner = classes().find(wanted.substr(0, key));
        if (key == std::wstring::npos || owner == classes().end()) {
            return code(WBEM_E_INVALID_OBJECT_PATH);
        }
        return owner->second.instances.erase(std::stol(wanted.substr(key + 4))) != 0 ? S_OK
                                                                                     : code(WBEM_E_NOT_FOUND);
    }

    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR, const BSTR query, LONG, IWbemContext*,
                                        IEnumWbemClassObject** enumerator) override {
        if (fake_.fails("ExecQuery " + narrow(query))) {
            return fake_.failure;
        }
        const auto parsed = system::parseWql(narrow(query));
        if (!parsed) {
            return code(WBEM_E_INVALID_QUERY);
        }
        const auto name = widen(parsed->className);
        const auto found = classes().find(name);
        if (name == namespaceClass) {
            *enumerator = new Enumerator(fake_, name, namespacesWithin());
        } else if (name == L"meta_class" && parsed->condition) {
            *enumerator = new Enumerator(fake_, name, definitionsOf(widen(parsed->condition->value)));
        } else if (found != classes().end()) {
            *enumerator = new Enumerator(fake_, name, found->second);
        } else {
            return code(WBEM_E_INVALID_CLASS);
        }
        if (const auto hook = std::exchange(fake_.afterQuery, {})) {
            hook();
        }
        return S_OK;
    }

private:
    FakeRepository::Namespace& classes() { return fake_.namespaces[path_]; }

    /// What a call came to, told at once or through a result of its own.
    HRESULT answer(IWbemCallResult** result, HRESULT outcome) {
        if (result == nullptr) {
            return outcome;
        }
        if (fake_.givesCallResult) {
            *result = new CallResult(fake_, outcome);
        }
        return S_OK;
    }

    FakeClass namespacesWithin() {
        FakeClass within{{{L"Name", CIM_STRING}}, L"", {}};
        for (const auto& [path, content] : fake_.namespaces) {
            const auto start = path_ + L'\\';
            if (path.starts_with(start) && path.find(L'\\', start.size()) == std::wstring::npos) {
                within.instances[static_cast<long>(within.instances.size())] = {
                    {L"Name", path.substr(start.size())}};
            }
        }
        return within;
    }

    /// The class of that name, if there is one, as what a query for definitions gives.
    FakeClass definitionsOf(const std::wstring& name) {
        FakeClass definitions{{{L"__CLASS", CIM_STRING}}, L"", {}};
        if (classes().contains(name)) {
            definitions.instances[0] = {{L"__CLASS", name}};
        }
        return definitions;
    }

    std::wstring path_;
};

class Locator final : public Watched<RefusingWbemLocator> {
public:
    explicit Locator(FakeRepository& fake) : Handed(fake) {}

    HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR path, const BSTR user, const BSTR password,
                                            const BSTR locale, LONG flags, const BSTR authority,
                                            IWbemContext* context, IWbemServices** services) override {
        if (fake_.fails("ConnectServer " + narrow(path) +
                        remark(user == nullptr && password == nullptr && locale == nullptr && flags == 0 &&
                               authority == nullptr && context == nullptr))) {
            return fake_.failure;
        }
        if (!fake_.namespaces.contains(path)) {
            return code(WBEM_E_INVALID_NAMESPACE);
        }
        *services = new Services(fake_, path);
        return S_OK;
    }
};

} // namespace

bool FakeRepository::fails(const std::string& step) {
    steps.push_back(step);
    return static_cast<int>(steps.size()) == failingStep;
}

HRESULT FakeRepository::createInstance(REFCLSID, IUnknown*, DWORD, REFIID, void** object) {
    if (fails("CoCreateInstance")) {
        return failure;
    }
    *object = static_cast<IWbemLocator*>(new Locator(*this));
    return S_OK;
}

HRESULT FakeRepository::setProxyBlanket(IUnknown*, DWORD, DWORD, OLECHAR*, DWORD, DWORD,
                                        RPC_AUTH_IDENTITY_HANDLE, DWORD) {
    return fails("CoSetProxyBlanket") ? failure : S_OK;
}

} // namespace vexil::tests
