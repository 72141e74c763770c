// The jump menu's month rule: the selected day is kept, unless today's day of the month is
// past the target month's length; a day the month lacks is no date at all.
#include "mainwindow/MonthJump.h"
#include "support/TestKit.h"

#include <QtTest>

class TestMonthJump : public QObject
{
    Q_OBJECT

private slots:
    void rule_data();
    void rule();
};

void TestMonthJump::rule_data()
{
    QTest::addColumn<QDate>("selected");
    QTest::addColumn<QDate>("today");
    QTest::addColumn<int>("month");
    QTest::addColumn<QDate>("expected"); // invalid: no such day

    // clang-format off
    QTest::newRow("selected 31st, today mid-month, to February") << QDate(2007, 1, 31) << QDate(2007, 3, 15) << 2 << QDate();
    QTest::newRow("today the 30th, to February")                << QDate(2007, 1, 10) << QDate(2007, 1, 30) << 2 << QDate(2007, 2, 28);
    QTest::newRow("today the 31st, to a 30-day month")          << QDate(2007, 3, 15) << QDate(2007, 1, 31) << 4 << QDate(2007, 4, 30);
    QTest::newRow("today the 30th is not past April's 30")      << QDate(2007, 5, 31) << QDate(2007, 1, 30) << 4 << QDate();
    QTest::newRow("today the 31st rescues a selected 31st")     << QDate(2007, 5, 31) << QDate(2007, 1, 31) << 4 << QDate(2007, 4, 30);
    QTest::newRow("leap day today still counts February as 28") << QDate(2008, 1, 10) << QDate(2008, 2, 29) << 2 << QDate(2008, 2, 28);
    QTest::newRow("selected 29th reaches a leap February")      << QDate(2008, 1, 29) << QDate(2008, 1, 5)  << 2 << QDate(2008, 2, 29);
    QTest::newRow("selected 29th misses a common February")     << QDate(2007, 1, 29) << QDate(2007, 1, 5)  << 2 << QDate();
    QTest::newRow("the year is the selected day's")             << QDate(1999, 6, 5)  << QDate(2026, 11, 22) << 12 << QDate(1999, 12, 5);
    QTest::newRow("31st to a 31-day month")                     << QDate(2026, 1, 31) << QDate(2026, 11, 22) << 12 << QDate(2026, 12, 31);
    QTest::newRow("no thirteenth month")                        << QDate(2026, 1, 5)  << QDate(2026, 11, 22) << 13 << QDate();
    // clang-format on
}

void TestMonthJump::rule()
{
    QFETCH(QDate, selected);
    QFETCH(QDate, today);
    QFETCH(int, month);
    QFETCH(QDate, expected);
    QCOMPARE(MonthJumpDate(selected, today, month), expected);
}

VERDALY_TEST(TestMonthJump)
#include "TestMonthJump.moc"
