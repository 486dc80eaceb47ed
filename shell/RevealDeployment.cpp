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
    d.frontAppears = !frontWasShown && frontWillShow;
    d.frontDisappears = frontWasShown && !frontWillShow;

    const bool rearUnknown = from.rear == kFrontViewPositionUnknown;
    d.rearAppears = (from.rear < FrontRightShift || rearUnknown) && newPosition >= FrontRightShift;
    d.rearDisappears = !rearUnknown && from.rear > FrontCentred && newPosition < FrontRightShift;

    d.rightAppears = from.right > FrontLeftShift && newPosition < FrontCentred;
    d.rightDisappears = from.right < FrontCentred && newPosition > FrontLeftShift;
    return d;
}
