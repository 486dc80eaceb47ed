#include "RevealViewController.h"

#include "RevealContextTransitionObject.h"
#include "RevealDefaultAnimationController.h"
#include "RevealDeployment.h"
#include "RevealFrontAnimator.h"
#include "RevealLayer.h"
#include "RevealViewControllerDelegate.h"
#include "ShellLogging.h"

#include "ui/BarButtonItem.h"
#include "ui/View.h"

#include <QTimer>

namespace {

const QString kRearSlot = QStringLiteral("rear");
const QString kFrontSlot = QStringLiteral("front");
const QString kRightSlot = QStringLiteral("right");

enum PanPhase { PanBegan, PanMoved, PanEnded };

} // namespace

RevealViewController::RevealViewController(QObject *parent)
    : ui::ViewController(parent)
    , m_rearLayer(new RevealLayer(kRearSlot, this))
    , m_frontLayer(new RevealLayer(kFrontSlot, this))
    , m_rightLayer(new RevealLayer(kRightSlot, this))
    , m_animator(new RevealFrontAnimator(this))
{
    setViewUrl(QUrl(QStringLiteral("qrc:/qt/qml/Vantrel/Shell/RevealContainerView.qml")));
}

RevealViewController::RevealViewController(ui::ViewController *rearViewController,
                                           ui::ViewController *frontViewController, QObject *parent)
    : RevealViewController(parent)
{
    performTransitionOperation(RevealOperation::ReplaceRearController, rearViewController, false);
    performTransitionOperation(RevealOperation::ReplaceFrontController, frontViewController, false);
}

RevealViewController::~RevealViewController()
{
    m_animator->stop();
}

bool RevealViewController::wireMenuButton(ui::ViewController *screen, ui::BarButtonItem *menuButton)
{
    auto *reveal = screen ? qobject_cast<RevealViewController *>(screen->revealViewController()) : nullptr;
    if (!reveal || !menuButton)
        return false;
    connect(menuButton, &ui::BarButtonItem::clicked, reveal, [reveal, menuButton] { reveal->revealToggle(menuButton); });
    return true;
}

// ---- screens ----

ui::ViewController *RevealViewController::rearViewController() const
{
    return m_rearLayer->controller();
}

ui::ViewController *RevealViewController::frontViewController() const
{
    return m_frontLayer->controller();
}

ui::ViewController *RevealViewController::rightViewController() const
{
    return m_rightLayer->controller();
}

void RevealViewController::setRearViewController(ui::ViewController *controller, bool animated)
{
    if (!isReady()) {
        performTransitionOperation(RevealOperation::ReplaceRearController, controller, false);
        return;
    }
    dispatchTransitionOperation(RevealOperation::ReplaceRearController, controller, animated);
}

void RevealViewController::setFrontViewController(ui::ViewController *controller, bool animated)
{
    if (!isReady()) {
        performTransitionOperation(RevealOperation::ReplaceFrontController, controller, false);
        return;
    }
    dispatchTransitionOperation(RevealOperation::ReplaceFrontController, controller, animated);
}

void RevealViewController::setRightViewController(ui::ViewController *controller, bool animated)
{
    if (!isReady()) {
        performTransitionOperation(RevealOperation::ReplaceRightController, controller, false);
        return;
    }
    dispatchTransitionOperation(RevealOperation::ReplaceRightController, controller, animated);
}

void RevealViewController::pushFrontViewController(ui::ViewController *controller, bool animated)
{
    if (!isReady()) {
        performTransitionOperation(RevealOperation::ReplaceFrontController, controller, false);
        return;
    }
    dispatchPushFrontViewController(controller, animated);
}

void RevealViewController::adoptUntilInstalled(ui::ViewController *controller)
{
    // A screen waiting in the queue belongs to the container, so that nobody deletes it
    // as an orphan before its turn.
    if (controller && !controller->parent())
        controller->setParent(this);
}

void RevealViewController::dispatchPushFrontViewController(ui::ViewController *controller, bool animated)
{
    adoptUntilInstalled(controller);
    QPointer<ui::ViewController> incoming(controller);
    if (!animated) {
        m_queue.enqueue([this, incoming] {
            performTransitionOperation(RevealOperation::ReplaceFrontController, incoming, false);
        });
        return;
    }
    const int aside = RevealGeometry::positionBeforePush(m_frontViewPosition);
    const double asideDuration = geometry().durationBeforePush(m_frontViewPosition);
    m_queue.enqueue([this, aside, asideDuration] { setFrontViewPositionWithDuration(aside, asideDuration); });
    m_queue.enqueue([this, incoming] {
        performTransitionOperation(RevealOperation::ReplaceFrontController, incoming, false);
    });
    m_queue.enqueue([this] { setFrontViewPositionWithDuration(FrontCentred, m_settings.toggleAnimationDuration); });
}

void RevealViewController::dispatchTransitionOperation(RevealOperation operation, ui::ViewController *controller,
                                                       bool animated)
{
    adoptUntilInstalled(controller);
    QPointer<ui::ViewController> incoming(controller);
    m_queue.enqueue([this, operation, incoming, animated] {
        performTransitionOperation(operation, incoming, animated);
    });
}

RevealLayer *RevealViewController::layerFor(RevealOperation operation) const
{
    switch (operation) {
    case RevealOperation::ReplaceRearController:
        return m_rearLayer;
    case RevealOperation::ReplaceRightController:
        return m_rightLayer;
    case RevealOperation::ReplaceFrontController:
    case RevealOperation::None:
        break;
    }
    return m_frontLayer;
}

void RevealViewController::performTransitionOperation(RevealOperation operation, ui::ViewController *controller,
                                                      bool animated)
{
    // Queued operations end the running one; the direct installs before the view loads do not.
    const bool queued = isReady();
    RevealLayer *layer = layerFor(operation);
    QPointer<ui::ViewController> old(layer->controller());
    QPointer<ui::ViewController> incoming(controller);
    if (old == incoming) {
        if (queued)
            m_queue.dequeue();
        return;
    }

    if (m_delegate)
        m_delegate->revealControllerWillAddViewController(this, controller, operation, animated);

    const bool shown = isOnScreen() && layer->isDeployed();
    if (controller)
        addChildViewController(controller, layer->objectName());
    layer->setController(controller);
    if (shown) {
        if (old)
            old->beginAppearanceTransition(false, animated);
        if (controller)
            controller->beginAppearanceTransition(true, animated);
    }

    auto finish = [this, old, incoming, operation, animated, shown, queued] {
        if (shown) {
            if (old)
                old->endAppearanceTransition();
            if (incoming)
                incoming->endAppearanceTransition();
        }
        if (old && old != incoming) {
            old->removeFromParentViewController();
            if (old->parent() == this)
                old->deleteLater();
        }
        if (m_delegate)
            m_delegate->revealControllerDidAddViewController(this, incoming, operation, animated);
        if (queued)
            m_queue.dequeue();
    };

    if (!animated || !queued) {
        finish();
        return;
    }
    RevealAnimatedTransitioning *transition = nullptr;
    if (m_delegate)
        transition = m_delegate->revealControllerAnimationControllerForOperation(this, operation, old, controller);
    if (!transition) {
        // Made for each replacement, so that it fades over the duration the settings give now.
        m_defaultTransition =
            std::make_unique<RevealDefaultAnimationController>(m_settings.replaceViewAnimationDuration);
        transition = m_defaultTransition.get();
    }
    // The previous context may still be on the stack (it ended the last replacement); it is
    // released once the new one exists.
    auto previous = std::move(m_transitionContext);
    m_transitionContext = std::make_unique<RevealContextTransitionObject>(
        this, layer, old, controller, [this, finish] { QTimer::singleShot(0, this, finish); });
    if (previous)
        QTimer::singleShot(0, this, [context = previous.release()] { delete context; });
    transition->animateTransition(m_transitionContext.get());
}

// ---- positions ----

void RevealViewController::setFrontViewPosition(int position, bool animated)
{
    if (!isReady()) {
        m_frontViewPosition = m_rearViewPosition = m_rightViewPosition = position;
        Q_EMIT frontViewPositionChanged();
        return;
    }
    dispatchSetFrontViewPosition(position, animated);
}

void RevealViewController::dispatchSetFrontViewPosition(int position, bool animated)
{
    const double duration = animated ? m_settings.toggleAnimationDuration : 0.0;
    m_queue.enqueue([this, position, duration] { setFrontViewPositionWithDuration(position, duration); });
}

void RevealViewController::revealToggle(QObject *sender)
{
    Q_UNUSED(sender)
    revealToggleAnimated(true);
}

void RevealViewController::revealToggleAnimated(bool animated)
{
    setFrontViewPosition(RevealGeometry::toggledPosition(m_frontViewPosition), animated);
}

void RevealViewController::rightRevealToggle(QObject *sender)
{
    Q_UNUSED(sender)
    rightRevealToggleAnimated(true);
}

void RevealViewController::rightRevealToggleAnimated(bool animated)
{
    setFrontViewPosition(RevealGeometry::rightToggledPosition(m_frontViewPosition), animated);
}

void RevealViewController::setFrontViewPositionWithDuration(int position, double duration)
{
    const RevealDeployment deployment = RevealDeployment::compute(
        layerPositions(), position, rearViewController() != nullptr, rightViewController() != nullptr);
    const int newPosition = deployment.position;

    m_rearViewPosition = m_rightViewPosition = newPosition;
    const std::function<void()> rearDone = deployLayer(m_rearLayer, deployment.rear, newPosition);
    const std::function<void()> rightDone = deployLayer(m_rightLayer, deployment.right, newPosition);
    const std::function<void()> frontDone = deployLayer(m_frontLayer, deployment.front, newPosition);

    const bool changing = m_frontViewPosition != newPosition;
    if (changing && m_delegate)
        m_delegate->revealControllerWillMoveToPosition(this, newPosition);
    m_frontViewPosition = newPosition;
    if (changing)
        Q_EMIT frontViewPositionChanged();

    if (m_delegate)
        m_delegate->revealControllerAnimateToPosition(this, newPosition);

    auto completion = [this, newPosition, rearDone, rightDone, frontDone] {
        frontDone();
        rearDone();
        rightDone();
        if (m_delegate)
            m_delegate->revealControllerDidMoveToPosition(this, newPosition);
        m_queue.dequeue();
    };

    const qreal target = geometry().frontLocationForPosition(newPosition);
    if (duration > 0) {
        const auto curve = m_settings.toggleAnimationType == 1 ? RevealFrontAnimator::Curve::EaseOut
                                                               : RevealFrontAnimator::Curve::Spring;
        m_animator->start(
            m_frontLocation, target, duration, curve, m_settings.springDampingRatio,
            [this](qreal x) { setFrontLocation(x); },
            [this, completion] { QTimer::singleShot(0, this, completion); });
    } else {
        m_animator->stop();
        setFrontLocation(target);
        completion();
    }
}

RevealDeployment::Layers RevealViewController::layerPositions() const
{
    return {m_frontViewPosition, m_rearViewPosition, m_rightViewPosition};
}

std::function<void()> RevealViewController::deployLayer(RevealLayer *layer, RevealDeployment::Change change,
                                                        int position)
{
    if (!change.appears && !change.disappears)
        return [] {};
    if (change.appears) {
        if (layer == m_rearLayer)
            prepareRearViewForPosition(position);
        layer->setDeployed(true);
    }
    QPointer<ui::ViewController> controller(layer->controller());
    if (controller && isOnScreen())
        controller->beginAppearanceTransition(change.appears, false);
    return [layer, controller, change] {
        if (change.disappears)
            layer->setDeployed(false);
        if (controller)
            controller->endAppearanceTransition();
    };
}

void RevealViewController::deploySidesForDrag(int position)
{
    const RevealDeployment deployment = RevealDeployment::compute(layerPositions(), position, true, true);
    m_rearViewPosition = m_rightViewPosition = position;
    deployLayer(m_rightLayer, deployment.right, position)();
    deployLayer(m_rearLayer, deployment.rear, position)();
}

QList<ui::ViewController *> RevealViewController::childrenForAppearance() const
{
    QList<ui::ViewController *> shown;
    for (RevealLayer *layer : {m_rearLayer, m_rightLayer, m_frontLayer}) {
        if (layer->isDeployed() && layer->controller())
            shown.append(layer->controller());
    }
    return shown;
}

// ---- view ----

void RevealViewController::viewDidLoad()
{
    // The storyboard fills the container first; a segue the scene lacks is skipped.
    for (const QString &segue : {kRearSegue, kFrontSegue, kRightSegue}) {
        if (m_storyboardSegues.contains(segue))
            performSegueWithIdentifier(segue, this);
    }
    connect(view(), &ui::View::boundsChanged, this, &RevealViewController::relayout);

    const int stored = m_frontViewPosition;
    m_frontViewPosition = m_rearViewPosition = m_rightViewPosition = kFrontViewPositionUnknown;
    m_ready = true;
    dispatchSetFrontViewPosition(stored, false);
}

void RevealViewController::viewDidAppear(bool animated)
{
    ui::ViewController::viewDidAppear(animated);
    m_userInteractionStore = m_userInteractionEnabled;
}

qreal RevealViewController::containerWidth() const
{
    return isViewLoaded() ? const_cast<RevealViewController *>(this)->view()->width() : 0;
}

RevealGeometry RevealViewController::geometry() const
{
    return RevealGeometry(m_settings, containerWidth());
}

qreal RevealViewController::rearLayerX() const
{
    return geometry().rearLayerX(m_frontLocation);
}

qreal RevealViewController::rightLayerX() const
{
    return geometry().rightLayerX(m_frontLocation);
}

qreal RevealViewController::rearLayerWidth() const
{
    return geometry().rearLayerWidth();
}

qreal RevealViewController::rightLayerWidth() const
{
    return geometry().rightLayerWidth();
}

void RevealViewController::setFrontLocation(qreal x)
{
    if (qFuzzyCompare(m_frontLocation + 1, x + 1))
        return;
    m_frontLocation = x;
    Q_EMIT frontLocationChanged();
}

void RevealViewController::setSettings(const RevealSettings &settings)
{
    if (m_settings == settings)
        return;
    m_settings = settings;
    relayout();
}

void RevealViewController::relayout()
{
    if (m_ready && !m_dragging && !m_animator->isRunning() && m_frontViewPosition != kFrontViewPositionUnknown)
        setFrontLocation(geometry().frontLocationForPosition(m_frontViewPosition));
    Q_EMIT frontLocationChanged();
    Q_EMIT settingsChanged();
}

void RevealViewController::setUserInteractionEnabled(bool enabled)
{
    if (m_userInteractionEnabled == enabled)
        return;
    m_userInteractionEnabled = enabled;
    Q_EMIT userInteractionEnabledChanged();
}

void RevealViewController::disableUserInteraction()
{
    m_userInteractionStore = m_userInteractionEnabled;
    setUserInteractionEnabled(false);
}

void RevealViewController::restoreUserInteraction()
{
    setUserInteractionEnabled(m_userInteractionStore);
}

// ---- gestures ----

RevealViewControllerPanGestureRecognizer *RevealViewController::panGestureRecognizer()
{
    if (!m_panGestureRecognizer)
        m_panGestureRecognizer = std::make_unique<RevealViewControllerPanGestureRecognizer>();
    return m_panGestureRecognizer.get();
}

bool RevealViewController::panGestureShouldBegin(QPointF touchPoint, qreal translationX) const
{
    auto *self = const_cast<RevealViewController *>(this);
    // A move or replacement still running keeps the front where it is.
    if (!m_ready || !m_queue.isEmpty())
        return false;
    if (m_delegate && !m_delegate->revealControllerPanGestureShouldBegin(self))
        return false;
    const qreal border = m_settings.draggableBorderWidth;
    if (border != 0) {
        const qreal width = containerWidth();
        const bool nearRear = rearViewController() && touchPoint.x() <= border;
        const bool nearRight = rightViewController() && touchPoint.x() >= width - border;
        if (!nearRear && !nearRight)
            return false;
    }
    if (m_frontViewPosition == FrontCentred) {
        if (translationX > 0 && !rearViewController())
            return false;
        if (translationX < 0 && !rightViewController())
            return false;
    }
    return true;
}

bool RevealViewController::panGestureShouldRecognizeSimultaneouslyWith(QObject *other) const
{
    return m_delegate
        && m_delegate->revealControllerPanGestureShouldRecognizeSimultaneouslyWith(
            const_cast<RevealViewController *>(this), other);
}

bool RevealViewController::tapGestureShouldRecognizeSimultaneouslyWith(QObject *other) const
{
    return m_delegate
        && m_delegate->revealControllerTapGestureShouldRecognizeSimultaneouslyWith(
            const_cast<RevealViewController *>(this), other);
}

void RevealViewController::notifyPanProgress(int phase, qreal location)
{
    if (!m_delegate)
        return;
    const RevealGeometry::Progress p = geometry().progressForLocation(location);
    switch (phase) {
    case PanBegan:
        m_delegate->revealControllerPanGestureBeganFromLocation(this, location, p.progress, p.overProgress);
        break;
    case PanMoved:
        m_delegate->revealControllerPanGestureMovedToLocation(this, location, p.progress, p.overProgress);
        break;
    case PanEnded:
        m_delegate->revealControllerPanGestureEndedToLocation(this, location, p.progress, p.overProgress);
        break;
    default:
        break;
    }
}

void RevealViewController::panGestureBegan(QPointF location)
{
    Q_UNUSED(location)
    if (m_dragging)
        return;
    // Holds the queue for the length of the drag; the settling move releases it.
    m_queue.enqueue([] {});
    m_panInitialFrontPosition = m_frontViewPosition;
    m_dragging = true;
    Q_EMIT draggingChanged();
    disableUserInteraction();
    if (m_delegate)
        m_delegate->revealControllerPanGestureBegan(this);
    notifyPanProgress(PanBegan, m_frontLocation);
}

void RevealViewController::panGestureMoved(qreal translationX)
{
    if (!m_dragging)
        return;
    const RevealGeometry g = geometry();
    qreal x = g.frontLocationForPosition(m_panInitialFrontPosition) + translationX;
    if (x < 0) {
        if (!rightViewController())
            x = 0;
        deploySidesForDrag(FrontLeftShift);
    }
    if (x > 0) {
        if (!rearViewController())
            x = 0;
        deploySidesForDrag(FrontRightShift);
    }
    setFrontLocation(g.adjustedDragLocation(x, m_frontViewPosition));
    notifyPanProgress(PanMoved, m_frontLocation);
}

void RevealViewController::panGestureEnded(qreal velocityX)
{
    if (!m_dragging)
        return;
    const RevealGeometry::Settle settle = geometry().settleAfterDrag(m_frontLocation, velocityX);
    m_dragging = false;
    Q_EMIT draggingChanged();
    restoreUserInteraction();
    if (m_delegate)
        m_delegate->revealControllerPanGestureEnded(this);
    notifyPanProgress(PanEnded, m_frontLocation);
    qCDebug(lcReveal) << "drag released at" << m_frontLocation << "moving at" << velocityX << "settles at"
                      << settle.position << "in" << settle.duration << "s";
    setFrontViewPositionWithDuration(settle.position, settle.duration);
}

void RevealViewController::panGestureCancelled()
{
    if (!m_dragging)
        return;
    m_dragging = false;
    Q_EMIT draggingChanged();
    restoreUserInteraction();
    if (m_delegate)
        m_delegate->revealControllerPanGestureEnded(this);
    // Back where the drag started from; the move releases the queue.
    setFrontViewPositionWithDuration(m_frontViewPosition, m_settings.toggleAnimationDuration);
}

bool RevealViewController::tapGestureShouldBegin() const
{
    if (m_frontViewPosition == FrontFarLeftRemoved || m_frontViewPosition == FrontCentred
        || m_frontViewPosition == FrontFarRightRemoved || m_frontViewPosition == kFrontViewPositionUnknown)
        return false;
    return !m_delegate || m_delegate->revealControllerTapGestureShouldBegin(const_cast<RevealViewController *>(this));
}

void RevealViewController::tapGestureRecognized()
{
    if (!tapGestureShouldBegin())
        return;
    dispatchSetFrontViewPosition(FrontCentred, true);
}
