#pragma once

#include <QStringList>

// The fixed skill lists of the roles, in their order; the titles are stored exactly so in a
// freelancer's `skills`.
class SkillLists {
public:
    [[nodiscard]] static QStringList broadcastSkills();
    [[nodiscard]] static QStringList printSkills();
    [[nodiscard]] static QStringList citizenSkills();
};
