#pragma once

#include <QStringList>
#include <memory>

class FreelanceCategory;
class Freelancer;

// The role a freelancer picks on the profile and what it does to their skills.
class RoleChange {
public:
    // The first category whose title equals the role text exactly; null when none does.
    [[nodiscard]] static std::shared_ptr<FreelanceCategory>
    categoryForRole(const QList<std::shared_ptr<FreelanceCategory>> &categories, const QString &role);

    // Puts the freelancer under the category. Moving to another category (or from none)
    // replaces the skills with the new role's starting skills; staying keeps them.
    static void apply(Freelancer &freelancer, const std::shared_ptr<FreelanceCategory> &category);
};
