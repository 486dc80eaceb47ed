#include "TableViewController.h"

#include "TableView.h"

namespace ui {

TableViewController::TableViewController(QObject *parent)
    : ViewController(parent)
    , m_tableView(new TableView(QStringLiteral("tableView"), this))
{
}

} // namespace ui
