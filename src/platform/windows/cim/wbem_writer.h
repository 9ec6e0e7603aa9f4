#pragma once

#include "platform/windows/cim/com_calls.h"
#include "platform/windows/cim/wbem_session.h"

#include <string>

namespace vexil::platform {

using ClassObject = ComObject<IWbemClassObject>;

/// A connection for changing what a namespace holds, on a thread where COM works. No blanket is set on it:
/// writing goes by what the process's security says. Texts that COM has no memory for are raised as
/// `_com_error`.
class WbemWriter {
public:
    explicit WbemWriter(ComCalls& com);

    [[nodiscard]] bool located() const { return locator_ != nullptr; }
    /// Leaves the namespace that it was connected to.
    [[nodiscard]] bool connect(const wchar_t* nameSpace);

    /// The class or the object of this path, a class without anything for an empty path; null if there is
    /// none.
    [[nodiscard]] ClassObject object(BSTR path);
    [[nodiscard]] bool deleteObject(const std::wstring& path);

    /// Stores a class or an instance, and waits for the end of it. That it is there already is no failure.
    [[nodiscard]] bool putClass(IWbemClassObject& added);
    [[nodiscard]] bool putInstance(IWbemClassObject& added);
    /// Stores an instance that must be new. Nobody learns whether it was.
    void putNewInstance(IWbemClassObject& added);

private:
    ComCalls& com_;
    ComObject<IWbemLocator> locator_;
    ComObject<IWbemServices> services_;
};

/// A new instance of a class; null for a null class, and where it cannot be made.
[[nodiscard]] ClassObject spawnInstance(IWbemClassObject* owner);

/// Gives a property a text or a signed number.
[[nodiscard]] bool putText(IWbemClassObject& object, const wchar_t* name, BSTR text);
bool putNumber(IWbemClassObject& object, const wchar_t* name, LONG number);

} // namespace vexil::platform
