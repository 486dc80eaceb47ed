#include "Message.h"

#include "User.h"

PFQuery Message::query()
{
    return PFQuery(parseClassName()).orderByDescending(QStringLiteral("createdAt"));
}

std::shared_ptr<User> Message::from() const
{
    return objectForKeyAs<User>(QStringLiteral("from"));
}

void Message::setFrom(const std::shared_ptr<User> &value)
{
    setObject(PFObjectPtr(value), QStringLiteral("from"));
}

std::shared_ptr<User> Message::to() const
{
    return objectForKeyAs<User>(QStringLiteral("to"));
}

void Message::setTo(const std::shared_ptr<User> &value)
{
    setObject(PFObjectPtr(value), QStringLiteral("to"));
}
