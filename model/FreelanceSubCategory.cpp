#include "FreelanceSubCategory.h"

#include "FreelanceCategory.h"

PFQuery FreelanceSubCategory::query()
{
    return PFQuery(parseClassName()).orderByDescending(QStringLiteral("createdAt"));
}

std::shared_ptr<FreelanceCategory> FreelanceSubCategory::category() const
{
    return objectForKeyAs<FreelanceCategory>(QStringLiteral("category"));
}

void FreelanceSubCategory::setCategory(const std::shared_ptr<FreelanceCategory> &value)
{
    setObject(PFObjectPtr(value), QStringLiteral("category"));
}
