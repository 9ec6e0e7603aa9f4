#pragma once

#include "svg_picture.h"

#include <QtGui/QIconEngine>

#include <optional>

/// Shows the pictures of the stylesheet. Qt's own reader of SVG is a library that is not everywhere Qt is.
class SvgIconEngine : public QIconEngine {
public:
    void addFile(const QString& fileName, const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) override;
    bool isNull() override;
    QString key() const override;
    QIconEngine* clone() const override;

private:
    std::optional<SvgPicture> picture_;
};
