#include "alarms/AlarmTick.h"

#include "alarms/AlarmLog.h"
#include "alarms/Notifier.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Prompter.h"
#include "entries/EntryKinds.h"
#include "entries/EntryQueries.h"
#include "store/DatabaseConnection.h"
#include "store/GeneralRow.h"
#include "store/SqlText.h"

namespace {

// The order in which the kinds are told apart; B5 and C5 never come from the query but
// are listed with the timed kinds all the same.
const QStringList DateOnlyKinds = {QStringLiteral("A1"), QStringLiteral("A2"), QStringLiteral("B1"),
                                   QStringLiteral("B2"), QStringLiteral("C1"), QStringLiteral("C2"),
                                   QStringLiteral("D1"), QStringLiteral("D2")};
const QStringList TimedKinds = {QStringLiteral("A3"), QStringLiteral("A4"), QStringLiteral("A5"), QStringLiteral("B3"),
                                QStringLiteral("B4"), QStringLiteral("B5"), QStringLiteral("C3"), QStringLiteral("C4"),
                                QStringLiteral("C5"), QStringLiteral("D3"), QStringLiteral("D4"), QStringLiteral("D5")};

// "hh:mm" (a one-digit hour is read too); an invalid time for anything else.
QTime StoredTime(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char(':'));
    if (parts.size() != 2 || parts.at(1).size() != 2 || parts.at(0).isEmpty() || parts.at(0).size() > 2)
        return QTime();
    bool hourOk = false;
    bool minuteOk = false;
    const int hour = parts.at(0).toInt(&hourOk);
    const int minute = parts.at(1).toInt(&minuteOk);
    if (!hourOk || !minuteOk)
        return QTime();
    return QTime(hour, minute); // invalid when out of range
}

QDateTime Moment(const QString& storedDate, const QString* storedTime)
{
    const QDate date = StoredDateToDate(storedDate);
    if (!date.isValid())
        return QDateTime();
    const QTime time = storedTime ? StoredTime(*storedTime) : QTime(0, 0);
    if (!time.isValid())
        return QDateTime();
    return QDateTime(date, time);
}

} // namespace

std::optional<AlarmSettings> ReadAlarmSettings(DatabaseConnection& db)
{
    const std::optional<Row> advance = ReadGeneralRow(db, 304);
    if (!advance)
        return std::nullopt;
    AlarmSettings settings;
    settings.Offset = -static_cast<int>(advance->number(QStringLiteral("DATAN1")));
    if (const std::optional<Row> balloon = ReadGeneralRow(db, 314))
        settings.UseBalloon = balloon->number(QStringLiteral("DATAN1")) != 0;
    if (const std::optional<Row> sound = ReadGeneralRow(db, 316))
        settings.WithSound = sound->number(QStringLiteral("DATAN1")) != 0;
    if (const std::optional<Row> file = ReadGeneralRow(db, 315))
        settings.SoundFile = file->text(QStringLiteral("MEMO1"));
    return settings;
}

QString AlarmEntrySql(const QDate& today)
{
    const EntryRangeConditions day(today, today);
    return QStringLiteral("SELECT * FROM TRNSCHTSK WHERE (") + day.schedules() + QStringLiteral("OR ") +
           day.tasks(QStringLiteral(" AND COMPLETION = '0'")) + QStringLiteral(") AND ALARM = '1' ");
}

MomentStatus EntryMoment(const Row& entry, QDateTime* moment)
{
    const QString kind = entry.text(QStringLiteral("FROMTOKBN"));
    const QString startTime = entry.text(QStringLiteral("STARTTM"));
    const QString endTime = entry.text(QStringLiteral("ENDTM"));
    QDateTime at;
    if (DateOnlyKinds.contains(kind))
        at = Moment(entry.text(QStringLiteral("STARTDT")), nullptr);
    else if (TimedKinds.contains(kind))
        at = Moment(entry.text(QStringLiteral("STARTDT")), &startTime);
    else if (kind == QLatin1String("T1"))
        at = Moment(entry.text(QStringLiteral("ENDDT")), nullptr);
    else if (kind == QLatin1String("T2"))
        at = Moment(entry.text(QStringLiteral("ENDDT")), &endTime);
    else
        return MomentStatus::OtherKind;
    if (!at.isValid())
        return MomentStatus::Unreadable;
    *moment = at;
    return MomentStatus::Ok;
}

QString AlarmMessage(const QDate& referenceDay, const Row& entry)
{
    return EntryLineText(referenceDay, entry) + QStringLiteral("   ") + entry.text(QStringLiteral("BUSINESS"));
}

QString AlarmClearSql(qint64 id, const QString& readUpdTime, const QDateTime& now)
{
    return QStringLiteral("UPDATE TRNSCHTSK SET ") + QStringLiteral("ALARM = '0' ,") + QStringLiteral("UPDTIME = ") +
           DateLiteral(now) + QStringLiteral(" ") + QStringLiteral("WHERE ID      = ") + QString::number(id) +
           QStringLiteral(" ") + QStringLiteral("AND   UPDTIME = ") + DateLiteral(readUpdTime);
}

bool AlarmTick::alarmMoment(const Row& entry, int offset, QDateTime* alarmAt)
{
    QDateTime moment;
    switch (EntryMoment(entry, &moment)) {
    case MomentStatus::Ok:
        *alarmAt = moment.addSecs(qint64(offset) * 60);
        return true;
    case MomentStatus::OtherKind:
        return false;
    case MomentStatus::Unreadable:
        break;
    }
    const qint64 id = entry.number(QStringLiteral("ID"));
    if (!m_reported.contains(id)) {
        m_reported.insert(id);
        qCWarning(lcAlarms).noquote() << "entry" << id << "has a date or time that cannot be read (kind"
                                      << entry.text(QStringLiteral("FROMTOKBN")) << "start"
                                      << entry.text(QStringLiteral("STARTDT")) << entry.text(QStringLiteral("STARTTM"))
                                      << "end" << entry.text(QStringLiteral("ENDDT"))
                                      << entry.text(QStringLiteral("ENDTM")) << "); its alarm is passed over";
    }
    return false;
}

void AlarmTick::deliver(QWidget* parent, const AlarmSettings& settings, const QDate& referenceDay, const Row& entry)
{
    const QString subject = entry.text(QStringLiteral("BUSINESS"));
    if (settings.UseBalloon &&
        ShowBalloon(m_app, subject, entry.text(QStringLiteral("COMMENT")), settings.WithSound, settings.SoundFile))
        return;
    // A notifier that cannot be started must not swallow the alarm: the box still tells.
    m_app.prompter->ask(parent, Prompt{AlarmMessage(referenceDay, entry), PromptIcon::None, PromptButtons::Ok,
                                       PromptAnswer::Ok, QStringLiteral("ALARM")});
}

bool AlarmTick::run(QWidget* parent, const QDate& referenceDay)
{
    DatabaseConnection& db = m_app.db();
    const QDate today = m_app.clock->today();
    const std::optional<AlarmSettings> settings = ReadAlarmSettings(db);
    if (!settings)
        return false;
    const Rows entries = db.ReadRows(AlarmEntrySql(today));
    for (const Row& entry : entries) {
        const QDateTime now = m_app.clock->now();
        QDateTime alarmAt;
        if (!alarmMoment(entry, settings->Offset, &alarmAt) || !(now > alarmAt))
            continue;
        deliver(parent, *settings, referenceDay, entry);
        db.ExecuteSql(AlarmClearSql(entry.number(QStringLiteral("ID")), entry.text(QStringLiteral("UPDTIME")),
                                    m_app.clock->now()));
    }
    return true;
}

QDateTime AlarmTick::nextMoment()
{
    DatabaseConnection& db = m_app.db();
    const std::optional<AlarmSettings> settings = ReadAlarmSettings(db);
    if (!settings)
        return QDateTime();
    const QDateTime now = m_app.clock->now();
    QDateTime next(now.date().addDays(1), QTime(0, 0));
    for (const Row& entry : db.ReadRows(AlarmEntrySql(now.date()))) {
        QDateTime alarmAt;
        if (alarmMoment(entry, settings->Offset, &alarmAt) && alarmAt >= now && alarmAt < next)
            next = alarmAt;
    }
    return next;
}
