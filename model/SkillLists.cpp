#include "SkillLists.h"

QStringList SkillLists::broadcastSkills()
{
    return {QStringLiteral("TV Camera"),
            QStringLiteral("TV Sound"),
            QStringLiteral("TV Video Editor"),
            QStringLiteral("TV Camera/Sound/Edit"),
            QStringLiteral("TV Video Journalist (VJ)"),
            QStringLiteral("TV Presenter"),
            QStringLiteral("TV Reporter"),
            QStringLiteral("TV Producer"),
            QStringLiteral("Radio Reporter/Presenter"),
            QStringLiteral("Broadcast Fixer")};
}

QStringList SkillLists::printSkills()
{
    return {QStringLiteral("Writer"), QStringLiteral("Photographer"), QStringLiteral("Fixer")};
}

QStringList SkillLists::citizenSkills()
{
    return {QStringLiteral("User-Generator/Live-Streamer")};
}

QStringList SkillLists::roles()
{
    return {QStringLiteral("Broadcast"), QStringLiteral("Print"), QStringLiteral("Multi-Skilled"),
            QStringLiteral("Citizen Journalist")};
}

QStringList SkillLists::startingSkills(const QString &roleTitle)
{
    const QString title = roleTitle.toLower();
    if (title == QStringLiteral("Multi-Skilled").toLower())
        return broadcastSkills() + printSkills();
    if (title == QStringLiteral("Citizen Journalist").toLower())
        return citizenSkills();
    return {};
}
