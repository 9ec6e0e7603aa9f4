#include "svg_icon_engine.h"

#include <QtCore/QFile>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>

namespace {

constexpr double disabledOpacity = 0.4;

} // namespace

void SvgIconEngine::addFile(const QString& fileName, const QSize&, QIcon::Mode, QIcon::State) {
    QFile file(fileName);
    if (!picture_ && file.open(QIODevice::ReadOnly)) {
        picture_.emplace(file.readAll());
    }
}

void SvgIconEngine::paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) {
    if (isNull()) {
        return;
    }
    QImage image = picture_->draw((QSizeF(place.size()) * painter->device()->devicePixelRatioF()).toSize());
    painter->save();
    if (mode == QIcon::Disabled) {
        painter->setOpacity(painter->opacity() * disabledOpacity);
    }
    painter->drawImage(place, image);
    painter->restore();
}

QPixmap SvgIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return pixmap;
}

QSize SvgIconEngine::actualSize(const QSize& size, QIcon::Mode, QIcon::State) {
    return isNull() ? QSize() : picture_->size().scaled(size, Qt::KeepAspectRatio);
}

QList<QSize> SvgIconEngine::availableSizes(QIcon::Mode, QIcon::State) {
    return isNull() ? QList<QSize>() : QList<QSize>{picture_->size()};
}

bool SvgIconEngine::isNull() { return !picture_ || picture_->isEmpty(); }
QString SvgIconEngine::key() const { return QStringLiteral("svg"); }
QIconEngine* SvgIconEngine::clone() const { return new SvgIconEngine(*this); }
