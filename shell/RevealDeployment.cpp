#include "RevealDeployment.h"

#include "FrontViewPosition.h"

namespace {

bool isRemoved(int position)
{
    return position <= FrontFarLeftRemoved || position >= FrontFarRightRemoved; // includes unknown
}

} // namespace

RevealDeployment RevealDeployment::compute(const Layers &from, int newPosition, bool hasRear, bool hasRight)
{
    RevealDeployment d;
    if ((newPosition <= FrontLeftShift && !hasRight) || (newPosition >= FrontRightShift && !hasRear))
        newPosition = FrontCentred;
    d.position = newPosition;

    const bool frontWasShown = !isRemoved(from.front);
    const bool frontWillShow = !isRemoved(newPosition);
    d.front.appears = !frontWasShown && frontWillShow;
    d.front.disappears = frontWasShown && !frontWillShow;

    const bool rearUnknown = from.rear == kFrontViewPositionUnknown;
    d.rear.appears = (from.rear < FrontRightShift || rearUnknown) && newPosition >= FrontRightShift;
    d.rear.disappears = !rearUnknown && from.rear > FrontCentred && newPosition < FrontRightShift;

    d.right.appears = from.right > FrontLeftShift && newPosition < FrontCentred;
    d.right.disappears = from.right < FrontCentred && newPosition > FrontLeftShift;
    return d;
}
