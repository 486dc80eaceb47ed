#pragma once

#include "PFFileObject.h"
#include "PFGeoPoint.h"
#include "PFObjectState.h"
#include "PFSubclassRegistry.h"
#include "PFTypes.h"

#include <QDateTime>
#include <QJsonObject>
#include <QStringList>
#include <memory>

class PFError;

// A record of a backend class: its standard keys, typed key-value storage with pending changes
// per key, and its saves. Always held by PFObjectPtr. Values are QString, bool, numbers,
// QDateTime, PFGeoPoint, PFFileObjectPtr, PFObjectPtr (pointers), QVariantList, QVariantMap
// and null (QVariant::fromValue(nullptr)).
class PFObject : public std::enable_shared_from_this<PFObject> {
public:
    explicit PFObject(QString className);
    virtual ~PFObject();
    PFObject(const PFObject &) = delete;
    PFObject &operator=(const PFObject &) = delete;

    // The generic initialiser, for classes without a subclass of their own. Creating a
    // registered subclass this way is a programming error and stops the program: such records
    // are made with their own constructor.
    [[nodiscard]] static PFObjectPtr objectWithClassName(const QString &className);
    // A reference to a record known by id only (its data not fetched), as its registered subclass.
    [[nodiscard]] static PFObjectPtr objectWithoutDataWithClassName(const QString &className, const QString &objectId);
    // Makes records of T::parseClassName() come back from the server as T.
    template <class T> static void registerSubclass()
    {
        PFSubclassRegistry::shared().registerSubclass(T::parseClassName(), [] { return std::make_shared<T>(); });
    }

    [[nodiscard]] QString className() const { return m_state.className; }
    [[nodiscard]] QString objectId() const { return m_state.objectId; }
    void setObjectId(const QString &objectId) { m_state.objectId = objectId; }
    [[nodiscard]] QDateTime createdAt() const { return m_state.createdAt; }
    [[nodiscard]] QDateTime updatedAt() const { return m_state.updatedAt; }
    [[nodiscard]] bool isDataAvailable() const { return m_state.dataAvailable; }
    [[nodiscard]] bool isDirty() const { return m_state.objectId.isEmpty() || !m_state.operations.isEmpty(); }
    [[nodiscard]] bool isDirtyForKey(const QString &key) const { return m_state.operations.contains(key); }
    [[nodiscard]] QStringList dirtyKeys() const { return m_state.operations.keys(); }
    [[nodiscard]] QStringList allKeys() const { return m_state.allKeys(); }

    // The key's value; an invalid QVariant when the record does not hold the key.
    [[nodiscard]] QVariant objectForKey(const QString &key) const { return m_state.valueForKey(key); }
    [[nodiscard]] bool hasKey(const QString &key) const { return m_state.hasKey(key); }
    void setObject(const QVariant &value, const QString &key);
    void setObject(const PFObjectPtr &object, const QString &key);
    void setObject(const PFFileObjectPtr &file, const QString &key);
    void removeObjectForKey(const QString &key);

    // Typed reads: a missing key, or a value of another type, reads as the empty value.
    [[nodiscard]] QString stringForKey(const QString &key) const;
    [[nodiscard]] bool boolForKey(const QString &key) const;
    [[nodiscard]] double numberForKey(const QString &key) const;
    [[nodiscard]] QDateTime dateForKey(const QString &key) const;
    [[nodiscard]] std::optional<PFGeoPoint> geoPointForKey(const QString &key) const;
    [[nodiscard]] PFFileObjectPtr fileForKey(const QString &key) const;
    [[nodiscard]] PFObjectPtr objectPointerForKey(const QString &key) const;
    [[nodiscard]] QVariantList listForKey(const QString &key) const;
    [[nodiscard]] QStringList stringListForKey(const QString &key) const;
    [[nodiscard]] QList<QDateTime> dateListForKey(const QString &key) const;
    template <class T> [[nodiscard]] std::shared_ptr<T> objectForKeyAs(const QString &key) const
    {
        return std::dynamic_pointer_cast<T>(objectPointerForKey(key));
    }
    void setStringList(const QStringList &list, const QString &key);
    void setDateList(const QList<QDateTime> &list, const QString &key);

    void saveInBackgroundWithBlock(PFBooleanResultBlock block);
    void saveInBackground() { saveInBackgroundWithBlock({}); }
    // The old, blocking way, kept only until the last screen has moved to
    // saveInBackgroundWithBlock: waits for the save in a nested event loop. On failure fills
    // `error` when given. Nothing in the client library or the app's start-up calls it.
    bool save(PFError *error = nullptr);
    // Saves when the server can be reached, even after a restart; each save is applied once,
    // in the order made. The block runs only if the save lands while this program still runs.
    void saveEventually(PFBooleanResultBlock block = {});

    // The library's own access to the record's state.
    [[nodiscard]] const PFObjectState &state() const { return m_state; }
    [[nodiscard]] PFObjectState &mutableState() { return m_state; }
    // Called before a save of this record is sent, and after it went through with the reply.
    virtual void willSave() {}
    virtual void objectDidSave(const QVariantMap &reply) { Q_UNUSED(reply) }

private:
    PFObjectState m_state;
};
