#pragma once

#include <QtGlobal>

// The two curves the front moves along, as the fraction of the way done at a fraction of
// the duration (both from 0 to 1). The spring is a damped oscillator that settles within
// the duration: a damping ratio of 1 glides in without overshoot, lower ratios overshoot
// and swing back. Its initial velocity is in distances per duration.
class RevealAnimationCurve {
public:
    [[nodiscard]] static qreal spring(qreal t, qreal dampingRatio, qreal initialVelocity);
    [[nodiscard]] static qreal easeOut(qreal t);
};
