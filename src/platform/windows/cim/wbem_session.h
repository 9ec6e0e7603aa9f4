#pragma once

#include "platform/windows/cim/com_calls.h"
#include "platform/windows/cim/com_text.h"
#include "system/cim/cim.h"
#include "system/cim/query_text.h"

#include <wbemidl.h>

#include <functional>
#include <memory>

namespace vexil::platform {

struct ReleaseInterface {
    void operator()(IUnknown* object) const { object->Release(); }
};
template <typename Interface>
using ComObject = std::unique_ptr<Interface, ReleaseInterface>;

/// What starting COM answers beside `Success`, `ComNotInitialized` and `SecurityNotInitialized`: COM works on
/// this thread in another mode and the reference to it is not ours.
inline constexpr auto comModeDiffers = static_cast<system::CimStatus>(91);

/// COM on the calling thread for the length of one operation, apartment-threaded where it is ours to choose.
class ComScope {
public:
    explicit ComScope(ComCalls& com);
    ComScope(const ComScope&) = delete;
    ComScope& operator=(const ComScope&) = delete;
    ~ComScope();

    /// `Success` also in another mode.
    [[nodiscard]] system::CimStatus status() const;

private:
    ComCalls& com_;
    system::CimStatus started_;
};

/// Default authentication, impersonation, everything else empty. That it was done before is no failure.
[[nodiscard]] bool initializeComSecurity(ComCalls& com);

/// Null if there is none.
[[nodiscard]] ComObject<IWbemLocator> createLocator(ComCalls& com);
/// Null if there is no such namespace, or the connection gives no services.
[[nodiscard]] ComObject<IWbemServices> connectServer(ComCalls& com, IWbemLocator& locator,
                                                     const wchar_t* nameSpace);

/// A connection to one namespace, on a thread where COM works, and the query that runs on it.
class WbemSession {
public:
    using UseProperty = std::function<void(std::int32_t index, const VARIANT& value)>;

    /// Creates the locator, connects and sets the blanket, as far as that goes.
    WbemSession(ComCalls& com, const wchar_t* nameSpace);

    /// Runs a query up to its enumerator; the status is that of the first thing that failed, connection
    /// included.
    [[nodiscard]] system::CimStatus execute(const system::QueryArguments& arguments);
    /// Moves to the next object that the query found; false if there is none.
    [[nodiscard]] bool next();
    /// Reads the requested properties of the object in order. `PropertyNotRead` if one or more could not be
    /// read; those are left out.
    [[nodiscard]] system::CimStatus readProperties(const system::QueryArguments& arguments,
                                                   const UseProperty& use);

private:
    ComCalls& com_;
    system::CimConnection connection_;
    system::QueryText text_;
    ComObject<IWbemLocator> locator_;
    ComObject<IWbemServices> services_;
    ComObject<IEnumWbemClassObject> enumerator_;
    ComObject<IWbemClassObject> object_;
};

} // namespace vexil::platform
