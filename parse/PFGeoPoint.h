#pragma once

#include <QMetaType>

// The backend's latitude/longitude pair, a value.
class PFGeoPoint {
public:
    PFGeoPoint() = default;
    [[nodiscard]] static PFGeoPoint geoPointWithLatitude(double latitude, double longitude);

    [[nodiscard]] double latitude() const { return m_latitude; }
    [[nodiscard]] double longitude() const { return m_longitude; }
    void setLatitude(double latitude) { m_latitude = latitude; }
    void setLongitude(double longitude) { m_longitude = longitude; }

    friend bool operator==(const PFGeoPoint &, const PFGeoPoint &) = default;

private:
    double m_latitude = 0;
    double m_longitude = 0;
};

Q_DECLARE_METATYPE(PFGeoPoint)
