#pragma once

#include "PFObject.h"
#include "PFQuery.h"

class User;

// A message between two users.
class Message : public PFObject {
public:
    Message() : PFObject(parseClassName()) {}
    [[nodiscard]] static QString parseClassName() { return QStringLiteral("Message"); }
    // Newest first.
    [[nodiscard]] static PFQuery query();

    [[nodiscard]] QString title() const { return stringForKey(QStringLiteral("title")); }
    void setTitle(const QString &value) { setObject(value, QStringLiteral("title")); }
    [[nodiscard]] QString messageBody() const { return stringForKey(QStringLiteral("messageBody")); }
    void setMessageBody(const QString &value) { setObject(value, QStringLiteral("messageBody")); }
    [[nodiscard]] std::shared_ptr<User> from() const;
    void setFrom(const std::shared_ptr<User> &value);
    [[nodiscard]] std::shared_ptr<User> to() const;
    void setTo(const std::shared_ptr<User> &value);
    [[nodiscard]] bool hasBeenRead() const { return boolForKey(QStringLiteral("hasBeenRead")); }
    void setHasBeenRead(bool value) { setObject(value, QStringLiteral("hasBeenRead")); }
};
