#include "RevealView.h"

#include "RevealViewController.h"

#include <QPointingDevice>

RevealView::RevealView(QQuickItem *parent)
    : QQuickItem(parent)
{
    setFiltersChildMouseEvents(true);
    setAcceptedMouseButtons(Qt::LeftButton);
    setAcceptTouchEvents(true);
    m_clock.start();
}

void RevealView::setController(RevealViewController *controller)
{
    if (m_controller == controller)
        return;
    m_controller = controller;
    Q_EMIT controllerChanged();
}

void RevealView::setRearItem(QQuickItem *item)
{
    m_rearItem = item;
    Q_EMIT layerItemsChanged();
}

void RevealView::setFrontItem(QQuickItem *item)
{
    m_frontItem = item;
    Q_EMIT layerItemsChanged();
}

void RevealView::setRightItem(QQuickItem *item)
{
    m_rightItem = item;
    Q_EMIT layerItemsChanged();
}

bool RevealView::contains(const QPointF &point) const
{
    if (QQuickItem::contains(point))
        return true;
    if (!m_controller || !m_controller->settings().extendsPointInsideHit)
        return false;
    const std::pair<QQuickItem *, ui::ViewController *> layers[] = {
        {m_rearItem, m_controller->rearViewController()},
        {m_frontItem, m_controller->frontViewController()},
        {m_rightItem, m_controller->rightViewController()},
    };
    for (const auto &[item, screen] : layers) {
        if (item && screen && screen->isViewLoaded() && item->contains(mapToItem(item, point)))
            return true;
    }
    return false;
}

bool RevealView::childMouseEventFilter(QQuickItem *item, QEvent *event)
{
    if (!event->isPointerEvent())
        return false;
    return pointerEvent(static_cast<QPointerEvent *>(event), item);
}

void RevealView::mousePressEvent(QMouseEvent *event)
{
    event->setAccepted(pointerEvent(event, nullptr) || m_tracking);
}

void RevealView::mouseMoveEvent(QMouseEvent *event)
{
    pointerEvent(event, nullptr);
}

void RevealView::mouseReleaseEvent(QMouseEvent *event)
{
    pointerEvent(event, nullptr);
}

void RevealView::mouseUngrabEvent()
{
    cancel();
}

void RevealView::touchEvent(QTouchEvent *event)
{
    event->setAccepted(pointerEvent(event, nullptr) || m_tracking);
}

void RevealView::touchUngrabEvent()
{
    cancel();
}

bool RevealView::pointerEvent(QPointerEvent *event, QQuickItem *target)
{
    if (!m_controller || event->pointCount() == 0)
        return false;
    // A touch is handled as a touch; the mouse events made from it are not handled twice.
    if (event->isSinglePointEvent() && event->device()
        && event->device()->type() == QInputDevice::DeviceType::TouchScreen)
        return m_panning || m_tapCandidate;

    const QEventPoint &point = event->point(0);
    const QPointF local = mapFromScene(point.scenePosition());
    switch (point.state()) {
    case QEventPoint::Pressed: {
        const bool onFront = m_frontItem && m_frontItem->contains(mapToItem(m_frontItem, local));
        const bool taken = press(local, onFront);
        if (taken)
            takeOver(event);
        return taken;
    }
    case QEventPoint::Updated:
        return move(local, event, target);
    case QEventPoint::Released:
        return release(local);
    default:
        return m_panning;
    }
}

void RevealView::takeOver(QPointerEvent *event)
{
    if (event->pointCount() > 0)
        event->setExclusiveGrabber(event->point(0), this);
    setKeepMouseGrab(true);
    setKeepTouchGrab(true);
}

bool RevealView::press(QPointF local, bool onFront)
{
    RevealViewControllerPanGestureRecognizer *pan = m_controller->panGestureRecognizer();
    pan->touchesBegan(local, m_clock.elapsed());
    m_tracking = true;
    m_panning = false;
    m_simultaneous = false;
    // A displaced front closes on a tap, and its screen does not see that touch.
    m_tapCandidate = onFront && m_controller->tapGestureShouldBegin();
    return m_tapCandidate;
}

bool RevealView::move(QPointF local, QPointerEvent *event, QQuickItem *target)
{
    if (!m_tracking)
        return false;
    RevealViewControllerPanGestureRecognizer *pan = m_controller->panGestureRecognizer();
    const auto before = pan->state();
    const auto state = pan->touchesMoved(local, m_clock.elapsed());
    if (before == RevealViewControllerPanGestureRecognizer::State::Possible) {
        if (state == RevealViewControllerPanGestureRecognizer::State::Dragging) {
            if (!m_controller->panGestureShouldBegin(pan->startPoint(), pan->translation().x())) {
                pan->fail();
                return m_tapCandidate;
            }
            m_tapCandidate = false;
            m_simultaneous = target && m_controller->panGestureShouldRecognizeSimultaneouslyWith(target);
            if (!m_simultaneous)
                takeOver(event);
            m_panning = true;
            m_controller->panGestureBegan(local);
        } else if (state == RevealViewControllerPanGestureRecognizer::State::Failed) {
            m_tapCandidate = false;
        }
    }
    if (!m_panning)
        return m_tapCandidate;
    m_controller->panGestureMoved(pan->translation().x());
    return !m_simultaneous;
}

bool RevealView::release(QPointF local)
{
    if (!m_tracking)
        return false;
    RevealViewControllerPanGestureRecognizer *pan = m_controller->panGestureRecognizer();
    pan->touchesEnded(local, m_clock.elapsed());
    bool taken = false;
    if (m_panning) {
        m_controller->panGestureEnded(pan->horizontalVelocity());
        taken = !m_simultaneous;
    } else if (m_tapCandidate) {
        m_controller->tapGestureRecognized();
        taken = true;
    }
    pan->reset();
    m_tracking = m_panning = m_tapCandidate = m_simultaneous = false;
    setKeepMouseGrab(false);
    setKeepTouchGrab(false);
    return taken;
}

void RevealView::cancel()
{
    if (!m_tracking)
        return;
    if (m_panning && m_controller)
        m_controller->panGestureCancelled();
    if (m_controller)
        m_controller->panGestureRecognizer()->reset();
    m_tracking = m_panning = m_tapCandidate = m_simultaneous = false;
    setKeepMouseGrab(false);
    setKeepTouchGrab(false);
}
