#pragma once

#include <QString>

class DatabaseConnection;

// The yearly day-offs: CODE 200 rows of TRNGENERAL, DATAN1 the month, DATAN2 the day,
// DATAS1 the remark. Nothing keeps a date unique; every statement here acts on all rows of
// a date at once.

// The key a list line carries for a day-off: month × 100 + day (24 December is 1224).
inline int DayOffKey(int month, int day)
{
    return month * 100 + day;
}
inline int DayOffKeyMonth(int key)
{
    return key / 100;
}
inline int DayOffKeyDay(int key)
{
    return key % 100;
}

// How many day-offs fall on month/day.
qint64 CountDayOffs(DatabaseConnection& db, int month, int day);
// The remark of the first day-off on month/day ("" when there is none).
QString ReadDayOffRemark(DatabaseConnection& db, int month, int day);
void InsertDayOff(DatabaseConnection& db, int month, int day, const QString& remark);
// Moves every day-off on oldMonth/oldDay to month/day with the new remark.
void UpdateDayOffs(DatabaseConnection& db, int oldMonth, int oldDay, int month, int day, const QString& remark);
void DeleteDayOffs(DatabaseConnection& db, int month, int day);
