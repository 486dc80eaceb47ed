#include "RevealGeometry.h"

#include "FrontViewPosition.h"

#include <cmath>
#include <cstdlib>

RevealGeometry::RevealGeometry(const RevealSettings &settings, qreal containerWidth)
    : m_settings(settings)
    , m_containerWidth(containerWidth)
{
}

RevealGeometry::Side RevealGeometry::side(int symmetry) const
{
    Side s;
    if (symmetry < 0) {
        s.width = m_settings.rightViewRevealWidth;
        s.overdraw = m_settings.rightViewRevealOverdraw;
        s.displacement = m_settings.rightViewRevealDisplacement;
        s.bounceBack = m_settings.bounceBackOnLeftOverdraw;
        s.stableDrag = m_settings.stableDragOnLeftOverdraw;
    } else {
        s.width = m_settings.rearViewRevealWidth;
        s.overdraw = m_settings.rearViewRevealOverdraw;
        s.displacement = m_settings.rearViewRevealDisplacement;
        s.bounceBack = m_settings.bounceBackOnOverdraw;
        s.stableDrag = m_settings.stableDragOnOverdraw;
    }
    if (s.width < 0)
        s.width = m_containerWidth + s.width;
    return s;
}

qreal RevealGeometry::frontLocationForPosition(int position) const
{
    const int symmetry = symmetryForPosition(position);
    const Side s = side(symmetry);
    const int onRear = positionOnRearSide(position, symmetry);
    qreal location = 0;
    if (onRear == FrontRightShift)
        location = s.width;
    else if (onRear > FrontRightShift)
        location = s.width + s.overdraw;
    return location * symmetry;
}

qreal RevealGeometry::adjustedDragLocation(qreal x, int currentPosition) const
{
    const int symmetry = symmetryForLocation(x);
    const Side s = side(symmetry);
    qreal width = s.width;
    qreal overdraw = s.overdraw;
    if (!s.bounceBack || s.stableDrag || currentPosition == FrontFarLeft || currentPosition == FrontFarRight) {
        width += overdraw;
        overdraw = 0;
    }
    const qreal d = x * symmetry;
    qreal result = 0;
    if (d <= width)
        result = d;
    else if (d <= width + 2 * overdraw)
        result = width + (d - width) / 2;
    else
        result = width + overdraw;
    return result * symmetry;
}

RevealGeometry::Settle RevealGeometry::settleAfterDrag(qreal x, qreal velocity) const
{
    const int symmetry = symmetryForLocation(x);
    const Side s = side(symmetry);
    const qreal d = x * symmetry;
    Settle settle;
    settle.position = FrontCentred;

    if (std::abs(velocity) > m_settings.quickFlickVelocity) {
        if (symmetry * velocity > 0) {
            settle.position = FrontRightShift;
            settle.duration = std::abs((s.width - d) / velocity);
            if (d > s.width && !s.bounceBack && s.stableDrag) {
                settle.position = FrontFarRight;
                settle.duration = std::abs((s.width + s.overdraw - d) / velocity);
            }
        } else {
            settle.duration = std::abs(d / velocity);
        }
    } else {
        settle.duration = m_settings.toggleAnimationDuration;
        if (d > s.width / 2) {
            settle.position = FrontRightShift;
            if (d > s.width) {
                if (s.bounceBack)
                    settle.position = FrontCentred;
                else if (s.stableDrag && d > s.width + s.overdraw / 2)
                    settle.position = FrontFarRight;
            }
        }
    }
    settle.position = positionOnRearSide(settle.position, symmetry);
    return settle;
}

RevealGeometry::Progress RevealGeometry::progressForLocation(qreal x) const
{
    const int symmetry = symmetryForLocation(x);
    const Side s = side(symmetry);
    const qreal d = x * symmetry;
    Progress p;
    p.progress = s.width != 0 ? d / s.width : 0;
    p.overProgress = s.overdraw != 0 ? (d - s.width) / s.overdraw : 0;
    return p;
}

qreal RevealGeometry::rearLayerX(qreal frontX) const
{
    const Side s = side(1);
    if (s.width == 0)
        return 0;
    return -s.displacement + s.displacement * (frontX / s.width);
}

qreal RevealGeometry::rearLayerWidth() const
{
    const Side s = side(1);
    return s.width + s.overdraw;
}

qreal RevealGeometry::rightLayerX(qreal frontX) const
{
    const Side s = side(-1);
    const qreal offset = s.width == 0 ? 0 : s.displacement - s.displacement * (-frontX / s.width);
    return m_containerWidth - rightLayerWidth() + offset;
}

qreal RevealGeometry::rightLayerWidth() const
{
    const Side s = side(-1);
    return s.width + s.overdraw;
}

int RevealGeometry::toggledPosition(int position)
{
    return position <= FrontCentred ? FrontRightShift : FrontCentred;
}

int RevealGeometry::rightToggledPosition(int position)
{
    return position < FrontCentred ? FrontCentred : FrontLeftShift;
}

int RevealGeometry::positionBeforePush(int position)
{
    if (position > FrontCentred)
        return FrontFarRight;
    if (position < FrontCentred)
        return FrontFarLeft;
    return FrontCentred;
}

double RevealGeometry::durationBeforePush(int position) const
{
    const int steps = std::abs(positionBeforePush(position) - position);
    if (steps == 0)
        return 0;
    if (steps == 1)
        return 0.8 * m_settings.toggleAnimationDuration;
    return m_settings.toggleAnimationDuration;
}
