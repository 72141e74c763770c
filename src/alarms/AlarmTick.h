#pragma once

#include "store/Rows.h"

#include <QDate>
#include <QDateTime>
#include <QSet>
#include <QString>

#include <optional>

class DatabaseConnection;
class QWidget;
struct AppServices;

// The alarm settings, read fresh for every tick.
struct AlarmSettings
{
    int Offset = 0; // minutes added to an entry's moment: the advance time, negated
    bool UseBalloon = false;
    bool WithSound = false;
    QString SoundFile;
};

// Nothing when the advance-time row (CODE 304) is missing: the alarms then stop.
std::optional<AlarmSettings> ReadAlarmSettings(DatabaseConnection& db);

// Today's entries with a pending alarm: one-day schedules of today, spans over today and
// open tasks due today.
QString AlarmEntrySql(const QDate& today);

enum class MomentStatus
{
    Ok,
    OtherKind,  // a kind the alarm does not handle: passed over quietly
    Unreadable, // a date or time that does not convert: passed over and logged
};

// The moment an entry stands for: its start (schedules) or deadline (tasks), at 00:00
// when the kind has no time.
MomentStatus EntryMoment(const Row& entry, QDateTime* moment);

// The message box's text: the entry's time text on referenceDay, three blanks, the subject.
QString AlarmMessage(const QDate& referenceDay, const Row& entry);

// Clears the alarm flag, unless an editor changed the row since it was read.
QString AlarmClearSql(qint64 id, const QString& readUpdTime, const QDateTime& now);

// The alarm engine's work on the database: one tick, and the next moment to wake for.
class AlarmTick final
{
public:
    explicit AlarmTick(AppServices& app) : m_app(app) {}

    // Delivers every due alarm of today and clears its flag. referenceDay is the day the
    // time texts are built for (the calendar's day). Answers false when the alarms must
    // stop for the rest of the run (no advance-time row). DatabaseError passes through.
    bool run(QWidget* parent, const QDate& referenceDay);

    // The earliest alarm moment of today that has not come yet, or the start of tomorrow
    // when there is none (the date-only entries of a new day are due at once then).
    // Invalid when the alarms are off (no advance-time row).
    QDateTime nextMoment();

private:
    // The alarm moment of a row; false for rows to pass over (unreadable ones logged once).
    bool alarmMoment(const Row& entry, int offset, QDateTime* alarmAt);
    void deliver(QWidget* parent, const AlarmSettings& settings, const QDate& referenceDay, const Row& entry);

    AppServices& m_app;
    QSet<qint64> m_reported;
};
