#include "holidays/JapaneseEra.h"

namespace JapaneseEra {
namespace {

struct Era
{
    int year, month, day; // the first day of the era
    int firstGregorianYear;
    const char* name;
};

// Newest first. Meiji is counted from the adoption of the solar calendar (Meiji 6); the
// others from the day after the accession (Taisho, Showa, Heisei) or the accession day
// itself (Reiwa, by the cabinet order on the era name of 1 April 2019).
constexpr Era Eras[] = {
    {2019, 5, 1, 2019, "令和"},  {1989, 1, 8, 1989, "平成"}, {1926, 12, 25, 1926, "昭和"},
    {1912, 7, 30, 1912, "大正"}, {1873, 1, 1, 1868, "明治"},
};

} // namespace

EraYear EraOf(const QDate& date)
{
    if (!date.isValid())
        return {};
    for (const Era& era : Eras) {
        if (date >= QDate(era.year, era.month, era.day))
            return {QString::fromUtf8(era.name), date.year() - era.firstGregorianYear + 1};
    }
    return {};
}

QString EraYearText(int year)
{
    return year == 1 ? QStringLiteral("元") : QString::number(year);
}

} // namespace JapaneseEra
