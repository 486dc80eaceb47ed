#include "ControllerListModel.h"

#include "ViewController.h"

namespace ui {

ControllerListModel::ControllerListModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

int ControllerListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_controllers.size());
}

QVariant ControllerListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid)
        || role != ControllerRole)
        return {};
    return QVariant::fromValue(m_controllers.at(index.row()).data());
}

QHash<int, QByteArray> ControllerListModel::roleNames() const
{
    return {{ControllerRole, QByteArrayLiteral("controller")}};
}

void ControllerListModel::setControllers(const QList<ViewController *> &controllers)
{
    // Stacks change at their end: keep the common beginning, replace the rest.
    qsizetype common = 0;
    while (common < m_controllers.size() && common < controllers.size()
           && m_controllers.at(common) == controllers.at(common))
        ++common;

    if (common < m_controllers.size()) {
        beginRemoveRows({}, int(common), int(m_controllers.size() - 1));
        m_controllers.resize(common);
        endRemoveRows();
    }
    if (common < controllers.size()) {
        beginInsertRows({}, int(common), int(controllers.size() - 1));
        for (qsizetype i = common; i < controllers.size(); ++i)
            m_controllers.append(controllers.at(i));
        endInsertRows();
    }
}

} // namespace ui
