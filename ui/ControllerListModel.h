#pragma once

#include <QAbstractListModel>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace ui {

class ViewController;

// A list of screens for QML repeaters (a navigation stack, the window's presentations).
// Updates touch only the rows that changed, so the views of screens that stay are kept with
// their state instead of being made again.
class ControllerListModel : public QAbstractListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Containers provide their own lists")

public:
    enum Role { ControllerRole = Qt::UserRole + 1 };

    explicit ControllerListModel(QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

    void setControllers(const QList<ViewController *> &controllers);

private:
    QList<QPointer<ViewController>> m_controllers;
};

} // namespace ui
