#include "NewsHotSpot.h"

PFQuery NewsHotSpot::query()
{
    return PFQuery(parseClassName()).orderByDescending(QStringLiteral("createdAt"));
}
