#include "utils/accessibility/text_fitting.h"

#include <QtCore/QTextBoundaryFinder>
#include <QtGui/QFontMetrics>

namespace vexil::utils::accessibility {

namespace {

constexpr QChar zeroWidthSpace(0x200B);
constexpr int anyHeight = 1 << 20;

QString breakableWord(const QString& word) {
    QString text;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, word);
    for (qsizetype start = 0, end = finder.toNextBoundary(); end > start; end = finder.toNextBoundary()) {
        text += word.mid(start, end - start) + zeroWidthSpace;
        start = end;
    }
    return text;
}

} // namespace

QString breakableText(const QString& text, const QFontMetrics& metrics, int width) {
    QString result;
    QString word;
    const auto finishWord = [&] {
        result += metrics.horizontalAdvance(word) > width ? breakableWord(word) : word;
        word.clear();
    };
    for (const QChar letter : text) {
        if (letter.isSpace()) {
            finishWord();
            result += letter;
        } else {
            word += letter;
        }
    }
    finishWord();
    return result;
}

int wrappedHeight(const QString& text, const QFontMetrics& metrics, int width) {
    return metrics.boundingRect(QRect(0, 0, width, anyHeight), Qt::TextWordWrap, text).height();
}

} // namespace vexil::utils::accessibility
