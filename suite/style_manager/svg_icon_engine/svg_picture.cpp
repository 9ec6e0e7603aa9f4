#include "svg_picture.h"

#include <algorithm>
#include <cmath>

// The reader is a library of two headers, which is compiled here.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#define NANOSVG_IMPLEMENTATION
#include <nanosvg/nanosvg.h>
#define NANOSVGRAST_IMPLEMENTATION
#include <nanosvg/nanosvgrast.h>

namespace {

constexpr float pixelsPerInch = 96; // of CSS, for sizes in millimetres and points

} // namespace

// The reader writes into the text.
SvgPicture::SvgPicture(QByteArray text)
    : image_(nsvgParse(text.data(), "px", pixelsPerInch), [](NSVGimage* image) { nsvgDelete(image); }) {
    if (image_ != nullptr && (image_->width <= 0 || image_->height <= 0)) {
        image_.reset();
    }
}

QSize SvgPicture::size() const {
    return isEmpty() ? QSize(0, 0)
                     : QSize(static_cast<int>(std::ceil(image_->width)),
                             static_cast<int>(std::ceil(image_->height)));
}

QImage SvgPicture::draw(QSize size) const {
    QImage pixels(size, QImage::Format_RGBA8888);
    pixels.fill(Qt::transparent);
    const std::unique_ptr<NSVGrasterizer, void (*)(NSVGrasterizer*)> rasterizer(nsvgCreateRasterizer(),
                                                                                nsvgDeleteRasterizer);
    if (isEmpty() || pixels.isNull() || rasterizer == nullptr) {
        return pixels;
    }
    const auto width = static_cast<float>(size.width());
    const auto height = static_cast<float>(size.height());
    const float scale = std::min(width / image_->width, height / image_->height);
    nsvgRasterize(rasterizer.get(), image_.get(), (width - image_->width * scale) / 2,
                  (height - image_->height * scale) / 2, scale, pixels.bits(), size.width(), size.height(),
                  static_cast<int>(pixels.bytesPerLine()));
    return pixels;
}
