
#include "entries/EntryKinds.h"
#include "entries/EntryQueries.h"
#include "store/Rows.h"
#include "support/TestKit.h"

#include <QtTest>

#include <algorithm>
#include <set>

class TestEntryKinds final : public QObject
{
    Q_OBJECT

private slots:
    void kindCode_data();
    void kindCode();
    void storedDateToDate_data();
    void storedDateToDate();
    void entryLineText_data();
    void entryLineText();
    void markDates_data();
    void markDates();
    void markDatesOfCorruptSpanAreBounded();
    void dayOffDate_data();
    void dayOffDate();
    void monthQueryFindsRows();
    void dayQueryOrdersTasksFirst();
};

namespace {

void InsertEntry(DatabaseConnection& db, int id, const char* kind, const char* start, const char* startTime,
                 const char* end, const char* endTime, int priority = 0, const char* completion = "")
{
    StoredEntry e = Entry(id, kind, start, startTime, end, endTime);
    e.priority = priority;
    e.completion = completion;
    StoreEntry(db, e);
}

std::set<qint64> Ids(const Rows& rows)
{
    std::set<qint64> ids;
    for (const Row& row : rows)
        ids.insert(row.number(QStringLiteral("ID")));
    return ids;
}

} // namespace

// The kinds the editors write (A5, B4, C4, D3, D4, T1, T2) are checked through the editors'
// own table (TestEntryEditors::saves); these rows are the rest and the edges.
void TestEntryKinds::kindCode_data()
{
    QTest::addColumn<QString>("startDate");
    QTest::addColumn<QString>("startTime");
    QTest::addColumn<QString>("endDate");
    QTest::addColumn<QString>("endTime");
    QTest::addColumn<QString>("kind");

    // clang-format off
    QTest::newRow("A1") << "20060501" << "" << "20060501" << "" << "A1";
    QTest::newRow("A2") << "20060501" << "" << "20060501" << "17:00" << "A2";
    QTest::newRow("A3") << "20060501" << "09:00" << "20060501" << "" << "A3";
    QTest::newRow("A4") << "20060501" << "09:00" << "20060501" << "10:00" << "A4";
    QTest::newRow("A4 end before start") << "20060501" << "10:00" << "20060501" << "09:00" << "A4";
    QTest::newRow("no dates at all") << "" << "" << "" << "" << "A1";
    QTest::newRow("T ignores a start time") << "" << "09:00" << "20060501" << "" << "T1";
    QTest::newRow("D1") << "20060501" << "" << "" << "" << "D1";
    QTest::newRow("B over a year end") << "20061231" << "" << "20070101" << "" << "B1";
    QTest::newRow("C over a leap day") << "20080228" << "" << "20080301" << "" << "C1";
    QTest::newRow("C1") << "20060501" << "" << "20060503" << "" << "C1";
    QTest::newRow("C backwards span") << "20060501" << "" << "20060430" << "" << "C1";
    QTest::newRow("unreadable end date") << "20060501" << "" << "2006050" << "" << "";
    QTest::newRow("impossible start date") << "20060230" << "" << "20060301" << "" << "";
    // clang-format on
}

void TestEntryKinds::kindCode()
{
    QFETCH(QString, startDate);
    QFETCH(QString, startTime);
    QFETCH(QString, endDate);
    QFETCH(QString, endTime);
    QFETCH(QString, kind);
    QCOMPARE(KindCode(startDate, startTime, endDate, endTime), kind);
}

void TestEntryKinds::storedDateToDate_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QDate>("date");
    // clang-format off
    QTest::newRow("empty is the no-date value") << "" << QDate(100, 1, 1);
    QTest::newRow("plain") << "20060501" << QDate(2006, 5, 1);
    QTest::newRow("no leap day") << "20060229" << QDate();
    QTest::newRow("year 0") << "00000101" << QDate();
    QTest::newRow("slashes") << "2006/05/01" << QDate();
    QTest::newRow("seven digits") << "2006050" << QDate();
    QTest::newRow("full-width digits") << "２００６０５０１" << QDate();
    // clang-format on
}

void TestEntryKinds::storedDateToDate()
{
    QFETCH(QString, stored);
    QFETCH(QDate, date);
    const QDate result = StoredDateToDate(stored);
    QCOMPARE(result.isValid(), date.isValid());
    if (date.isValid())
        QCOMPARE(result, date);
}

void TestEntryKinds::entryLineText_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("startTime");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("endTime");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("completion");
    QTest::addColumn<QString>("text");

    const QDate may1(2006, 5, 1);
    const QDate may2(2006, 5, 2);
    const QDate may3(2006, 5, 3);
    // The panel's own table (tst_mainwindow) shows A3, A4, T1 and T2 on their day.
    // clang-format off
    // One-day and open-ended entries on their day and on others; spans on their start, middle
    // and end day; tasks on their deadline, done or not.
    QTest::newRow("A1") << may1 << "20060501" << "" << "20060501" << "" << "A1" << "" << "";
    QTest::newRow("A2") << may1 << "20060501" << "" << "20060501" << "17:00" << "A2" << "" << "      - 17:00";
    QTest::newRow("A5") << may1 << "20060501" << "10:00" << "20060501" << "10:00" << "A5" << "" << "10:00";
    QTest::newRow("A4 midnight") << may1 << "20060501" << "00:00" << "20060501" << "00:30" << "A4" << "" << " 0:00 -  0:30";
    QTest::newRow("D4") << may1 << "20060501" << "10:00" << "" << "11:00" << "D4" << "" << "10:00 - 11:00";
    QTest::newRow("A4 next day") << may2 << "20060501" << "09:00" << "20060501" << "10:30" << "A4" << "" << "";
    QTest::newRow("D3 day before") << QDate(2006, 4, 30) << "20060501" << "21:00" << "" << "" << "D3" << "" << "";

    QTest::newRow("B1 start") << may1 << "20060501" << "" << "20060502" << "" << "B1" << "" << " 5/ 1 -  5/ 2";
    QTest::newRow("B1 end") << may2 << "20060501" << "" << "20060502" << "" << "B1" << "" << " 5/ 1 -> 5/ 2";
    QTest::newRow("B2 end") << may2 << "20060501" << "" << "20060502" << "17:00" << "B2" << "" << " 5/ 1 ->17:00";
    QTest::newRow("B3 start") << may1 << "20060501" << "23:00" << "20060502" << "" << "B3" << "" << "23:00 -  5/ 2";
    QTest::newRow("B4 end") << may2 << "20060501" << "23:00" << "20060502" << "01:00" << "B4" << "" << " 5/ 1 -> 1:00";
    QTest::newRow("B4 day after") << may3 << "20060501" << "23:00" << "20060502" << "01:00" << "B4" << "" << "";

    QTest::newRow("C3 start") << may1 << "20060501" << "09:30" << "20060503" << "" << "C3" << "" << " 9:30 -  5/ 3";
    QTest::newRow("C3 middle") << may2 << "20060501" << "09:30" << "20060503" << "" << "C3" << "" << " 5/ 1 -> 5/ 3";
    QTest::newRow("C4 end") << may3 << "20060501" << "09:30" << "20060503" << "08:00" << "C4" << "" << " 5/ 1 -> 8:00";
    QTest::newRow("C1 entering from the previous month") << may1 << "20060420" << "" << "20060505" << "" << "C1" << "" << " 4/20 -> 5/ 5";
    QTest::newRow("C1 over a year end") << QDate(2007, 1, 1) << "20061228" << "" << "20070103" << "" << "C1" << "" << "12/28 -> 1/ 3";
    QTest::newRow("no blanking in October") << QDate(2006, 10, 10) << "20061010" << "" << "20061031" << "" << "C1" << "" << "10/10 - 10/31";
    QTest::newRow("backwards span, start day") << may1 << "20060501" << "" << "20060430" << "" << "C1" << "" << " 5/ 1 -  4/30";
    QTest::newRow("backwards span, end day") << QDate(2006, 4, 30) << "20060501" << "" << "20060430" << "" << "C1" << "" << "";

    QTest::newRow("T2 done") << may1 << "" << "" << "20060501" << "09:00" << "T2" << "1" << "      -> 9:00";
    QTest::newRow("T1 other day") << may2 << "" << "" << "20060501" << "" << "T1" << "0" << "";

    QTest::newRow("unknown kind") << may1 << "20060501" << "09:00" << "20060501" << "" << "Z3" << "" << "";
    QTest::newRow("invalid day") << QDate() << "20060501" << "09:00" << "20060501" << "" << "A3" << "" << "";
    // clang-format on
}

void TestEntryKinds::entryLineText()
{
    QFETCH(QDate, day);
    QFETCH(QString, start);
    QFETCH(QString, startTime);
    QFETCH(QString, end);
    QFETCH(QString, endTime);
    QFETCH(QString, kind);
    QFETCH(QString, completion);
    QFETCH(QString, text);
    QCOMPARE(EntryLineText(day, start, startTime, end, endTime, kind, completion), text);
}

void TestEntryKinds::markDates_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QStringList>("marks");

    // The window throughout: the grid of May 2006, 2006/04/30 to 2006/06/10.
    // clang-format off
    QTest::newRow("A on its start") << "A3" << "20060515" << "20060515" << QStringList{"20060515"};
    QTest::newRow("A outside") << "A3" << "20060615" << "20060615" << QStringList{};
    QTest::newRow("T on its deadline") << "T1" << "" << "20060608" << QStringList{"20060608"};
    QTest::newRow("T after the grid") << "T2" << "" << "20060611" << QStringList{};
    QTest::newRow("B inside") << "B1" << "20060509" << "20060510" << QStringList{"20060509", "20060510"};
    QTest::newRow("B entering the grid") << "B4" << "20060429" << "20060430" << QStringList{"20060430"};
    QTest::newRow("C from the previous month") << "C1" << "20060425" << "20060503" << QStringList{"20060430", "20060501", "20060502", "20060503"};
    QTest::newRow("C leaving the grid") << "C2" << "20060609" << "20060620" << QStringList{"20060609", "20060610"};
    QTest::newRow("C backwards") << "C1" << "20060510" << "20060505" << QStringList{};
    QTest::newRow("C unreadable end") << "C1" << "20060510" << "2006051x" << QStringList{};
    QTest::newRow("unknown kind") << "X1" << "20060510" << "20060510" << QStringList{};
    // clang-format on
}

void TestEntryKinds::markDates()
{
    QFETCH(QString, kind);
    QFETCH(QString, start);
    QFETCH(QString, end);
    QFETCH(QStringList, marks);
    QStringList got;
    for (const QDate& d : EntryMarkDates(kind, start, end, QDate(2006, 4, 30), QDate(2006, 6, 10)))
        got << DateToStored(d);
    QCOMPARE(got, marks);
}

void TestEntryKinds::markDatesOfCorruptSpanAreBounded()
{
    QElapsedTimer timer;
    timer.start();
    const QVector<QDate> dates = EntryMarkDates(QStringLiteral("C1"), QStringLiteral("00010101"),
                                                QStringLiteral("99991231"), QDate(2006, 4, 30), QDate(2006, 6, 10));
    QCOMPARE(dates.size(), 42);
    QCOMPARE(dates.front(), QDate(2006, 4, 30));
    QCOMPARE(dates.back(), QDate(2006, 6, 10));
    QVERIFY(timer.elapsed() < 1000);
}

void TestEntryKinds::dayOffDate_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<qint64>("month");
    QTest::addColumn<qint64>("day");
    QTest::addColumn<QDate>("date");
    // clang-format off
    QTest::newRow("2/29 in a leap year") << 2008 << qint64(2) << qint64(29) << QDate(2008, 2, 29);
    QTest::newRow("2/29 in a plain year") << 2006 << qint64(2) << qint64(29) << QDate();
    QTest::newRow("2/29 in 1900") << 1900 << qint64(2) << qint64(29) << QDate();
    QTest::newRow("4/31") << 2006 << qint64(4) << qint64(31) << QDate();
    QTest::newRow("huge month") << 2006 << qint64(4294967297LL) << qint64(1) << QDate();
    QTest::newRow("negative day") << 2006 << qint64(5) << qint64(-3) << QDate();
    // clang-format on
}

void TestEntryKinds::dayOffDate()
{
    QFETCH(int, year);
    QFETCH(qint64, month);
    QFETCH(qint64, day);
    QFETCH(QDate, date);
    const QDate result = DayOffDate(year, month, day);
    QCOMPARE(result.isValid(), date.isValid());
    if (date.isValid())
        QCOMPARE(result, date);
}

void TestEntryKinds::monthQueryFindsRows()
{
    TestEnvironment env;
    DatabaseConnection& db = env.db();
    InsertEntry(db, 1, "C1", "20060420", "", "20060503", "");            // from the previous month
    InsertEntry(db, 2, "T1", "", "", "20060608", "");                    // in the grid's trailing days
    InsertEntry(db, 3, "A1", "20060615", "", "20060615", "");            // after the grid
    InsertEntry(db, 4, "B1", "20060429", "", "20060430", "");            // ends on the first shown day
    InsertEntry(db, 5, "C1", "20060301", "", "20060320", "");            // long before
    InsertEntry(db, 6, "D3", "20060610", "09:00", "", "");               // on the last shown day
    InsertEntry(db, 7, "T2", "", "", "20060429", "17:00");               // the day before the grid
    InsertEntry(db, 8, "A3", "20060430", "08:00", "20060430", "");       // the first shown day
    InsertEntry(db, 9, "T1", "", "", "20060515", "", 2, "1");            // finished tasks count
    InsertEntry(db, 10, "C4", "20060401", "10:00", "20061231", "12:00"); // over the whole grid
    InsertEntry(db, 11, "D1", "20060611", "", "", "");                   // the day after the grid
    InsertEntry(db, 12, "T2", "", "", "20060601", "17:00");              // a task with a time

    const Rows rows = db.ReadRows(MonthQuerySql(QDate(2006, 4, 30), QDate(2006, 6, 10)));
    QCOMPARE(Ids(rows), (std::set<qint64>{1, 2, 4, 6, 8, 9, 10, 12}));
}

void TestEntryKinds::dayQueryOrdersTasksFirst()
{
    TestEnvironment env;
    DatabaseConnection& db = env.db();
    InsertEntry(db, 1, "A3", "20060510", "10:00", "20060510", "");
    InsertEntry(db, 2, "T1", "", "", "20060510", "", 3);
    InsertEntry(db, 3, "T1", "", "", "20060510", "", 1);
    InsertEntry(db, 4, "A4", "20060510", "09:00", "20060510", "11:00", 2); // the time goes before the priority
    InsertEntry(db, 5, "C1", "20060508", "", "20060512", "");
    InsertEntry(db, 6, "D1", "20060510", "", "", "");
    InsertEntry(db, 7, "A1", "20060511", "", "20060511", "");
    InsertEntry(db, 8, "B2", "20060509", "", "20060510", "08:00");
    InsertEntry(db, 9, "T2", "", "", "20060509", "08:00");

    const Rows rows = db.ReadRows(DayQuerySql(QDate(2006, 5, 10)));
    QList<qint64> order;
    for (const Row& row : rows)
        order << row.number(QStringLiteral("ID"));
    QCOMPARE(order, (QList<qint64>{3, 2, 5, 8, 6, 4, 1}));
}

VERDALY_TEST(TestEntryKinds)
#include "TestEntryKinds.moc"
