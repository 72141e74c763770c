#include "alarms/AlarmEngine.h"

#include "alarms/AlarmLog.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "store/DatabaseError.h"

#include <QWidget>

namespace {

constexpr int ClockWatchMs = 2000;
// Timers drift by milliseconds; a difference this large is the clock itself moving.
constexpr qint64 ClockJumpMs = 1500;

} // namespace

AlarmEngine::AlarmEngine(AppServices& app, QTimer& periodic, std::function<QDate()> referenceDay, QWidget* window)
    : QObject(window), m_app(app), m_periodic(periodic), m_referenceDay(std::move(referenceDay)), m_window(window),
      m_tick(app)
{
    m_next.setSingleShot(true);
    m_next.setTimerType(Qt::PreciseTimer);
    connect(&m_next, &QTimer::timeout, this, &AlarmEngine::tick);
    m_watch.setInterval(ClockWatchMs);
    connect(&m_watch, &QTimer::timeout, this, &AlarmEngine::watchClock);
}

void AlarmEngine::start()
{
    m_running = true;
    m_halted = false;
    m_periodic.start();
    resetClockWatch();
    m_watch.start();
    rearm();
}

void AlarmEngine::stop()
{
    m_running = false;
    m_periodic.stop();
    m_next.stop();
    m_watch.stop();
    m_armedFor = QDateTime();
}

void AlarmEngine::tick()
{
    if (!m_running || m_inTick || m_halted)
        return;
    m_inTick = true;
    m_periodic.stop();
    m_next.stop();
    m_armedFor = QDateTime();
    bool goOn = true;
    try {
        goOn = m_tick.run(m_window, m_referenceDay ? m_referenceDay() : m_app.clock->today());
    } catch (const DatabaseError& error) {
        // One failed read or write must not end the alarms for the day: the next tick tries again.
        qCWarning(lcAlarms).noquote() << "alarm tick failed:" << error.engineMessage() << error.sql();
    }
    m_inTick = false;
    if (!m_running)
        return; // shut down while a message box was open
    if (!goOn) {
        qCWarning(lcAlarms) << "the alarm advance setting (CODE 304) is missing; alarms are off until the next start";
        m_halted = true;
        m_watch.stop();
        return;
    }
    m_periodic.start();
    rearm();
}

void AlarmEngine::rearm()
{
    if (!m_running || m_inTick || m_halted)
        return;
    m_next.stop();
    m_armedFor = QDateTime();
    DatabaseConnection& db = m_app.db();
    m_armedConnection = db.connectionId();
    m_armedGeneration = db.writeGeneration();
    QDateTime next;
    try {
        next = m_tick.nextMoment();
    } catch (const DatabaseError& error) {
        qCWarning(lcAlarms).noquote() << "cannot find the next alarm:" << error.engineMessage() << error.sql();
        return;
    }
    if (!next.isValid())
        return;
    // Due means strictly later than the moment: wake a millisecond after it.
    const qint64 delay = m_app.clock->now().msecsTo(next) + 1;
    m_armedFor = next;
    m_next.start(static_cast<int>(qBound(qint64(0), delay, qint64(24) * 3600 * 1000)));
}

void AlarmEngine::resetClockWatch()
{
    m_watchedNow = m_app.clock->now();
    m_watchedSince.start();
}

void AlarmEngine::watchClock()
{
    if (!m_running || m_inTick || m_halted)
        return;
    const QDateTime expected = m_watchedNow.addMSecs(m_watchedSince.elapsed());
    const qint64 drift = expected.msecsTo(m_app.clock->now());
    resetClockWatch();
    if (qAbs(drift) > ClockJumpMs) {
        qCInfo(lcAlarms) << "the clock moved by" << drift << "ms; alarms are looked at anew";
        tick();
        return;
    }
    DatabaseConnection& db = m_app.db();
    if (db.connectionId() != m_armedConnection || db.writeGeneration() != m_armedGeneration)
        rearm();
}
