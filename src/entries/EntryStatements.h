#pragma once

#include <QDateTime>
#include <QString>

// The statements with which the editors write one TRNSCHTSK row.

// Every column of a row, as stored.
struct EntryValues
{
    qint64 ID = 0;
    QString DATA;
    QString BUSINESS;
    QString STARTDT;
    QString STARTTM;
    QString ENDDT;
    QString ENDTM;
    QString ENDLESS;
    qint64 CLASS = 0;
    QString ALARM;
    qint64 PRIORITY = 0;
    QString COMPLETION;
    QString COMPDT;
    QString FROMTOKBN;
    QString COMMENT;
};

// A new row with every column given; UPDTIME is now.
QString EntryInsertSql(const EntryValues& values, const QDateTime& now);

// A schedule's changeable columns (not DATA, ENDLESS, PRIORITY, COMPLETION, COMPDT).
// The row is changed only while its UPDTIME is still loadedUpdTime, the stamp read when it
// was loaded: a row someone else changed meanwhile is left alone.
QString ScheduleUpdateSql(const EntryValues& values, const QDateTime& now, const QString& loadedUpdTime);

// A task's changeable columns (not DATA, STARTDT, STARTTM, ALARM), with the same check.
QString TaskUpdateSql(const EntryValues& values, const QDateTime& now, const QString& loadedUpdTime);
