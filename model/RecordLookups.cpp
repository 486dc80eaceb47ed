#include "RecordLookups.h"

#include "FreelanceCategory.h"
#include "Freelancer.h"
#include "SkillLists.h"
#include "User.h"

PFQuery freelancerQuery(const std::shared_ptr<User> &user)
{
    return PFQuery(Freelancer::parseClassName())
        .includeKey(QStringLiteral("freelanceCategory"))
        .includeKey(QStringLiteral("freelanceSubCategory"))
        .includeKey(QStringLiteral("user"))
        .whereKey(QStringLiteral("user"), PFObjectPtr(user))
        .orderByDescending(QStringLiteral("createdAt"));
}

PFQuery liveStreamQuery(const std::shared_ptr<Freelancer> &freelancer)
{
    return PFQuery(QStringLiteral("LiveStream"))
        .includeKey(QStringLiteral("freelancer"))
        .whereKey(QStringLiteral("freelancer"), PFObjectPtr(freelancer))
        .orderByDescending(QStringLiteral("createdAt"));
}

std::shared_ptr<Freelancer> makeFreelancer(const std::shared_ptr<FreelanceCategory> &category,
                                           const std::shared_ptr<User> &user)
{
    auto freelancer = std::make_shared<Freelancer>();
    freelancer->setUser(user);
    freelancer->setFreelanceCategory(category);
    if (category && category->categoryTitle().toLower() == QStringLiteral("Multi-Skilled").toLower())
        freelancer->setSkills(SkillLists::broadcastSkills() + SkillLists::printSkills());
    // Every new record starts with empty lists; this also empties the multi-skilled list above,
    // as registration has always done: skills are chosen later.
    freelancer->setNotAvailable({});
    freelancer->setSkills({});
    freelancer->setLanguages({});
    return freelancer;
}
