#include "holidays/CivilDate.h"

namespace CivilDate {

// The usual integer conversions between the Gregorian calendar and the Julian day number,
// with the year counted from March so that the leap day comes last.
std::int64_t JulianDay(int year, int month, int day)
{
    const std::int64_t a = (14 - month) / 12;
    const std::int64_t y = year + 4800 - a;
    const std::int64_t m = month + 12 * a - 3;
    return day + (153 * m + 2) / 5 + 365 * y + y / 4 - y / 100 + y / 400 - 32045;
}

void FromJulianDay(std::int64_t julianDay, int* year, int* month, int* day)
{
    const std::int64_t a = julianDay + 32044;
    const std::int64_t b = (4 * a + 3) / 146097;
    const std::int64_t c = a - 146097 * b / 4;
    const std::int64_t d = (4 * c + 3) / 1461;
    const std::int64_t e = c - 1461 * d / 4;
    const std::int64_t m = (5 * e + 2) / 153;
    *day = static_cast<int>(e - (153 * m + 2) / 5 + 1);
    *month = static_cast<int>(m + 3 - 12 * (m / 10));
    *year = static_cast<int>(100 * b + d - 4800 + m / 10);
}

int DayOfWeek(std::int64_t julianDay)
{
    return static_cast<int>(julianDay % 7) + 1;
}

} // namespace CivilDate
