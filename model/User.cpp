#include "User.h"

PFQuery User::query()
{
    return PFUser::query().orderByDescending(QStringLiteral("createdAt"));
}
