#pragma once

#include <filesystem>
#include <optional>

namespace vexil::platform {

/// A base folder of the user: the one that the variable names, or `usual` below the home folder. As the XDG
/// base directories have it, a variable with a relative path counts as unset. Nothing where no home is known.
[[nodiscard]] std::optional<std::filesystem::path> userFolder(const char* variable, const char* usual);

} // namespace vexil::platform
