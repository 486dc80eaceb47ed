#include "TrendingSubject.h"

PFQuery TrendingSubject::query()
{
    return PFQuery(parseClassName()).orderByDescending(QStringLiteral("createdAt"));
}
