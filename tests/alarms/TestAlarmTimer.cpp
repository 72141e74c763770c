// The alarm as the main window runs it: the 30-second Timer, the single shot for the next
// alarm, start-up and shutdown.
#include "alarms/AlarmEngine.h"
#include "mainwindow/FrmMain.h"
#include "support/TestKit.h"

#include <QElapsedTimer>
#include <QTimer>
#include <QtTest>

class TestAlarmTimer final : public QObject
{
    Q_OBJECT

private slots:
    void noSecondTickWhileTheBoxIsOpen();
    void missingAdvanceRowStopsTheAlarmsForTheRun();
    void singleShotRingsAtTheMoment();
    void rearmedAfterAnEditorSavedAndStoppedAtShutdown();
    void clockJumpRingsWhatBecameDue();
};

namespace {

const QDate Today(2026, 11, 22);

QDateTime At(int h, int m, int s = 0, int ms = 0)
{
    return QDateTime(Today, QTime(h, m, s, ms));
}

const QDateTime Midnight(Today.addDays(1), QTime(0, 0));

// A started main window over a database with today's alarms at the given times.
struct Running
{
    explicit Running(int advance, const QStringList& times, const QDateTime& now, bool balloon = false)
    {
        StoreAlarmSettings(env.db(), advance, balloon);
        for (int i = 0; i < times.size(); ++i) {
            StoreEntry(env.db(), WithAlarm(Entry(i + 1, "A3", "20261122", times.at(i), "20261122", QString(),
                                                 QString("entry %1").arg(i + 1))));
        }
        env.services.connection.reset(); // the window opens the file itself
        env.clock.current = now;
        main = std::make_unique<FrmMain>(env.services);
        timer = main->findChild<QTimer*>("Timer");
        if (!main->Form_Load())
            qFatal("the main window did not start");
    }
    ~Running()
    {
        if (!main->isUnloaded())
            main->Form_Unload();
    }
    AlarmEngine& alarms() { return *main->alarms(); }

    TestEnvironment env;
    std::unique_ptr<FrmMain> main;
    QTimer* timer = nullptr;
};

} // namespace

void TestAlarmTimer::noSecondTickWhileTheBoxIsOpen()
{
    Running run(0, {"09:00", "09:10"}, At(8, 0));
    QList<bool> timerOnWhileShown;
    run.env.prompter.whileShown = [&](const Prompt&) {
        timerOnWhileShown << run.timer->isActive();
        run.main->Timer_Timer(); // the timer's own event, or the single shot, arriving meanwhile
        run.main->RearmAlarms(); // an editor saved meanwhile
        QVERIFY(!run.alarms().armedFor().isValid());
    };
    run.env.clock.current = At(9, 20);
    run.main->Timer_Timer();

    QCOMPARE(run.env.prompter.texts(), (QStringList{" 9:00   entry 1", " 9:10   entry 2"}));
    QCOMPARE(timerOnWhileShown, (QList<bool>{false, false}));
    QVERIFY(run.timer->isActive());
    QCOMPARE(run.alarms().armedFor(), Midnight);
}

void TestAlarmTimer::missingAdvanceRowStopsTheAlarmsForTheRun()
{
    Running run(0, {"09:00"}, At(9, 30));
    run.env.db().ExecuteSql("DELETE FROM TRNGENERAL WHERE CODE = 304");
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("CODE 304.*missing"));
    run.main->Timer_Timer();
    QVERIFY(run.alarms().halted());
    QVERIFY(!run.timer->isActive());

    // Even once the row is back, the alarms stay off until the next start.
    run.env.db().ExecuteSql("INSERT INTO TRNGENERAL (CODE,DATAN1) VALUES (304, 0)");
    run.main->RearmAlarms();
    run.main->Timer_Timer();
    QCOMPARE(run.env.prompter.shown.size(), 0);
    QVERIFY(!run.timer->isActive());
}

void TestAlarmTimer::singleShotRingsAtTheMoment()
{
    Running run(0, {"10:30"}, At(10, 29, 59, 700), true);
    QCOMPARE(run.alarms().armedFor(), At(10, 30));
    QElapsedTimer elapsed;
    elapsed.start();
    QTest::qWait(150);
    QCOMPARE(run.env.launcher.started.size(), 0);
    run.env.clock.current = At(10, 30, 0, 20); // the program's clock keeps up with the real one
    QTRY_COMPARE_WITH_TIMEOUT(run.env.launcher.started.size(), 1, 1500);
    QVERIFY2(elapsed.elapsed() < 1000, "the alarm waited for the 30-second tick");
    QCOMPARE(Column(run.env.db(), 1, "ALARM"), QStringLiteral("0"));
}

void TestAlarmTimer::rearmedAfterAnEditorSavedAndStoppedAtShutdown()
{
    Running run(10, {"15:00"}, At(9, 0));
    QVERIFY(run.timer->isActive());
    QCOMPARE(run.timer->interval(), 30000);
    QCOMPARE(run.alarms().armedFor(), At(14, 50));
    StoreEntry(run.env.db(), WithAlarm(Entry(2, "A3", "20261122", "11:00", "20261122")));
    run.main->RearmAlarms();
    QCOMPARE(run.alarms().armedFor(), At(10, 50));
    StoreAlarmSettings(run.env.db(), 30);
    run.main->RearmAlarms();
    QCOMPARE(run.alarms().armedFor(), At(10, 30));

    run.main->Form_Unload();
    QVERIFY(!run.timer->isActive());
    QVERIFY(!run.alarms().armedFor().isValid());
    run.env.clock.current = At(11, 0);
    run.main->Timer_Timer(); // a tick already queued finds the alarms stopped
    QCOMPARE(run.env.prompter.shown.size(), 0);
}

void TestAlarmTimer::clockJumpRingsWhatBecameDue()
{
    Running run(0, {"13:00"}, At(9, 0), true);
    QCOMPARE(run.alarms().armedFor(), At(13, 0));
    // Back from four hours of sleep: the single shot's own clock stood still meanwhile.
    run.env.clock.current = At(13, 5);
    QTRY_COMPARE_WITH_TIMEOUT(run.env.launcher.started.size(), 1, 5000);
    QCOMPARE(run.alarms().armedFor(), Midnight);
}

VERDALY_TEST(TestAlarmTimer)

#include "TestAlarmTimer.moc"
