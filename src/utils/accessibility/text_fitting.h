#pragma once

#include <QtCore/QString>

class QFontMetrics;

namespace vexil::utils::accessibility {

/// The text with a place to break after each character of a word that is wider than `width`, such as a path:
/// a label breaks lines between words only. Other words stay whole.
[[nodiscard]] QString breakableText(const QString& text, const QFontMetrics& metrics, int width);

/// The height of the text in lines of `width`.
[[nodiscard]] int wrappedHeight(const QString& text, const QFontMetrics& metrics, int width);

} // namespace vexil::utils::accessibility
