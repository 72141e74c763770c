#pragma once

#include <QDate>
#include <QString>
#include <QVector>

class Row;

// The statements that feed the month grid and the selected-day panel, and the rules by
// which their rows become marks and panel lines.

// The WHERE conditions that find the entries showing on some day from first to last, one
// per family of kinds, each ending in a blank: A and D by their start date, the B and C
// spans when they overlap the range, tasks by their deadline. The grid, the list and the
// alarm all ask this same question of the table, so they share its one spelling.
struct EntryRangeConditions
{
    EntryRangeConditions(const QDate& first, const QDate& last);
    // The four schedule families joined by OR.
    QString schedules() const;
    // Tasks whose deadline falls in the range; extra (" AND COMPLETION = '0'") narrows them.
    QString tasks(const QString& extra = QString()) const;

    QString oneDay, daily, span, repeated;

private:
    QString m_deadline;
};

// Every entry that shows on at least one day from first to last (the grid's first and
// last displayed days), finished tasks included. No order.
QString MonthQuerySql(const QDate& first, const QDate& last);

// Every entry that shows on day, tasks first (their start date is empty), then by start
// time, then by priority.
QString DayQuerySql(const QDate& day);

// The yearly day-offs of one month (1 to 12).
QString DayOffQuerySql(int month);

// The days within [first, last] on which the entry of a row shows: A and D kinds on the
// start date, T on the deadline, B and C on every day of the span. Days outside the window
// are left out, so a corrupt row spanning centuries costs no more than the window.
QVector<QDate> EntryMarkDates(const QString& FROMTOKBN, const QString& STARTDT, const QString& ENDDT,
                              const QDate& first, const QDate& last);
QVector<QDate> EntryMarkDates(const Row& entry, const QDate& first, const QDate& last);

// The day-off of a CODE 200 row (DATAN1 month, DATAN2 day) in the given year; a null date
// when the pair makes no date in that year (2/29 outside leap years, 2/30, 13/1).
QDate DayOffDate(int year, qint64 month, qint64 day);

// The subject shown in the panel and the day's tooltip, on one line (a line break or a
// tab shows as a blank): finished tasks carry the done mark.
QString PanelSubject(const Row& entry);

// Whether a row's kind, dates and times can be read the way its kind needs them. A row
// that cannot marks no day and takes no line of the panel: left in, a row with an empty
// start date would match every day of every month.
bool EntryRowIsReadable(const QString& FROMTOKBN, const QString& STARTDT, const QString& STARTTM, const QString& ENDDT,
                        const QString& ENDTM);
// The same for a TRNSCHTSK row; an unreadable row is logged, once per ID for the run.
bool EntryRowIsReadable(const Row& entry);
