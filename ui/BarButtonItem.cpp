#include "BarButtonItem.h"

namespace ui {

BarButtonItem::BarButtonItem(const QString &name, QObject *parent)
    : Control(name, parent)
{
}

BarButtonItem *BarButtonItem::flexibleSpace(QObject *parent)
{
    auto *item = new BarButtonItem(QStringLiteral("flexibleSpace"), parent);
    item->m_flexibleSpace = true;
    return item;
}

void BarButtonItem::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}

void BarButtonItem::setImage(const QUrl &image)
{
    if (m_image == image)
        return;
    m_image = image;
    Q_EMIT imageChanged();
}

void BarButtonItem::setStyle(Style style)
{
    if (m_style == style)
        return;
    m_style = style;
    Q_EMIT styleChanged();
}

void BarButtonItem::click()
{
    if (m_flexibleSpace || isHidden() || !isEnabled())
        return;
    Q_EMIT clicked();
}

} // namespace ui
