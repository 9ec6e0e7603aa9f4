#include "platform/windows/cim/win_cim.h"

#include "platform/windows/cim/wbem_writer.h"
#include "system/cim/cim_rows.h"
#include "system/cim/record_schema.h"

#include <comdef.h>

namespace vexil::platform {

using system::CimStatus;

namespace {

constexpr auto failedStep = CimStatus::NotConnected;

/// One level of the suite's namespaces: the outer one in the root, the inner one in the outer.
CimStatus createNamespace(ComCalls& com, bool inner) {
    const ComScope scope(com);
    if (scope.status() != CimStatus::Success) {
        return failedStep;
    }
    WbemWriter writer(com);
    if (!writer.connect(inner ? system::suiteNamespace : system::rootNamespace)) {
        return failedStep;
    }
    const ComText className(com, L"__Namespace");
    const auto owner = writer.object(className.get());
    const auto instance = spawnInstance(owner.get());
    if (!instance) {
        return failedStep;
    }
    const ComText name(com, inner ? system::recordNamespaceName : system::suiteNamespaceName);
    return putText(*instance, L"Name", name.get()) && writer.putInstance(*instance) ? CimStatus::Success
                                                                                    : failedStep;
}

CimStatus createNamespaces(ComCalls& com) {
    const auto outer = createNamespace(com, false);
    return outer == CimStatus::Success ? createNamespace(com, true) : outer;
}

bool markAsKey(IWbemClassObject& created, const wchar_t* property) {
    IWbemQualifierSet* found = nullptr;
    const HRESULT result = created.GetPropertyQualifierSet(property, &found);
    const ComObject<IWbemQualifierSet> qualifiers(found);
    if (FAILED(result) || !qualifiers) {
        return false;
    }
    VARIANT yes;
    VariantInit(&yes);
    V_VT(&yes) = VT_BOOL;
    V_BOOL(&yes) = VARIANT_TRUE;
    return SUCCEEDED(qualifiers->Put(L"Key", &yes, 0));
}

/// Adds a property without a value.
bool addProperty(ComCalls& com, IWbemClassObject& created, const char* name, system::CimType type) {
    const ComText property(com, name);
    return SUCCEEDED(created.Put(property.get(), 0, nullptr, static_cast<CIMTYPE>(type)));
}

CimStatus createClass(ComCalls& com, WbemWriter& writer, const char* className) {
    const ComText blank(com, L"");
    const auto created = writer.object(blank.get());
    const ComText name(com, className);
    if (!created || !putText(*created, L"__CLASS", name.get()) ||
        !addProperty(com, *created, system::recordKey, system::CimType::Unsigned32)) {
        return failedStep;
    }
    const ComText key(com, system::recordKey);
    if (!markAsKey(*created, key.get())) {
        return failedStep;
    }
    for (const char* property : system::recordTexts) {
        if (!addProperty(com, *created, property, system::CimType::Text)) {
            return failedStep;
        }
    }
    return writer.putClass(*created) ? CimStatus::Success : failedStep;
}

/// What has no memory ends the record where it stands. A property that the class does not know is passed
/// over.
void putTexts(ComCalls& com, IWbemClassObject& record, const std::vector<std::string>& names,
              const std::vector<std::string>& values) {
    try {
        for (std::size_t i = 0; i < names.size(); ++i) {
            const ComText name(com, names[i].c_str());
            const ComText value(com, values[i].c_str());
            (void)putText(record, name.get(), value.get());
        }
    } catch (const _com_error&) {
        return;
    }
}

std::wstring wide(const wchar_t* text) { return text == nullptr ? std::wstring() : text; }

CimStatus deleteNamespace(ComCalls& com, const std::wstring& path, const std::wstring& name) {
    WbemWriter writer(com);
    if (!writer.located()) {
        return CimStatus::NoLocator;
    }
    if (!writer.connect(path.c_str())) {
        return CimStatus::NotConnected;
    }
    return writer.deleteObject(L"__Namespace.Name='" + name + L"'") ? CimStatus::Success
                                                                    : CimStatus::NoLocator;
}

} // namespace

CimStatus WinCim::writeRecord(const std::vector<std::string>& names, const std::vector<std::string>& values,
                              const char* className, const wchar_t* nameSpace) {
    const ComScope scope(*com_);
    if (scope.status() != CimStatus::Success) {
        return scope.status();
    }
    WbemWriter writer(*com_);
    if (!writer.located()) {
        return CimStatus::NoLocator;
    }
    auto status = CimStatus::Success;
    if (!writer.connect(nameSpace)) {
        status = createNamespaces(*com_);
        if (status != CimStatus::Success) {
            return status;
        }
        if (!writer.connect(nameSpace)) {
            return CimStatus::NotConnected;
        }
    }
    const ComText classPath(*com_, className);
    auto owner = writer.object(classPath.get());
    if (!owner) {
        status = createClass(*com_, writer, className);
        owner = writer.object(classPath.get());
    }
    const auto record = spawnInstance(owner.get());
    if (!record) {
        return failedStep;
    }

    system::OwnedRows rows(*this);
    const char* key = system::recordKey;
    const auto queried = query(&key, className, 1, rows.out(), nameSpace);
    if (queried != CimStatus::Success) {
        return queried;
    }
    system::RecordIds ids;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        ids.add(system::recordId(rows[i]));
    }
    if (ids.full()) {
        const auto oldest = std::wstring(classPath.get()) + L".Id=" + std::to_wstring(ids.oldest());
        if (!writer.deleteObject(oldest)) {
            return failedStep;
        }
    }
    // Only now, after the oldest record has gone.
    if (names.size() != values.size()) {
        return CimStatus::Success;
    }
    putNumber(*record, L"Id", ids.next());
    putTexts(*com_, *record, names, values);
    writer.putNewInstance(*record);
    // Hosts rely on it: a record whose id another writer took meanwhile is lost without a word.
    return status;
}

CimStatus WinCim::removeNamespace(const wchar_t* root, const wchar_t* parent, const wchar_t* child) {
    const ComScope scope(*com_);
    if (scope.status() != CimStatus::Success) {
        return scope.status();
    }
    const auto path = wide(root) + L"\\" + wide(parent);
    const auto removed = deleteNamespace(*com_, path, wide(child));
    if (removed != CimStatus::Success) {
        return removed;
    }
    system::OwnedRows rows(*this);
    const char* property = "Name";
    const auto queried = query(&property, "__Namespace", 1, rows.out(), path.c_str());
    if (queried != CimStatus::Success || rows.size() != 0) {
        return queried;
    }
    return deleteNamespace(*com_, wide(root), wide(parent));
}

} // namespace vexil::platform
