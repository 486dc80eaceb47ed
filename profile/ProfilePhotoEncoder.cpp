#include "ProfilePhotoEncoder.h"

#include <QBuffer>
#include <QPainter>
#include <cmath>

QImage ProfilePhotoEncoder::scaled(const QImage &photo)
{
    if (photo.isNull() || photo.width() <= 0 || photo.height() <= 0)
        return {};
    const auto height = static_cast<int>(std::ceil(double(photo.height()) * kWidth / photo.width()));
    // JPEG has no transparency: transparent areas become white rather than black.
    QImage canvas(kWidth, std::max(height, 1), QImage::Format_RGB32);
    canvas.fill(Qt::white);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const QSizeF area(canvas.size());
    const QSizeF fitted = QSizeF(photo.size()).scaled(area, Qt::KeepAspectRatio);
    const QRectF target(QPointF((area.width() - fitted.width()) / 2, (area.height() - fitted.height()) / 2), fitted);
    painter.drawImage(target, photo);
    painter.end();
    return canvas;
}

QByteArray ProfilePhotoEncoder::encode(const QImage &photo)
{
    const QImage image = scaled(photo);
    if (image.isNull())
        return {};
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "JPEG", kQuality))
        return {};
    return bytes;
}
