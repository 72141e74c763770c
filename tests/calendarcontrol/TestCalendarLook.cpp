// The grid's look from the stored design, what it paints, and how a screen reader meets it:
// a table of 6 x 7 named days, the selected one selected, and "press" to choose a day.
#include "calendarcontrol/CalendarAccessible.h"
#include "calendarcontrol/CalendarDesign.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "store/SqlText.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QImage>
#include <QSignalSpy>
#include <QtTest>

namespace {

QAccessibleInterface* CellOf(HalvernCalendar& calendar, const QDate& date)
{
    QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&calendar)->tableInterface();
    const int index = static_cast<int>(calendar.FirstShownDate().daysTo(date));
    return table->cellAt(index / 7, index % 7);
}

} // namespace

class TestCalendarLook : public QObject
{
    Q_OBJECT

private slots:
    void designFromTheDatabase_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("bold");
        QTest::addColumn<QString>("italic");
        QTest::addColumn<bool>("expectBold");
        QTest::addColumn<bool>("expectItalic");
        QTest::addColumn<QString>("sql");  // takes an option away
        QTest::addColumn<QString>("kept"); // the option that keeps the calendar's own value
        // clang-format off
        QTest::newRow("90 entry day, numbers; no 301") << 90 << "0" << "1" << false << true << "DELETE FROM TRNGENERAL WHERE CODE = 301" << "title";
        QTest::newRow("130 day-off; 301 names no row") << 130 << "1" << "0" << true << false << "UPDATE TRNGENERAL SET DATAN1 = 80699 WHERE CODE = 301" << "title";
        QTest::newRow("10 title, words; no 302") << 10 << "'True'" << "'False'" << true << false << "DELETE FROM TRNGENERAL WHERE CODE = 302" << "first day";
        QTest::newRow("30 day, minus one is true; no 303") << 30 << "-1" << "-1" << true << true << "DELETE FROM TRNGENERAL WHERE CODE = 303" << "weekday";
        QTest::newRow("135 last calendar spot; all there") << 135 << "0" << "0" << false << false << "" << "";
        // clang-format on
    }
    void designFromTheDatabase()
    {
        QFETCH(int, code);
        QFETCH(QString, bold);
        QFETCH(QString, italic);
        QFETCH(bool, expectBold);
        QFETCH(bool, expectItalic);
        QFETCH(QString, sql);
        QFETCH(QString, kept);
        TestEnvironment env;
        for (const auto& [option, value] : {std::pair{301, 80603}, std::pair{302, 2}, std::pair{303, 80805}})
            env.db().ExecuteSql(
                QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = %2").arg(value).arg(option));
        if (!sql.isEmpty())
            env.db().ExecuteSql(sql);
        // 0x00BBGGRR: blue 0x56, green 0x34, red 0x12.
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = %1, FORECOLOR = %2, FOREFONT = %3, "
                                           "FSIZE = 10.5, FBOLD = %4, FITALIC = %5 WHERE CODE = %6 AND SETNUM = 0")
                                .arg(0x563412)
                                .arg(0x0000F0)
                                .arg(QuoteText(QStringLiteral("IPAGothic")), bold, italic)
                                .arg(code));
        // Neither a second design set nor the panel's spot is the calendar's.
        StoreRow(env.db(), QStringLiteral("TRNCOLOR"),
                 {{"CODE", code},
                  {"SETNUM", 1},
                  {"SPOT", "x"},
                  {"BACKCOLOR", 65280},
                  {"FOREFONT", "Serif"},
                  {"FSIZE", 20},
                  {"FBOLD", 0},
                  {"FITALIC", 0},
                  {"FORECOLOR", 65280}});
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = 255, FORECOLOR = 255, FSIZE = 30 "
                                           "WHERE CODE = 140"));
        HalvernCalendar calendar;
        calendar.setTitleFormat(QStringLiteral("mm.yyyy"));
        calendar.setFirstDayOfWeek(4);
        calendar.setWeekdayFormat(QStringLiteral("(日)"));
        calendar.setGridLineColor(Qt::red);
        const SpotDesign panelBefore = calendar.spotDesign(140);
        ApplyCalendarDesign(env.db(), calendar);
        QCOMPARE(calendar.TitleFormat(), kept == "title" ? QStringLiteral("mm.yyyy") : QStringLiteral("yyyy / m"));
        QCOMPARE(calendar.FirstDayOfWeek(), kept == "first day" ? 4 : 2);
        QCOMPARE(calendar.WeekdayFormat(), kept == "weekday" ? QStringLiteral("(日)") : QStringLiteral("Sun"));
        const SpotDesign design = calendar.spotDesign(code);
        QCOMPARE(design.back, QColor(0x12, 0x34, 0x56));
        QCOMPARE(design.text, QColor(0xF0, 0x00, 0x00));
        QCOMPARE(design.font.family(), QStringLiteral("IPAGothic"));
        QCOMPARE(design.font.pointSizeF(), 10.5);
        QCOMPARE(design.font.bold(), expectBold);
        QCOMPARE(design.font.italic(), expectItalic);
        // Other spots keep the shipped rows' look: spot 60 is stored as 16316664 = 0xF8F8F8,
        // Saturday's text (50) as 12582912 = 0xC00000, in 0x00BBGGRR.
        QCOMPARE(calendar.spotDesign(60).back, QColor(0xF8, 0xF8, 0xF8));
        QCOMPARE(calendar.spotDesign(60).font.pointSizeF(), 10.0);
        QCOMPARE(calendar.spotDesign(50).text, QColor(0x00, 0x00, 0xC0));
        QCOMPARE(calendar.spotDesign(70).text, QColor(0xFF, 0x80, 0x00));
        QCOMPARE(calendar.gridLineColor(), QColor(0xE0, 0xE0, 0xE0));
        QCOMPARE(calendar.spotDesign(140).back, panelBefore.back);
        QCOMPARE(calendar.spotDesign(140).text, panelBefore.text);
        QVERIFY(calendar.spotDesign(140).font.pointSizeF() != 30.0);
    }

    void painting()
    {
        HalvernCalendar calendar;
        calendar.resize(490, 420);
        calendar.setCurrentDate(QDate(2026, 11, 10));
        // Backs: day-off, selected and plain days; texts: Sundays green, Saturdays blue,
        // digits (40, 50) and headings (100, 110) alike.
        const QList<QPair<int, QColor>> backs = {
            {130, QColor(0x12, 0x34, 0x56)}, {80, QColor(0x65, 0x43, 0x21)}, {30, QColor(0xAB, 0xCD, 0xEF)}};
        for (const auto& [spot, colour] : backs) {
            SpotDesign design = calendar.spotDesign(spot);
            design.back = colour;
            calendar.setSpotDesign(spot, design);
        }
        for (const int spot : {40, 100, 50, 110}) {
            SpotDesign design = calendar.spotDesign(spot);
            design.text = spot == 40 || spot == 100 ? QColor(0, 200, 0) : QColor(0, 0, 255);
            calendar.setSpotDesign(spot, design);
        }
        calendar.MarkDayOff(QDate(2026, 11, 18));
        QImage image(calendar.size(), QImage::Format_ARGB32);
        image.fill(Qt::black);
        calendar.render(&image);
        // A point inside the cell well left of the centred digits and clear of the corner marks.
        const auto back = [&](int day) {
            const QRect cell = calendar.dayRect(QDate(2026, 11, day));
            return image.pixelColor(cell.left() + cell.width() / 6, cell.center().y());
        };
        QCOMPARE(back(18), backs.at(0).second);
        QCOMPARE(back(10), backs.at(1).second);
        QCOMPARE(back(19), backs.at(2).second);

        // Which of green and blue show in a rectangle.
        const auto inks = [&image](const QRect& area) {
            QString found;
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x) {
                    const QColor c = image.pixelColor(x, y);
                    if (c.green() > c.red() + 80 && c.green() > c.blue() + 80 && !found.contains('g'))
                        found += 'g';
                    if (c.blue() > c.red() + 80 && c.blue() > c.green() + 80 && !found.contains('b'))
                        found += 'b';
                }
            }
            return found;
        };
        const int firstRowTop = calendar.dayRect(calendar.FirstShownDate()).top();
        const auto heading = [&](int day) {
            const QRect cell = calendar.dayRect(QDate(2026, 11, day));
            return QRect(cell.left(), firstRowTop - cell.height() / 2, cell.width(), cell.height() / 2 - 1);
        };
        QCOMPARE(inks(calendar.dayRect(QDate(2026, 11, 22))), QStringLiteral("g")); // Sunday
        QCOMPARE(inks(calendar.dayRect(QDate(2026, 11, 21))), QStringLiteral("b")); // Saturday
        QCOMPARE(inks(calendar.dayRect(QDate(2026, 11, 25))), QString());
        QCOMPARE(inks(heading(1)), QStringLiteral("g"));
        QCOMPARE(inks(heading(7)), QStringLiteral("b"));
        QCOMPARE(inks(heading(4)), QString());
    }

    void dayNames_data()
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
    void dayNames()
    {
        QFETCH(QDate, date);
        QFETCH(bool, entries);
        QFETCH(bool, dayOff);
        QFETCH(QString, dayOffName);
        QFETCH(QString, holiday);
        QFETCH(QString, expected);
        QCOMPARE(DayAccessibleName(date, entries, dayOff, dayOffName, holiday), expected);
    }

    void screenReaderWalk()
    {
        HalvernCalendar calendar;
        calendar.setCurrentDate(QDate(2026, 11, 22));
        calendar.show();
        QVERIFY(QTest::qWaitForWindowExposed(&calendar));
        QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(&calendar);
        QCOMPARE(grid->role(), QAccessible::Table);
        QAccessibleTableInterface* table = grid->tableInterface();
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
        QCOMPARE(selected->tableCellInterface()->rowIndex(), 3);
        QCOMPARE(selected->tableCellInterface()->columnIndex(), 0);
        // The same cell is handed out each time, and it sits where the day is drawn.
        QCOMPARE(grid->indexOfChild(selected), 21);
        QCOMPARE(grid->child(21), selected);
        const QRect drawn = calendar.dayRect(QDate(2026, 11, 22));
        QCOMPARE(selected->rect(), QRect(calendar.mapToGlobal(drawn.topLeft()), drawn.size()));
        QCOMPARE(grid->childAt(selected->rect().center().x(), selected->rect().center().y()), selected);

        // Names follow the marks and the holidays shown.
        QAccessibleInterface* cell = CellOf(calendar, QDate(2026, 11, 25));
        calendar.MarkEntryDay(QDate(2026, 11, 25));
        calendar.MarkDayOff(QDate(2026, 11, 25), QStringLiteral("結婚記念日"));
        QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("2026年11月25日 水曜日 予定あり 結婚記念日"));
        calendar.ClearEntryMarks();
        QVERIFY(!calendar.isEntryDay(QDate(2026, 11, 25)) && calendar.isDayOff(QDate(2026, 11, 25)));
        calendar.MarkEntryDay(QDate(2026, 11, 24));
        calendar.ClearDayOffMarks();
        QVERIFY(!calendar.isDayOff(QDate(2026, 11, 25)) && calendar.isEntryDay(QDate(2026, 11, 24)));
        QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("2026年11月25日 水曜日"));
        QAccessibleInterface* holiday = CellOf(calendar, QDate(2026, 11, 23));
        QCOMPARE(holiday->text(QAccessible::Name), QStringLiteral("2026年11月23日 月曜日 勤労感謝の日"));
        calendar.setHolidaysShown(false);
        QCOMPARE(holiday->text(QAccessible::Name), QStringLiteral("2026年11月23日 月曜日"));
        calendar.setHolidaysShown(true);

        // "Press" chooses the day, even one of the next month.
        QSignalSpy changed(&calendar, &HalvernCalendar::dateChanged);
        CellOf(calendar, QDate(2026, 12, 3))->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(calendar.CurrentDate(), QDate(2026, 12, 3));
        QCOMPARE(changed.size(), 1);
        // The grid's place now holds a day of the new month.
        calendar.setCurrentDate(QDate(2027, 2, 10));
        QCOMPARE(cell->text(QAccessible::Name), QStringLiteral("2027年2月24日 水曜日"));
        QVERIFY(!cell->state().selected);
    }
};

VERDALY_TEST(TestCalendarLook)
#include "TestCalendarLook.moc"
