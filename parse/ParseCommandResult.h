#pragma once

#include "PFError.h"

#include <QByteArray>
#include <QJsonObject>
#include <optional>

// What came back for a command: the JSON reply (or raw data for downloads), or an error.
class ParseCommandResult {
public:
    QJsonObject json;
    QByteArray data;
    int httpStatus = 0; // 0 when no reply arrived
    std::optional<PFError> error;
    // The failure may go away by itself (network failure or a 5xx answer).
    bool transient = false;

    [[nodiscard]] bool succeeded() const { return !error.has_value(); }
};
