#pragma once

// What moving the front to a new position does to the three layers: which appear, which
// go away, and the position actually taken (a side without a screen cannot be revealed).
struct RevealDeployment {
    // One layer's part in a move.
    struct Change {
        bool appears = false;
        bool disappears = false;
    };

    int position = 3;
    Change front; // disappears: taken out of the hierarchy (the far "removed" ends)
    Change rear;
    Change right;

    // The layers' last positions (kFrontViewPositionUnknown before the first move).
    struct Layers {
        int front;
        int rear;
        int right;
    };
    [[nodiscard]] static RevealDeployment compute(const Layers &from, int newPosition, bool hasRear, bool hasRight);
};
