#pragma once

#include <QDate>

// The day the jump menu's month item selects: the selected day's year and day of the
// month in the chosen month, except that when today's day of the month is past that
// month's length (February always counted as 28) the month's last day is taken instead.
// The rule looks at today, not at the selected day, so a selected 31st can land on a day
// the month lacks: the answer is then an invalid date and the caller keeps the selection.
QDate MonthJumpDate(const QDate& selected, const QDate& today, int month);

// The month lengths the jump rule counts with (1..12; 0 for anything else).
int MonthJumpLength(int month);
