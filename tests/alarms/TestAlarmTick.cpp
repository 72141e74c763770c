// The alarm tick on a real database, the program's (fake) clock and fake delivery.
#include "alarms/AlarmTick.h"
#include "support/TestKit.h"

#include <QtTest>

class TestAlarmTick final : public QObject
{
    Q_OBJECT

private slots:
    void ringsOnceWhenDue_data();
    void ringsOnceWhenDue();
    void delivery_data();
    void delivery();
    void rowChangedByAnEditorRingsAgainLater();
    void unreadableRowIsPassedOverAndLoggedOnce();
};

namespace {

const QDate Today(2026, 11, 22);

QDateTime At(const char* hhmmss, int dayOffset = 0)
{
    return QDateTime(Today.addDays(dayOffset),
                     QTime::fromString(QLatin1String(hhmmss), QStringLiteral("HH:mm:ss.zzz")));
}

// Today's timed one-day entry with its alarm set.
void StoreToday(DatabaseConnection& db, int id, const QString& time, const QString& subject = "entry")
{
    StoreEntry(db, WithAlarm(Entry(id, "A3", "20261122", time, "20261122", QString(), subject)));
}

} // namespace

void TestAlarmTick::ringsOnceWhenDue_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("startDt");
    QTest::addColumn<QString>("startTm");
    QTest::addColumn<QString>("endDt");
    QTest::addColumn<QString>("endTm");
    QTest::addColumn<QString>("completion");
    QTest::addColumn<int>("advance");
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<bool>("rings");

    // clang-format off
    QTest::newRow("advance 15, at the moment")  << "A3" << "20261122" << "10:30" << "20261122" << ""      << "" << 15 << At("10:15:00.000") << false;
    QTest::newRow("advance 15, just after")     << "A3" << "20261122" << "10:30" << "20261122" << ""      << "" << 15 << At("10:15:00.001") << true;
    QTest::newRow("A2 is date-only")            << "A2" << "20261122" << ""      << "20261122" << "17:00" << "" << 0  << At("00:00:00.001") << true;
    QTest::newRow("D3 one-digit hour")          << "D3" << "20261122" << "9:05"  << ""         << ""      << "" << 0  << At("09:05:01.000") << true;
    QTest::newRow("B1 span over today")         << "B1" << "20261121" << ""      << "20261123" << ""      << "" << 0  << At("00:00:01.000") << true;
    QTest::newRow("C3 began yesterday evening") << "C3" << "20261121" << "23:00" << "20261125" << ""      << "" << 0  << At("00:00:01.000") << true;
    QTest::newRow("T1 open, due today")         << "T1" << ""         << ""      << "20261122" << ""      << "0" << 0 << At("00:00:00.001") << true;
    QTest::newRow("T1 completed")               << "T1" << ""         << ""      << "20261122" << ""      << "1" << 0 << At("23:59:59.000") << false;
    QTest::newRow("T2 after its time")          << "T2" << ""         << ""      << "20261122" << "17:00" << "0" << 5 << At("16:55:00.001") << true;
    QTest::newRow("tomorrow's, advance 15")     << "A3" << "20261123" << "00:10" << "20261123" << ""      << "" << 15 << At("23:59:00.000") << false;
    QTest::newRow("span ended yesterday")       << "C1" << "20261118" << ""      << "20261121" << ""      << "" << 0  << At("12:00:00.000") << false;
    // clang-format on
}

void TestAlarmTick::ringsOnceWhenDue()
{
    QFETCH(QString, kind);
    QFETCH(QString, startDt);
    QFETCH(QString, startTm);
    QFETCH(QString, endDt);
    QFETCH(QString, endTm);
    QFETCH(QString, completion);
    QFETCH(int, advance);
    QFETCH(QDateTime, now);
    QFETCH(bool, rings);

    TestEnvironment env;
    StoreAlarmSettings(env.db(), advance);
    StoredEntry entry = WithAlarm(Entry(7, kind, startDt, startTm, endDt, endTm));
    entry.completion = completion;
    StoreEntry(env.db(), entry);
    env.clock.current = now;
    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    QVERIFY(tick.run(nullptr, Today));
    QCOMPARE(env.prompter.shown.size(), rings ? 1 : 0); // rung at the moment, not a tick later
    env.clock.current = now.addSecs(rings ? 1800 : 0);  // and then quiet
    QVERIFY(tick.run(nullptr, Today));
    QCOMPARE(env.prompter.shown.size(), rings ? 1 : 0);
    QCOMPARE(Column(env.db(), 7, "ALARM"), rings ? QStringLiteral("0") : QStringLiteral("1"));
}

void TestAlarmTick::delivery_data()
{
    QTest::addColumn<bool>("balloon");
    QTest::addColumn<QString>("soundFile"); // sound on with this file
    QTest::addColumn<bool>("launcherFails");
    QTest::addColumn<QStringList>("arguments"); // empty: a message box instead

    const QStringList plain = {"/t", "会議 /c 3F", "/c", "第二会議室\n資料を持参", "/i", "i"};
    // clang-format off
    QTest::newRow("message box")             << false << "/x/a.wav"    << false << QStringList();
    QTest::newRow("balloon, sound, no file") << true  << ""            << false << plain;
    QTest::newRow("balloon with sound")      << true  << "/x/my a.wav" << false << (plain + QStringList{"/a", "/x/my a.wav"});
    QTest::newRow("notifier cannot start")   << true  << ""            << true  << QStringList();
    // clang-format on
}

void TestAlarmTick::delivery()
{
    QFETCH(bool, balloon);
    QFETCH(QString, soundFile);
    QFETCH(bool, launcherFails);
    QFETCH(QStringList, arguments);

    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0, balloon, true, soundFile);
    StoredEntry entry = WithAlarm(Entry(1, "A4", "20261122", "09:00", "20261122", "10:30", "会議 /c 3F"));
    entry.comment = QStringLiteral("第二会議室\n資料を持参");
    StoreEntry(env.db(), entry);
    env.clock.current = At("09:00:01.000");
    env.launcher.failing = launcherFails;
    if (launcherFails)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("notifier could not be started"));

    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    QCOMPARE(env.launcher.started.size(), balloon ? 1 : 0);
    if (arguments.isEmpty()) { // the box tells even when the notifier could not
        QCOMPARE(env.prompter.shown.size(), 1);
        QCOMPARE(env.prompter.shown.front().text, QStringLiteral(" 9:00 - 10:30   会議 /c 3F"));
        QCOMPARE(env.prompter.shown.front().title, QStringLiteral("ALARM"));
    } else {
        QCOMPARE(env.prompter.shown.size(), 0);
        QCOMPARE(env.launcher.started.front().program, QCoreApplication::applicationDirPath() + "/BalloonNotify");
        QCOMPARE(env.launcher.started.front().arguments, arguments);
    }
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("0"));
}

void TestAlarmTick::rowChangedByAnEditorRingsAgainLater()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0);
    StoreToday(env.db(), 1, "09:00");
    StoreToday(env.db(), 2, "09:00");
    env.clock.current = At("09:00:30.000");
    // While the first box is open, an editor saves entry 1 again (its alarm still set).
    env.prompter.whileShown = [&](const Prompt&) {
        if (env.prompter.shown.size() == 1)
            env.db().ExecuteSql(
                "UPDATE TRNSCHTSK SET BUSINESS = 'moved', UPDTIME = '2026/11/22 09:00:15' WHERE ID = 1");
    };
    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    QCOMPARE(env.prompter.shown.size(), 2);
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("1"));
    QCOMPARE(Column(env.db(), 2, "ALARM"), QStringLiteral("0"));

    env.clock.current = At("09:01:00.000");
    QVERIFY(tick.run(nullptr, Today));
    QCOMPARE(env.prompter.texts().last(), QStringLiteral(" 9:00   moved"));
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("0"));
}

void TestAlarmTick::unreadableRowIsPassedOverAndLoggedOnce()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0);
    const QStringList times = {"08:00", "25:00", "08:30", "8h", "09:00"};
    for (int i = 0; i < times.size(); ++i)
        StoreToday(env.db(), i + 1, times.at(i));
    StoreEntry(env.db(), WithAlarm(Entry(6, "B1", "2026/11/1", "", "20261130")));
    env.clock.current = At("10:00:00.000");

    for (int id : {2, 4, 6})
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString("entry %1 has a date or time that").arg(id)));
    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    QTest::failOnWarning(QRegularExpression("cannot be read"));
    QVERIFY(tick.run(nullptr, Today));

    QCOMPARE(env.prompter.shown.size(), 3);
    for (int id : {1, 3, 5})
        QCOMPARE(Column(env.db(), id, "ALARM"), QStringLiteral("0"));
    for (int id : {2, 4, 6})
        QCOMPARE(Column(env.db(), id, "ALARM"), QStringLiteral("1"));
}

VERDALY_TEST(TestAlarmTick)

#include "TestAlarmTick.moc"
