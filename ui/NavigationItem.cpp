#include "NavigationItem.h"

#include "BarButtonItem.h"

namespace ui {

NavigationItem::NavigationItem(QObject *parent)
    : QObject(parent)
{
    setObjectName(QStringLiteral("navigationItem"));
}

void NavigationItem::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    Q_EMIT titleChanged();
}

void NavigationItem::setLeftBarButtonItem(BarButtonItem *item)
{
    if (m_left == item)
        return;
    m_left = item;
    if (item && !item->parent())
        item->setParent(this);
    Q_EMIT leftBarButtonItemChanged();
}

void NavigationItem::setRightBarButtonItem(BarButtonItem *item)
{
    if (m_right == item)
        return;
    m_right = item;
    if (item && !item->parent())
        item->setParent(this);
    Q_EMIT rightBarButtonItemChanged();
}

void NavigationItem::setHidesBackButton(bool hides)
{
    if (m_hidesBackButton == hides)
        return;
    m_hidesBackButton = hides;
    Q_EMIT hidesBackButtonChanged();
}

void NavigationItem::setHidesBackButton(bool hides, bool animated)
{
    Q_UNUSED(animated) // the bar fades the button in QML either way
    setHidesBackButton(hides);
}

void NavigationItem::setLargeTitleDisplayMode(LargeTitleDisplayMode mode)
{
    if (m_largeTitleDisplayMode == mode)
        return;
    m_largeTitleDisplayMode = mode;
    Q_EMIT largeTitleDisplayModeChanged();
}

} // namespace ui
