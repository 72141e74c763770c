#include "holidays/JapaneseHolidays.h"

#include <cmath>

namespace JapaneseHolidays {

std::vector<Holiday> HolidaysOfYear(int year)
{
    std::vector<Holiday> result;
    for (const HolidayRules::Day& day : HolidayRules::OfYear(year))
        result.push_back({QDate::fromJulianDay(day.julianDay), QString::fromUtf8(day.name)});
    return result;
}

std::vector<Holiday> HolidaysBetween(const QDate& first, const QDate& last)
{
    std::vector<Holiday> result;
    if (!first.isValid() || !last.isValid() || last < first)
        return result;
    for (int year = first.year(); year <= last.year(); ++year) {
        for (Holiday& holiday : HolidaysOfYear(year)) {
            if (holiday.date >= first && holiday.date <= last)
                result.push_back(std::move(holiday));
        }
    }
    return result;
}

QString HolidayName(const QDate& date)
{
    if (!date.isValid())
        return QString();
    const qint64 wanted = date.toJulianDay();
    for (const HolidayRules::Day& day : HolidayRules::OfYear(date.year())) {
        if (day.julianDay == wanted)
            return QString::fromUtf8(day.name);
    }
    return QString();
}

QDateTime EquinoxMoment(int year, Equinox::Season season)
{
    // Julian days begin at noon.
    const double shifted = Equinox::MomentJulianDay(year, season) + 0.5;
    const double day = std::floor(shifted);
    const qint64 msecs = std::llround((shifted - day) * 86400000.0);
    return QDateTime(QDate::fromJulianDay(static_cast<qint64>(day)), QTime(0, 0), Qt::UTC).addMSecs(msecs);
}

} // namespace JapaneseHolidays
