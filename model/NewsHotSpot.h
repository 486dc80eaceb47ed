#pragma once

#include "PFObject.h"
#include "PFQuery.h"

// A place of current news interest.
class NewsHotSpot : public PFObject {
public:
    NewsHotSpot() : PFObject(parseClassName()) {}
    [[nodiscard]] static QString parseClassName() { return QStringLiteral("NewsHotSpot"); }
    // Newest first.
    [[nodiscard]] static PFQuery query();

    [[nodiscard]] QString title() const { return stringForKey(QStringLiteral("title")); }
    void setTitle(const QString &value) { setObject(value, QStringLiteral("title")); }
    [[nodiscard]] std::optional<PFGeoPoint> location() const { return geoPointForKey(QStringLiteral("location")); }
    void setLocation(const PFGeoPoint &value) { setObject(QVariant::fromValue(value), QStringLiteral("location")); }
    [[nodiscard]] QString subtitle() const { return stringForKey(QStringLiteral("subtitle")); }
    void setSubtitle(const QString &value) { setObject(value, QStringLiteral("subtitle")); }
};
