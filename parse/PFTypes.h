#pragma once

#include <QByteArray>
#include <QList>
#include <QMetaType>
#include <QVariant>
#include <functional>
#include <memory>

class PFError;
class PFObject;
class PFUser;
class PFFileObject;

// Records, users and files are shared entities: every holder sees the same instance.
using PFObjectPtr = std::shared_ptr<PFObject>;
using PFUserPtr = std::shared_ptr<PFUser>;
using PFFileObjectPtr = std::shared_ptr<PFFileObject>;

// Completion blocks. The error is null on success; the object it points to lives only
// for the duration of the call.
using PFBooleanResultBlock = std::function<void(bool succeeded, const PFError *error)>;
using PFQueryArrayResultBlock = std::function<void(const QList<PFObjectPtr> &objects, const PFError *error)>;
using PFIdResultBlock = std::function<void(const QVariant &result, const PFError *error)>;
using PFDataResultBlock = std::function<void(const QByteArray &data, const PFError *error)>;
using PFUserResultBlock = std::function<void(const PFUserPtr &user, const PFError *error)>;

Q_DECLARE_METATYPE(PFObjectPtr)
Q_DECLARE_METATYPE(PFFileObjectPtr)
