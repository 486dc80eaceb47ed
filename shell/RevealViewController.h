#pragma once

#include "FrontViewPosition.h"
#include "RevealDeployment.h"
#include "RevealGeometry.h"
#include "RevealOperation.h"
#include "RevealOperationQueue.h"
#include "RevealSettings.h"
#include "RevealViewControllerPanGestureRecognizer.h"

#include "ui/ViewController.h"

#include <QPointer>
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
    Q_PROPERTY(RevealSettings settings READ settings NOTIFY settingsChanged)

public:
    // The storyboard segues that fill the container when its view loads, in this order.
    static inline const QString kRearSegue = QStringLiteral("reveal_rear");
    static inline const QString kFrontSegue = QStringLiteral("reveal_front");
    static inline const QString kRightSegue = QStringLiteral("reveal_right");

    explicit RevealViewController(QObject *parent = nullptr);
    RevealViewController(ui::ViewController *rearViewController, ui::ViewController *frontViewController,
                         QObject *parent = nullptr);
    ~RevealViewController() override;

    [[nodiscard]] bool isRevealContainer() const override { return true; }

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

    // The tunable behaviour; a change lays the layers out again at once.
    [[nodiscard]] const RevealSettings &settings() const { return m_settings; }
    void setSettings(const RevealSettings &settings);

    [[nodiscard]] RevealViewControllerPanGestureRecognizer *panGestureRecognizer();
    [[nodiscard]] int panInitialFrontPosition() const { return m_panInitialFrontPosition; }
    // Whether the layers take input once a drag is over (saved when the view appears and
    // when a drag begins).
    [[nodiscard]] bool userInteractionStore() const { return m_userInteractionStore; }
    void setUserInteractionStore(bool enabled) { m_userInteractionStore = enabled; }
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

protected:
    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    [[nodiscard]] QList<ui::ViewController *> childrenForAppearance() const override;
    // Runs before the rear screen is shown for a position; a hook for subclasses.
    virtual void prepareRearViewForPosition(int position) { Q_UNUSED(position) }

private:
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

    [[nodiscard]] RevealDeployment::Layers layerPositions() const;
    // Starts what a move does to one layer and returns what finishes it once the move's
    // animation is over.
    std::function<void()> deployLayer(RevealLayer *layer, RevealDeployment::Change change, int position);
    // A drag past the centre brings in the side it moves towards at once.
    void deploySidesForDrag(int position);

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
