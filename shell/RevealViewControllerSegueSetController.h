#pragma once

#include "ui/Storyboard.h"

// The storyboard segue that fills a reveal container: "reveal_rear", "reveal_front" and
// "reveal_right" install their destination as the rear, front or right screen.
class RevealViewControllerSegueSetController {
public:
    // A segue definition leading to the scene `destination`.
    [[nodiscard]] static ui::SegueDefinition segueTo(const QString &destination);
    static void perform(ui::StoryboardSegue *segue);
};
