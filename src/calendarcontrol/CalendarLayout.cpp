#include "calendarcontrol/CalendarLayout.h"

#include "holidays/JapaneseEra.h"

#include <QtGlobal>

namespace CalendarLayout {

int WeekdayNumber(const QDate& date)
{
    // Qt counts Monday = 1 ... Sunday = 7.
    return date.dayOfWeek() % 7 + 1;
}

int NormalizedFirstDayOfWeek(int firstDayOfWeek)
{
    return firstDayOfWeek >= 1 && firstDayOfWeek <= 7 ? firstDayOfWeek : 1;
}

int WeekdayOfColumn(int column, int firstDayOfWeek)
{
    return (NormalizedFirstDayOfWeek(firstDayOfWeek) - 1 + column) % 7 + 1;
}

QDate FirstShownDate(int year, int month, int firstDayOfWeek)
{
    const QDate first(year, month, 1);
    if (!first.isValid())
        return QDate();
    const int lead = (WeekdayNumber(first) - NormalizedFirstDayOfWeek(firstDayOfWeek) + 7) % 7;
    return first.addDays(-lead);
}

QDate AddMonthsClamped(const QDate& date, int months)
{
    if (!date.isValid())
        return QDate();
    const QDate firstOfTarget = QDate(date.year(), date.month(), 1).addMonths(months);
    if (!firstOfTarget.isValid())
        return QDate();
    const int day = qMin(date.day(), firstOfTarget.daysInMonth());
    return QDate(firstOfTarget.year(), firstOfTarget.month(), day);
}

QString FormatTitle(const QString& format, const QDate& day)
{
    const int year = day.year();
    const int month = day.month();
    const JapaneseEra::EraYear era = JapaneseEra::EraOf(day);
    QString text;
    int i = 0;
    while (i < format.size()) {
        if (format.mid(i, 4) == QLatin1String("yyyy")) {
            text += QStringLiteral("%1").arg(year, 4, 10, QLatin1Char('0'));
            i += 4;
        } else if (format.mid(i, 2) == QLatin1String("gg")) {
            text += era.name;
            i += 2;
        } else if (format.at(i) == QLatin1Char('e')) {
            text += era.name.isEmpty() ? QString::number(year) : JapaneseEra::EraYearText(era.year);
            i += 1;
        } else if (format.mid(i, 2) == QLatin1String("mm")) {
            text += QStringLiteral("%1").arg(month, 2, 10, QLatin1Char('0'));
            i += 2;
        } else if (format.at(i) == QLatin1Char('m')) {
            text += QString::number(month);
            i += 1;
        } else {
            text += format.at(i);
            i += 1;
        }
    }
    return text;
}

QStringList WeekdayNames(const QString& sundayText)
{
    static const QStringList kanji = {QStringLiteral("日"), QStringLiteral("月"), QStringLiteral("火"),
                                      QStringLiteral("水"), QStringLiteral("木"), QStringLiteral("金"),
                                      QStringLiteral("土")};
    static const QStringList english = {QStringLiteral("Sun"), QStringLiteral("Mon"), QStringLiteral("Tue"),
                                        QStringLiteral("Wed"), QStringLiteral("Thu"), QStringLiteral("Fri"),
                                        QStringLiteral("Sat")};
    QStringList names;
    const QString style = sundayText.trimmed();
    for (int i = 0; i < 7; ++i) {
        if (style == QStringLiteral("(日)"))
            names << QLatin1Char('(') + kanji.at(i) + QLatin1Char(')');
        else if (style == QStringLiteral("日曜"))
            names << kanji.at(i) + QStringLiteral("曜");
        else if (style == QStringLiteral("日曜日"))
            names << kanji.at(i) + QStringLiteral("曜日");
        else if (style == QLatin1String("Sun"))
            names << english.at(i);
        else if (style == QLatin1String("SUN"))
            names << english.at(i).toUpper();
        else if (style == QLatin1String("S"))
            names << english.at(i).left(1);
        else
            names << kanji.at(i);
    }
    return names;
}

Geometry Geometry::Compute(const QSize& size, int titleHeight, int headerHeight, int margin)
{
    Geometry g;
    const int width = qMax(size.width(), 1);
    const int height = qMax(size.height(), 1);
    g.title = QRect(0, 0, width, titleHeight);
    const int button = qMin(titleHeight, width / 4);
    g.previousButton = QRect(margin, 0, button, titleHeight);
    g.nextButton = QRect(width - margin - button, 0, button, titleHeight);
    g.header = QRect(margin, titleHeight + margin, qMax(width - 2 * margin, Columns), headerHeight);
    const int gridTop = g.header.bottom() + 1;
    g.grid = QRect(margin, gridTop, g.header.width(), qMax(height - gridTop - margin, Rows));
    return g;
}

int Geometry::columnEdge(int column) const
{
    return grid.left() + (column * grid.width()) / Columns;
}

int Geometry::rowEdge(int row) const
{
    return grid.top() + (row * grid.height()) / Rows;
}

QRect Geometry::cell(int index) const
{
    if (index < 0 || index >= ShownDays)
        return QRect();
    const int row = index / Columns;
    const int column = index % Columns;
    return QRect(QPoint(columnEdge(column), rowEdge(row)), QPoint(columnEdge(column + 1) - 1, rowEdge(row + 1) - 1));
}

QRect Geometry::headerCell(int column) const
{
    if (column < 0 || column >= Columns)
        return QRect();
    return QRect(QPoint(columnEdge(column), header.top()), QPoint(columnEdge(column + 1) - 1, header.bottom()));
}

int Geometry::cellAt(const QPoint& point) const
{
    if (!grid.contains(point))
        return -1;
    int column = ((point.x() - grid.left()) * Columns) / grid.width();
    int row = ((point.y() - grid.top()) * Rows) / grid.height();
    // The integer edges may put a point one cell off near a boundary; settle it exactly.
    column = qBound(0, column, Columns - 1);
    row = qBound(0, row, Rows - 1);
    while (column > 0 && point.x() < columnEdge(column))
        --column;
    while (column < Columns - 1 && point.x() >= columnEdge(column + 1))
        ++column;
    while (row > 0 && point.y() < rowEdge(row))
        --row;
    while (row < Rows - 1 && point.y() >= rowEdge(row + 1))
        ++row;
    return row * Columns + column;
}

} // namespace CalendarLayout
