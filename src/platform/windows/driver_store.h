#pragma once

#include <optional>
#include <string>

namespace vexil::platform {

/// The folder in the driver store of the driver that a service's record names, with a separator at its end.
/// `image` is the record's path: from the system's root ("\SystemRoot\System32\DriverStore\..."), relative to
/// it, or a full one, with or without "\??\" before it; `windowsFolder` has no separator at its end. Nothing
/// for a driver that stands elsewhere: its folder is nobody's in particular.
[[nodiscard]] std::optional<std::wstring> driverStoreFolder(std::wstring image,
                                                            const std::wstring& windowsFolder);

} // namespace vexil::platform
