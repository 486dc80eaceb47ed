#pragma once

#include "RevealAnimatedTransitioning.h"
#include "RevealFrontAnimator.h"

// The default replacement: the new screen fades in over the duration while the old one
// (if any) fades out under it.
class RevealDefaultAnimationController : public RevealAnimatedTransitioning {
public:
    explicit RevealDefaultAnimationController(double duration);

    [[nodiscard]] double transitionDuration(RevealContextTransitionObject *context) const override;
    void animateTransition(RevealContextTransitionObject *context) override;

private:
    double m_duration;
    RevealFrontAnimator m_animator;
};
