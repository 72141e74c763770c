#pragma once

#include <cstdint>

// The equinoxes, computed from the sun's position rather than looked up, so that the
// equinox days stay right for any year the calendar can show.
namespace Equinox {

enum class Season
{
    Spring,
    Autumn
};

// The moment, as a Julian day in universal time, at which the sun's apparent geocentric
// longitude reaches 0 degrees (spring) or 180 degrees (autumn) in year. Good to about a
// minute for the years the calendar is meant for; further out the uncertainty of the
// earth's rotation grows beyond that.
double MomentJulianDay(int year, Season season);

// The day in Japan (UTC+9, no daylight saving) that holds that moment, as a Julian day
// number: the equinox day that the holiday law names.
std::int64_t DayInJapan(int year, Season season);

} // namespace Equinox
