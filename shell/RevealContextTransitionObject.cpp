#include "RevealContextTransitionObject.h"

RevealContextTransitionObject::RevealContextTransitionObject(RevealViewController *revealController,
                                                             RevealLayer *containerView, ui::ViewController *from,
                                                             ui::ViewController *to, std::function<void()> completion)
    : m_revealController(revealController)
    , m_containerView(containerView)
    , m_from(from)
    , m_to(to)
    , m_completion(std::move(completion))
{
}

void RevealContextTransitionObject::completeTransition(bool didComplete)
{
    Q_UNUSED(didComplete)
    const std::function<void()> completion = std::exchange(m_completion, {});
    if (completion)
        completion();
}
