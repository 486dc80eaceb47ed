#include "ImagePainter.h"

#include <QPainter>
#include <QPainterPath>

namespace ui {

ImagePainter::ImagePainter(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
}

void ImagePainter::setImage(const QImage &image)
{
    m_image = image;
    Q_EMIT imageChanged();
    update();
}

void ImagePainter::setFill(bool fill)
{
    if (m_fill == fill)
        return;
    m_fill = fill;
    Q_EMIT fillChanged();
    update();
}

void ImagePainter::setRadius(qreal radius)
{
    if (qFuzzyCompare(m_radius, radius))
        return;
    m_radius = radius;
    Q_EMIT radiusChanged();
    update();
}

void ImagePainter::paint(QPainter *painter)
{
    if (m_image.isNull() || width() <= 0 || height() <= 0)
        return;
    const QSizeF target(width(), height());
    QSizeF scaled = QSizeF(m_image.size()).scaled(target, m_fill ? Qt::KeepAspectRatioByExpanding
                                                                  : Qt::KeepAspectRatio);
    const QRectF rect((target.width() - scaled.width()) / 2, (target.height() - scaled.height()) / 2,
                      scaled.width(), scaled.height());
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    QPainterPath clip;
    clip.addRoundedRect(QRectF(QPointF(0, 0), target), m_radius, m_radius);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setClipPath(clip);
    painter->drawImage(rect, m_image);
}

} // namespace ui
