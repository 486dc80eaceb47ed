#include "RevealViewControllerSeguePushController.h"

#include "RevealViewController.h"
#include "ShellLogging.h"

ui::SegueDefinition RevealViewControllerSeguePushController::segueTo(const QString &destination)
{
    return {ui::StoryboardSegue::Kind::Custom, destination, &RevealViewControllerSeguePushController::perform};
}

void RevealViewControllerSeguePushController::perform(ui::StoryboardSegue *segue)
{
    ui::ViewController *source = segue->sourceViewController();
    auto *reveal = source ? qobject_cast<RevealViewController *>(source->revealViewController()) : nullptr;
    if (!reveal || !segue->destinationViewController()) {
        qCWarning(lcReveal) << "segue" << segue->identifier() << "has no reveal container to push to";
        return;
    }
    reveal->pushFrontViewController(segue->destinationViewController(), true);
}
