#include "RevealAnimationCurve.h"

#include <QEasingCurve>
#include <QPointF>

#include <cmath>

namespace {
// Natural frequency in units of the duration: the oscillator's envelope falls to e^-10 by
// the end, so cutting it there is invisible.
constexpr qreal kFrequency = 10.0;
} // namespace

qreal RevealAnimationCurve::spring(qreal t, qreal dampingRatio, qreal initialVelocity)
{
    if (t <= 0)
        return 0;
    if (t >= 1)
        return 1;
    const qreal zeta = std::max<qreal>(dampingRatio, 0.01);
    const qreal w = kFrequency;
    const qreal v0 = initialVelocity;
    // y is the signed distance still to go: -1 at the start, 0 at rest.
    qreal y = 0;
    if (std::abs(zeta - 1) < 1e-6) {
        y = (-1 + (v0 - w) * t) * std::exp(-w * t);
    } else if (zeta < 1) {
        const qreal wd = w * std::sqrt(1 - zeta * zeta);
        const qreal c2 = (v0 - zeta * w) / wd;
        y = std::exp(-zeta * w * t) * (-std::cos(wd * t) + c2 * std::sin(wd * t));
    } else {
        const qreal root = std::sqrt(zeta * zeta - 1);
        const qreal r1 = -w * (zeta - root);
        const qreal r2 = -w * (zeta + root);
        const qreal c1 = (v0 + r2) / (r1 - r2);
        const qreal c2 = -1 - c1;
        y = c1 * std::exp(r1 * t) + c2 * std::exp(r2 * t);
    }
    return 1 + y;
}

qreal RevealAnimationCurve::easeOut(qreal t)
{
    static const QEasingCurve curve = [] {
        QEasingCurve c(QEasingCurve::BezierSpline);
        c.addCubicBezierSegment(QPointF(0, 0), QPointF(0.58, 1), QPointF(1, 1));
        return c;
    }();
    if (t <= 0)
        return 0;
    if (t >= 1)
        return 1;
    return curve.valueForProgress(t);
}
