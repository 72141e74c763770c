// The grid without any input: today follows the clock across midnight and sleep, and a
// refresh that fails (the file locked by another program) leaves nothing stale behind and
// is made good by the next tick of time.
#include "calendarcontrol/HalvernCalendar.h"
#include "entries/EntryKinds.h"
#include "mainwindow/FrmMain.h"
#include "support/TestKit.h"

#include <QLabel>
#include <QtTest>

namespace {

void AddOneDayEntry(DatabaseConnection& db, int id, const QDate& day, const QString& subject)
{
    const QString d = DateToStored(day);
    StoreEntry(db, Entry(id, QStringLiteral("A1"), d, QString(), d, QString(), subject));
}

} // namespace

class TestFollowingTheClock : public QObject
{
    Q_OBJECT

private slots:
    void todayFollowsTheClock_data();
    void todayFollowsTheClock();
    void lockedRefreshLeavesNothingStale();
};

void TestFollowingTheClock::todayFollowsTheClock_data()
{
    QTest::addColumn<QDateTime>("before");
    QTest::addColumn<QDate>("selected"); // invalid: left on today
    QTest::addColumn<QDateTime>("after");
    QTest::addColumn<QDate>("expectedSelection");
    const QTime lastMoment(23, 59, 59, 850);
    // clang-format off
    QTest::newRow("midnight") << QDateTime(QDate(2026, 11, 22), lastMoment) << QDate() << QDateTime(QDate(2026, 11, 23), QTime(0, 0, 0, 100)) << QDate(2026, 11, 23);
    QTest::newRow("wake two days later") << QDateTime(QDate(2026, 12, 31), lastMoment) << QDate() << QDateTime(QDate(2027, 1, 2), QTime(8, 15)) << QDate(2027, 1, 2);
    QTest::newRow("another selected day stays") << QDateTime(QDate(2026, 11, 22), lastMoment) << QDate(2026, 11, 5) << QDateTime(QDate(2026, 11, 23), QTime(0, 0, 1)) << QDate(2026, 11, 5);
    // clang-format on
}

void TestFollowingTheClock::todayFollowsTheClock()
{
    QFETCH(QDateTime, before);
    QFETCH(QDate, selected);
    QFETCH(QDateTime, after);
    QFETCH(QDate, expectedSelection);
    TestEnvironment env;
    AddOneDayEntry(env.db(), 1, after.date(), QStringLiteral("新しい日の予定"));
    env.services.connection.reset();
    env.clock.current = before;
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    if (selected.isValid())
        main.calendar()->setCurrentDate(selected);
    QCOMPARE(main.calendar()->today(), before.date());

    env.clock.current = after;
    // No input at all: only time passes.
    QTRY_COMPARE_WITH_TIMEOUT(main.calendar()->CurrentDate(), expectedSelection, 3000);
    QCOMPARE(main.calendar()->today(), after.date());
    if (!selected.isValid()) {
        // The new day's grid and panel are filled, not left from the day before.
        QVERIFY(main.calendar()->isShown(after.date()));
        QVERIFY(main.calendar()->isEntryDay(after.date()));
        QCOMPARE(Shown(&main, "LabYotei(0)"), QStringLiteral("新しい日の予定"));
    }
    QVERIFY(env.prompter.shown.isEmpty());
    main.Form_Unload();
}

void TestFollowingTheClock::lockedRefreshLeavesNothingStale()
{
    TestEnvironment env;
    AddOneDayEntry(env.db(), 1, QDate(2026, 11, 10), QStringLiteral("十一月"));
    AddOneDayEntry(env.db(), 2, QDate(2026, 12, 22), QStringLiteral("十二月"));
    env.services.connection.reset();
    // Just before midnight, so that the clock's next tick comes within a moment.
    env.clock.current = QDateTime(QDate(2026, 11, 22), QTime(23, 59, 59, 900));
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    main.calendar()->setCurrentDate(QDate(2026, 11, 10));
    QVERIFY(main.calendar()->isEntryDay(QDate(2026, 11, 10)));
    QCOMPARE(Shown(&main, "LabYotei(0)"), QStringLiteral("十一月"));

    // Another connection holds the file locked while the user turns the page.
    auto other = OpenDatabaseConnection(env.path(), QString());
    other->ExecuteSql(QStringLiteral("BEGIN EXCLUSIVE"));
    QElapsedTimer waited;
    waited.start();
    main.calendar()->showNextMonth();
    QVERIFY2(waited.elapsed() < 4000, qPrintable(QString::number(waited.elapsed())));
    QCOMPARE(main.calendar()->CurrentDate(), QDate(2026, 12, 10));
    // Nothing of November is left to be read as December's.
    QVERIFY(!main.calendar()->isEntryDay(QDate(2026, 11, 10)));
    QCOMPARE(Shown(&main, "LabYotei(0)"), QString());
    QCOMPARE(env.prompter.shown.size(), 1);
    main.calendar()->setCurrentDate(QDate(2026, 12, 22));
    QCOMPARE(env.prompter.shown.size(), 1); // told once, not at every click

    other->ExecuteSql(QStringLiteral("ROLLBACK"));
    // No input: the next tick of time brings the view back.
    QTRY_VERIFY_WITH_TIMEOUT(main.calendar()->isEntryDay(QDate(2026, 12, 22)), 8000);
    QTRY_COMPARE_WITH_TIMEOUT(Shown(&main, "LabYotei(0)"), QStringLiteral("十二月"), 3000);
    QCOMPARE(env.prompter.shown.size(), 1);
    main.Form_Unload();
}

VERDALY_TEST(TestFollowingTheClock)
#include "TestFollowingTheClock.moc"
