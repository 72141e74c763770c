#pragma once

#include <cstdint>
#include <vector>

// Japan's national holidays, computed from the National Holidays Act (Act No. 178 of 1948)
// and its amendments, with the days off that other acts added, rather than read from a
// table that someone would have to keep up. Plain C++ so that the command line can print
// them without starting the toolkit; JapaneseHolidays.h gives the same in Qt's types.
namespace HolidayRules {

// The years answered for: the act came into force on 1948-07-20; past the last year the
// sun's position is still computed, but the earth's rotation is too uncertain to place an
// equinox near midnight on the right day.
constexpr int FirstYear = 1948;
constexpr int LastYear = 2199;

struct Day
{
    std::int64_t julianDay; // as QDate::toJulianDay counts
    const char* name;       // UTF-8, as the law names the day
};

// The holidays of year in date order: the national holidays, the substitute holidays
// ("振替休日"), the citizens' holidays ("国民の休日") and the days off for imperial
// ceremonies. Empty outside FirstYear..LastYear.
std::vector<Day> OfYear(int year);

} // namespace HolidayRules
