#include "RevealViewControllerSegueSetController.h"

#include "RevealViewController.h"
#include "ShellLogging.h"

ui::SegueDefinition RevealViewControllerSegueSetController::segueTo(const QString &destination)
{
    return {ui::StoryboardSegue::Kind::Custom, destination, &RevealViewControllerSegueSetController::perform};
}

void RevealViewControllerSegueSetController::perform(ui::StoryboardSegue *segue)
{
    auto *reveal = qobject_cast<RevealViewController *>(segue->sourceViewController());
    ui::ViewController *destination = segue->destinationViewController();
    if (!reveal || !destination) {
        qCWarning(lcReveal) << "segue" << segue->identifier() << "needs a reveal container as its source";
        return;
    }
    const QString identifier = segue->identifier();
    if (identifier == RevealViewController::kRearSegue)
        reveal->setRearViewController(destination);
    else if (identifier == RevealViewController::kFrontSegue)
        reveal->setFrontViewController(destination);
    else if (identifier == RevealViewController::kRightSegue)
        reveal->setRightViewController(destination);
    else
        qCWarning(lcReveal) << "unknown reveal segue" << identifier;
}
