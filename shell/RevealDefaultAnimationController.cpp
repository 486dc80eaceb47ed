#include "RevealDefaultAnimationController.h"

#include "RevealContextTransitionObject.h"
#include "RevealLayer.h"

RevealDefaultAnimationController::RevealDefaultAnimationController(double duration)
    : m_duration(duration)
{
}

double RevealDefaultAnimationController::transitionDuration(RevealContextTransitionObject *) const
{
    return m_duration;
}

void RevealDefaultAnimationController::animateTransition(RevealContextTransitionObject *context)
{
    RevealLayer *layer = context->containerView();
    layer->setOutgoingController(context->fromViewController());
    layer->setCrossFade(0);
    if (m_duration <= 0) {
        layer->setCrossFade(1);
        layer->setOutgoingController(nullptr);
        context->completeTransition(true);
        return;
    }
    m_animator.start(
        0, 1, m_duration, RevealFrontAnimator::Curve::Linear, 1, [layer](qreal value) { layer->setCrossFade(value); },
        [layer, context] {
            layer->setOutgoingController(nullptr);
            context->completeTransition(true);
        });
}
