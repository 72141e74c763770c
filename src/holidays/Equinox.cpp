// The apparent longitude of the sun from the earth's heliocentric longitude (the VSOP87
// planetary theory, truncated to the terms that matter at the arc-second level), corrected
// for nutation and aberration; the equinox is the moment that longitude reaches 0 or 180
// degrees, found by Newton's method. Times are computed in terrestrial time and converted
// to universal time with a model of the earth's slowing rotation (delta T).
#include "holidays/Equinox.h"

#include "holidays/CivilDate.h"

#include <cmath>
#include <iterator>

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double J2000 = 2451545.0; // 2000-01-01 12:00 TT as a Julian day
constexpr double TropicalYear = 365.2422;

struct Term
{
    double amplitude; // 1e-8 radians (longitude) or 1e-8 AU (distance)
    double phase;     // radians
    double frequency; // radians per Julian millennium
};

// Heliocentric ecliptic longitude of the earth, referred to the mean equinox of the date.
constexpr Term L0[] = {
    {175347046, 0, 0},           {3341656, 4.6692568, 6283.07585},
    {34894, 4.6261, 12566.1517}, {3497, 2.7441, 5753.3849},
    {3418, 2.8289, 3.5231},      {3136, 3.6277, 77713.7715},
    {2676, 4.4181, 7860.4194},   {2343, 6.1352, 3930.2097},
    {1324, 0.7425, 11506.7698},  {1273, 2.0371, 529.6910},
    {1199, 1.1096, 1577.3435},   {990, 5.233, 5884.927},
    {902, 2.045, 26.298},        {857, 3.508, 398.149},
    {780, 1.179, 5223.694},      {753, 2.533, 5507.553},
    {505, 4.583, 18849.228},     {492, 4.205, 775.523},
    {357, 2.920, 0.067},         {317, 5.849, 11790.629},
    {284, 1.899, 796.298},       {271, 0.315, 10977.079},
    {243, 0.345, 5486.778},      {206, 4.806, 2544.314},
    {205, 1.869, 5573.143},      {202, 2.458, 6069.777},
    {156, 0.833, 213.299},       {132, 3.411, 2942.463},
    {126, 1.083, 20.775},        {115, 0.645, 0.980},
    {103, 0.636, 4694.003},      {102, 0.976, 15720.839},
    {102, 4.267, 7.114},         {99, 6.21, 2146.17},
    {98, 0.68, 155.42},          {86, 5.98, 161000.69},
    {85, 1.30, 6275.96},         {85, 3.67, 71430.70},
    {80, 1.81, 17260.15},        {79, 3.04, 12036.46},
    {75, 1.76, 5088.63},         {74, 3.50, 3154.69},
    {74, 4.68, 801.82},          {70, 0.83, 9437.76},
    {62, 3.98, 8827.39},         {61, 1.82, 7084.90},
    {57, 2.78, 6286.60},         {56, 4.39, 14143.50},
    {56, 3.47, 6279.55},         {52, 0.19, 12139.55},
    {52, 1.33, 1748.02},         {51, 0.28, 5856.48},
    {49, 0.49, 1194.45},         {41, 5.37, 8429.24},
    {41, 2.40, 19651.05},        {39, 6.17, 10447.39},
    {37, 6.04, 10213.29},        {37, 2.57, 1059.38},
    {36, 1.71, 2352.87},         {36, 1.78, 6812.77},
    {33, 0.59, 17789.85},        {30, 0.44, 83996.85},
    {30, 2.74, 1349.87},         {25, 3.16, 4690.48},
};
constexpr Term L1[] = {
    {628331966747, 0, 0},       {206059, 2.678235, 6283.07585},
    {4303, 2.6351, 12566.1517}, {425, 1.590, 3.523},
    {119, 5.796, 26.298},       {109, 2.966, 1577.344},
    {93, 2.59, 18849.23},       {72, 1.14, 529.69},
    {68, 1.87, 398.15},         {67, 4.41, 5507.55},
    {59, 2.89, 5223.69},        {56, 2.17, 155.42},
    {45, 0.40, 796.30},         {36, 0.47, 775.52},
    {29, 2.65, 7.11},           {21, 5.34, 0.98},
    {19, 1.85, 5486.78},        {19, 4.97, 213.30},
    {17, 2.99, 6275.96},        {16, 0.03, 2544.31},
    {16, 1.43, 2146.17},        {15, 1.21, 10977.08},
    {12, 2.83, 1748.02},        {12, 3.26, 5088.63},
    {12, 5.27, 1194.45},        {12, 2.08, 4694.00},
    {11, 0.77, 553.57},         {10, 1.30, 6286.60},
    {10, 4.24, 1349.87},        {9, 2.70, 242.73},
    {9, 5.64, 951.72},          {8, 5.30, 2352.87},
    {6, 2.65, 9437.76},         {6, 4.67, 4690.48},
};
constexpr Term L2[] = {
    {52919, 0, 0},      {8720, 1.0721, 6283.0758}, {309, 0.867, 12566.152}, {27, 0.05, 3.52},   {16, 5.19, 26.30},
    {16, 3.68, 155.42}, {10, 0.76, 18849.23},      {9, 2.06, 77713.77},     {7, 0.83, 775.52},  {5, 4.66, 1577.34},
    {4, 1.03, 7.11},    {4, 3.44, 5573.14},        {3, 5.14, 796.30},       {3, 6.05, 5507.55}, {3, 1.19, 242.73},
    {3, 6.12, 529.69},  {3, 0.31, 398.15},         {3, 2.28, 553.57},       {2, 4.38, 5223.69}, {2, 3.75, 0.98},
};
constexpr Term L3[] = {
    {289, 5.844, 6283.076}, {35, 0, 0},          {17, 5.49, 12566.15}, {3, 5.20, 155.42},
    {1, 4.72, 3.52},        {1, 5.30, 18849.23}, {1, 5.97, 242.73},
};
constexpr Term L4[] = {{114, 3.142, 0}, {8, 4.13, 6283.08}, {1, 3.84, 12566.15}};
constexpr Term L5[] = {{1, 3.14, 0}};

// The sun-earth distance only scales the aberration (about 20"), so its leading terms do.
constexpr Term R0[] = {
    {100013989, 0, 0},          {1670700, 3.0984635, 6283.07585}, {13956, 3.05525, 12566.1517},
    {3084, 5.1985, 77713.7715}, {1628, 1.1739, 5753.3849},        {1576, 2.8469, 7860.4194},
};
constexpr Term R1[] = {{103019, 1.10749, 6283.07585}, {1721, 1.0644, 12566.1517}};
constexpr Term R2[] = {{4359, 5.7846, 6283.0758}};

template <size_t N> double Series(const Term (&terms)[N], double tau)
{
    double sum = 0;
    for (const Term& term : terms)
        sum += term.amplitude * std::cos(term.phase + term.frequency * tau);
    return sum;
}

double Radians(double degrees)
{
    return degrees * Pi / 180.0;
}

double Degrees(double radians)
{
    return radians * 180.0 / Pi;
}

// The sun's apparent geocentric longitude in degrees (0 <= result < 360) at the Julian
// ephemeris day jde.
double ApparentSolarLongitude(double jde)
{
    const double tau = (jde - J2000) / 365250.0; // Julian millennia
    const double t = tau * 10.0;                 // Julian centuries
    const double earth =
        (Series(L0, tau) +
         tau * (Series(L1, tau) +
                tau * (Series(L2, tau) + tau * (Series(L3, tau) + tau * (Series(L4, tau) + tau * Series(L5, tau)))))) /
        1e8;
    const double distance = (Series(R0, tau) + tau * (Series(R1, tau) + tau * Series(R2, tau))) / 1e8;

    // The sun is seen from the earth in the opposite direction; -0.09033" takes the
    // theory's dynamical equinox to the FK5 equinox that almanacs use.
    double longitude = Degrees(earth) + 180.0 - 0.09033 / 3600.0;

    // Nutation in longitude, from its four largest terms (good to half an arc second).
    const double node = Radians(125.04452 - 1934.136261 * t);
    const double sunMean = Radians(280.4665 + 36000.7698 * t);
    const double moonMean = Radians(218.3165 + 481267.8813 * t);
    const double nutation = (-17.20 * std::sin(node) - 1.32 * std::sin(2 * sunMean) - 0.23 * std::sin(2 * moonMean) +
                             0.21 * std::sin(2 * node)) /
                            3600.0;
    // Annual aberration.
    const double aberration = -20.4898 / 3600.0 / distance;

    longitude += nutation + aberration;
    longitude = std::fmod(longitude, 360.0);
    return longitude < 0 ? longitude + 360.0 : longitude;
}

// Terrestrial time minus universal time, in seconds, at the decimal year y: the polynomial
// fits to the observed values through 2005, and for later years the extrapolation that
// the eclipse predictions use.
double DeltaT(double y)
{
    if (y < 1941) {
        const double t = y - 1920;
        return 21.20 + 0.84493 * t - 0.076100 * t * t + 0.0020936 * t * t * t;
    }
    if (y < 1961) {
        const double t = y - 1950;
        return 29.07 + 0.407 * t - t * t / 233 + t * t * t / 2547;
    }
    if (y < 1986) {
        const double t = y - 1975;
        return 45.45 + 1.067 * t - t * t / 260 - t * t * t / 718;
    }
    if (y < 2005) {
        const double t = y - 2000;
        return 63.86 + 0.3345 * t - 0.060374 * t * t + 0.0017275 * std::pow(t, 3) + 0.000651814 * std::pow(t, 4) +
               0.00002373599 * std::pow(t, 5);
    }
    const double u = (y - 1820) / 100;
    if (y < 2050) {
        const double t = y - 2000;
        return 62.92 + 0.32217 * t + 0.005589 * t * t;
    }
    if (y < 2150)
        return -20 + 32 * u * u - 0.5628 * (2150 - y);
    return -20 + 32 * u * u;
}

// The Julian day (UT) of the equinox.
double EquinoxJulianDay(int year, Equinox::Season season)
{
    const bool spring = season == Equinox::Season::Spring;
    const double target = spring ? 0.0 : 180.0;
    // Start from the usual date; each step moves by the longitude still missing at the
    // sun's mean rate, which converges to well under a second in a few steps.
    double jde = static_cast<double>(CivilDate::JulianDay(year, spring ? 3 : 9, spring ? 20 : 23));
    for (int step = 0; step < 12; ++step) {
        double missing = target - ApparentSolarLongitude(jde);
        missing = std::remainder(missing, 360.0);
        jde += missing * TropicalYear / 360.0;
        if (std::fabs(missing) < 1e-7)
            break;
    }
    return jde - DeltaT(year + (spring ? 2.5 : 8.5) / 12.0) / 86400.0;
}

} // namespace

namespace Equinox {

double MomentJulianDay(int year, Season season)
{
    return EquinoxJulianDay(year, season);
}

std::int64_t DayInJapan(int year, Season season)
{
    // Julian days begin at noon; the day number of a moment is that of the noon before it.
    const double japan = EquinoxJulianDay(year, season) + 9.0 / 24.0;
    return static_cast<std::int64_t>(std::floor(japan + 0.5));
}

} // namespace Equinox
