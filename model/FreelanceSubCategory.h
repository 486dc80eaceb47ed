#pragma once

#include "PFObject.h"
#include "PFQuery.h"

class FreelanceCategory;

// A skill within a role.
class FreelanceSubCategory : public PFObject {
public:
    FreelanceSubCategory() : PFObject(parseClassName()) {}
    [[nodiscard]] static QString parseClassName() { return QStringLiteral("FreelanceSubCategory"); }
    // Newest first.
    [[nodiscard]] static PFQuery query();

    [[nodiscard]] QString title() const { return stringForKey(QStringLiteral("title")); }
    void setTitle(const QString &value) { setObject(value, QStringLiteral("title")); }
    [[nodiscard]] QString subCategoryDescription() const
    {
        return stringForKey(QStringLiteral("subCategoryDescription"));
    }
    void setSubCategoryDescription(const QString &value) { setObject(value, QStringLiteral("subCategoryDescription")); }
    [[nodiscard]] std::shared_ptr<FreelanceCategory> category() const;
    void setCategory(const std::shared_ptr<FreelanceCategory> &value);
};
