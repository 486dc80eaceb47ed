#pragma once

#include "PFError.h"
#include "PFObjectState.h"
#include "PFTypes.h"

#include <QJsonObject>
#include <QJsonValue>
#include <optional>

// Turns the backend's JSON into record values: typed objects into dates, geo points, files
// and records (as their registered subclass), lists and maps element by element. A reply of
// the wrong shape is reported through error(), never trusted.
class PFDecoder {
public:
    [[nodiscard]] QVariant decode(const QJsonValue &value);
    // A full record of the class from a reply (a query result, a login, an included pointer).
    [[nodiscard]] PFObjectPtr decodeObject(const QString &className, const QJsonObject &json);
    // Takes a reply's standard keys and other values into an existing record's server data.
    void mergeInto(PFObjectState &state, const QJsonObject &json);

    [[nodiscard]] const std::optional<PFError> &error() const { return m_error; }
    [[nodiscard]] static QDateTime decodeDate(const QString &iso);

private:
    void malformed(const QString &what);
    [[nodiscard]] QVariant decodeTyped(const QString &type, const QJsonObject &json);
    std::optional<PFError> m_error;
};
