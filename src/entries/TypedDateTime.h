#pragma once

#include <QDate>
#include <QString>
#include <QTime>

// Reading dates and times the way a user types them into the editors, and their normal
// forms "yyyy/mm/dd" and "hh:mm".

// Accepts y/m/d with "/", "-" or "." between the parts, eight digits yyyymmdd, and m/d
// (in defaultYear); full-width digits and separators as typed with a Japanese input method
// are read too. Anything else answers an invalid date.
QDate ParseTypedDate(const QString& text, int defaultYear);

// Accepts h:m and h:m:s (seconds are dropped), hours 0-23, full-width forms too.
// Anything else answers an invalid time.
QTime ParseTypedTime(const QString& text);

// "yyyy/mm/dd", the short date text of the editors ("" for an invalid date).
QString DateBoxText(const QDate& date);
// "hh:mm" ("" for an invalid time).
QString TimeBoxText(const QTime& time);
