#pragma once

#include "ControllerListModel.h"
#include "ViewController.h"

namespace ui {

// A stack of screens under a navigation bar; only the top one is on screen. The bar shows
// the top screen's navigation item and a back button while there is a screen to go back to.
class NavigationController : public ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Navigation controllers are made in C++")
    Q_PROPERTY(QList<ui::ViewController *> viewControllers READ viewControllers NOTIFY viewControllersChanged)
    Q_PROPERTY(ui::ViewController *topViewController READ topViewController NOTIFY viewControllersChanged)
    Q_PROPERTY(ui::ControllerListModel *viewControllerModel READ viewControllerModel CONSTANT)
    Q_PROPERTY(bool backButtonVisible READ isBackButtonVisible NOTIFY backButtonVisibleChanged)
    Q_PROPERTY(bool navigationBarHidden READ isNavigationBarHidden WRITE setNavigationBarHidden NOTIFY
                   navigationBarHiddenChanged)

public:
    explicit NavigationController(ViewController *rootViewController = nullptr, QObject *parent = nullptr);

    [[nodiscard]] QList<ViewController *> viewControllers() const;
    [[nodiscard]] ViewController *topViewController() const;
    // The stack for QML repeaters.
    [[nodiscard]] ControllerListModel *viewControllerModel() const { return m_model; }
    void setViewControllers(const QList<ViewController *> &controllers, bool animated = false);

    void pushViewController(ViewController *controller, bool animated);
    // Returns the screen taken off, or nullptr when only the root is left.
    ViewController *popViewControllerAnimated(bool animated);
    QList<ViewController *> popToRootViewControllerAnimated(bool animated);

    [[nodiscard]] bool isBackButtonVisible() const;
    [[nodiscard]] bool isNavigationBarHidden() const { return m_navigationBarHidden; }
    void setNavigationBarHidden(bool hidden);

    // The back button of the bar.
    Q_INVOKABLE void goBack();

Q_SIGNALS:
    void viewControllersChanged();
    void backButtonVisibleChanged();
    void navigationBarHiddenChanged();

protected:
    [[nodiscard]] QList<ViewController *> childrenForAppearance() const override;

private:
    // Moves from the current top to newTop, removing `removed` from the stack's children.
    void transition(ViewController *oldTop, ViewController *newTop, const QList<ViewController *> &removed,
                    bool animated);
    void watchTopItem();

    QList<QPointer<ViewController>> m_stack;
    ControllerListModel *m_model;
    bool m_navigationBarHidden = false;
    bool m_backButtonVisible = false;
    QMetaObject::Connection m_hidesBackConnection;
    QMetaObject::Connection m_leftItemConnection;
};

} // namespace ui
