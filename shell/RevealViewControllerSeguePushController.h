#pragma once

#include "ui/Storyboard.h"

// The storyboard segue of a menu row: pushes its destination to the front of the reveal
// container the source screen sits in, with animation.
class RevealViewControllerSeguePushController {
public:
    [[nodiscard]] static ui::SegueDefinition segueTo(const QString &destination);
    static void perform(ui::StoryboardSegue *segue);
};
