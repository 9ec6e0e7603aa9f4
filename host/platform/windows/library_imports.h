#pragma once

#include <filesystem>
#include <string>

namespace vexil::host::platform {

/// Why a library cannot be loaded, where the reason is among those that it imports: "it needs 'x.dll', which
/// is missing". Empty if each of them can be had, or the file is no library.
[[nodiscard]] std::string culpritAmongImports(const std::filesystem::path& library);

} // namespace vexil::host::platform
