#pragma once

#include "ViewController.h"

namespace ui {

class TableView;

// A screen whose view is a table.
class TableViewController : public ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(ui::TableView *tableView READ tableView CONSTANT)

public:
    explicit TableViewController(QObject *parent = nullptr);

    [[nodiscard]] TableView *tableView() const { return m_tableView; }

private:
    TableView *m_tableView;
};

} // namespace ui
