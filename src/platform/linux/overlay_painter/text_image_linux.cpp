#include "platform/linux/overlay_painter/text_image.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QString>

#include <algorithm>
#include <cmath>

namespace vexil::platform {

namespace {

constexpr int alignment = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;
/// At 72 dots per inch a point is a pixel, and points need not be whole.
constexpr int dotsPerMeterAt72Dpi = 2835;

/// From DirectWrite's steps to Qt's percentages.
int stretchPercent(int stretch) {
    constexpr int percents[] = {100, 50, 62, 75, 87, 100, 112, 125, 150, 200};
    static_assert(std::size(percents) == 10);
    return percents[std::clamp(stretch, 0, 9)];
}

QFont fontOf(const OverlayFont& font) {
    QFont result(QString::fromWCharArray(font.family));
    result.setPointSizeF(static_cast<qreal>(font.pixelSize));
    result.setWeight(static_cast<QFont::Weight>(font.weight));
    result.setStretch(stretchPercent(font.stretch));
    return result;
}

QImage imageOf(const QSize& size) {
    QImage image(size, QImage::Format_Grayscale8);
    image.setDotsPerMeterX(dotsPerMeterAt72Dpi);
    image.setDotsPerMeterY(dotsPerMeterAt72Dpi);
    image.fill(0);
    return image;
}

} // namespace

TextImage paintText(const std::wstring& text, const OverlayFont& font, float maximumWidth,
                    float maximumHeight) {
    const QImage device = imageOf({1, 1});
    const QFont painted(fontOf(font), &device);
    const QString string = QString::fromStdWString(text);
    const QRectF maximum(0, 0, static_cast<qreal>(maximumWidth), static_cast<qreal>(maximumHeight));
    const auto bounds =
        QFontMetricsF(painted, &device).boundingRect(maximum, alignment, string).intersected(maximum);
    if (bounds.isEmpty()) {
        return {};
    }
    // One more at the right for what of the last letter leans out of its width.
    QImage image = imageOf({std::min(static_cast<int>(std::ceil(bounds.right())) + 1,
                                     static_cast<int>(std::ceil(maximum.width()))),
                            static_cast<int>(std::ceil(bounds.bottom()))});
    QPainter painter(&image);
    painter.setFont(painted);
    painter.setPen(Qt::white);
    painter.drawText(maximum, alignment, string);
    painter.end();

    TextImage result{
        static_cast<std::uint32_t>(image.width()), static_cast<std::uint32_t>(image.height()), {}};
    for (int row = 0; row < image.height(); ++row) {
        const auto* const line = image.constScanLine(row);
        result.coverage.insert(result.coverage.end(), line, line + image.width());
    }
    return result;
}

bool canPaintText() { return qGuiApp != nullptr; }

} // namespace vexil::platform
