#pragma once

#include "Control.h"

#include <QAbstractItemModel>
#include <QPointer>

namespace ui {

// A table: the rows come from a list model the screen owns; the table itself carries the
// look the screens set (separators, a background view shown behind the rows) and reports
// row taps.
class TableView : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(TableViewOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(QAbstractItemModel *model READ model WRITE setModel NOTIFY modelChanged)
    Q_PROPERTY(QObject *backgroundView READ backgroundView WRITE setBackgroundView NOTIFY backgroundViewChanged)
    Q_PROPERTY(SeparatorStyle separatorStyle READ separatorStyle WRITE setSeparatorStyle NOTIFY separatorStyleChanged)

public:
    enum class SeparatorStyle { None, SingleLine };
    Q_ENUM(SeparatorStyle)

    explicit TableView(const QString &name, QObject *parent = nullptr);

    [[nodiscard]] QAbstractItemModel *model() const { return m_model; }
    void setModel(QAbstractItemModel *model);
    // The table takes ownership of its background view; replacing or clearing it deletes the old one.
    [[nodiscard]] QObject *backgroundView() const { return m_backgroundView; }
    void setBackgroundView(QObject *view);
    [[nodiscard]] SeparatorStyle separatorStyle() const { return m_separatorStyle; }
    void setSeparatorStyle(SeparatorStyle style);

    // Asks the view to redraw every row (the model's own signals cover finer changes).
    Q_INVOKABLE void reloadData();
    Q_INVOKABLE void userSelectedRow(int row, int section = 0);

Q_SIGNALS:
    void modelChanged();
    void backgroundViewChanged();
    void separatorStyleChanged();
    void dataReloaded();
    void rowSelected(int row, int section);

private:
    QPointer<QAbstractItemModel> m_model;
    QPointer<QObject> m_backgroundView;
    SeparatorStyle m_separatorStyle = SeparatorStyle::SingleLine;
};

} // namespace ui
