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
    void runsFromStartUpToShutdown();
    void noSecondTickWhileTheBoxIsOpen();
    void missingAdvanceRowStopsTheAlarmsForTheRun();
    void singleShotRingsAtTheMoment();
    void rearmedAfterAnEditorSaved();
    void clockJumpRingsWhatBecameDue();
};

namespace {

const QDate Today(2026, 11, 22);

void StoreToday(DatabaseConnection& db, int id, const QString& time, const QString& subject = QStringLiteral("entry"))
{
    StoredEntry entry;
    entry.id = id;
    entry.kind = QStringLiteral("A3");
    entry.startDt = entry.endDt = QStringLiteral("20261122");
    entry.startTm = time;
    entry.business = subject;
    entry.alarm = QStringLiteral("1");
    StoreEntry(db, entry);
}

QTimer* TimerOf(FrmMain& main)
{
    return main.findChild<QTimer*>(QStringLiteral("Timer"));
}

} // namespace

void TestAlarmTimer::runsFromStartUpToShutdown()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0);
    StoreToday(env.db(), 1, QStringLiteral("10:30"));
    env.services.connection.reset(); // the window opens the file itself
    env.clock.current = QDateTime(Today, QTime(9, 30));

    FrmMain main(env.services);
    QTimer* timer = TimerOf(main);
    QVERIFY(timer);
    QVERIFY(!timer->isActive());
    QVERIFY(main.Form_Load());
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 30000);
    QCOMPARE(main.alarms()->armedFor(), QDateTime(Today, QTime(10, 30)));

    main.Form_Unload();
    QVERIFY(!timer->isActive());
    QVERIFY(!main.alarms()->armedFor().isValid());
    main.Timer_Timer(); // a tick that was already queued finds the alarms stopped
    QCOMPARE(env.prompter.shown.size(), 0);
}

void TestAlarmTimer::noSecondTickWhileTheBoxIsOpen()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0);
    StoreToday(env.db(), 1, QStringLiteral("09:00"), QStringLiteral("first"));
    StoreToday(env.db(), 2, QStringLiteral("09:10"), QStringLiteral("second"));
    env.services.connection.reset();
    env.clock.current = QDateTime(Today, QTime(8, 0));

    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QTimer* timer = TimerOf(main);
    QList<bool> timerOnWhileShown;
    env.prompter.whileShown = [&](const Prompt&) {
        timerOnWhileShown << timer->isActive();
        main.Timer_Timer(); // the timer's own event, or the single shot, arriving meanwhile
        main.RearmAlarms(); // an editor saved meanwhile
        QVERIFY(!main.alarms()->armedFor().isValid());
    };
    env.clock.current = QDateTime(Today, QTime(9, 20));
    main.Timer_Timer();

    QCOMPARE(env.prompter.texts(), (QStringList{" 9:00   first", " 9:10   second"}));
    QCOMPARE(timerOnWhileShown, (QList<bool>{false, false}));
    QVERIFY(timer->isActive());
    QCOMPARE(main.alarms()->armedFor(), QDateTime(Today.addDays(1), QTime(0, 0)));
    main.Form_Unload();
}

void TestAlarmTimer::missingAdvanceRowStopsTheAlarmsForTheRun()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0);
    env.db().ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 304"));
    StoreToday(env.db(), 1, QStringLiteral("09:00"));
    env.services.connection.reset();
    env.clock.current = QDateTime(Today, QTime(9, 30));

    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("CODE 304.*missing")));
    main.Timer_Timer();
    QVERIFY(main.alarms()->halted());
    QVERIFY(!TimerOf(main)->isActive());

    // Even once the row is back, the alarms stay off until the next start.
    env.db().ExecuteSql(QStringLiteral("INSERT INTO TRNGENERAL (CODE,DATAN1) VALUES (304, 0)"));
    main.RearmAlarms();
    main.Timer_Timer();
    QCOMPARE(env.prompter.shown.size(), 0);
    QVERIFY(!TimerOf(main)->isActive());
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("1"));
    main.Form_Unload();
}

void TestAlarmTimer::singleShotRingsAtTheMoment()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0, true);
    StoreToday(env.db(), 1, QStringLiteral("10:30"));
    env.services.connection.reset();
    env.clock.current = QDateTime(Today, QTime(10, 29, 59, 700));

    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QCOMPARE(main.alarms()->armedFor(), QDateTime(Today, QTime(10, 30)));
    QElapsedTimer elapsed;
    elapsed.start();
    // 300 ms pass on the program's clock as on the real one, and a little more.
    QTest::qWait(150);
    QCOMPARE(env.launcher.started.size(), 0);
    env.clock.current = QDateTime(Today, QTime(10, 30, 0, 20));
    QTRY_COMPARE_WITH_TIMEOUT(env.launcher.started.size(), 1, 1500);
    QVERIFY2(elapsed.elapsed() < 1000, "the alarm waited for the 30-second tick");
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("0"));
    main.Form_Unload();
}

void TestAlarmTimer::rearmedAfterAnEditorSaved()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 10);
    StoreToday(env.db(), 1, QStringLiteral("15:00"));
    env.services.connection.reset();
    env.clock.current = QDateTime(Today, QTime(9, 0));

    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QCOMPARE(main.alarms()->armedFor(), QDateTime(Today, QTime(14, 50)));
    StoreToday(env.db(), 2, QStringLiteral("11:00"));
    main.RearmAlarms();
    QCOMPARE(main.alarms()->armedFor(), QDateTime(Today, QTime(10, 50)));
    StoreAlarmSettings(env.db(), 30);
    main.RearmAlarms();
    QCOMPARE(main.alarms()->armedFor(), QDateTime(Today, QTime(10, 30)));
    main.Form_Unload();
}

void TestAlarmTimer::clockJumpRingsWhatBecameDue()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0, true);
    StoreToday(env.db(), 1, QStringLiteral("13:00"));
    env.services.connection.reset();
    env.clock.current = QDateTime(Today, QTime(9, 0));

    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QCOMPARE(main.alarms()->armedFor(), QDateTime(Today, QTime(13, 0)));
    // Back from four hours of sleep: the single shot's own clock stood still meanwhile.
    env.clock.current = QDateTime(Today, QTime(13, 5));
    QTRY_COMPARE_WITH_TIMEOUT(env.launcher.started.size(), 1, 5000);
    QCOMPARE(main.alarms()->armedFor(), QDateTime(Today.addDays(1), QTime(0, 0)));
    main.Form_Unload();
}

VERDALY_TEST(TestAlarmTimer)

#include "TestAlarmTimer.moc"
