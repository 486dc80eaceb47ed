#pragma once

#include "PFError.h"
#include "PFObjectState.h"

#include <QJsonObject>
#include <QJsonValue>
#include <optional>

// Turns record values into the backend's JSON: dates, geo points, files and pointers as typed
// objects, lists and maps element by element, pending changes as set values or deletions.
class PFEncoder {
public:
    enum class UnsavedPointers {
        Refuse,     // a pointer to a record without objectId is an error
        UseLocalId, // ...is written with its local id (the eventually queue resolves it later)
    };
    explicit PFEncoder(UnsavedPointers unsaved = UnsavedPointers::Refuse) : m_unsaved(unsaved) {}

    [[nodiscard]] QJsonValue encode(const QVariant &value);
    [[nodiscard]] QJsonObject encodeOperations(const PFObjectState::Operations &operations);
    // The whole record (its server data) as the backend writes a full object.
    [[nodiscard]] QJsonObject encodeObject(const PFObjectState &state);

    // The first value that could not be encoded, if any.
    [[nodiscard]] const std::optional<PFError> &error() const { return m_error; }

    [[nodiscard]] static QString encodeDate(const QDateTime &date);

private:
    void fail(int code, const QString &message);
    UnsavedPointers m_unsaved;
    std::optional<PFError> m_error;
};
