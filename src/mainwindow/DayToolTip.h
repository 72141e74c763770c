#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

class DatabaseConnection;

// What hovering a day of the main grid shows, so the month can be read without clicking:
// the day-off's remark, then each of the day's entries as its time and subject on one
// line. Everything a day can carry adds its lines here, in one place.
QStringList DayToolTipLines(DatabaseConnection& db, const QDate& day);
// The lines joined for the tooltip; "" when the day carries nothing.
QString DayToolTipText(DatabaseConnection& db, const QDate& day);
