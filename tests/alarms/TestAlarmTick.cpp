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
    void notifierThatCannotStartFallsBackToTheBox();
    void rowChangedByAnEditorRingsAgainLater();
    void unreadableRowIsPassedOverAndLoggedOnce();
    void missingAdvanceRowStopsTheTick();
    void nextMoment_data();
    void nextMoment();
};

namespace {

const QDate Today(2026, 11, 22);

QDateTime At(const char* hhmmss, int dayOffset = 0)
{
    return QDateTime(Today.addDays(dayOffset),
                     QTime::fromString(QLatin1String(hhmmss), QStringLiteral("HH:mm:ss.zzz")));
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
    QTest::newRow("advance 0, at the moment")        << "A3" << "20261122" << "10:30" << "20261122" << ""      << "" << 0  << At("10:30:00.000") << false;
    QTest::newRow("advance 0, just after")           << "A3" << "20261122" << "10:30" << "20261122" << ""      << "" << 0  << At("10:30:00.001") << true;
    QTest::newRow("advance 15, just before")         << "A3" << "20261122" << "10:30" << "20261122" << ""      << "" << 15 << At("10:14:59.999") << false;
    QTest::newRow("advance 15, at the moment")       << "A3" << "20261122" << "10:30" << "20261122" << ""      << "" << 15 << At("10:15:00.000") << false;
    QTest::newRow("advance 15, just after")          << "A3" << "20261122" << "10:30" << "20261122" << ""      << "" << 15 << At("10:15:00.001") << true;
    QTest::newRow("A4 goes by its start")            << "A4" << "20261122" << "10:30" << "20261122" << "11:30" << "" << 0  << At("10:31:00.000") << true;
    QTest::newRow("A2 is date-only")                 << "A2" << "20261122" << ""      << "20261122" << "17:00" << "" << 0  << At("00:00:00.001") << true;
    QTest::newRow("D3 one-digit hour")               << "D3" << "20261122" << "9:05"  << ""         << ""      << "" << 0  << At("09:05:01.000") << true;
    QTest::newRow("B1 span over today")              << "B1" << "20261121" << ""      << "20261123" << ""      << "" << 0  << At("00:00:01.000") << true;
    QTest::newRow("C3 began yesterday evening")      << "C3" << "20261121" << "23:00" << "20261125" << ""      << "" << 0  << At("00:00:01.000") << true;
    QTest::newRow("B4 ending today, started before") << "B4" << "20261121" << "22:00" << "20261122" << "06:00" << "" << 0  << At("00:00:01.000") << true;
    QTest::newRow("T1 open, due today")              << "T1" << ""         << ""      << "20261122" << ""      << "0" << 0 << At("00:00:00.001") << true;
    QTest::newRow("T1 completed")                    << "T1" << ""         << ""      << "20261122" << ""      << "1" << 0 << At("23:59:59.000") << false;
    QTest::newRow("T2 before its time")              << "T2" << ""         << ""      << "20261122" << "17:00" << "0" << 0 << At("16:59:59.000") << false;
    QTest::newRow("T2 after its time")               << "T2" << ""         << ""      << "20261122" << "17:00" << "0" << 5 << At("16:55:00.001") << true;
    QTest::newRow("tomorrow's entry, advance 15")    << "A3" << "20261123" << "00:10" << "20261123" << ""      << "" << 15 << At("23:59:00.000") << false;
    QTest::newRow("tomorrow's task")                 << "T1" << ""         << ""      << "20261123" << ""      << "0" << 0 << At("23:59:00.000") << false;
    QTest::newRow("yesterday's entry")               << "A3" << "20261121" << "10:00" << "20261121" << ""      << "" << 0  << At("10:00:00.000") << false;
    QTest::newRow("span ended yesterday")            << "C1" << "20261118" << ""      << "20261121" << ""      << "" << 0  << At("12:00:00.000") << false;
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
    StoredEntry entry;
    entry.id = 7;
    entry.kind = kind;
    entry.startDt = startDt;
    entry.startTm = startTm;
    entry.endDt = endDt;
    entry.endTm = endTm;
    entry.completion = completion;
    entry.alarm = QStringLiteral("1");
    StoreEntry(env.db(), entry);
    env.clock.current = now;

    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    QVERIFY(tick.run(nullptr, Today));
    if (rings) { // a rung alarm stays quiet on later ticks
        env.clock.current = now.addSecs(1800);
        QVERIFY(tick.run(nullptr, Today));
    }
    QCOMPARE(env.prompter.shown.size(), rings ? 1 : 0);
    QCOMPARE(Column(env.db(), 7, "ALARM"), rings ? QStringLiteral("0") : QStringLiteral("1"));
}

void TestAlarmTick::delivery_data()
{
    QTest::addColumn<bool>("balloon");
    QTest::addColumn<bool>("sound");
    QTest::addColumn<QString>("soundFile");
    QTest::addColumn<QStringList>("arguments"); // empty: a message box instead

    const QStringList plain = {"/t", "会議 /c 3F", "/c", "第二会議室\n資料を持参", "/i", "i"};
    // clang-format off
    QTest::newRow("message box")            << false << true  << "/x/a.wav" << QStringList();
    QTest::newRow("balloon, no sound")      << true  << false << "/x/a.wav" << plain;
    QTest::newRow("balloon, sound, no file") << true << true  << ""         << plain;
    QTest::newRow("balloon with sound")     << true  << true  << "/x/my a.wav" << (plain + QStringList{"/a", "/x/my a.wav"});
    // clang-format on
}

void TestAlarmTick::delivery()
{
    QFETCH(bool, balloon);
    QFETCH(bool, sound);
    QFETCH(QString, soundFile);
    QFETCH(QStringList, arguments);

    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0, balloon, sound, soundFile);
    StoredEntry entry;
    entry.kind = QStringLiteral("A4");
    entry.startDt = entry.endDt = QStringLiteral("20261122");
    entry.startTm = QStringLiteral("09:00");
    entry.endTm = QStringLiteral("10:30");
    entry.business = QStringLiteral("会議 /c 3F");
    entry.comment = QStringLiteral("第二会議室\n資料を持参");
    entry.alarm = QStringLiteral("1");
    StoreEntry(env.db(), entry);
    env.clock.current = At("09:00:01.000");

    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    if (arguments.isEmpty()) {
        QCOMPARE(env.launcher.started.size(), 0);
        QCOMPARE(env.prompter.shown.size(), 1);
        QCOMPARE(env.prompter.shown.front().text, QStringLiteral(" 9:00 - 10:30   会議 /c 3F"));
        QCOMPARE(env.prompter.shown.front().title, QStringLiteral("ALARM"));
        QCOMPARE(env.prompter.shown.front().buttons, PromptButtons::Ok);
    } else {
        QCOMPARE(env.prompter.shown.size(), 0);
        QCOMPARE(env.launcher.started.size(), 1);
        QCOMPARE(env.launcher.started.front().program, QCoreApplication::applicationDirPath() + "/BalloonNotify");
        QCOMPARE(env.launcher.started.front().arguments, arguments);
    }
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("0"));
}

void TestAlarmTick::notifierThatCannotStartFallsBackToTheBox()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0, true);
    StoredEntry entry;
    entry.kind = QStringLiteral("A3");
    entry.startDt = entry.endDt = QStringLiteral("20261122");
    entry.startTm = QStringLiteral("09:00");
    entry.business = QStringLiteral("歯医者");
    entry.alarm = QStringLiteral("1");
    StoreEntry(env.db(), entry);
    env.clock.current = At("09:10:00.000");
    env.launcher.failing = true;

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("notifier could not be started")));
    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    QCOMPARE(env.launcher.started.size(), 1);
    QCOMPARE(env.prompter.texts(), QStringList{QStringLiteral(" 9:00   歯医者")});
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("0"));
}

void TestAlarmTick::rowChangedByAnEditorRingsAgainLater()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0);
    for (int id : {1, 2}) {
        StoredEntry entry;
        entry.id = id;
        entry.kind = QStringLiteral("A3");
        entry.startDt = entry.endDt = QStringLiteral("20261122");
        entry.startTm = QStringLiteral("09:00");
        entry.alarm = QStringLiteral("1");
        StoreEntry(env.db(), entry);
    }
    env.clock.current = At("09:00:30.000");
    // While the first box is open, an editor saves entry 1 again (its alarm still set).
    env.prompter.whileShown = [&](const Prompt&) {
        if (env.prompter.shown.size() == 1)
            env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = 'moved', "
                                               "UPDTIME = '2026/11/22 09:00:15' WHERE ID = 1"));
    };
    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    QCOMPARE(env.prompter.shown.size(), 2);
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("1"));
    QCOMPARE(Column(env.db(), 2, "ALARM"), QStringLiteral("0"));

    env.clock.current = At("09:01:00.000");
    QVERIFY(tick.run(nullptr, Today));
    QCOMPARE(env.prompter.shown.size(), 3);
    QCOMPARE(env.prompter.shown.last().text, QStringLiteral(" 9:00   moved"));
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("0"));
}

void TestAlarmTick::unreadableRowIsPassedOverAndLoggedOnce()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0);
    const QStringList times = {"08:00", "25:00", "08:30", "8h", "09:00"};
    for (int i = 0; i < times.size(); ++i) {
        StoredEntry entry;
        entry.id = i + 1;
        entry.kind = QStringLiteral("A3");
        entry.startDt = entry.endDt = QStringLiteral("20261122");
        entry.startTm = times.at(i);
        entry.alarm = QStringLiteral("1");
        StoreEntry(env.db(), entry);
    }
    StoredEntry badDate;
    badDate.id = 6;
    badDate.kind = QStringLiteral("B1");
    badDate.startDt = QStringLiteral("2026/11/1");
    badDate.endDt = QStringLiteral("20261130");
    badDate.alarm = QStringLiteral("1");
    StoreEntry(env.db(), badDate);
    env.clock.current = At("10:00:00.000");

    for (int id : {2, 4, 6})
        QTest::ignoreMessage(
            QtWarningMsg,
            QRegularExpression(QStringLiteral("entry %1 has a date or time that cannot be read").arg(id)));
    AlarmTick tick(env.services);
    QVERIFY(tick.run(nullptr, Today));
    QTest::failOnWarning(QRegularExpression(QStringLiteral("cannot be read")));
    env.clock.current = At("10:00:30.000");
    QVERIFY(tick.run(nullptr, Today));

    QCOMPARE(env.prompter.shown.size(), 3);
    for (int id : {1, 3, 5})
        QCOMPARE(Column(env.db(), id, "ALARM"), QStringLiteral("0"));
    for (int id : {2, 4, 6})
        QCOMPARE(Column(env.db(), id, "ALARM"), QStringLiteral("1"));
}

void TestAlarmTick::missingAdvanceRowStopsTheTick()
{
    TestEnvironment env;
    StoreAlarmSettings(env.db(), 0);
    env.db().ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 304"));
    StoredEntry entry;
    entry.kind = QStringLiteral("A3");
    entry.startDt = entry.endDt = QStringLiteral("20261122");
    entry.startTm = QStringLiteral("08:00");
    entry.alarm = QStringLiteral("1");
    StoreEntry(env.db(), entry);
    env.clock.current = At("09:00:00.000");

    AlarmTick tick(env.services);
    QVERIFY(!tick.run(nullptr, Today));
    QVERIFY(!tick.nextMoment().isValid());
    QCOMPARE(env.prompter.shown.size(), 0);
    QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("1"));
}

void TestAlarmTick::nextMoment_data()
{
    QTest::addColumn<QStringList>("times"); // today's A3 entries with the alarm set
    QTest::addColumn<int>("advance");
    QTest::addColumn<QDateTime>("now");
    QTest::addColumn<QDateTime>("expected");

    // clang-format off
    QTest::newRow("earliest still to come") << QStringList{"11:00", "10:30", "08:00"} << 5 << At("09:30:00.000") << At("10:25:00.000");
    QTest::newRow("exactly now still counts") << QStringList{"10:30"} << 0 << At("10:30:00.000") << At("10:30:00.000");
    QTest::newRow("all passed: midnight")   << QStringList{"08:00", "09:00"} << 0 << At("09:30:00.000") << At("00:00:00.000", 1);
    QTest::newRow("none: midnight")         << QStringList{} << 0 << At("23:59:59.000") << At("00:00:00.000", 1);
    QTest::newRow("bad time passed over")   << QStringList{"xx:yy", "22:00"} << 0 << At("21:00:00.000") << At("22:00:00.000");
    // clang-format on
}

void TestAlarmTick::nextMoment()
{
    QFETCH(QStringList, times);
    QFETCH(int, advance);
    QFETCH(QDateTime, now);
    QFETCH(QDateTime, expected);

    TestEnvironment env;
    StoreAlarmSettings(env.db(), advance);
    for (int i = 0; i < times.size(); ++i) {
        StoredEntry entry;
        entry.id = i + 1;
        entry.kind = QStringLiteral("A3");
        entry.startDt = entry.endDt = QStringLiteral("20261122");
        entry.startTm = times.at(i);
        entry.alarm = QStringLiteral("1");
        StoreEntry(env.db(), entry);
    }
    env.clock.current = now;
    if (times.contains(QStringLiteral("xx:yy")))
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("cannot be read")));
    AlarmTick tick(env.services);
    QCOMPARE(tick.nextMoment(), expected);
}

VERDALY_TEST(TestAlarmTick)

#include "TestAlarmTick.moc"
