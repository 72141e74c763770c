#pragma once

#include <cstdint>

// Gregorian dates as Julian day numbers (the day count QDate::toJulianDay uses), so that the
// holiday rules and the command line that prints them need no toolkit at all.
namespace CivilDate {

std::int64_t JulianDay(int year, int month, int day);
void FromJulianDay(std::int64_t julianDay, int* year, int* month, int* day);
// 1 = Monday ... 7 = Sunday, the way Qt counts.
int DayOfWeek(std::int64_t julianDay);

} // namespace CivilDate
