#include "RoleChange.h"

#include "FreelanceCategory.h"
#include "Freelancer.h"
#include "SkillLists.h"

QStringList RoleChange::roles()
{
    return {QStringLiteral("Broadcast"), QStringLiteral("Print"), QStringLiteral("Multi-Skilled"),
            QStringLiteral("Citizen Journalist")};
}

QStringList RoleChange::startingSkills(const QString &categoryTitle)
{
    const QString title = categoryTitle.toLower();
    if (title == QStringLiteral("Multi-Skilled").toLower())
        return SkillLists::broadcastSkills() + SkillLists::printSkills();
    if (title == QStringLiteral("Citizen Journalist").toLower())
        return SkillLists::citizenSkills();
    return {};
}

std::shared_ptr<FreelanceCategory>
RoleChange::categoryForRole(const QList<std::shared_ptr<FreelanceCategory>> &categories, const QString &role)
{
    for (const auto &category : categories) {
        if (category && category->categoryTitle() == role)
            return category;
    }
    return nullptr;
}

void RoleChange::apply(Freelancer &freelancer, const std::shared_ptr<FreelanceCategory> &category)
{
    if (!category)
        return;
    const std::shared_ptr<FreelanceCategory> current = freelancer.freelanceCategory();
    const bool sameRecord = current && !current->objectId().isEmpty() && current->objectId() == category->objectId();
    if (!sameRecord)
        freelancer.setSkills(startingSkills(category->categoryTitle()));
    freelancer.setFreelanceCategory(category);
}
