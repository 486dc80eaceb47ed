#pragma once

#include "PFObject.h"
#include "PFQuery.h"

// A role a freelancer registers under.
class FreelanceCategory : public PFObject {
public:
    FreelanceCategory() : PFObject(parseClassName()) {}
    [[nodiscard]] static QString parseClassName() { return QStringLiteral("FreelanceCategory"); }
    // Newest first.
    [[nodiscard]] static PFQuery query();

    [[nodiscard]] QString categoryTitle() const { return stringForKey(QStringLiteral("categoryTitle")); }
    void setCategoryTitle(const QString &value) { setObject(value, QStringLiteral("categoryTitle")); }
    [[nodiscard]] QString categoryDescription() const { return stringForKey(QStringLiteral("categoryDescription")); }
    void setCategoryDescription(const QString &value) { setObject(value, QStringLiteral("categoryDescription")); }
};
