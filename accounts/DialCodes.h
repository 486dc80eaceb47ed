#pragma once

#include "CountryCode.h"

#include <QList>
#include <QStringList>

// The list of countries and their dialling codes that the telephone-number pickers offer.
//
// The list ships as the resource ":/resources/DialCodes.json" (a JSON array of CountryCode
// objects, ordered by name) compiled into this library. Loading never fails loudly: a missing
// or unreadable file, or one that is not a JSON array, is logged (category vantrel.accounts) and
// yields an empty list; an entry that does not decode is logged and left out, and every other
// entry is kept, so one bad entry costs only itself.
namespace DialCodes {
inline constexpr auto kResourcePath = ":/resources/DialCodes.json";

// The shipped list.
[[nodiscard]] QList<CountryCode> load();
// The list in the given file (tests, or a list placed elsewhere).
[[nodiscard]] QList<CountryCode> load(const QString &path);

// The list with the placeholder entry ("None", no code) in front, as the pickers show it.
[[nodiscard]] QList<CountryCode> withPlaceholder(QList<CountryCode> countries);
// One picker row per entry (CountryCode::pickerRow), in order.
[[nodiscard]] QStringList pickerRows(const QList<CountryCode> &countries);
// The entries' names, in order, for the home-country picker. The placeholder is left out: "None"
// is no home country.
[[nodiscard]] QStringList countryNames(const QList<CountryCode> &countries);
} // namespace DialCodes
