#pragma once

#include <QStringList>

// The fixed skill lists of the roles, in their order; the titles are stored exactly so in a
// freelancer's `skills`.
class SkillLists {
public:
    [[nodiscard]] static QStringList broadcastSkills();
    [[nodiscard]] static QStringList printSkills();
    [[nodiscard]] static QStringList citizenSkills();

    // The roles a freelancer chooses from, in the order the pickers offer them.
    [[nodiscard]] static QStringList roles();
    // The skills a freelancer starts with in a role of this title (compared without regard to
    // case): the broadcast and then the print list for "Multi-Skilled", the one citizen skill
    // for "Citizen Journalist", none for the others (chosen on the skills screen).
    [[nodiscard]] static QStringList startingSkills(const QString &roleTitle);
};
