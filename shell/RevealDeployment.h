#pragma once

// What moving the front to a new position does to the three layers: which appear, which
// go away, and the position actually taken (a side without a screen cannot be revealed).
struct RevealDeployment {
    int position = 3;
    bool frontAppears = false;
    bool frontDisappears = false; // taken out of the hierarchy (the far "removed" ends)
    bool rearAppears = false;
    bool rearDisappears = false;
    bool rightAppears = false;
    bool rightDisappears = false;

    // The layers' last positions (kFrontViewPositionUnknown before the first move).
    struct Layers {
        int front;
        int rear;
        int right;
    };
    [[nodiscard]] static RevealDeployment compute(const Layers &from, int newPosition, bool hasRear, bool hasRight);
};
