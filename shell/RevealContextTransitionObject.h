#pragma once

#include <QPointer>

#include <functional>

#include "ui/ViewController.h"

class RevealLayer;
class RevealViewController;

// What a replacement animation works with: the layer (the container view of the change),
// the screens leaving and arriving, and the call that ends it. Always animated, never
// interactive.
class RevealContextTransitionObject {
public:
    RevealContextTransitionObject(RevealViewController *revealController, RevealLayer *containerView,
                                  ui::ViewController *from, ui::ViewController *to,
                                  std::function<void()> completion);

    [[nodiscard]] RevealViewController *revealController() const { return m_revealController; }
    [[nodiscard]] RevealLayer *containerView() const { return m_containerView; }
    [[nodiscard]] ui::ViewController *fromViewController() const { return m_from; }
    [[nodiscard]] ui::ViewController *toViewController() const { return m_to; }
    [[nodiscard]] bool isAnimated() const { return true; }
    [[nodiscard]] bool isInteractive() const { return false; }
    [[nodiscard]] bool transitionWasCancelled() const { return false; }

    // Ends the replacement; later calls do nothing.
    void completeTransition(bool didComplete);

private:
    RevealViewController *m_revealController;
    RevealLayer *m_containerView;
    QPointer<ui::ViewController> m_from;
    QPointer<ui::ViewController> m_to;
    std::function<void()> m_completion;
};
