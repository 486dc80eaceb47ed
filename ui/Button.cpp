#include "Button.h"

namespace ui {

Button::Button(const QString &name, QObject *parent)
    : Control(name, parent)
{
}

void Button::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}

void Button::setTitleColor(const QColor &color)
{
    if (m_titleColor == color)
        return;
    m_titleColor = color;
    Q_EMIT titleColorChanged();
}

void Button::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    Q_EMIT backgroundColorChanged();
}

void Button::setImage(const QUrl &image)
{
    if (m_image == image)
        return;
    m_image = image;
    Q_EMIT imageChanged();
}

void Button::setCornerRadius(qreal radius)
{
    if (qFuzzyCompare(m_cornerRadius, radius))
        return;
    m_cornerRadius = radius;
    Q_EMIT cornerRadiusChanged();
}

void Button::setContentHorizontalAlignment(Qt::Alignment alignment)
{
    if (m_contentHorizontalAlignment == alignment)
        return;
    m_contentHorizontalAlignment = alignment;
    Q_EMIT contentHorizontalAlignmentChanged();
}

void Button::setSelected(bool selected)
{
    if (m_selected == selected)
        return;
    m_selected = selected;
    Q_EMIT selectedChanged();
}

void Button::click()
{
    if (isHidden() || !isEnabled())
        return;
    Q_EMIT clicked();
}

} // namespace ui
