#include "RevealFrontAnimator.h"

#include "RevealAnimationCurve.h"

#include <cmath>

RevealFrontAnimator::RevealFrontAnimator(QObject *parent)
    : QObject(parent)
{
    m_animation.setStartValue(0.0);
    m_animation.setEndValue(1.0);
    connect(&m_animation, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        if (m_animation.state() != QAbstractAnimation::Running || !m_step)
            return;
        const qreal t = value.toReal();
        qreal fraction = t;
        if (m_curve == Curve::Spring)
            fraction = RevealAnimationCurve::spring(t, m_damping, m_initialVelocity);
        else if (m_curve == Curve::EaseOut)
            fraction = RevealAnimationCurve::easeOut(t);
        m_step(m_from + (m_to - m_from) * fraction);
    });
    connect(&m_animation, &QVariantAnimation::finished, this, [this] {
        if (m_step)
            m_step(m_to);
        const std::function<void()> done = std::exchange(m_done, {});
        m_step = {};
        if (done)
            done();
    });
}

void RevealFrontAnimator::start(qreal from, qreal to, double durationSeconds, Curve curve, qreal dampingRatio,
                                std::function<void(qreal)> step, std::function<void()> done)
{
    stop();
    m_from = from;
    m_to = to;
    m_curve = curve;
    m_damping = dampingRatio;
    // One distance per duration: the curve starts moving at once, as a finger let go would.
    m_initialVelocity = 1.0;
    m_step = std::move(step);
    m_done = std::move(done);
    m_animation.setDuration(std::max(1, int(std::lround(durationSeconds * 1000))));
    m_animation.start();
}

void RevealFrontAnimator::stop()
{
    m_step = {};
    m_done = {};
    m_animation.stop();
}
