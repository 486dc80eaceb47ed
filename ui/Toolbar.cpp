#include "Toolbar.h"

#include "BarButtonItem.h"

namespace ui {

Toolbar::Toolbar(const QString &name, QObject *parent)
    : Control(name, parent)
{
}

Toolbar *Toolbar::doneToolbar(QObject *parent, std::function<void()> doneAction)
{
    auto *toolbar = new Toolbar(QStringLiteral("doneToolbar"), parent);
    toolbar->setHeight(50);
    auto *done = new BarButtonItem(QStringLiteral("doneButton"));
    done->setTitle(QStringLiteral("Done"));
    done->setStyle(BarButtonItem::Style::Done);
    QObject::connect(done, &BarButtonItem::clicked, toolbar, std::move(doneAction));
    toolbar->setItems({BarButtonItem::flexibleSpace(nullptr), done});
    return toolbar;
}

void Toolbar::setItems(const QList<BarButtonItem *> &items)
{
    for (BarButtonItem *old : std::as_const(m_items)) {
        if (!items.contains(old) && old->parent() == this)
            old->deleteLater();
    }
    m_items = items;
    for (BarButtonItem *item : items)
        item->setParent(this);
    Q_EMIT itemsChanged();
}

void Toolbar::setHeight(qreal height)
{
    if (qFuzzyCompare(m_height, height))
        return;
    m_height = height;
    Q_EMIT heightChanged();
}

} // namespace ui
