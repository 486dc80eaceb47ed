#include "RoleChange.h"

#include "FreelanceCategory.h"
#include "Freelancer.h"
#include "SkillLists.h"

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
        freelancer.setSkills(SkillLists::startingSkills(category->categoryTitle()));
    freelancer.setFreelanceCategory(category);
}
