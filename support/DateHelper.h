#pragma once

#include <QDate>
#include <QDateTime>

// The start of the current day, which every comparison of a stored unavailable day with
// "today" goes through.
class DateHelper {
public:
    // The first instant of today in the Gregorian calendar of the local time zone.
    [[nodiscard]] static QDateTime startOfToday();
    // The first instant of the given day in the local time zone; on a day whose midnight is
    // skipped by a daylight-saving change, the first time that exists.
    [[nodiscard]] static QDateTime startOfDay(QDate day);
};
