#include "Freelancer.h"

#include "FreelanceCategory.h"
#include "User.h"

PFQuery Freelancer::query()
{
    return PFQuery(parseClassName())
        .includeKey(QStringLiteral("freelanceCategory"))
        .includeKey(QStringLiteral("freelanceSubCategory"))
        .includeKey(QStringLiteral("user"))
        .orderByDescending(QStringLiteral("createdAt"));
}

std::shared_ptr<User> Freelancer::user() const
{
    return objectForKeyAs<User>(QStringLiteral("user"));
}

void Freelancer::setUser(const std::shared_ptr<User> &value)
{
    setObject(PFObjectPtr(value), QStringLiteral("user"));
}

std::shared_ptr<FreelanceCategory> Freelancer::freelanceCategory() const
{
    return objectForKeyAs<FreelanceCategory>(QStringLiteral("freelanceCategory"));
}

void Freelancer::setFreelanceCategory(const std::shared_ptr<FreelanceCategory> &value)
{
    setObject(PFObjectPtr(value), QStringLiteral("freelanceCategory"));
}
