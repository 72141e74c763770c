// An alarm on the real program, delivered by the real notifier to a real notification
// server: on time, and once.
#include "support/DesktopSession.h"
#include "support/TestKit.h"

#include <QtTest>

class TestAlarmEndToEnd final : public QObject
{
    Q_OBJECT

private slots:
    void alarmIsDeliveredOnceAtItsMoment();
};

void TestAlarmEndToEnd::alarmIsDeliveredOnceAtItsMoment()
{
    const QString program = QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(QStringLiteral("verdaly"));
    QVERIFY2(QFileInfo(program).isExecutable(), qPrintable(program));
    DesktopSession desktop;
    QString why;
    QVERIFY2(desktop.startDisplay(&why), qPrintable(why));
    QVERIFY2(desktop.startBus(&why), qPrintable(why));
    QVERIFY2(desktop.startNotificationServer(&why), qPrintable(why));

    // The first whole minute at least half a minute ahead, so the program is up well before.
    SystemClock clock;
    const QDateTime start = clock.now();
    QDateTime moment(start.date(), QTime(start.time().hour(), start.time().minute()));
    while (start.msecsTo(moment) < 30000)
        moment = moment.addSecs(60);

    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0, true);
    const QString day = moment.date().toString("yyyyMMdd");
    const QString time = moment.time().toString("HH:mm");
    StoredEntry entry = WithAlarm(Entry(1, "A3", day, time, day, QString(), "定例会議 " + time));
    entry.comment = QStringLiteral("第一会議室");
    StoreEntry(env.db(), entry);
    const QString tomorrow = moment.date().addDays(1).toString("yyyyMMdd");
    StoreEntry(env.db(), WithAlarm(Entry(2, "A3", tomorrow, time, tomorrow, QString(), "明日の会議")));
    env.services.connection.reset();

    QProcess calendar;
    calendar.setProcessEnvironment(desktop.environment());
    calendar.start(program, {QStringLiteral("--data-dir"), env.services.dataDir});
    QVERIFY(calendar.waitForStarted());
    QVERIFY2(WaitUntil([&] { return !desktop.visibleWindows(calendar.processId()).isEmpty(); }, 20000),
             "the calendar showed no window");
    QVERIFY2(clock.now() < moment, "the program took too long to start for the alarm's moment");

    QDateTime seen;
    WaitUntil(
        [&] {
            if (desktop.shownNotifications() <= 0)
                return false;
            seen = clock.now();
            return true;
        },
        static_cast<int>(clock.now().msecsTo(moment)) + 5000);
    QVERIFY2(seen.isValid(), "no alarm arrived");
    const qint64 delay = moment.msecsTo(seen);
    qInfo("alarm seen %lld ms after its moment", delay);
    QVERIFY2(delay >= 0, "the alarm rang before its moment");
    QVERIFY2(delay <= 2000, qPrintable(QStringLiteral("the alarm came %1 ms late").arg(delay)));

    QTest::qWait(3000); // time for a second delivery, if there were one
    int rung = 0;
    for (const DesktopSession::Notification& n : desktop.closeAllAndReadHistory()) {
        QVERIFY2(n.summary == entry.business, qPrintable(n.summary));
        QCOMPARE(n.body, entry.comment);
        ++rung;
    }
    QCOMPARE(rung, 1);
    env.open();
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("0"));
    QCOMPARE(Column(env.db(), 2, "ALARM"), QStringLiteral("1"));

    calendar.terminate();
    QVERIFY(calendar.waitForFinished(15000));
    QCOMPARE(calendar.exitCode(), 0);
}

VERDALY_TEST(TestAlarmEndToEnd)

#include "TestAlarmEndToEnd.moc"
