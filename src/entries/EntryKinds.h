#pragma once

#include <QDate>
#include <QString>

// An entry's kind (FROMTOKBN) says which of its four date and time fields are filled and
// how they relate; every reader uses it to decide on which days the entry shows.
//
//   A1-A5  one day (end date = start date)      T1-T2  deadline only (a task)
//   D1-D5  start date only                       B1-B4  to the next day
//   C1-C4  any longer (or backwards) span
//
// The codes compare as text in this order, which the month and day queries rely on.

// The kind of an entry from its stored fields ("yyyymmdd" dates, "hh:mm" times, "" = not
// given). Answers "" when no kind fits (a span whose dates cannot be read).
QString KindCode(const QString& startDate, const QString& startTime, const QString& endDate, const QString& endTime);

// The date of a stored "yyyymmdd" text. The empty text is the no-date value 0100/01/01;
// a text that is not eight digits forming a real date answers an invalid QDate.
QDate StoredDateToDate(const QString& stored);

// The stored "yyyymmdd" text of a date ("" for an invalid date).
QString DateToStored(const QDate& date);

// The stored date shown as "mm/dd" with leading zeros blanked: 20060503 -> " 5/ 3".
QString ShortDayText(const QString& storedDate);
// The stored time with a leading zero blanked: "09:30" -> " 9:30".
QString ShortTimeText(const QString& storedTime);

// The time part of an entry's one-line text on the day being shown (before the subject
// in the day panel and the alarm message); "" on days the entry does not show.
// The completion flag does not change the text: the done mark goes on the subject.
QString EntryLineText(const QDate& day, const QString& STARTDT, const QString& STARTTM, const QString& ENDDT,
                      const QString& ENDTM, const QString& FROMTOKBN, const QString& COMPLETION);

class Row;
// The same for a TRNSCHTSK row.
QString EntryLineText(const QDate& day, const Row& entry);
