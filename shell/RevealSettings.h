#pragma once

#include <QColor>
#include <QObject>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

// The tunable behaviour of the reveal container, with its defaults: one value, read by the
// geometry, the view and state restoration (which saves each under its own key).
// Distances in points, durations in seconds, velocities in points per second.
struct RevealSettings {
    Q_GADGET
    QML_VALUE_TYPE(revealSettings)
    Q_PROPERTY(qreal rearViewRevealWidth MEMBER rearViewRevealWidth)
    Q_PROPERTY(qreal rearViewRevealOverdraw MEMBER rearViewRevealOverdraw)
    Q_PROPERTY(qreal rearViewRevealDisplacement MEMBER rearViewRevealDisplacement)
    Q_PROPERTY(qreal rightViewRevealWidth MEMBER rightViewRevealWidth)
    Q_PROPERTY(qreal rightViewRevealOverdraw MEMBER rightViewRevealOverdraw)
    Q_PROPERTY(qreal rightViewRevealDisplacement MEMBER rightViewRevealDisplacement)
    Q_PROPERTY(bool bounceBackOnOverdraw MEMBER bounceBackOnOverdraw)
    Q_PROPERTY(bool bounceBackOnLeftOverdraw MEMBER bounceBackOnLeftOverdraw)
    Q_PROPERTY(bool stableDragOnOverdraw MEMBER stableDragOnOverdraw)
    Q_PROPERTY(bool stableDragOnLeftOverdraw MEMBER stableDragOnLeftOverdraw)
    Q_PROPERTY(bool presentFrontViewHierarchically MEMBER presentFrontViewHierarchically)
    Q_PROPERTY(qreal quickFlickVelocity MEMBER quickFlickVelocity)
    Q_PROPERTY(double toggleAnimationDuration MEMBER toggleAnimationDuration)
    Q_PROPERTY(int toggleAnimationType MEMBER toggleAnimationType)
    Q_PROPERTY(qreal springDampingRatio MEMBER springDampingRatio)
    Q_PROPERTY(double replaceViewAnimationDuration MEMBER replaceViewAnimationDuration)
    Q_PROPERTY(qreal frontViewShadowRadius MEMBER frontViewShadowRadius)
    Q_PROPERTY(QSizeF frontViewShadowOffset MEMBER frontViewShadowOffset)
    Q_PROPERTY(qreal frontViewShadowOpacity MEMBER frontViewShadowOpacity)
    Q_PROPERTY(QColor frontViewShadowColor MEMBER frontViewShadowColor)
    Q_PROPERTY(qreal draggableBorderWidth MEMBER draggableBorderWidth)
    Q_PROPERTY(bool clipsViewsToBounds MEMBER clipsViewsToBounds)
    Q_PROPERTY(bool extendsPointInsideHit MEMBER extendsPointInsideHit)

public:
    // A negative width means the container's width plus that value.
    qreal rearViewRevealWidth = 260.0;
    qreal rearViewRevealOverdraw = 60.0;
    qreal rearViewRevealDisplacement = 40.0;
    qreal rightViewRevealWidth = 260.0;
    qreal rightViewRevealOverdraw = 60.0;
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

    bool operator==(const RevealSettings &) const = default;
};
