#include "ActivityIndicatorView.h"

namespace ui {

ActivityIndicatorView::ActivityIndicatorView(const QString &name, QObject *parent)
    : Control(name, parent)
{
    setHidden(true);
}

void ActivityIndicatorView::setFrame(const QRectF &frame)
{
    if (m_frame == frame)
        return;
    m_frame = frame;
    Q_EMIT frameChanged();
}

void ActivityIndicatorView::setCenter(const QPointF &center)
{
    QRectF frame = m_frame;
    frame.moveCenter(center);
    setFrame(frame);
}

void ActivityIndicatorView::setCornerRadius(qreal radius)
{
    if (qFuzzyCompare(m_cornerRadius, radius))
        return;
    m_cornerRadius = radius;
    Q_EMIT cornerRadiusChanged();
}

void ActivityIndicatorView::setHidesWhenStopped(bool hides)
{
    if (m_hidesWhenStopped == hides)
        return;
    m_hidesWhenStopped = hides;
    if (hides && !m_animating)
        setHidden(true);
    Q_EMIT hidesWhenStoppedChanged();
}

void ActivityIndicatorView::setStyle(Style style)
{
    if (m_style == style)
        return;
    m_style = style;
    Q_EMIT styleChanged();
}

QColor ActivityIndicatorView::color() const
{
    return m_style == Style::Gray ? QColor(Qt::gray) : QColor(Qt::white);
}

qreal ActivityIndicatorView::indicatorSize() const
{
    return m_style == Style::WhiteLarge ? 37 : 20;
}

void ActivityIndicatorView::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    Q_EMIT backgroundColorChanged();
}

void ActivityIndicatorView::setCaption(const QString &caption)
{
    if (m_caption == caption)
        return;
    m_caption = caption;
    Q_EMIT captionChanged();
}

void ActivityIndicatorView::startAnimating()
{
    setHidden(false);
    if (m_animating)
        return;
    m_animating = true;
    Q_EMIT animatingChanged();
}

void ActivityIndicatorView::stopAnimating()
{
    if (m_hidesWhenStopped)
        setHidden(true);
    if (!m_animating)
        return;
    m_animating = false;
    Q_EMIT animatingChanged();
}

} // namespace ui
