#pragma once

#include "PFError.h"
#include "PFObjectState.h"
#include "PFTypes.h"

#include <QHash>
#include <QVariantMap>
#include <optional>

// Turns the backend's JSON (as read by PFJsonReader) into record values: typed objects into
// dates, geo points, files and records (as their registered subclass), lists and maps element
// by element. Numbers become doubles, except whole numbers a double cannot hold exactly
// (beyond 2^53), which stay 64-bit integers. A reply of the wrong shape is reported through
// error(), never trusted.
class PFDecoder {
public:
    // Any value read by PFJsonReader.
    [[nodiscard]] QVariant decode(const QVariant &value);
    // Replies are read by PFJsonReader, never through a QJsonDocument.
    QVariant decode(const class QJsonValue &value) = delete;
    // A full record of the class (a query result, a login, an included record). The map is
    // taken over: a reply becomes the record's data without a copy.
    [[nodiscard]] PFObjectPtr decodeObject(const QString &className, QVariantMap json);
    // Takes a reply's standard keys and other values into an existing record's server data.
    void mergeInto(PFObjectState &state, QVariantMap json);

    [[nodiscard]] const std::optional<PFError> &error() const { return m_error; }
    [[nodiscard]] static QDateTime decodeDate(const QString &iso);

private:
    void malformed(const QString &what);
    [[nodiscard]] QVariant decodeTyped(const QString &type, const QVariantMap &json);
    std::optional<PFError> m_error;
    QHash<QString, PFObjectPtr> m_included; // records included in this reply, by class and id
};
