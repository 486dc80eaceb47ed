#pragma once

#include "PFObject.h"
#include "PFQuery.h"

// A subject of current news interest.
class TrendingSubject : public PFObject {
public:
    TrendingSubject() : PFObject(parseClassName()) {}
    [[nodiscard]] static QString parseClassName() { return QStringLiteral("TrendingSubject"); }
    // Newest first.
    [[nodiscard]] static PFQuery query();

    [[nodiscard]] QString title() const { return stringForKey(QStringLiteral("title")); }
    void setTitle(const QString &value) { setObject(value, QStringLiteral("title")); }
    [[nodiscard]] QString subtitle() const { return stringForKey(QStringLiteral("subtitle")); }
    void setSubtitle(const QString &value) { setObject(value, QStringLiteral("subtitle")); }
    [[nodiscard]] QVariantList urls() const { return listForKey(QStringLiteral("urls")); }
    void setUrls(const QVariantList &value) { setObject(QVariant(value), QStringLiteral("urls")); }
};
