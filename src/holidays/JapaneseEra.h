#pragma once

#include <QDate>
#include <QString>

// The Japanese era (gengo) of a date, for titles such as "令和8年11月".
namespace JapaneseEra {

struct EraYear
{
    QString name; // "令和"; empty when the date has no era the calendar knows
    int year = 0; // 1 in the year the era began
};

// The era and its year on date. Eras are counted from the day each began: 明治 from
// 1873-01-01 (the first day of the solar calendar in Japan; earlier dates belong to the
// lunisolar calendar and get no era here), 大正 from 1912-07-30, 昭和 from 1926-12-25,
// 平成 from 1989-01-08 and 令和 from 2019-05-01.
EraYear EraOf(const QDate& date);

// The year within the era as it is written: "元" for the first year, the number otherwise.
QString EraYearText(int year);

} // namespace JapaneseEra
