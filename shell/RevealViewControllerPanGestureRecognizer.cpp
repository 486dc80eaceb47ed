#include "RevealViewControllerPanGestureRecognizer.h"

#include <cmath>

void RevealViewControllerPanGestureRecognizer::touchesBegan(QPointF point, qint64 timeMs)
{
    m_state = State::Possible;
    m_start = point;
    m_last = point;
    m_samples.clear();
    addSample(point, timeMs);
}

RevealViewControllerPanGestureRecognizer::State RevealViewControllerPanGestureRecognizer::touchesMoved(QPointF point,
                                                                                                       qint64 timeMs)
{
    if (m_state == State::Idle || m_state == State::Failed)
        return m_state;
    m_last = point;
    addSample(point, timeMs);
    if (m_state == State::Possible) {
        const QPointF moved = point - m_start;
        if (std::abs(moved.x()) > kDecisionDistance)
            m_state = State::Dragging;
        else if (std::abs(moved.y()) > kDecisionDistance)
            m_state = State::Failed;
    }
    return m_state;
}

void RevealViewControllerPanGestureRecognizer::touchesEnded(QPointF point, qint64 timeMs)
{
    if (m_state == State::Idle)
        return;
    m_last = point;
    addSample(point, timeMs);
}

void RevealViewControllerPanGestureRecognizer::reset()
{
    m_state = State::Idle;
    m_samples.clear();
}

void RevealViewControllerPanGestureRecognizer::addSample(QPointF point, qint64 timeMs)
{
    m_samples.append({point.x(), timeMs});
    while (m_samples.size() > 1 && timeMs - m_samples.first().timeMs > kVelocityWindowMs)
        m_samples.removeFirst();
}

qreal RevealViewControllerPanGestureRecognizer::horizontalVelocity() const
{
    if (m_samples.size() < 2)
        return 0;
    const Sample &first = m_samples.first();
    const Sample &last = m_samples.last();
    const qint64 elapsed = last.timeMs - first.timeMs;
    if (elapsed <= 0)
        return 0;
    return (last.x - first.x) * 1000.0 / qreal(elapsed);
}
