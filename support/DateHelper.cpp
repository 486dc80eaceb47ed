#include "DateHelper.h"

QDateTime DateHelper::startOfToday()
{
    return startOfDay(QDate::currentDate());
}

QDateTime DateHelper::startOfDay(QDate day)
{
    return day.startOfDay(Qt::LocalTime);
}
