#include "TableView.h"

namespace ui {

TableView::TableView(const QString &name, QObject *parent)
    : Control(name, parent)
{
}

void TableView::setModel(QAbstractItemModel *model)
{
    if (m_model == model)
        return;
    m_model = model;
    Q_EMIT modelChanged();
}

void TableView::setBackgroundView(QObject *view)
{
    if (m_backgroundView == view)
        return;
    if (m_backgroundView && m_backgroundView->parent() == this)
        m_backgroundView->deleteLater();
    m_backgroundView = view;
    if (view)
        view->setParent(this);
    Q_EMIT backgroundViewChanged();
}

void TableView::setSeparatorStyle(SeparatorStyle style)
{
    if (m_separatorStyle == style)
        return;
    m_separatorStyle = style;
    Q_EMIT separatorStyleChanged();
}

void TableView::reloadData()
{
    Q_EMIT dataReloaded();
}

void TableView::userSelectedRow(int row, int section)
{
    if (isHidden() || !isEnabled())
        return;
    Q_EMIT rowSelected(row, section);
}

} // namespace ui
