// The rules of the National Holidays Act, one by one, each with the act that made it and the
// day it took effect, so that any year can be checked against the law. Article 2 lists the
// "national holidays"; article 3 makes them days off and adds the substitute holiday and
// the citizens' holiday; separate acts added one-off days for imperial ceremonies and moved
// three holidays for the Tokyo Olympic Games.
#include "holidays/HolidayRules.h"

#include "holidays/CivilDate.h"
#include "holidays/Equinox.h"

#include <algorithm>

namespace HolidayRules {
namespace {

// Act No. 178 of 1948 was promulgated and came into force on 20 July 1948.
const std::int64_t LawInForce = CivilDate::JulianDay(1948, 7, 20);
// Act No. 10 of 1973, in force 12 April 1973 (article 3-2): a national holiday falling on
// a Sunday makes the following day a holiday.
const std::int64_t SubstituteRuleBegins = CivilDate::JulianDay(1973, 4, 12);
// Act No. 103 of 1985, in force 27 December 1985 (article 3-3): a day between two national
// holidays is a holiday.
const std::int64_t CitizensHolidayBegins = CivilDate::JulianDay(1985, 12, 27);
// Act No. 43 of 2005, in force 1 January 2007, rewrote both rules (see below).
const std::int64_t RulesOf2007 = CivilDate::JulianDay(2007, 1, 1);

constexpr int Monday = 1;
constexpr int Sunday = 7;

const char* const Substitute = "振替休日";
const char* const Citizens = "国民の休日";

// The nth (1-based) Monday of month.
std::int64_t NthMonday(int year, int month, int nth)
{
    const std::int64_t first = CivilDate::JulianDay(year, month, 1);
    const int toMonday = (Monday - CivilDate::DayOfWeek(first) + 7) % 7;
    return first + toMonday + 7 * (nth - 1);
}

class YearBuilder
{
public:
    explicit YearBuilder(int year) : m_year(year) {}

    void add(int month, int day, const char* name) { add(CivilDate::JulianDay(m_year, month, day), name); }
    void add(std::int64_t day, const char* name)
    {
        if (day >= LawInForce)
            m_days.push_back({day, name});
    }
    void addMonday(int month, int nth, const char* name) { add(NthMonday(m_year, month, nth), name); }
    std::vector<Day>& days() { return m_days; }

private:
    int m_year;
    std::vector<Day> m_days;
};

// The days of article 2 (and the days treated alike) for year, unsorted.
std::vector<Day> NationalHolidays(int year)
{
    YearBuilder y(year);

    // 元日: 1 January since 1948.
    y.add(1, 1, "元日");

    // 成人の日: 15 January since 1949 (the first after the act); the second Monday of
    // January since 2000 (Act No. 141 of 1998, in force 2000-01-01).
    if (year < 2000)
        y.add(1, 15, "成人の日");
    else
        y.addMonday(1, 2, "成人の日");

    // 建国記念の日: added by Act No. 86 of 1966 (in force 1966-06-25) on "a day set by
    // cabinet order"; Cabinet Order No. 376 of 1966 set 11 February, first kept in 1967.
    if (year >= 1967)
        y.add(2, 11, "建国記念の日");

    // 天皇誕生日 of the Reiwa emperor: 23 February since 2020 (Act No. 63 of 2017,
    // supplementary provision article 10, in force 2019-04-30, after 23 February 2019).
    if (year >= 2020)
        y.add(2, 23, "天皇誕生日");

    // 春分の日: "the spring equinox day", the day in Japan that holds the equinox; the
    // government announces it each February for the next year from the same computation.
    y.add(Equinox::DayInJapan(year, Equinox::Season::Spring), "春分の日");

    // 29 April: 天皇誕生日 of the Showa emperor until 1988; renamed みどりの日 by Act No. 5
    // of 1989 (in force 1989-02-17); renamed 昭和の日 by Act No. 43 of 2005 (in force
    // 2007-01-01).
    if (year <= 1988)
        y.add(4, 29, "天皇誕生日");
    else if (year <= 2006)
        y.add(4, 29, "みどりの日");
    else
        y.add(4, 29, "昭和の日");

    // 憲法記念日 (3 May) and こどもの日 (5 May) since 1948; 4 May became みどりの日 by Act
    // No. 43 of 2005 (in force 2007-01-01).
    y.add(5, 3, "憲法記念日");
    if (year >= 2007)
        y.add(5, 4, "みどりの日");
    y.add(5, 5, "こどもの日");

    // 海の日: 20 July since 1996 (Act No. 22 of 1995, in force 1996-01-01); the third Monday
    // of July since 2003 (Act No. 59 of 2001, in force 2003-01-01). The Olympic acts moved
    // it to 23 July 2020 (Act No. 55 of 2018) and 22 July 2021 (Act No. 68 of 2020).
    if (year == 2020)
        y.add(7, 23, "海の日");
    else if (year == 2021)
        y.add(7, 22, "海の日");
    else if (year >= 2003)
        y.addMonday(7, 3, "海の日");
    else if (year >= 1996)
        y.add(7, 20, "海の日");

    // スポーツの日 on the opening days of the Games: 24 July 2020 and 23 July 2021 (same
    // acts); otherwise kept in October below.
    if (year == 2020)
        y.add(7, 24, "スポーツの日");
    else if (year == 2021)
        y.add(7, 23, "スポーツの日");

    // 山の日: 11 August since 2016 (Act No. 43 of 2014, in force 2016-01-01); moved to
    // 10 August 2020 and 8 August 2021 by the Olympic acts.
    if (year == 2020)
        y.add(8, 10, "山の日");
    else if (year == 2021)
        y.add(8, 8, "山の日");
    else if (year >= 2016)
        y.add(8, 11, "山の日");

    // 敬老の日: 15 September since 1966 (Act No. 86 of 1966); the third Monday of September
    // since 2003 (Act No. 59 of 2001).
    if (year >= 2003)
        y.addMonday(9, 3, "敬老の日");
    else if (year >= 1966)
        y.add(9, 15, "敬老の日");

    // 秋分の日: "the autumn equinox day", like the spring one.
    y.add(Equinox::DayInJapan(year, Equinox::Season::Autumn), "秋分の日");

    // 体育の日: 10 October since 1966 (Act No. 86 of 1966); the second Monday of October
    // since 2000 (Act No. 141 of 1998); renamed スポーツの日 by Act No. 57 of 2018 (in force
    // 2020-01-01), and in 2020 and 2021 kept in July instead (above).
    if (year >= 2022)
        y.addMonday(10, 2, "スポーツの日");
    else if (year >= 2000 && year <= 2019)
        y.addMonday(10, 2, "体育の日");
    else if (year >= 1966 && year < 2000)
        y.add(10, 10, "体育の日");

    // 文化の日 (3 November) and 勤労感謝の日 (23 November) since 1948.
    y.add(11, 3, "文化の日");
    y.add(11, 23, "勤労感謝の日");

    // 天皇誕生日 of the Heisei emperor: 23 December from 1989 (Act No. 5 of 1989) to 2018;
    // Act No. 63 of 2017 moved it to 23 February from 2019-04-30, so 2019 has none.
    if (year >= 1989 && year <= 2018)
        y.add(12, 23, "天皇誕生日");

    // The accession day and the enthronement ceremony of 2019 (Act No. 99 of 2018) are days
    // off that article 2 of that act treats as national holidays for the citizens' holiday
    // rule: that is what makes 30 April and 2 May 2019 holidays.
    if (year == 2019) {
        y.add(5, 1, "天皇の即位の日");
        y.add(10, 22, "即位礼正殿の儀");
    }
    return std::move(y.days());
}

// Days off for imperial ceremonies that their own acts made holidays without treating them
// as national holidays, so that no substitute or citizens' holiday follows from them.
void AddCeremonyDays(int year, std::vector<Day>& out)
{
    YearBuilder y(year);
    switch (year) {
    case 1959: // Act No. 16 of 1959: the wedding of Crown Prince Akihito
        y.add(4, 10, "結婚の儀");
        break;
    case 1989: // Act No. 4 of 1989: the state funeral of the Showa emperor
        y.add(2, 24, "大喪の礼");
        break;
    case 1990: // Act No. 24 of 1990: the enthronement ceremony
        y.add(11, 12, "即位礼正殿の儀");
        break;
    case 1993: // Act No. 32 of 1993: the wedding of Crown Prince Naruhito
        y.add(6, 9, "結婚の儀");
        break;
    default:
        return;
    }
    out.insert(out.end(), y.days().begin(), y.days().end());
}

bool Contains(const std::vector<Day>& days, std::int64_t day)
{
    return std::any_of(days.begin(), days.end(), [day](const Day& d) { return d.julianDay == day; });
}

// Article 3-2. From 1973-04-12 to 2006: a national holiday on a Sunday makes the next day a
// holiday (when that day is a national holiday itself, nothing is added). Since 2007: the
// nearest following day that is not a national holiday.
void AddSubstituteHolidays(const std::vector<Day>& national, std::vector<Day>& out)
{
    for (const Day& holiday : national) {
        if (CivilDate::DayOfWeek(holiday.julianDay) != Sunday || holiday.julianDay < SubstituteRuleBegins)
            continue;
        std::int64_t day = holiday.julianDay + 1;
        if (holiday.julianDay < RulesOf2007) {
            if (!Contains(national, day))
                out.push_back({day, Substitute});
            continue;
        }
        while (Contains(national, day))
            ++day;
        if (!Contains(out, day))
            out.push_back({day, Substitute});
    }
}

// Article 3-3, since 1985-12-27: a day whose previous and next days are both national
// holidays is a holiday. Until 2006 the rule left out Sundays and substitute holidays;
// since 2007 it covers every day that is not a national holiday itself (a day already
// off as a substitute stays named as such).
void AddCitizensHolidays(const std::vector<Day>& national, std::vector<Day>& out)
{
    for (const Day& holiday : national) {
        const std::int64_t day = holiday.julianDay + 1;
        if (day < CitizensHolidayBegins || Contains(national, day) || !Contains(national, day + 1))
            continue;
        if (day < RulesOf2007 && CivilDate::DayOfWeek(day) == Sunday)
            continue;
        if (!Contains(out, day))
            out.push_back({day, Citizens});
    }
}

} // namespace

std::vector<Day> OfYear(int year)
{
    if (year < FirstYear || year > LastYear)
        return {};
    const std::vector<Day> national = NationalHolidays(year);
    std::vector<Day> days = national;
    AddSubstituteHolidays(national, days);
    AddCitizensHolidays(national, days);
    AddCeremonyDays(year, days);
    std::sort(days.begin(), days.end(), [](const Day& a, const Day& b) { return a.julianDay < b.julianDay; });
    return days;
}

} // namespace HolidayRules
