#pragma once

#include "BarButtonItem.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace ui {

// What a screen shows in the navigation bar while it is on top: its title, the bar button
// items on either side, and whether the back button is hidden.
class NavigationItem : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Every view controller owns its navigation item")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(ui::BarButtonItem *leftBarButtonItem READ leftBarButtonItem WRITE setLeftBarButtonItem NOTIFY
                   leftBarButtonItemChanged)
    Q_PROPERTY(ui::BarButtonItem *rightBarButtonItem READ rightBarButtonItem WRITE setRightBarButtonItem NOTIFY
                   rightBarButtonItemChanged)
    Q_PROPERTY(bool hidesBackButton READ hidesBackButton WRITE setHidesBackButton NOTIFY hidesBackButtonChanged)
    Q_PROPERTY(LargeTitleDisplayMode largeTitleDisplayMode READ largeTitleDisplayMode WRITE
                   setLargeTitleDisplayMode NOTIFY largeTitleDisplayModeChanged)

public:
    enum class LargeTitleDisplayMode { Automatic, Always, Never };
    Q_ENUM(LargeTitleDisplayMode)

    explicit NavigationItem(QObject *parent = nullptr);

    [[nodiscard]] QString title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] BarButtonItem *leftBarButtonItem() const { return m_left; }
    void setLeftBarButtonItem(BarButtonItem *item);
    [[nodiscard]] BarButtonItem *rightBarButtonItem() const { return m_right; }
    void setRightBarButtonItem(BarButtonItem *item);
    [[nodiscard]] bool hidesBackButton() const { return m_hidesBackButton; }
    void setHidesBackButton(bool hides);
    void setHidesBackButton(bool hides, bool animated);
    [[nodiscard]] LargeTitleDisplayMode largeTitleDisplayMode() const { return m_largeTitleDisplayMode; }
    void setLargeTitleDisplayMode(LargeTitleDisplayMode mode);

Q_SIGNALS:
    void titleChanged();
    void leftBarButtonItemChanged();
    void rightBarButtonItemChanged();
    void hidesBackButtonChanged();
    void largeTitleDisplayModeChanged();

private:
    QString m_title;
    QPointer<BarButtonItem> m_left;
    QPointer<BarButtonItem> m_right;
    bool m_hidesBackButton = false;
    LargeTitleDisplayMode m_largeTitleDisplayMode = LargeTitleDisplayMode::Automatic;
};

} // namespace ui
