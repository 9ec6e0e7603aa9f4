#pragma once

#include <windows.h>

#include <wbemidl.h>

#include <atomic>

// The interfaces of WMI with every operation refused; a stand-in overrides what it offers.
namespace vexil::tests {

/// Counts references, and destroys itself with the last one.
template <typename Interface>
class Counted : public Interface {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

protected:
    virtual ~Counted() = default;

private:
    std::atomic<ULONG> references_ = 1;
};

class RefusingWbemLocator : public Counted<IWbemLocator> {
public:
    HRESULT STDMETHODCALLTYPE ConnectServer(const BSTR, const BSTR, const BSTR, const BSTR, LONG, const BSTR,
                                            IWbemContext*, IWbemServices**) override {
        return E_NOTIMPL;
    }
};

class RefusingWbemServices : public Counted<IWbemServices> {
public:
    HRESULT STDMETHODCALLTYPE OpenNamespace(const BSTR, LONG, IWbemContext*, IWbemServices**,
                                            IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CancelAsyncCall(IWbemObjectSink*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE QueryObjectSink(LONG, IWbemObjectSink**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetObject(const BSTR, LONG, IWbemContext*, IWbemClassObject**,
                                        IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetObjectAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutClass(IWbemClassObject*, LONG, IWbemContext*, IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutClassAsync(IWbemClassObject*, LONG, IWbemContext*,
                                            IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteClass(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteClassAsync(const BSTR, LONG, IWbemContext*, IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateClassEnum(const BSTR, LONG, IWbemContext*,
                                              IEnumWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateClassEnumAsync(const BSTR, LONG, IWbemContext*,
                                                   IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutInstance(IWbemClassObject*, LONG, IWbemContext*,
                                          IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutInstanceAsync(IWbemClassObject*, LONG, IWbemContext*,
                                               IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteInstance(const BSTR, LONG, IWbemContext*, IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteInstanceAsync(const BSTR, LONG, IWbemContext*,
                                                  IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateInstanceEnum(const BSTR, LONG, IWbemContext*,
                                                 IEnumWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE CreateInstanceEnumAsync(const BSTR, LONG, IWbemContext*,
                                                      IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecQuery(const BSTR, const BSTR, LONG, IWbemContext*,
                                        IEnumWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*,
                                             IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecNotificationQuery(const BSTR, const BSTR, LONG, IWbemContext*,
                                                    IEnumWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecNotificationQueryAsync(const BSTR, const BSTR, LONG, IWbemContext*,
                                                         IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecMethod(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                         IWbemClassObject**, IWbemCallResult**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE ExecMethodAsync(const BSTR, const BSTR, LONG, IWbemContext*, IWbemClassObject*,
                                              IWbemObjectSink*) override {
        return E_NOTIMPL;
    }
};

class RefusingEnumWbemClassObject : public Counted<IEnumWbemClassObject> {
public:
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Next(LONG, ULONG, IWbemClassObject**, ULONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE NextAsync(ULONG, IWbemObjectSink*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Skip(LONG, ULONG) override { return E_NOTIMPL; }
};

class RefusingWbemClassObject : public Counted<IWbemClassObject> {
public:
    HRESULT STDMETHODCALLTYPE GetQualifierSet(IWbemQualifierSet**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Get(LPCWSTR, LONG, VARIANT*, CIMTYPE*, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Put(LPCWSTR, LONG, VARIANT*, CIMTYPE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNames(LPCWSTR, LONG, VARIANT*, SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Next(LONG, BSTR*, VARIANT*, CIMTYPE*, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EndEnumeration() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropertyQualifierSet(LPCWSTR, IWbemQualifierSet**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Clone(IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetObjectText(LONG, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SpawnDerivedClass(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SpawnInstance(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CompareTo(LONG, IWbemClassObject*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetPropertyOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InheritsFrom(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMethod(LPCWSTR, LONG, IWbemClassObject**, IWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE PutMethod(LPCWSTR, LONG, IWbemClassObject*, IWbemClassObject*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE DeleteMethod(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginMethodEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE NextMethod(LONG, BSTR*, IWbemClassObject**, IWbemClassObject**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EndMethodEnumeration() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMethodQualifierSet(LPCWSTR, IWbemQualifierSet**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetMethodOrigin(LPCWSTR, BSTR*) override { return E_NOTIMPL; }
};

class RefusingWbemQualifierSet : public Counted<IWbemQualifierSet> {
public:
    HRESULT STDMETHODCALLTYPE Get(LPCWSTR, LONG, VARIANT*, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Put(LPCWSTR, VARIANT*, LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Delete(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetNames(LONG, SAFEARRAY**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE BeginEnumeration(LONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Next(LONG, BSTR*, VARIANT*, LONG*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EndEnumeration() override { return E_NOTIMPL; }
};

class RefusingWbemCallResult : public Counted<IWbemCallResult> {
public:
    HRESULT STDMETHODCALLTYPE GetResultObject(LONG, IWbemClassObject**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetResultString(LONG, BSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetResultServices(LONG, IWbemServices**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetCallStatus(LONG, LONG*) override { return E_NOTIMPL; }
};

} // namespace vexil::tests
