#pragma once

#include "BarButtonItem.h"
#include "Control.h"

#include <QList>

#include <functional>

namespace ui {

// A bar of bar button items; screens attach one above the keyboard of a text input.
class Toolbar : public Control {
    Q_OBJECT
    QML_NAMED_ELEMENT(ToolbarOutlet)
    QML_UNCREATABLE("Outlets are owned by their screen controller")
    Q_PROPERTY(QList<ui::BarButtonItem *> items READ items NOTIFY itemsChanged)
    Q_PROPERTY(qreal height READ height WRITE setHeight NOTIFY heightChanged)

public:
    explicit Toolbar(const QString &name, QObject *parent = nullptr);

    // The keyboard toolbar the screens attach: height 50, a flexible space, then a "Done"
    // button in the done style that runs doneAction.
    static Toolbar *doneToolbar(QObject *parent, std::function<void()> doneAction);

    [[nodiscard]] QList<BarButtonItem *> items() const { return m_items; }
    // The toolbar takes ownership of the items.
    void setItems(const QList<BarButtonItem *> &items);
    [[nodiscard]] qreal height() const { return m_height; }
    void setHeight(qreal height);

Q_SIGNALS:
    void itemsChanged();
    void heightChanged();

private:
    QList<BarButtonItem *> m_items;
    qreal m_height = 44;
};

} // namespace ui
