#pragma once

#include <QColor>
#include <QSizeF>

// The tunable behaviour of the reveal container, with its defaults. Distances in points,
// durations in seconds, velocities in points per second.
struct RevealSettings {
    // A negative width means the container's width plus that value.
    qreal rearViewRevealWidth = 260.0;
    qreal rightViewRevealWidth = 260.0;
    qreal rearViewRevealOverdraw = 60.0;
    qreal rightViewRevealOverdraw = 60.0;
    qreal rearViewRevealDisplacement = 40.0;
    qreal rightViewRevealDisplacement = 40.0;
    bool bounceBackOnOverdraw = true;
    bool bounceBackOnLeftOverdraw = true;
    bool stableDragOnOverdraw = false;
    bool stableDragOnLeftOverdraw = false;
    bool presentFrontViewHierarchically = false;
    qreal quickFlickVelocity = 250.0;
    double toggleAnimationDuration = 0.3;
    int toggleAnimationType = 0; // 0 spring, 1 ease-out curve
    qreal springDampingRatio = 1.0;
    double replaceViewAnimationDuration = 0.25;
    qreal frontViewShadowRadius = 2.5;
    QSizeF frontViewShadowOffset{0.0, 2.5};
    qreal frontViewShadowOpacity = 1.0;
    QColor frontViewShadowColor{Qt::black};
    qreal draggableBorderWidth = 0.0; // 0: a drag may start anywhere
    bool clipsViewsToBounds = false;
    bool extendsPointInsideHit = false;
};
