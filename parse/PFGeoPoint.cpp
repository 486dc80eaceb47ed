#include "PFGeoPoint.h"

PFGeoPoint PFGeoPoint::geoPointWithLatitude(double latitude, double longitude)
{
    PFGeoPoint point;
    point.m_latitude = latitude;
    point.m_longitude = longitude;
    return point;
}
