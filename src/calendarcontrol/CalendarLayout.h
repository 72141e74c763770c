#pragma once

#include <QDate>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

// Date arithmetic and geometry of the month grid, kept apart from painting so that both
// can be checked without a screen.
namespace CalendarLayout {

constexpr int Rows = 6;
constexpr int Columns = 7;
constexpr int ShownDays = Rows * Columns;

// Weekdays are numbered 1 = Sunday ... 7 = Saturday throughout the calendar, the way the
// design rows store the first day of the week.
int WeekdayNumber(const QDate& date);
// A stored first day of the week outside 1..7 falls back to Sunday.
int NormalizedFirstDayOfWeek(int firstDayOfWeek);
// The weekday number shown in grid column 0..6.
int WeekdayOfColumn(int column, int firstDayOfWeek);

// The first day of the six-week grid that shows year/month: the month's 1st, or the days
// before it back to the first day of the week.
QDate FirstShownDate(int year, int month, int firstDayOfWeek);

// date moved by months; a day that the target month lacks becomes its last day.
QDate AddMonthsClamped(const QDate& date, int months);

// The year-month title of the month that holds day: "yyyy" is the year, "mm" the month
// with two digits, "m" the month, "gg" the Japanese era of day and "e" the year in that era
// ("元" for its first year; the western year for a day before the eras the calendar knows);
// everything else is copied.
QString FormatTitle(const QString& format, const QDate& day);

// The seven weekday names, Sunday first, in the style whose Sunday looks like sundayText
// ("日", "(日)", "日曜", "日曜日", "Sun", "SUN", "S"). An unknown style reads as "日".
QStringList WeekdayNames(const QString& sundayText);

// Where each part of the control lies for a given widget size.
struct Geometry
{
    QRect title;
    QRect previousButton;
    QRect nextButton;
    QRect header;
    QRect grid;

    // Lays the parts out in size: the title bar across the top, the weekday header under it
    // and the grid filling the rest, inside margin on the sides and at the bottom.
    static Geometry Compute(const QSize& size, int titleHeight, int headerHeight, int margin);

    // Cell index 0..41, row by row. Neighbouring cells share their edge, so the grid has
    // no gaps whatever the width.
    QRect cell(int index) const;
    QRect headerCell(int column) const;
    // The cell index under point, or -1.
    int cellAt(const QPoint& point) const;

private:
    int columnEdge(int column) const;
    int rowEdge(int row) const;
};

} // namespace CalendarLayout
