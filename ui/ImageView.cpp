#include "ImageView.h"

namespace ui {

ImageView::ImageView(const QString &name, QObject *parent)
    : Control(name, parent)
{
}

void ImageView::setSource(const QUrl &source)
{
    if (m_source == source)
        return;
    m_source = source;
    Q_EMIT sourceChanged();
}

void ImageView::setImage(const QImage &image)
{
    m_image = image;
    Q_EMIT imageChanged();
}

void ImageView::setCornerRadius(qreal radius)
{
    if (qFuzzyCompare(m_cornerRadius, radius))
        return;
    m_cornerRadius = radius;
    Q_EMIT cornerRadiusChanged();
}

} // namespace ui
