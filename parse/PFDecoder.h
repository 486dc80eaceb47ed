#pragma once

#include "PFError.h"
#include "PFObjectState.h"
#include "PFTypes.h"

#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <optional>

// Turns the backend's JSON into record values: typed objects into dates, geo points, files
// and records (as their registered subclass), lists and maps element by element. A reply of
// the wrong shape is reported through error(), never trusted.
class PFDecoder {
public:
    [[nodiscard]] QVariant decode(const QJsonValue &value);
    // The same for a value read by PFJsonReader.
    [[nodiscard]] QVariant decodeVariant(const QVariant &value);
    // A full record of the class from a reply (a query result, a login, an included pointer).
    [[nodiscard]] PFObjectPtr decodeObject(const QString &className, const QJsonObject &json);
    [[nodiscard]] PFObjectPtr decodeObject(const QString &className, const QVariantMap &json);
    // Takes the map over: a reply read by PFJsonReader becomes the record's data without a copy.
    [[nodiscard]] PFObjectPtr decodeObject(const QString &className, QVariantMap &&json);
    // Takes a reply's standard keys and other values into an existing record's server data.
    void mergeInto(PFObjectState &state, const QJsonObject &json);
    void mergeInto(PFObjectState &state, const QVariantMap &json);
    void mergeInto(PFObjectState &state, QVariantMap &&json);

    [[nodiscard]] const std::optional<PFError> &error() const { return m_error; }
    [[nodiscard]] static QDateTime decodeDate(const QString &iso);

private:
    void malformed(const QString &what);
    [[nodiscard]] QVariant decodeTyped(const QString &type, const QVariantMap &json);
    std::optional<PFError> m_error;
    QHash<QString, PFObjectPtr> m_included; // records included in this reply, by class and id
};
