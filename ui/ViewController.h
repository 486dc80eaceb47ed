#pragma once

#include "NavigationItem.h"
#include "Storyboard.h"
#include "View.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QUrl>
#include <QtQml/qqmlregistration.h>
#include <functional>

namespace ui {

class NavigationController;
class StoryboardSegue;
class TextInput;

// The base of every screen controller. It owns the screen's outlets and decides; its QML
// view (viewUrl, loaded by the window with this controller as `controller`) only draws.
//
// Lifecycle, in the order a screen sees it: viewDidLoad once, when the view is first needed;
// then viewWillAppear / viewDidAppear each time it comes on screen and viewWillDisappear /
// viewDidDisappear each time it leaves. The "will" call comes when the change starts, the
// "did" call on a later turn of the event loop, once the change is done.
class ViewController : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screen controllers are made in C++")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(ui::NavigationItem *navigationItem READ navigationItem CONSTANT)
    Q_PROPERTY(ui::View *view READ view CONSTANT)
    Q_PROPERTY(QUrl viewUrl READ viewUrl WRITE setViewUrl NOTIFY viewUrlChanged)
    Q_PROPERTY(
        ui::ViewController *presentedViewController READ presentedViewController NOTIFY presentedViewControllerChanged)
    Q_PROPERTY(ui::ViewController *presentingViewController READ presentingViewController NOTIFY
                   presentingViewControllerChanged)
    Q_PROPERTY(ui::ViewController *parentViewController READ parentViewController NOTIFY parentViewControllerChanged)
    Q_PROPERTY(
        QList<ui::ViewController *> childViewControllers READ childViewControllers NOTIFY childViewControllersChanged)
    Q_PROPERTY(ModalPresentationStyle modalPresentationStyle READ modalPresentationStyle WRITE setModalPresentationStyle
                   NOTIFY modalPresentationStyleChanged)
    Q_PROPERTY(AppearanceState appearanceState READ appearanceState NOTIFY appearanceStateChanged)
    Q_PROPERTY(QString storyboardIdentifier READ storyboardIdentifier CONSTANT)

public:
    enum class ModalPresentationStyle {
        Automatic,      // drawn full screen; the presenting screen stays "on screen" underneath
        FullScreen,     // covers the presenting screen, which disappears until dismissal
        OverFullScreen, // drawn over the presenting screen, which stays visible (alerts)
    };
    Q_ENUM(ModalPresentationStyle)
    enum class AppearanceState { Disappeared, Appearing, Appeared, Disappearing };
    Q_ENUM(AppearanceState)

    using Completion = std::function<void()>;

    explicit ViewController(QObject *parent = nullptr);
    ~ViewController() override;

    [[nodiscard]] QString title() const { return m_title; }
    // Also sets the navigation item's title, which the navigation bar shows.
    void setTitle(const QString &title);
    [[nodiscard]] NavigationItem *navigationItem() const { return m_navigationItem; }

    // The root view, loaded (and viewDidLoad called) on first use.
    [[nodiscard]] View *view();
    [[nodiscard]] bool isViewLoaded() const { return m_view != nullptr; }
    void loadViewIfNeeded();
    // The QML file that draws this screen; the storyboard sets it from the scene's entry.
    [[nodiscard]] QUrl viewUrl() const { return m_viewUrl; }
    void setViewUrl(const QUrl &url);

    // Modal presentation. Refused, with a warning and without calling completion, when this
    // screen already presents one, when the controller is already shown somewhere, or when an
    // alert is on screen anywhere in the window. Screens inside a container present from the
    // outermost container, as the platform does.
    void presentViewController(ViewController *controller, bool animated, Completion completion = {});
    // Makes the storyboard's scene and presents it full screen, animated. False, with nothing
    // left behind, when the scene is missing or the presentation is refused.
    bool presentFullScreen(const QString &storyboardName, const QString &identifier);
    // Dismisses what this screen presents (with everything above it), or, when it presents
    // nothing, this screen itself from its presenter.
    void dismissViewControllerAnimated(bool animated, Completion completion = {});
    [[nodiscard]] ViewController *presentedViewController() const;
    [[nodiscard]] ViewController *presentingViewController() const;
    [[nodiscard]] ModalPresentationStyle modalPresentationStyle() const { return m_modalPresentationStyle; }
    void setModalPresentationStyle(ModalPresentationStyle style);

    // Segues come from this screen's storyboard scene; unknown identifiers are logged and ignored.
    Q_INVOKABLE void performSegueWithIdentifier(const QString &identifier, QObject *sender = nullptr);
    // Called on the source before the destination appears (or is embedded).
    virtual void prepareForSegue(StoryboardSegue *segue, QObject *sender);

    [[nodiscard]] NavigationController *navigationController() const;
    [[nodiscard]] Storyboard *storyboard() const { return m_storyboard; }
    [[nodiscard]] QString storyboardIdentifier() const { return m_storyboardIdentifier; }
    [[nodiscard]] QString restorationIdentifier() const { return m_storyboardIdentifier; }

    // Containment. A child sits in a named slot of its parent's view (an embed segue's
    // identifier); addChildViewController does not drive the child's appearance.
    [[nodiscard]] ViewController *parentViewController() const { return m_parentViewController; }
    [[nodiscard]] QList<ViewController *> childViewControllers() const;
    void addChildViewController(ViewController *child, const QString &slot = {});
    void removeFromParentViewController();
    Q_INVOKABLE ui::ViewController *childViewControllerForSlot(const QString &slot) const;
    [[nodiscard]] QString slotInParent() const { return m_slot; }

    // The nearest enclosing reveal container (the slide-out side menu), if any.
    [[nodiscard]] ViewController *revealViewController() const;
    // True for a container that slides its front screen aside to reveal a rear one.
    [[nodiscard]] virtual bool isRevealContainer() const { return false; }

    // Appearance transitions, driven by the framework and by containers for their children.
    [[nodiscard]] AppearanceState appearanceState() const { return m_appearanceState; }
    [[nodiscard]] bool isOnScreen() const;
    // The text input that takes the keyboard once the screen has appeared (a form's first
    // field); none by default. Skipped while another input has it or something is presented.
    [[nodiscard]] virtual TextInput *initialFirstResponder() const { return nullptr; }
    void beginAppearanceTransition(bool appearing, bool animated);
    void endAppearanceTransition();

Q_SIGNALS:
    void titleChanged();
    void viewUrlChanged();
    void presentedViewControllerChanged();
    void presentingViewControllerChanged();
    void parentViewControllerChanged();
    void childViewControllersChanged();
    void modalPresentationStyleChanged();
    void appearanceStateChanged();

protected:
    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool animated) { Q_UNUSED(animated) }
    virtual void viewDidAppear(bool animated) { Q_UNUSED(animated) }
    virtual void viewWillDisappear(bool animated) { Q_UNUSED(animated) }
    virtual void viewDidDisappear(bool animated) { Q_UNUSED(animated) }

    // The children whose appearance follows this controller's; containers that show only
    // some of their children (a navigation stack shows its top) narrow it.
    [[nodiscard]] virtual QList<ViewController *> childrenForAppearance() const;

    // Runs fn on a later turn of the event loop, unless this controller is gone by then.
    void later(std::function<void()> fn);

private:
    friend class Storyboard;

    [[nodiscard]] ViewController *presentationHost() const;
    void attachToStoryboard(Storyboard *storyboard, const QString &identifier);

    QString m_title;
    NavigationItem *m_navigationItem = nullptr;
    View *m_view = nullptr;
    QUrl m_viewUrl;
    bool m_loadingView = false;

    QPointer<ViewController> m_presented;
    QPointer<ViewController> m_presenting;
    ModalPresentationStyle m_modalPresentationStyle = ModalPresentationStyle::Automatic;

    QPointer<ViewController> m_parentViewController;
    QList<QPointer<ViewController>> m_children;
    QString m_slot;

    QPointer<Storyboard> m_storyboard;
    QString m_storyboardIdentifier;

    AppearanceState m_appearanceState = AppearanceState::Disappeared;
    bool m_transitionAnimated = false;
};

} // namespace ui
