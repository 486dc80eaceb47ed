#pragma once

// Where the front screen stands, symmetric about FrontCentred: values above it reveal the
// rear (menu) screen, values below it the right screen.
enum FrontViewPosition : int {
    FrontFarLeftRemoved = 0, // as FrontFarLeft, and taken out of the hierarchy
    FrontFarLeft = 1,        // left by the right reveal width plus its overdraw
    FrontLeftShift = 2,      // left by the right reveal width: the right screen shows
    FrontCentred = 3,        // covers the container
    FrontRightShift = 4,     // right by the rear reveal width: the menu shows
    FrontFarRight = 5,       // right by the rear reveal width plus its overdraw
    FrontFarRightRemoved = 6 // as FrontFarRight, and taken out of the hierarchy
};

// A layer whose position has not been set yet (while the container's view loads).
inline constexpr int kFrontViewPositionUnknown = 255;

// +1 on the rear side (and at the centre), -1 on the right side.
[[nodiscard]] constexpr int symmetryForPosition(int position)
{
    return position < FrontCentred ? -1 : 1;
}

// Maps a position onto the rear side (and back: the mapping is its own inverse).
[[nodiscard]] constexpr int positionOnRearSide(int position, int symmetry)
{
    return (position - FrontCentred) * symmetry + FrontCentred;
}
