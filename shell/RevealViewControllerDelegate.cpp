#include "RevealViewControllerDelegate.h"

void RevealViewControllerDelegate::revealControllerWillMoveToPosition(RevealViewController *, int) {}
void RevealViewControllerDelegate::revealControllerDidMoveToPosition(RevealViewController *, int) {}
void RevealViewControllerDelegate::revealControllerAnimateToPosition(RevealViewController *, int) {}

bool RevealViewControllerDelegate::revealControllerPanGestureShouldBegin(RevealViewController *)
{
    return true;
}

bool RevealViewControllerDelegate::revealControllerTapGestureShouldBegin(RevealViewController *)
{
    return true;
}

bool RevealViewControllerDelegate::revealControllerPanGestureShouldRecognizeSimultaneouslyWith(RevealViewController *,
                                                                                           QObject *)
{
    return false;
}

bool RevealViewControllerDelegate::revealControllerTapGestureShouldRecognizeSimultaneouslyWith(RevealViewController *,
                                                                                           QObject *)
{
    return false;
}

void RevealViewControllerDelegate::revealControllerPanGestureBegan(RevealViewController *) {}
void RevealViewControllerDelegate::revealControllerPanGestureEnded(RevealViewController *) {}

void RevealViewControllerDelegate::revealControllerPanGestureBeganFromLocation(RevealViewController *controller,
                                                                              qreal location, qreal progress, qreal)
{
    revealControllerPanGestureBeganFromLocation(controller, location, progress);
}

void RevealViewControllerDelegate::revealControllerPanGestureBeganFromLocation(RevealViewController *, qreal, qreal) {}

void RevealViewControllerDelegate::revealControllerPanGestureMovedToLocation(RevealViewController *controller,
                                                                            qreal location, qreal progress, qreal)
{
    revealControllerPanGestureMovedToLocation(controller, location, progress);
}

void RevealViewControllerDelegate::revealControllerPanGestureMovedToLocation(RevealViewController *, qreal, qreal) {}

void RevealViewControllerDelegate::revealControllerPanGestureEndedToLocation(RevealViewController *controller,
                                                                            qreal location, qreal progress, qreal)
{
    revealControllerPanGestureEndedToLocation(controller, location, progress);
}

void RevealViewControllerDelegate::revealControllerPanGestureEndedToLocation(RevealViewController *, qreal, qreal) {}

void RevealViewControllerDelegate::revealControllerWillAddViewController(RevealViewController *, ui::ViewController *,
                                                                        RevealOperation, bool)
{
}

void RevealViewControllerDelegate::revealControllerDidAddViewController(RevealViewController *, ui::ViewController *,
                                                                       RevealOperation, bool)
{
}

RevealAnimatedTransitioning *RevealViewControllerDelegate::revealControllerAnimationControllerForOperation(
    RevealViewController *, RevealOperation, ui::ViewController *, ui::ViewController *)
{
    return nullptr;
}
