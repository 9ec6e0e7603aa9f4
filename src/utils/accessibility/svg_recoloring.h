#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vexil::utils::accessibility {

/// What stands between the first two quotation marks that have something between them; nothing if there are
/// none.
[[nodiscard]] std::optional<std::string_view> quotedPath(std::string_view value);

/// The picture `svg` with its first fill colour replaced by `color` wherever that colour's text occurs, in
/// whatever case. Unchanged without a fill. A picture that is to stay readable has one colour and holes.
[[nodiscard]] std::string recolorSvg(std::string_view svg, std::string_view color);

/// The name of a copy of the picture: `url(":/name.svg")` gives "name". Empty if nothing is left.
[[nodiscard]] std::string svgBaseName(std::string_view value);

} // namespace vexil::utils::accessibility
