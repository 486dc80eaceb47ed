#include "View.h"

namespace ui {

View::View(QObject *parent)
    : QObject(parent)
{
    setObjectName(QStringLiteral("view"));
}

void View::setWidth(qreal width)
{
    setSize(width, m_height);
}

void View::setHeight(qreal height)
{
    setSize(m_width, height);
}

void View::setSize(qreal width, qreal height)
{
    if (qFuzzyCompare(m_width, width) && qFuzzyCompare(m_height, height))
        return;
    m_width = width;
    m_height = height;
    Q_EMIT boundsChanged();
}

QList<QObject *> View::subviews() const
{
    QList<QObject *> views;
    for (const QPointer<QObject> &view : m_subviews) {
        if (view)
            views.append(view);
    }
    return views;
}

void View::addSubview(QObject *subview)
{
    if (!subview)
        return;
    m_subviews.removeAll(subview);
    m_subviews.append(subview);
    connect(subview, &QObject::destroyed, this, &View::subviewsChanged, Qt::UniqueConnection);
    Q_EMIT subviewsChanged();
}

void View::removeSubview(QObject *subview)
{
    if (m_subviews.removeAll(subview) > 0)
        Q_EMIT subviewsChanged();
}

void View::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    Q_EMIT backgroundColorChanged();
}

void View::setUserInteractionEnabled(bool enabled)
{
    if (m_userInteractionEnabled == enabled)
        return;
    m_userInteractionEnabled = enabled;
    Q_EMIT userInteractionEnabledChanged();
}

} // namespace ui
