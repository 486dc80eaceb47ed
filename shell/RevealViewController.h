#pragma once

#include "FrontViewPosition.h"
#include "RevealGeometry.h"
#include "RevealOperation.h"
#include "RevealOperationQueue.h"
#include "RevealSettings.h"
#include "RevealViewControllerPanGestureRecognizer.h"

#include "ui/ViewController.h"

#include <QPointer>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <memory>

Q_MOC_INCLUDE("RevealLayer.h")

class RevealAnimatedTransitioning;
class RevealContextTransitionObject;
class RevealFrontAnimator;
class RevealLayer;
class RevealViewControllerDelegate;
namespace ui {
class BarButtonItem;
}

// The root container of the signed-in app: the current screen in front, the side menu
// (rear) behind it and, optionally, a right screen. The front slides aside to reveal them,
// by the menu button's toggle or by a drag; a tap on the displaced front closes it.
//
// Every move of the front and every replacement of a screen runs through one operation
// queue, so animations never overlap. The decisions (positions, drags, releases) are made
// here and in RevealGeometry; the view (RevealView and its QML) draws the layers where
// frontLocation says and feeds touches and mouse drags to the pan* and tap* calls.
class RevealViewController : public ui::ViewController {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the storyboard")
    Q_PROPERTY(int frontViewPosition READ frontViewPosition WRITE setFrontViewPosition NOTIFY frontViewPositionChanged)
    Q_PROPERTY(qreal frontLocation READ frontLocation NOTIFY frontLocationChanged)
    Q_PROPERTY(qreal rearLayerX READ rearLayerX NOTIFY frontLocationChanged)
    Q_PROPERTY(qreal rightLayerX READ rightLayerX NOTIFY frontLocationChanged)
    Q_PROPERTY(qreal rearLayerWidth READ rearLayerWidth NOTIFY settingsChanged)
    Q_PROPERTY(qreal rightLayerWidth READ rightLayerWidth NOTIFY settingsChanged)
    Q_PROPERTY(RevealLayer *rearLayer READ rearLayer CONSTANT)
    Q_PROPERTY(RevealLayer *frontLayer READ frontLayer CONSTANT)
    Q_PROPERTY(RevealLayer *rightLayer READ rightLayer CONSTANT)
    Q_PROPERTY(bool dragging READ isDragging NOTIFY draggingChanged)
    Q_PROPERTY(bool userInteractionEnabled READ isUserInteractionEnabled NOTIFY userInteractionEnabledChanged)

    Q_PROPERTY(qreal rearViewRevealWidth READ rearViewRevealWidth WRITE setRearViewRevealWidth NOTIFY settingsChanged)
    Q_PROPERTY(qreal rightViewRevealWidth READ rightViewRevealWidth WRITE setRightViewRevealWidth NOTIFY settingsChanged)
    Q_PROPERTY(qreal rearViewRevealOverdraw READ rearViewRevealOverdraw WRITE setRearViewRevealOverdraw NOTIFY
                   settingsChanged)
    Q_PROPERTY(qreal rightViewRevealOverdraw READ rightViewRevealOverdraw WRITE setRightViewRevealOverdraw NOTIFY
                   settingsChanged)
    Q_PROPERTY(qreal rearViewRevealDisplacement READ rearViewRevealDisplacement WRITE setRearViewRevealDisplacement
                   NOTIFY settingsChanged)
    Q_PROPERTY(qreal rightViewRevealDisplacement READ rightViewRevealDisplacement WRITE setRightViewRevealDisplacement
                   NOTIFY settingsChanged)
    Q_PROPERTY(bool bounceBackOnOverdraw READ bounceBackOnOverdraw WRITE setBounceBackOnOverdraw NOTIFY settingsChanged)
    Q_PROPERTY(bool bounceBackOnLeftOverdraw READ bounceBackOnLeftOverdraw WRITE setBounceBackOnLeftOverdraw NOTIFY
                   settingsChanged)
    Q_PROPERTY(bool stableDragOnOverdraw READ stableDragOnOverdraw WRITE setStableDragOnOverdraw NOTIFY settingsChanged)
    Q_PROPERTY(bool stableDragOnLeftOverdraw READ stableDragOnLeftOverdraw WRITE setStableDragOnLeftOverdraw NOTIFY
                   settingsChanged)
    Q_PROPERTY(bool presentFrontViewHierarchically READ presentFrontViewHierarchically WRITE
                   setPresentFrontViewHierarchically NOTIFY settingsChanged)
    Q_PROPERTY(qreal quickFlickVelocity READ quickFlickVelocity WRITE setQuickFlickVelocity NOTIFY settingsChanged)
    Q_PROPERTY(double toggleAnimationDuration READ toggleAnimationDuration WRITE setToggleAnimationDuration NOTIFY
                   settingsChanged)
    Q_PROPERTY(int toggleAnimationType READ toggleAnimationType WRITE setToggleAnimationType NOTIFY settingsChanged)
    Q_PROPERTY(qreal springDampingRatio READ springDampingRatio WRITE setSpringDampingRatio NOTIFY settingsChanged)
    Q_PROPERTY(double replaceViewAnimationDuration READ replaceViewAnimationDuration WRITE
                   setReplaceViewAnimationDuration NOTIFY settingsChanged)
    Q_PROPERTY(qreal frontViewShadowRadius READ frontViewShadowRadius WRITE setFrontViewShadowRadius NOTIFY
                   settingsChanged)
    Q_PROPERTY(QSizeF frontViewShadowOffset READ frontViewShadowOffset WRITE setFrontViewShadowOffset NOTIFY
                   settingsChanged)
    Q_PROPERTY(qreal frontViewShadowOpacity READ frontViewShadowOpacity WRITE setFrontViewShadowOpacity NOTIFY
                   settingsChanged)
    Q_PROPERTY(QColor frontViewShadowColor READ frontViewShadowColor WRITE setFrontViewShadowColor NOTIFY
                   settingsChanged)
    Q_PROPERTY(qreal draggableBorderWidth READ draggableBorderWidth WRITE setDraggableBorderWidth NOTIFY
                   settingsChanged)
    Q_PROPERTY(bool clipsViewsToBounds READ clipsViewsToBounds WRITE setClipsViewsToBounds NOTIFY settingsChanged)
    Q_PROPERTY(bool extendsPointInsideHit READ extendsPointInsideHit WRITE setExtendsPointInsideHit NOTIFY
                   settingsChanged)

public:
    // The identifier under which state restoration recreates the container.
    static inline const QString kRestorationIdentifier = QStringLiteral("RevealViewController");
    // The storyboard segues that fill the container when its view loads, in this order.
    static inline const QString kRearSegue = QStringLiteral("reveal_rear");
    static inline const QString kFrontSegue = QStringLiteral("reveal_front");
    static inline const QString kRightSegue = QStringLiteral("reveal_right");

    explicit RevealViewController(QObject *parent = nullptr);
    RevealViewController(ui::ViewController *rearViewController, ui::ViewController *frontViewController,
                         QObject *parent = nullptr);
    ~RevealViewController() override;

    [[nodiscard]] bool isRevealContainer() const override { return true; }

    // State restoration recreates the container from its identifier (nullptr for others).
    [[nodiscard]] static RevealViewController *viewControllerWithRestorationIdentifier(const QString &identifier);
    [[nodiscard]] QVariantMap encodeRestorableState() const;
    void decodeRestorableState(const QVariantMap &state);

    // Wires a front screen's menu button to the toggle of its container, when it has one.
    // Returns whether it did.
    static bool wireMenuButton(ui::ViewController *screen, ui::BarButtonItem *menuButton);

    // The storyboard segues this container's scene defines (the storyboard helpers set it).
    void setStoryboardSegues(const QStringList &identifiers) { m_storyboardSegues = identifiers; }

    // The screens.
    [[nodiscard]] ui::ViewController *rearViewController() const;
    [[nodiscard]] ui::ViewController *frontViewController() const;
    [[nodiscard]] ui::ViewController *rightViewController() const;
    void setRearViewController(ui::ViewController *controller, bool animated = false);
    void setFrontViewController(ui::ViewController *controller, bool animated = false);
    void setRightViewController(ui::ViewController *controller, bool animated = false);
    // Replaces the front: the old front slides fully aside, the new one takes its place and
    // slides back to the centre (animated); or the front is swapped where it stands.
    void pushFrontViewController(ui::ViewController *controller, bool animated);

    // Positions.
    [[nodiscard]] int frontViewPosition() const { return m_frontViewPosition; }
    void setFrontViewPosition(int position) { setFrontViewPosition(position, false); }
    void setFrontViewPosition(int position, bool animated);
    [[nodiscard]] qreal frontLocation() const { return m_frontLocation; }
    [[nodiscard]] qreal rearLayerX() const;
    [[nodiscard]] qreal rightLayerX() const;
    [[nodiscard]] qreal rearLayerWidth() const;
    [[nodiscard]] qreal rightLayerWidth() const;
    [[nodiscard]] RevealGeometry geometry() const;

    [[nodiscard]] RevealLayer *rearLayer() const { return m_rearLayer; }
    [[nodiscard]] RevealLayer *frontLayer() const { return m_frontLayer; }
    [[nodiscard]] RevealLayer *rightLayer() const { return m_rightLayer; }

    [[nodiscard]] RevealViewControllerDelegate *delegate() const { return m_delegate; }
    void setDelegate(RevealViewControllerDelegate *delegate) { m_delegate = delegate; }

    [[nodiscard]] const RevealSettings &settings() const { return m_settings; }
    [[nodiscard]] RevealViewControllerPanGestureRecognizer *panGestureRecognizer();
    [[nodiscard]] int panInitialFrontPosition() const { return m_panInitialFrontPosition; }
    [[nodiscard]] bool userInteractionStore() const { return m_userInteractionStore; }
    [[nodiscard]] bool isUserInteractionEnabled() const { return m_userInteractionEnabled; }
    void setUserInteractionEnabled(bool enabled);
    [[nodiscard]] bool isDragging() const { return m_dragging; }
    // Operations waiting or running (a drag holds one for its whole length).
    [[nodiscard]] qsizetype pendingOperations() const { return m_queue.size(); }

    // Gestures, as the view reports them. Locations are in the container's coordinates.
    [[nodiscard]] Q_INVOKABLE bool panGestureShouldBegin(QPointF touchPoint, qreal translationX) const;
    Q_INVOKABLE void panGestureBegan(QPointF location);
    Q_INVOKABLE void panGestureMoved(qreal translationX);
    Q_INVOKABLE void panGestureEnded(qreal velocityX);
    Q_INVOKABLE void panGestureCancelled();
    [[nodiscard]] Q_INVOKABLE bool tapGestureShouldBegin() const;
    Q_INVOKABLE void tapGestureRecognized();
    [[nodiscard]] bool panGestureShouldRecognizeSimultaneouslyWith(QObject *other) const;
    [[nodiscard]] bool tapGestureShouldRecognizeSimultaneouslyWith(QObject *other) const;

    // Settings (see RevealSettings for their meaning and defaults).
    [[nodiscard]] qreal rearViewRevealWidth() const { return m_settings.rearViewRevealWidth; }
    void setRearViewRevealWidth(qreal value);
    [[nodiscard]] qreal rightViewRevealWidth() const { return m_settings.rightViewRevealWidth; }
    void setRightViewRevealWidth(qreal value);
    [[nodiscard]] qreal rearViewRevealOverdraw() const { return m_settings.rearViewRevealOverdraw; }
    void setRearViewRevealOverdraw(qreal value);
    [[nodiscard]] qreal rightViewRevealOverdraw() const { return m_settings.rightViewRevealOverdraw; }
    void setRightViewRevealOverdraw(qreal value);
    [[nodiscard]] qreal rearViewRevealDisplacement() const { return m_settings.rearViewRevealDisplacement; }
    void setRearViewRevealDisplacement(qreal value);
    [[nodiscard]] qreal rightViewRevealDisplacement() const { return m_settings.rightViewRevealDisplacement; }
    void setRightViewRevealDisplacement(qreal value);
    [[nodiscard]] bool bounceBackOnOverdraw() const { return m_settings.bounceBackOnOverdraw; }
    void setBounceBackOnOverdraw(bool value);
    [[nodiscard]] bool bounceBackOnLeftOverdraw() const { return m_settings.bounceBackOnLeftOverdraw; }
    void setBounceBackOnLeftOverdraw(bool value);
    [[nodiscard]] bool stableDragOnOverdraw() const { return m_settings.stableDragOnOverdraw; }
    void setStableDragOnOverdraw(bool value);
    [[nodiscard]] bool stableDragOnLeftOverdraw() const { return m_settings.stableDragOnLeftOverdraw; }
    void setStableDragOnLeftOverdraw(bool value);
    [[nodiscard]] bool presentFrontViewHierarchically() const { return m_settings.presentFrontViewHierarchically; }
    void setPresentFrontViewHierarchically(bool value);
    [[nodiscard]] qreal quickFlickVelocity() const { return m_settings.quickFlickVelocity; }
    void setQuickFlickVelocity(qreal value);
    [[nodiscard]] double toggleAnimationDuration() const { return m_settings.toggleAnimationDuration; }
    void setToggleAnimationDuration(double value);
    [[nodiscard]] int toggleAnimationType() const { return m_settings.toggleAnimationType; }
    void setToggleAnimationType(int value);
    [[nodiscard]] qreal springDampingRatio() const { return m_settings.springDampingRatio; }
    void setSpringDampingRatio(qreal value);
    [[nodiscard]] double replaceViewAnimationDuration() const { return m_settings.replaceViewAnimationDuration; }
    void setReplaceViewAnimationDuration(double value);
    [[nodiscard]] qreal frontViewShadowRadius() const { return m_settings.frontViewShadowRadius; }
    void setFrontViewShadowRadius(qreal value);
    [[nodiscard]] QSizeF frontViewShadowOffset() const { return m_settings.frontViewShadowOffset; }
    void setFrontViewShadowOffset(QSizeF value);
    [[nodiscard]] qreal frontViewShadowOpacity() const { return m_settings.frontViewShadowOpacity; }
    void setFrontViewShadowOpacity(qreal value);
    [[nodiscard]] QColor frontViewShadowColor() const { return m_settings.frontViewShadowColor; }
    void setFrontViewShadowColor(const QColor &value);
    [[nodiscard]] qreal draggableBorderWidth() const { return m_settings.draggableBorderWidth; }
    void setDraggableBorderWidth(qreal value);
    [[nodiscard]] bool clipsViewsToBounds() const { return m_settings.clipsViewsToBounds; }
    void setClipsViewsToBounds(bool value);
    [[nodiscard]] bool extendsPointInsideHit() const { return m_settings.extendsPointInsideHit; }
    void setExtendsPointInsideHit(bool value);

public Q_SLOTS:
    // The menu button's action: reveals the menu, or closes it.
    void revealToggle(QObject *sender = nullptr);
    void revealToggleAnimated(bool animated);
    void rightRevealToggle(QObject *sender = nullptr);
    void rightRevealToggleAnimated(bool animated);

Q_SIGNALS:
    void frontViewPositionChanged();
    void frontLocationChanged();
    void settingsChanged();
    void draggingChanged();
    void userInteractionEnabledChanged();
    // The front's shadow changed (the view redraws it at once).
    void shadowChanged();

protected:
    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    [[nodiscard]] QList<ui::ViewController *> childrenForAppearance() const override;
    // Runs before the rear screen is shown for a position; a hook for subclasses.
    virtual void prepareRearViewForPosition(int position) { Q_UNUSED(position) }

private:
    void initDefaultProperties();
    template <typename T> void changeSetting(T &field, const T &value);
    void relayout();
    void setFrontLocation(qreal x);
    [[nodiscard]] qreal containerWidth() const;
    [[nodiscard]] bool isReady() const { return m_ready; }

    void dispatchSetFrontViewPosition(int position, bool animated);
    void adoptUntilInstalled(ui::ViewController *controller);
    void dispatchPushFrontViewController(ui::ViewController *controller, bool animated);
    void dispatchTransitionOperation(RevealOperation operation, ui::ViewController *controller, bool animated);
    // Moves the front; ends the running operation when the move is done.
    void setFrontViewPositionWithDuration(int position, double duration);
    void performTransitionOperation(RevealOperation operation, ui::ViewController *controller, bool animated);

    // Each returns what to do once the move's animation is over.
    std::function<void()> frontDeployment(int newPosition);
    std::function<void()> rearDeployment(int newPosition);
    std::function<void()> rightDeployment(int newPosition);
    void showLayer(RevealLayer *layer, bool appear, bool animated);

    [[nodiscard]] RevealLayer *layerFor(RevealOperation operation) const;
    void restoreUserInteraction();
    void disableUserInteraction();
    void notifyPanProgress(int phase, qreal location);

    RevealSettings m_settings;
    int m_frontViewPosition = FrontCentred;
    int m_rearViewPosition = FrontCentred;
    int m_rightViewPosition = FrontCentred;
    qreal m_frontLocation = 0;
    bool m_ready = false;
    bool m_dragging = false;
    bool m_userInteractionEnabled = true;
    bool m_userInteractionStore = true;
    int m_panInitialFrontPosition = FrontCentred;
    QStringList m_storyboardSegues;

    RevealLayer *m_rearLayer;
    RevealLayer *m_frontLayer;
    RevealLayer *m_rightLayer;
    RevealOperationQueue m_queue;
    RevealFrontAnimator *m_animator;
    std::unique_ptr<RevealViewControllerPanGestureRecognizer> m_panGestureRecognizer;
    std::unique_ptr<RevealAnimatedTransitioning> m_defaultTransition;
    std::unique_ptr<RevealContextTransitionObject> m_transitionContext;
    RevealViewControllerDelegate *m_delegate = nullptr;
};
