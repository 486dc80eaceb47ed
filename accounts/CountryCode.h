#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <optional>

// One country of the dialling-code list: its name, its international dialling code as text
// with the "+" (stored as typed in a user's country-code keys) and its two-letter code.
// The JSON keys are the member names, "dial_code" with its underscore.
struct CountryCode {
    QString name;
    QString dial_code; // NOLINT(readability-identifier-naming): the record's JSON key
    QString code;

    // Decodes one entry. All three keys are required and must hold text (an empty text is
    // accepted). On failure returns nothing and, when error is given, says why.
    [[nodiscard]] static std::optional<CountryCode> fromJson(const QJsonValue &value, QString *error = nullptr);
    [[nodiscard]] QJsonObject toJson() const;

    // The line a picker shows: "name:  dial_code : code " (colon and two blanks, then blank
    // colon blank, and a blank at the end).
    [[nodiscard]] QString pickerRow() const;

    // The "no code" entry the pickers offer first: name "None", empty code and dialling code.
    [[nodiscard]] static CountryCode placeholder();
    [[nodiscard]] bool isPlaceholder() const;

    friend bool operator==(const CountryCode &, const CountryCode &) = default;
};
