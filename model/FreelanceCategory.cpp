#include "FreelanceCategory.h"

PFQuery FreelanceCategory::query()
{
    return PFQuery(parseClassName()).orderByDescending(QStringLiteral("createdAt"));
}
