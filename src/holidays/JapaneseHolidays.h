#pragma once

#include "holidays/Equinox.h"
#include "holidays/HolidayRules.h"

#include <QDate>
#include <QDateTime>
#include <QString>

#include <vector>

// The holiday rules in Qt's types, for the calendar.
namespace JapaneseHolidays {

using HolidayRules::FirstYear;
using HolidayRules::LastYear;

struct Holiday
{
    QDate date;
    QString name;
};

// The holidays of year, in date order (see HolidayRules::OfYear).
std::vector<Holiday> HolidaysOfYear(int year);

// The holidays from first to last (both included), in date order.
std::vector<Holiday> HolidaysBetween(const QDate& first, const QDate& last);

// The name of the holiday on date, or an empty text when it is none.
QString HolidayName(const QDate& date);

// The moment of the equinox of year, in UTC.
QDateTime EquinoxMoment(int year, Equinox::Season season);

} // namespace JapaneseHolidays
