#pragma once

class RevealContextTransitionObject;

// An animation that replaces one of the container's screens: it animates the context's
// layer and calls completeTransition() on the context when it is done.
class RevealAnimatedTransitioning {
public:
    virtual ~RevealAnimatedTransitioning() = default;
    [[nodiscard]] virtual double transitionDuration(RevealContextTransitionObject *context) const = 0;
    virtual void animateTransition(RevealContextTransitionObject *context) = 0;
};
