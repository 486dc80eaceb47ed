#pragma once

#include "RevealSettings.h"

// The arithmetic of the reveal container for one container width: where the front stands
// at each position, how a drag is damped past the reveal width, where a released drag
// settles and how long it takes, and how far the side screens are displaced.
class RevealGeometry {
public:
    RevealGeometry(const RevealSettings &settings, qreal containerWidth);

    // One side's settings: the rear side for symmetry +1, the right side for -1. The width
    // is resolved (negative widths count from the container's width).
    struct Side {
        qreal width = 0;
        qreal overdraw = 0;
        qreal displacement = 0;
        bool bounceBack = true;
        bool stableDrag = false;
    };
    [[nodiscard]] Side side(int symmetry) const;

    [[nodiscard]] static int symmetryForLocation(qreal x) { return x < 0 ? -1 : 1; }

    // The front's x at a position.
    [[nodiscard]] qreal frontLocationForPosition(int position) const;

    // A finger's x location turned into the front's x: unchanged up to the reveal width,
    // half speed through twice the overdraw, then held at width + overdraw. Positions at
    // the far ends, stable drags and drags without bounce-back allow the overdraw at full
    // speed instead.
    [[nodiscard]] qreal adjustedDragLocation(qreal x, int currentPosition) const;

    struct Settle {
        int position = 3;
        double duration = 0;
    };
    // Where the front goes when the finger lets go at x with horizontal velocity v.
    [[nodiscard]] Settle settleAfterDrag(qreal x, qreal velocity) const;

    struct Progress {
        qreal progress = 0;     // 1 at the reveal width
        qreal overProgress = 0; // 0 at the reveal width, 1 at width + overdraw
    };
    [[nodiscard]] Progress progressForLocation(qreal x) const;

    // The side screens follow the front from their displaced start to their place.
    [[nodiscard]] qreal rearLayerX(qreal frontX) const;
    [[nodiscard]] qreal rearLayerWidth() const;
    [[nodiscard]] qreal rightLayerX(qreal frontX) const;
    [[nodiscard]] qreal rightLayerWidth() const;

    // Toggles: the menu button's and the right screen's.
    [[nodiscard]] static int toggledPosition(int position);
    [[nodiscard]] static int rightToggledPosition(int position);

    // Pushing a new front screen first moves the front out of the way: to the far end of
    // the side it is on (or nowhere when centred), taking no time when it is there already.
    [[nodiscard]] static int positionBeforePush(int position);
    [[nodiscard]] double durationBeforePush(int position) const;

private:
    const RevealSettings &m_settings;
    qreal m_containerWidth;
};
