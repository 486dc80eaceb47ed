#pragma once

#include "PFFieldOperation.h"

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QVariantMap>

// A record as a value: what the server last said, plus the changes not yet saved. The current
// value of a key is the server's value with the pending changes (then the changes being saved
// right now) applied on top.
class PFObjectState {
public:
    using Operations = QMap<QString, PFFieldOperation>;

    QString className;
    QString objectId;
    QString localId; // names a record created by saveEventually before the server has given it an id
    QDateTime createdAt;
    QDateTime updatedAt;
    QVariantMap serverData;
    Operations operations; // changes made since the save under way began
    Operations inFlight;   // changes of the save under way (one at a time per record)
    bool dataAvailable = true;
    // The last create sent for this record that did not come back: its request id and body.
    // Sent again unchanged, it keeps the id, so the server answers with the record it created.
    QString createRequestId;
    QByteArray createBody;

    [[nodiscard]] QVariant valueForKey(const QString &key) const;
    [[nodiscard]] bool hasKey(const QString &key) const { return valueForKey(key).isValid(); }
    [[nodiscard]] QStringList allKeys() const;

    // Starting a save moves the pending changes in flight.
    [[nodiscard]] Operations beginSave();
    // The save went through: its changes become server data.
    void finishSave();
    // The save failed: its changes are pending again, unless the key was changed meanwhile.
    void abandonSave();
    // The save failed: its changes are dropped, the keys read as the server has them (or as
    // changed meanwhile).
    void rollBackSave() { inFlight.clear(); }
    // Applies changes to the server data directly.
    void apply(const Operations &changes);
};
