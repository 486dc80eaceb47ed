#pragma once

#include "PFError.h"

#include <QByteArray>
#include <QVariantMap>
#include <optional>

// What came back for a command: the JSON reply as read by PFJsonReader (or raw data for
// downloads), or an error.
class ParseCommandResult {
public:
    QVariantMap json;
    QByteArray data;
    int httpStatus = 0; // 0 when no reply arrived
    std::optional<PFError> error;
    // The failure may go away by itself (network failure or a 5xx answer).
    bool transient = false;
    // The server answered a retried write with the answer of its first attempt.
    bool replayed = false;

    [[nodiscard]] bool succeeded() const { return !error.has_value(); }
    [[nodiscard]] int errorCode() const { return error ? error->code() : 0; }
    [[nodiscard]] QString string(const QString &key) const;
};
