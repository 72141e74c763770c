#pragma once

#include "alarms/AlarmTick.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <functional>

class QWidget;
struct AppServices;

// Keeps the alarms ringing on time. The window's 30-second timer runs the tick; a single
// shot is armed besides for the next alarm moment of today, so an alarm rings within a
// second of its moment rather than up to half a minute late. The single shot is armed
// anew after every tick, after any write to the database, and after the wall clock jumps
// (a wake from sleep, a change of time zone), which a timer alone would not notice.
class AlarmEngine final : public QObject
{
    Q_OBJECT
public:
    // periodic: the window's 30-second timer; referenceDay: the day the message texts are
    // built for; window: the parent of the alarm's message boxes.
    AlarmEngine(AppServices& app, QTimer& periodic, std::function<QDate()> referenceDay, QWidget* window);

    void start(); // at start-up
    void stop();  // at shutdown

    // One tick. The periodic timer is off for its length, and a tick asked for while one
    // runs (its message box is open) is dropped: the running tick re-arms when it ends.
    void tick();
    // Arms the single shot for the next alarm moment.
    void rearm();

    // What the single shot is armed for (invalid: nothing armed).
    QDateTime armedFor() const { return m_armedFor; }
    // True once the alarms stopped for the rest of the run (the advance-time row is missing).
    bool halted() const { return m_halted; }

private:
    void watchClock();
    void resetClockWatch();

    AppServices& m_app;
    QTimer& m_periodic;
    std::function<QDate()> m_referenceDay;
    QPointer<QWidget> m_window;
    AlarmTick m_tick;
    QTimer m_next;
    QTimer m_watch;
    QDateTime m_armedFor;
    bool m_running = false;
    bool m_inTick = false;
    bool m_halted = false;

    // The clock watch: where the wall clock was at the last look, and the steady time since.
    QDateTime m_watchedNow;
    QElapsedTimer m_watchedSince;
    QString m_armedConnection;
    quint64 m_armedGeneration = 0;
};
