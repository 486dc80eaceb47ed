#include "NavigationController.h"

#include "NavigationItem.h"
#include "UiLogging.h"

namespace ui {

NavigationController::NavigationController(ViewController *rootViewController, QObject *parent)
    : ViewController(parent)
    , m_model(new ControllerListModel(this))
{
    setViewUrl(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Ui/NavigationView.qml")));
    if (rootViewController)
        setViewControllers({rootViewController});
}

QList<ViewController *> NavigationController::viewControllers() const
{
    QList<ViewController *> controllers;
    for (const QPointer<ViewController> &controller : m_stack) {
        if (controller)
            controllers.append(controller);
    }
    return controllers;
}

ViewController *NavigationController::topViewController() const
{
    for (auto it = m_stack.crbegin(); it != m_stack.crend(); ++it) {
        if (*it)
            return *it;
    }
    return nullptr;
}

void NavigationController::setViewControllers(const QList<ViewController *> &controllers, bool animated)
{
    ViewController *oldTop = topViewController();
    QList<ViewController *> removed;
    for (ViewController *old : viewControllers()) {
        if (!controllers.contains(old))
            removed.append(old);
    }
    m_stack.clear();
    for (ViewController *controller : controllers) {
        if (!controller)
            continue;
        addChildViewController(controller);
        m_stack.append(controller);
    }
    transition(oldTop, topViewController(), removed, animated);
}

void NavigationController::pushViewController(ViewController *controller, bool animated)
{
    if (!controller || m_stack.contains(controller)) {
        qCWarning(lcPresentation) << "Pushing a view controller that is null or already on the stack is not supported";
        return;
    }
    ViewController *oldTop = topViewController();
    addChildViewController(controller);
    m_stack.append(controller);
    transition(oldTop, controller, {}, animated);
}

ViewController *NavigationController::popViewControllerAnimated(bool animated)
{
    const QList<ViewController *> controllers = viewControllers();
    if (controllers.size() < 2)
        return nullptr;
    ViewController *top = controllers.last();
    m_stack.removeAll(top);
    transition(top, topViewController(), {top}, animated);
    return top;
}

QList<ViewController *> NavigationController::popToRootViewControllerAnimated(bool animated)
{
    QList<ViewController *> controllers = viewControllers();
    if (controllers.size() < 2)
        return {};
    ViewController *oldTop = controllers.last();
    const QList<ViewController *> removed = controllers.mid(1);
    m_stack = {controllers.first()};
    transition(oldTop, controllers.first(), removed, animated);
    return removed;
}

void NavigationController::transition(ViewController *oldTop, ViewController *newTop,
                                      const QList<ViewController *> &removed, bool animated)
{
    for (ViewController *controller : removed)
        controller->removeFromParentViewController();
    watchTopItem();
    m_model->setControllers(viewControllers());
    Q_EMIT viewControllersChanged();

    const bool visible = isOnScreen();
    const bool changes = oldTop != newTop;
    if (visible && changes) {
        if (oldTop)
            oldTop->beginAppearanceTransition(false, animated);
        if (newTop)
            newTop->beginAppearanceTransition(true, animated);
    }
    QList<QPointer<ViewController>> gone;
    for (ViewController *controller : removed)
        gone.append(controller);
    QPointer<ViewController> from(oldTop);
    QPointer<ViewController> to(newTop);
    later([this, from, to, gone, visible, changes] {
        if (visible && changes) {
            if (from)
                from->endAppearanceTransition();
            if (to)
                to->endAppearanceTransition();
        }
        // Screens taken off the stack that nobody else owns go with it.
        for (const QPointer<ViewController> &controller : gone) {
            if (controller && controller->parent() == this && !controller->parentViewController())
                controller->deleteLater();
        }
    });
}

void NavigationController::watchTopItem()
{
    disconnect(m_hidesBackConnection);
    disconnect(m_leftItemConnection);
    auto update = [this] {
        const bool visible = isBackButtonVisible();
        if (visible == m_backButtonVisible)
            return;
        m_backButtonVisible = visible;
        Q_EMIT backButtonVisibleChanged();
    };
    if (ViewController *top = topViewController()) {
        m_hidesBackConnection =
            connect(top->navigationItem(), &NavigationItem::hidesBackButtonChanged, this, update);
        m_leftItemConnection =
            connect(top->navigationItem(), &NavigationItem::leftBarButtonItemChanged, this, update);
    }
    update();
}

bool NavigationController::isBackButtonVisible() const
{
    ViewController *top = topViewController();
    return top && viewControllers().size() > 1 && !top->navigationItem()->hidesBackButton()
        && !top->navigationItem()->leftBarButtonItem();
}

void NavigationController::setNavigationBarHidden(bool hidden)
{
    if (m_navigationBarHidden == hidden)
        return;
    m_navigationBarHidden = hidden;
    Q_EMIT navigationBarHiddenChanged();
}

void NavigationController::goBack()
{
    popViewControllerAnimated(true);
}

QList<ViewController *> NavigationController::childrenForAppearance() const
{
    if (ViewController *top = topViewController())
        return {top};
    return {};
}

} // namespace ui
