#pragma once

#include "host/core/language.h"
#include "host/core/report.h"

#include <string>
#include <string_view>

namespace vexil::host {

/// One page that needs nothing else: no script, no font, no file beside it. Made to be read on a screen,
/// light or dark, and on paper.
[[nodiscard]] std::string htmlReport(const Report& report, const Language& language);

/// The text with what HTML reads as markup escaped.
[[nodiscard]] std::string escapeHtml(std::string_view text);

} // namespace vexil::host
