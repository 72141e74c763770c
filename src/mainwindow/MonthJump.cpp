#include "mainwindow/MonthJump.h"

int MonthJumpLength(int month)
{
    // Leap years are not looked at: February is 28 days for this rule in every year.
    static constexpr int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month < 1 || month > 12)
        return 0;
    return lengths[month - 1];
}

QDate MonthJumpDate(const QDate& selected, const QDate& today, int month)
{
    const int length = MonthJumpLength(month);
    if (length == 0 || !selected.isValid() || !today.isValid())
        return {};
    if (today.day() > length)
        return QDate(selected.year(), month, length);
    // QDate answers an invalid date for a day the month lacks (2/31, 4/31).
    return QDate(selected.year(), month, selected.day());
}
