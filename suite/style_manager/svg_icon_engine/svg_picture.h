#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtGui/QImage>

#include <memory>

struct NSVGimage;

/// A picture of shapes, drawn sharp at any size.
class SvgPicture {
public:
    /// Draws nothing if `text` is no SVG.
    explicit SvgPicture(QByteArray text);

    [[nodiscard]] bool isEmpty() const { return image_ == nullptr; }
    /// As the file says, in pixels; 0 by 0 for an empty picture.
    [[nodiscard]] QSize size() const;
    /// Of the given size in pixels, the picture as large as fits in its middle.
    [[nodiscard]] QImage draw(QSize size) const;

private:
    std::shared_ptr<NSVGimage> image_;
};
