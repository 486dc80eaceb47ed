#include "ViewController.h"

#include "AlertController.h"
#include "FirstResponder.h"
#include "NavigationController.h"
#include "NavigationItem.h"
#include "Storyboard.h"
#include "UiLogging.h"
#include "View.h"

#include <QTimer>
#include <algorithm>

namespace ui {

namespace {

QString describe(const QObject *object)
{
    if (!object)
        return QStringLiteral("<null>");
    return QStringLiteral("<%1: 0x%2>")
        .arg(QLatin1String(object->metaObject()->className()))
        .arg(quintptr(object), 0, 16);
}

} // namespace

ViewController::ViewController(QObject *parent) : QObject(parent), m_navigationItem(new NavigationItem(this)) {}

ViewController::~ViewController()
{
    if (m_presenting && m_presenting->m_presented == this) {
        m_presenting->m_presented = nullptr;
        Q_EMIT m_presenting->presentedViewControllerChanged();
    }
    if (m_parentViewController) {
        m_parentViewController->m_children.removeAll(this);
        Q_EMIT m_parentViewController->childViewControllersChanged();
    }
}

void ViewController::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    m_navigationItem->setTitle(title);
    Q_EMIT titleChanged();
}

View *ViewController::view()
{
    loadViewIfNeeded();
    return m_view;
}

void ViewController::loadViewIfNeeded()
{
    if (m_view || m_loadingView)
        return;
    m_loadingView = true;
    m_view = new View(this);
    if (m_storyboard)
        m_storyboard->performEmbedSegues(this);
    viewDidLoad();
    m_loadingView = false;
}

void ViewController::setViewUrl(const QUrl &url)
{
    if (m_viewUrl == url)
        return;
    m_viewUrl = url;
    Q_EMIT viewUrlChanged();
}

ViewController *ViewController::presentationHost() const
{
    auto *host = const_cast<ViewController *>(this);
    while (host->m_parentViewController)
        host = host->m_parentViewController;
    return host;
}

ViewController *ViewController::presentedViewController() const
{
    return presentationHost()->m_presented;
}

ViewController *ViewController::presentingViewController() const
{
    return presentationHost()->m_presenting;
}

void ViewController::setModalPresentationStyle(ModalPresentationStyle style)
{
    if (m_modalPresentationStyle == style)
        return;
    m_modalPresentationStyle = style;
    Q_EMIT modalPresentationStyleChanged();
}

void ViewController::presentViewController(ViewController *controller, bool animated, Completion completion)
{
    ViewController *host = presentationHost();
    if (!controller) {
        qCWarning(lcPresentation).noquote() << "Attempt to present a null view controller on" << describe(host);
        return;
    }
    if (controller == host || controller->m_presenting || controller->m_parentViewController) {
        qCWarning(lcPresentation).noquote()
            << "Application tried to present modally a view controller" << describe(controller)
            << "that is already presented or contained in another view controller.";
        return;
    }
    ViewController *blocking = host->m_presented ? host->m_presented.data() : AlertController::alertOnScreen();
    if (blocking) {
        qCWarning(lcPresentation).noquote()
            << QStringLiteral("Attempt to present %1 on %2 which is already presenting %3")
                   .arg(describe(controller), describe(host), describe(blocking));
        return;
    }

    // The keyboard goes away under a presented screen.
    if (TextInput *focused = FirstResponder::instance()->current())
        focused->resignFirstResponder();

    if (!controller->parent())
        controller->setParent(host);
    host->m_presented = controller;
    controller->m_presenting = host;
    if (auto *alert = qobject_cast<AlertController *>(controller))
        AlertController::setAlertOnScreen(alert);
    Q_EMIT host->presentedViewControllerChanged();
    Q_EMIT controller->presentingViewControllerChanged();

    const bool visible = host->isOnScreen();
    const bool covers = visible && controller->m_modalPresentationStyle == ModalPresentationStyle::FullScreen;
    if (covers)
        host->beginAppearanceTransition(false, animated);
    if (visible)
        controller->beginAppearanceTransition(true, animated);
    else
        controller->loadViewIfNeeded();

    QPointer<ViewController> presented(controller);
    host->later([host, presented, visible, covers, completion = std::move(completion)] {
        if (covers)
            host->endAppearanceTransition();
        if (visible && presented)
            presented->endAppearanceTransition();
        if (completion)
            completion();
    });
}

void ViewController::dismissViewControllerAnimated(bool animated, Completion completion)
{
    ViewController *host = presentationHost();
    if (!host->m_presented) {
        if (host->m_presenting) {
            host->m_presenting->dismissViewControllerAnimated(animated, std::move(completion));
            return;
        }
        qCDebug(lcPresentation).noquote() << describe(host) << "has nothing to dismiss";
        return;
    }

    QList<QPointer<ViewController>> chain;
    for (ViewController *c = host->m_presented; c; c = c->m_presented)
        chain.append(c);
    const bool hostReturns =
        chain.first()->m_modalPresentationStyle == ModalPresentationStyle::FullScreen && chain.first()->isOnScreen();
    const bool hostOwnsFirst = chain.first()->parent() == host;

    host->m_presented = nullptr;
    for (const QPointer<ViewController> &c : std::as_const(chain)) {
        c->m_presenting = nullptr;
        c->m_presented = nullptr;
        if (AlertController::alertOnScreen() == c)
            AlertController::setAlertOnScreen(nullptr);
    }
    Q_EMIT host->presentedViewControllerChanged();
    for (const QPointer<ViewController> &c : std::as_const(chain)) {
        Q_EMIT c->presentingViewControllerChanged();
        Q_EMIT c->presentedViewControllerChanged();
    }

    for (auto it = chain.crbegin(); it != chain.crend(); ++it)
        (*it)->beginAppearanceTransition(false, animated);
    if (hostReturns)
        host->beginAppearanceTransition(true, animated);

    host->later([host, chain, hostReturns, hostOwnsFirst, completion = std::move(completion)] {
        for (auto it = chain.crbegin(); it != chain.crend(); ++it) {
            if (*it)
                (*it)->endAppearanceTransition();
        }
        if (hostReturns)
            host->endAppearanceTransition();
        if (completion)
            completion();
        ViewController *first = chain.first();
        if (first && hostOwnsFirst && first->parent() == host && !first->m_presenting)
            first->deleteLater();
    });
}

void ViewController::performSegueWithIdentifier(const QString &identifier, QObject *sender)
{
    if (!m_storyboard) {
        qCCritical(lcStoryboard).noquote()
            << QStringLiteral("Receiver (%1) has no segue with identifier '%2'").arg(describe(this), identifier);
        return;
    }
    m_storyboard->performSegue(this, identifier, sender);
}

void ViewController::prepareForSegue(StoryboardSegue *segue, QObject *sender)
{
    Q_UNUSED(segue)
    Q_UNUSED(sender)
}

NavigationController *ViewController::navigationController() const
{
    for (ViewController *p = m_parentViewController; p; p = p->m_parentViewController) {
        if (auto *navigation = qobject_cast<NavigationController *>(p))
            return navigation;
    }
    return nullptr;
}

void ViewController::attachToStoryboard(Storyboard *storyboard, const QString &identifier)
{
    m_storyboard = storyboard;
    m_storyboardIdentifier = identifier;
}

QList<ViewController *> ViewController::childViewControllers() const
{
    QList<ViewController *> children;
    for (const QPointer<ViewController> &child : m_children) {
        if (child)
            children.append(child);
    }
    return children;
}

void ViewController::addChildViewController(ViewController *child, const QString &slot)
{
    if (!child || child == this || child->m_parentViewController == this)
        return;
    if (child->m_presenting) {
        qCWarning(lcPresentation).noquote() << "Cannot contain" << describe(child) << "while it is presented";
        return;
    }
    if (child->m_parentViewController)
        child->removeFromParentViewController();
    child->m_parentViewController = this;
    child->m_slot = slot;
    if (!child->parent())
        child->setParent(this);
    m_children.append(child);
    Q_EMIT child->parentViewControllerChanged();
    Q_EMIT childViewControllersChanged();
}

void ViewController::removeFromParentViewController()
{
    ViewController *parentController = m_parentViewController;
    if (!parentController)
        return;
    parentController->m_children.removeAll(this);
    m_parentViewController = nullptr;
    m_slot.clear();
    Q_EMIT parentViewControllerChanged();
    Q_EMIT parentController->childViewControllersChanged();
}

ViewController *ViewController::childViewControllerForSlot(const QString &slot) const
{
    for (const QPointer<ViewController> &child : m_children) {
        if (child && child->m_slot == slot)
            return child;
    }
    return nullptr;
}

ViewController *ViewController::revealViewController() const
{
    for (ViewController *p = m_parentViewController; p; p = p->m_parentViewController) {
        if (p->isRevealContainer())
            return p;
    }
    return nullptr;
}

bool ViewController::isOnScreen() const
{
    return m_appearanceState == AppearanceState::Appearing || m_appearanceState == AppearanceState::Appeared;
}

QList<ViewController *> ViewController::childrenForAppearance() const
{
    return childViewControllers();
}

void ViewController::beginAppearanceTransition(bool appearing, bool animated)
{
    if (appearing == isOnScreen())
        return;
    m_transitionAnimated = animated;
    if (appearing) {
        loadViewIfNeeded();
        m_appearanceState = AppearanceState::Appearing;
        Q_EMIT appearanceStateChanged();
        viewWillAppear(animated);
    } else {
        m_appearanceState = AppearanceState::Disappearing;
        Q_EMIT appearanceStateChanged();
        viewWillDisappear(animated);
    }
    const QList<ViewController *> children = childrenForAppearance();
    for (ViewController *child : children)
        child->beginAppearanceTransition(appearing, animated);
}

void ViewController::endAppearanceTransition()
{
    if (m_appearanceState == AppearanceState::Appearing) {
        m_appearanceState = AppearanceState::Appeared;
        Q_EMIT appearanceStateChanged();
        viewDidAppear(m_transitionAnimated);
        TextInput *first = initialFirstResponder();
        if (first && isOnScreen() && !presentedViewController() && !AlertController::alertOnScreen() &&
            !FirstResponder::instance()->current())
            first->becomeFirstResponder();
    } else if (m_appearanceState == AppearanceState::Disappearing) {
        m_appearanceState = AppearanceState::Disappeared;
        Q_EMIT appearanceStateChanged();
        viewDidDisappear(m_transitionAnimated);
    } else {
        return;
    }
    const QList<ViewController *> children = childrenForAppearance();
    for (ViewController *child : children)
        child->endAppearanceTransition();
}

void ViewController::later(std::function<void()> fn)
{
    QTimer::singleShot(0, this, std::move(fn));
}

bool ViewController::presentFullScreen(const QString &storyboardName, const QString &identifier)
{
    Storyboard *storyboard = Storyboard::storyboardWithName(storyboardName);
    ViewController *controller = storyboard ? storyboard->instantiateViewControllerWithIdentifier(identifier) : nullptr;
    if (!controller)
        return false;
    controller->setModalPresentationStyle(ModalPresentationStyle::FullScreen);
    presentViewController(controller, true);
    if (controller->presentingViewController())
        return true;
    delete controller;
    return false;
}

} // namespace ui
