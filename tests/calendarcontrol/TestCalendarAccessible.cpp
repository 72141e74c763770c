// The month grid as a screen reader meets it: a table of 6 x 7 named days, the selected one
// selected, names that follow the month and the marks, and "press" to choose a day.
#include "calendarcontrol/CalendarAccessible.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QtTest>

namespace {

QAccessibleInterface* CellOf(HalvernCalendar& calendar, const QDate& date)
{
    QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&calendar)->tableInterface();
    const int index = static_cast<int>(calendar.FirstShownDate().daysTo(date));
    return table->cellAt(index / 7, index % 7);
}

} // namespace

class TestCalendarAccessible : public QObject
{
    Q_OBJECT

private slots:
    void dayNames_data();
    void dayNames();
    void gridIsATableOfDays();
    void namesFollowTheMonthAndTheMarks();
    void pressChoosesTheDay();
};

void TestCalendarAccessible::dayNames_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<bool>("entries");
    QTest::addColumn<bool>("dayOff");
    QTest::addColumn<QString>("dayOffName");
    QTest::addColumn<QString>("holiday");
    QTest::addColumn<QString>("expected");
    // clang-format off
    QTest::newRow("plain day")        << QDate(2026, 11, 22) << false << false << ""           << ""         << "2026年11月22日 日曜日";
    QTest::newRow("named day-off")    << QDate(2026, 11, 3)  << false << true  << "文化の日"   << ""         << "2026年11月3日 火曜日 文化の日";
    QTest::newRow("both")             << QDate(2026, 5, 1)   << true  << true  << " 創立記念日 " << ""       << "2026年5月1日 金曜日 予定あり 創立記念日";
    QTest::newRow("unnamed day-off")  << QDate(2024, 2, 29)  << false << true  << ""           << ""         << "2024年2月29日 木曜日 休日";
    QTest::newRow("no date")          << QDate()             << true  << false << ""           << "祝日"     << "";
    QTest::newRow("holiday")          << QDate(2026, 11, 23) << true  << false << ""           << "勤労感謝の日" << "2026年11月23日 月曜日 予定あり 勤労感謝の日";
    QTest::newRow("holiday and own day-off") << QDate(2026, 5, 6) << false << true << "会社休み" << "振替休日" << "2026年5月6日 水曜日 振替休日 会社休み";
    QTest::newRow("day-off named as its holiday") << QDate(2026, 11, 3) << false << true << " 文化の日" << "文化の日" << "2026年11月3日 火曜日 文化の日";
    QTest::newRow("unnamed day-off on a holiday") << QDate(2026, 1, 1) << false << true << "" << "元日" << "2026年1月1日 木曜日 元日 休日";
    // clang-format on
}

void TestCalendarAccessible::dayNames()
{
    QFETCH(QDate, date);
    QFETCH(bool, entries);
    QFETCH(bool, dayOff);
    QFETCH(QString, dayOffName);
    QFETCH(QString, holiday);
    QFETCH(QString, expected);
    QCOMPARE(DayAccessibleName(date, entries, dayOff, dayOffName, holiday), expected);
}

void TestCalendarAccessible::gridIsATableOfDays()
{
    HalvernCalendar calendar;
    calendar.setCurrentDate(QDate(2026, 11, 22));
    calendar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&calendar));

    QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(&calendar);
    QVERIFY(grid);
    QCOMPARE(grid->role(), QAccessible::Table);
    QAccessibleTableInterface* table = grid->tableInterface();
    QVERIFY(table);
    QCOMPARE(table->rowCount(), 6);
    QCOMPARE(table->columnCount(), 7);
    QCOMPARE(grid->childCount(), 42);
    // A Sunday-first grid of November 2026 starts on the 1st.
    QCOMPARE(table->cellAt(0, 0)->text(QAccessible::Name), QStringLiteral("2026年11月1日 日曜日"));
    QCOMPARE(table->cellAt(5, 6)->text(QAccessible::Name), QStringLiteral("2026年12月12日 土曜日"));
    QCOMPARE(table->columnDescription(1), QStringLiteral("月曜日"));

    QAccessibleInterface* selected = CellOf(calendar, QDate(2026, 11, 22));
    QVERIFY(selected->state().selected);
    QCOMPARE(table->selectedCells(), QList<QAccessibleInterface*>{selected});
    QAccessibleTableCellInterface* cell = selected->tableCellInterface();
    QCOMPARE(cell->rowIndex(), 3);
    QCOMPARE(cell->columnIndex(), 0);
    // The same cell is handed out each time, and it sits where the day is drawn.
    QCOMPARE(grid->indexOfChild(selected), 21);
    QCOMPARE(grid->child(21), selected);
    const QRect drawn = calendar.dayRect(QDate(2026, 11, 22));
    QCOMPARE(selected->rect(), QRect(calendar.mapToGlobal(drawn.topLeft()), drawn.size()));
    QCOMPARE(grid->childAt(selected->rect().center().x(), selected->rect().center().y()), selected);
}

void TestCalendarAccessible::namesFollowTheMonthAndTheMarks()
{
    HalvernCalendar calendar;
    calendar.setCurrentDate(QDate(2026, 11, 22));
    QAccessibleInterface* cell = CellOf(calendar, QDate(2026, 11, 25));
    calendar.MarkEntryDay(QDate(2026, 11, 25));
    calendar.MarkDayOff(QDate(2026, 11, 25), QStringLiteral("結婚記念日"));
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("2026年11月25日 水曜日 予定あり 結婚記念日"));

    calendar.ClearEntryMarks();
    calendar.ClearDayOffMarks();
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("2026年11月25日 水曜日"));

    // The holiday the calendar computed is read out while holidays are shown.
    QAccessibleInterface* holiday = CellOf(calendar, QDate(2026, 11, 23));
    QCOMPARE(holiday->text(QAccessible::Name), QStringLiteral("2026年11月23日 月曜日 勤労感謝の日"));
    calendar.setHolidaysShown(false);
    QCOMPARE(holiday->text(QAccessible::Name), QStringLiteral("2026年11月23日 月曜日"));
    calendar.setHolidaysShown(true);

    // The grid's place now holds a day of the new month.
    calendar.setCurrentDate(QDate(2027, 2, 10));
    QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("2027年2月24日 水曜日"));
    QVERIFY(!cell->state().selected);
}

void TestCalendarAccessible::pressChoosesTheDay()
{
    HalvernCalendar calendar;
    calendar.setCurrentDate(QDate(2026, 11, 22));
    QSignalSpy changed(&calendar, &HalvernCalendar::dateChanged);
    QAccessibleInterface* cell = CellOf(calendar, QDate(2026, 12, 3));
    QVERIFY(cell->actionInterface());
    cell->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(calendar.CurrentDate(), QDate(2026, 12, 3));
    QCOMPARE(changed.size(), 1);
}

VERDALY_TEST(TestCalendarAccessible)
#include "TestCalendarAccessible.moc"
