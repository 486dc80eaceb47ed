#pragma once

#include "RevealOperation.h"

#include <QtGlobal>

class QObject;
class RevealAnimatedTransitioning;
class RevealViewController;
namespace ui {
class ViewController;
}

// Optional callbacks of the reveal container: override the ones you need. The container
// holds its delegate weakly: clear it (setDelegate(nullptr)) before the delegate goes away.
class RevealViewControllerDelegate {
public:
    virtual ~RevealViewControllerDelegate() = default;

    // Moves of the front: before (only when the position changes), while the animation is
    // set up, and after it ends.
    virtual void revealControllerWillMoveToPosition(RevealViewController *controller, int position);
    virtual void revealControllerDidMoveToPosition(RevealViewController *controller, int position);
    virtual void revealControllerAnimateToPosition(RevealViewController *controller, int position);

    // Answer false to refuse a gesture; the default lets it begin.
    virtual bool revealControllerPanGestureShouldBegin(RevealViewController *controller);
    virtual bool revealControllerTapGestureShouldBegin(RevealViewController *controller);
    // Whether the pan (tap) may run together with another item's handling of the same touch
    // (a list's scrolling, say); by default the container takes the touch over.
    virtual bool revealControllerPanGestureShouldRecognizeSimultaneouslyWith(RevealViewController *controller,
                                                                          QObject *otherHandler);
    virtual bool revealControllerTapGestureShouldRecognizeSimultaneouslyWith(RevealViewController *controller,
                                                                          QObject *otherHandler);

    virtual void revealControllerPanGestureBegan(RevealViewController *controller);
    virtual void revealControllerPanGestureEnded(RevealViewController *controller);

    // The drag with its location (the front's x), progress (1 at the reveal width) and
    // over-progress (1 at the end of the overdraw). The four-argument forms call the
    // three-argument ones unless overridden.
    virtual void revealControllerPanGestureBeganFromLocation(RevealViewController *controller, qreal location,
                                                             qreal progress, qreal overProgress);
    virtual void revealControllerPanGestureBeganFromLocation(RevealViewController *controller, qreal location,
                                                             qreal progress);
    virtual void revealControllerPanGestureMovedToLocation(RevealViewController *controller, qreal location,
                                                           qreal progress, qreal overProgress);
    virtual void revealControllerPanGestureMovedToLocation(RevealViewController *controller, qreal location,
                                                           qreal progress);
    virtual void revealControllerPanGestureEndedToLocation(RevealViewController *controller, qreal location,
                                                           qreal progress, qreal overProgress);
    virtual void revealControllerPanGestureEndedToLocation(RevealViewController *controller, qreal location,
                                                           qreal progress);

    // Around the replacement of the rear, front or right screen.
    virtual void revealControllerWillAddViewController(RevealViewController *controller,
                                                       ui::ViewController *viewController,
                                                       RevealOperation operation, bool animated);
    virtual void revealControllerDidAddViewController(RevealViewController *controller,
                                                      ui::ViewController *viewController,
                                                      RevealOperation operation, bool animated);
    // An animation of one's own for a replacement, or nullptr for the default fade. The
    // delegate keeps ownership.
    virtual RevealAnimatedTransitioning *revealControllerAnimationControllerForOperation(
        RevealViewController *controller, RevealOperation operation, ui::ViewController *from,
        ui::ViewController *to);
};
