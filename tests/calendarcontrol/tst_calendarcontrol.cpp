// The month grid on its own: the days and marks it shows, its title and headings, how keys,
// wheel and mouse move the day, its stored look, what it paints, and what a screen reader meets.
#include "calendarcontrol/CalendarAccessible.h"
#include "calendarcontrol/CalendarDesign.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QtTest>

namespace {

const QDate Nov15(2026, 11, 15);

QAccessibleInterface* CellOf(HalvernCalendar& calendar, const QDate& date)
{
    QAccessibleTableInterface* table = QAccessible::queryAccessibleInterface(&calendar)->tableInterface();
    const int index = static_cast<int>(calendar.FirstShownDate().daysTo(date));
    return table->cellAt(index / 7, index % 7);
}

// Title and weekday formats, what the title reads, and the week's first day, day and headings.
struct TitleRow
{
    QString titleFormat, weekdayFormat, title;
    int firstDay;
    QDate date;
    QStringList headings;
};
// A spot, its bold and italic as stored, an option taken away and the one kept; bold and italic read.
struct DesignRow
{
    int code;
    QString bold, italic, sql, kept;
    bool expectBold, expectItalic;
};

} // namespace

Q_DECLARE_METATYPE(TitleRow)
Q_DECLARE_METATYPE(DesignRow)

class TestCalendarControl : public QObject
{
    Q_OBJECT

private slots:
    void shownRange_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QStringList>("firsts"); // first shown day for FirstDayOfWeek 1..7
        // clang-format off
        QTest::newRow("2026-11 starts on Sunday") << Nov15 << QStringList{"2026-11-01", "2026-10-26", "2026-10-27", "2026-10-28", "2026-10-29", "2026-10-30", "2026-10-31"};
        QTest::newRow("2026-01 Thursday, year edge") << QDate(2026, 1, 15) << QStringList{"2025-12-28", "2025-12-29", "2025-12-30", "2025-12-31", "2026-01-01", "2025-12-26", "2025-12-27"};
        // clang-format on
    }
    void shownRange()
    {
        QFETCH(QDate, day);
        QFETCH(QStringList, firsts);
        HalvernCalendar calendar;
        calendar.setCurrentDate(day);
        QSignalSpy months(&calendar, &HalvernCalendar::monthChanged);
        // Out-of-range values mean Sunday; the design may arrive after the day was chosen.
        for (const int firstDay : {3, 0, 1, 2, 3, 4, 5, 6, 7, 8, -1, 255}) {
            const int expected = firstDay >= 1 && firstDay <= 7 ? firstDay : 1;
            calendar.setFirstDayOfWeek(firstDay);
            QCOMPARE(calendar.FirstDayOfWeek(), expected);
            QVERIFY(months.isEmpty() && calendar.CurrentDate() == day);
            QCOMPARE(calendar.FirstShownDate().toString(Qt::ISODate), firsts.at(expected - 1));
            // Coming back from another month lays the grid out the same way.
            calendar.setCurrentDate(day.addMonths(1));
            calendar.setCurrentDate(day);
            months.clear();
            QCOMPARE(calendar.FirstShownDate().toString(Qt::ISODate), firsts.at(expected - 1));
        }
    }

    void titleAndHeadings_data()
    {
        QTest::addColumn<TitleRow>("row");
        const QDate march(2026, 3, 9);
        // clang-format off
        QTest::newRow("80601 / 80801") << TitleRow{"yyyy年m月", "日", "2026年3月", 1, march, {"日", "月", "火", "水", "木", "金", "土"}};
        QTest::newRow("80602 / 80802") << TitleRow{"yyyy年mm月", "(日)", "2026年03月", 7, march, {"(土)", "(日)", "(月)", "(火)", "(水)", "(木)", "(金)"}};
        QTest::newRow("80603 / 80803") << TitleRow{"yyyy / m", "日曜", "2026 / 3", 2, march, {"月曜", "火曜", "水曜", "木曜", "金曜", "土曜", "日曜"}};
        QTest::newRow("80604 / 80804") << TitleRow{"yyyy/mm", "日曜日", "2026/03", 4, march, {"水曜日", "木曜日", "金曜日", "土曜日", "日曜日", "月曜日", "火曜日"}};
        QTest::newRow("80605 / 80805") << TitleRow{"m月 yyyy", "Sun", "3月 2026", 1, march, {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"}};
        QTest::newRow("80606 / 80806") << TitleRow{"mm/yyyy", "SUN", "03/2026", 6, march, {"FRI", "SAT", "SUN", "MON", "TUE", "WED", "THU"}};
        QTest::newRow("year 999 / 80807") << TitleRow{"mm/yyyy", "S", "01/0999", 2, QDate(999, 1, 5), {"M", "T", "W", "T", "F", "S", "S"}};
        QTest::newRow("unknown weekday format reads as kanji") << TitleRow{"yyyy/mm", "xyz", "2026/11", 2, Nov15, {"月", "火", "水", "木", "金", "土", "日"}};
        // clang-format on
    }
    void titleAndHeadings()
    {
        QFETCH(TitleRow, row);
        HalvernCalendar calendar;
        calendar.setTitleFormat(row.titleFormat);
        calendar.setWeekdayFormat(row.weekdayFormat);
        calendar.setFirstDayOfWeek(row.firstDay);
        calendar.setCurrentDate(row.date);
        QCOMPARE(calendar.titleText(), row.title);
        QCOMPARE(calendar.weekdayHeaders(), row.headings);
        // The title follows the month without the format being set again.
        calendar.setCurrentDate(row.date.addMonths(1));
        QVERIFY(calendar.titleText() != row.title);
    }

    void navigation_data()
    {
        // "set DAY" (from code), "key N", "wheel DELTA", "click DAY", "right DAY", "next", "previous",
        // "right next"; "first": from now on a month listener selects the 1st, and the stale day is not reported
        QTest::addColumn<QDate>("start");
        QTest::addColumn<QStringList>("actions");
        QTest::addColumn<QStringList>("expectedEvents");
        using L = QStringList;
        const auto key = [](Qt::Key k) { return QString("key %1").arg(int(k)); };
        // clang-format off
        QTest::newRow("set, same month") << Nov15 << L{"set 2026-11-20"} << L{"date 2026-11-20"};
        QTest::newRow("set, next month") << Nov15 << L{"set 2026-12-03"} << L{"month 2026/12 grid 2026-11-29", "date 2026-12-03"};
        QTest::newRow("set, same month other year") << Nov15 << L{"set 2027-11-15"} << L{"month 2027/11 grid 2027-10-31", "date 2027-11-15"};
        QTest::newRow("set, same date") << Nov15 << L{"set 2026-11-15"} << L{};
        QTest::newRow("set, invalid date") << Nov15 << L{"set x"} << L{};
        QTest::newRow("right over month end") << QDate(2026, 11, 30) << L{key(Qt::Key_Right)} << L{"month 2026/12 grid 2026-11-29", "date 2026-12-01"};
        QTest::newRow("left over month start") << QDate(2026, 11, 1) << L{key(Qt::Key_Left)} << L{"month 2026/10 grid 2026-09-27", "date 2026-10-31"};
        QTest::newRow("up a week into last month") << QDate(2026, 11, 3) << L{key(Qt::Key_Up)} << L{"month 2026/10 grid 2026-09-27", "date 2026-10-27"};
        QTest::newRow("down a week into next year") << QDate(2026, 12, 29) << L{key(Qt::Key_Down)} << L{"month 2027/1 grid 2026-12-27", "date 2027-01-05"};
        QTest::newRow("page up 31st to February") << QDate(2026, 3, 31) << L{key(Qt::Key_PageUp)} << L{"month 2026/2 grid 2026-02-01", "date 2026-02-28"};
        QTest::newRow("page up 31st to leap February") << QDate(2028, 3, 31) << L{key(Qt::Key_PageUp)} << L{"month 2028/2 grid 2028-01-30", "date 2028-02-29"};
        QTest::newRow("page down over year end") << QDate(2026, 12, 31) << L{key(Qt::Key_PageDown)} << L{"month 2027/1 grid 2026-12-27", "date 2027-01-31"};
        QTest::newRow("home goes to today") << QDate(2027, 3, 5) << L{key(Qt::Key_Home)} << L{"month 2026/11 grid 2026-11-01", "date 2026-11-22"};
        QTest::newRow("enter and return confirm the day") << Nov15 << L{key(Qt::Key_Return), key(Qt::Key_Right), key(Qt::Key_Enter)} << L{"click 2026-11-15", "date 2026-11-16", "click 2026-11-16"};
        QTest::newRow("two notches down") << Nov15 << L{"wheel -240"} << L{"month 2026/12 grid 2026-11-29", "date 2026-12-15", "month 2027/1 grid 2026-12-27", "date 2027-01-15"};
        QTest::newRow("half notches add up") << Nov15 << L{"wheel 60", "wheel 60"} << L{"month 2026/10 grid 2026-09-27", "date 2026-10-15"};
        QTest::newRow("half a notch up and down cancel") << Nov15 << L{"wheel -60", "wheel 60", "wheel -60"} << L{};
        QTest::newRow("click a day of the month") << Nov15 << L{"click 2026-11-18"} << L{"date 2026-11-18", "click 2026-11-18"};
        QTest::newRow("click next month's day") << Nov15 << L{"click 2026-12-05"} << L{"month 2026/12 grid 2026-11-29", "date 2026-12-05", "click 2026-12-05"};
        QTest::newRow("click the selected day") << Nov15 << L{"click 2026-11-15"} << L{"click 2026-11-15"};
        QTest::newRow("a month listener may move the day") << Nov15 << L{"first", "set 2026-12-20"} << L{"month 2026/12 grid 2026-11-29", "date 2026-12-01"};
        QTest::newRow("right clicks do nothing") << Nov15 << L{"right 2026-11-20", "right next"} << L{};
        QTest::newRow("arrows keep the day where they can") << QDate(2026, 10, 31) << L{"next", "previous", "previous"} << L{"month 2026/11 grid 2026-11-01", "date 2026-11-30", "month 2026/10 grid 2026-09-27", "date 2026-10-30", "month 2026/9 grid 2026-08-30", "date 2026-09-30"};
        // clang-format on
    }
    void navigation()
    {
        QFETCH(QDate, start);
        QFETCH(QStringList, actions);
        QFETCH(QStringList, expectedEvents);
        HalvernCalendar calendar;
        calendar.resize(420, 360);
        calendar.setCurrentDate(start);
        calendar.setTodayProvider([] { return QDate(2026, 11, 22); });
        calendar.show();
        QVERIFY(QTest::qWaitForWindowExposed(&calendar));
        // Every signal in the order it came, with the grid shown at a month change.
        QStringList events;
        connect(&calendar, &HalvernCalendar::dateChanged, &calendar,
                [&](const QDate& date) { events << "date " + date.toString(Qt::ISODate); });
        connect(&calendar, &HalvernCalendar::dateClicked, &calendar,
                [&](const QDate& date) { events << "click " + date.toString(Qt::ISODate); });
        connect(&calendar, &HalvernCalendar::monthChanged, &calendar, [&](int year, int month) {
            events << QString("month %1/%2 grid ").arg(year).arg(month) +
                          calendar.FirstShownDate().toString(Qt::ISODate);
        });
        for (const QString& action : actions) {
            const QString verb = action.section(' ', 0, 0);
            const QString what = action.section(' ', 1);
            const QDate day = QDate::fromString(what, Qt::ISODate);
            if (verb == "first") {
                connect(&calendar, &HalvernCalendar::monthChanged, &calendar,
                        [&calendar](int year, int month) { calendar.setCurrentDate(QDate(year, month, 1)); });
            } else if (verb == "set") {
                calendar.setCurrentDate(day);
            } else if (verb == "key") {
                QTest::keyClick(&calendar, static_cast<Qt::Key>(what.toInt()));
            } else if (verb == "wheel") {
                QWheelEvent wheel({}, {}, {}, QPoint(0, what.toInt()), Qt::NoButton, {}, Qt::NoScrollPhase, false);
                QApplication::sendEvent(&calendar, &wheel);
            } else {
                const QRect arrow =
                    action.endsWith("next") ? calendar.nextMonthButtonRect() : calendar.previousMonthButtonRect();
                QTest::mouseClick(&calendar, verb == "right" ? Qt::RightButton : Qt::LeftButton, Qt::NoModifier,
                                  day.isValid() ? calendar.dayRect(day).center() : arrow.center());
            }
        }
        QCOMPARE(events, expectedEvents);
        const QStringList dates = events.filter("date ");
        QCOMPARE(calendar.CurrentDate(), dates.isEmpty() ? start : QDate::fromString(dates.last().mid(5), Qt::ISODate));
    }

    void designFromTheDatabase_data()
    {
        QTest::addColumn<DesignRow>("row");
        // clang-format off
        QTest::newRow("90 entry day, numbers; no 301") << DesignRow{90, "0", "1", "DELETE FROM TRNGENERAL WHERE CODE = 301", "title", false, true};
        QTest::newRow("130 day-off; 301 names no row") << DesignRow{130, "1", "0", "UPDATE TRNGENERAL SET DATAN1 = 80699 WHERE CODE = 301", "title", true, false};
        QTest::newRow("10 title, words; no 302") << DesignRow{10, "'True'", "'False'", "DELETE FROM TRNGENERAL WHERE CODE = 302", "first day", true, false};
        QTest::newRow("30 day, minus one is true; no 303") << DesignRow{30, "-1", "-1", "DELETE FROM TRNGENERAL WHERE CODE = 303", "weekday", true, true};
        QTest::newRow("135 last calendar spot; all there") << DesignRow{135, "0", "0", "", "", false, false};
        // clang-format on
    }
    void designFromTheDatabase()
    {
        QFETCH(DesignRow, row);
        TestEnvironment env;
        for (const auto& [option, value] : {std::pair{301, 80603}, std::pair{302, 2}, std::pair{303, 80805}})
            SetGeneral(env.db(), option, {{"DATAN1", value}});
        if (!row.sql.isEmpty())
            env.db().ExecuteSql(row.sql);
        // Back 0x563412 and text 0x0000F0, stored as 0x00BBGGRR.
        env.db().ExecuteSql(QString("UPDATE TRNCOLOR SET BACKCOLOR = 5649426, FORECOLOR = 240, FOREFONT = 'IPAGothic', "
                                    "FSIZE = 10.5, FBOLD = %1, FITALIC = %2 WHERE CODE = %3 AND SETNUM = 0")
                                .arg(row.bold, row.italic)
                                .arg(row.code));
        // Neither a second design set nor the panel's spot is the calendar's.
        StoreRow(env.db(), "TRNCOLOR", {{"CODE", row.code}, {"SETNUM", 1}, {"BACKCOLOR", 65280}, {"FSIZE", 20}});
        env.db().ExecuteSql("UPDATE TRNCOLOR SET BACKCOLOR = 255, FORECOLOR = 255, FSIZE = 30 WHERE CODE = 140");
        HalvernCalendar calendar;
        calendar.setTitleFormat("mm.yyyy");
        calendar.setFirstDayOfWeek(4);
        calendar.setWeekdayFormat("(日)");
        calendar.setGridLineColor(Qt::red);
        ApplyCalendarDesign(env.db(), calendar);
        QCOMPARE(calendar.TitleFormat(), row.kept == "title" ? "mm.yyyy" : "yyyy / m");
        QCOMPARE(calendar.FirstDayOfWeek(), row.kept == "first day" ? 4 : 2);
        QCOMPARE(calendar.WeekdayFormat(), row.kept == "weekday" ? "(日)" : "Sun");
        const SpotDesign design = calendar.spotDesign(row.code);
        QCOMPARE(QList<QColor>({design.back, design.text}), QList<QColor>({QColor(0x123456), QColor(0xF00000)}));
        const QFont& font = design.font;
        QCOMPARE(QVariantList({font.family(), font.pointSizeF(), font.bold(), font.italic()}),
                 QVariantList({"IPAGothic", 10.5, row.expectBold, row.expectItalic}));
        // Other spots keep the shipped rows' look (60 is stored as 16316664, Saturday's text as
        // 12582912, in 0x00BBGGRR), and the grid lines their own grey.
        const auto spot = [&calendar](int code) { return calendar.spotDesign(code); };
        QCOMPARE(QList<QColor>({spot(60).back, spot(50).text, spot(70).text, calendar.gridLineColor()}),
                 QList<QColor>({QColor(0xF8F8F8), QColor(0x0000C0), QColor(0xFF8000), QColor(0xE0E0E0)}));
        QCOMPARE(spot(60).font.pointSizeF(), 10.0);
        QVERIFY(calendar.spotDesign(140).back != QColor(Qt::red));
    }

    void painting()
    {
        HalvernCalendar calendar;
        calendar.resize(490, 420);
        calendar.setCurrentDate(QDate(2026, 11, 10));
        // Backs of the day-off (18th), the selected (10th) and a plain day (19th); then texts:
        // Sundays green, Saturdays blue, digits (40, 50) and headings (100, 110) alike.
        const QList<QPair<int, QColor>> designs = {
            {130, QColor(0x123456)}, {80, QColor(0x654321)}, {30, QColor(0xABCDEF)}, {40, Qt::green},
            {100, Qt::green},        {50, Qt::blue},         {110, Qt::blue}};
        for (int i = 0; i < designs.size(); ++i) {
            SpotDesign design = calendar.spotDesign(designs[i].first);
            (i < 3 ? design.back : design.text) = designs[i].second;
            calendar.setSpotDesign(designs[i].first, design);
        }
        calendar.MarkDayOff(QDate(2026, 11, 18));
        // The cells tile the grid: both corners find the day; no gap, overlap or arrow between.
        QDate date = calendar.FirstShownDate();
        QRect previous;
        for (int i = 0; i < 42; ++i, date = date.addDays(1)) {
            const QRect cell = calendar.dayRect(date);
            QVERIFY2(!cell.isEmpty() && calendar.rect().contains(cell), qPrintable(date.toString(Qt::ISODate)));
            QCOMPARE(calendar.dateAt(cell.topLeft()), date);
            QCOMPARE(calendar.dateAt(cell.bottomRight()), date);
            if (i % 7 != 0)
                QCOMPARE(cell.left(), previous.right() + 1);
            QVERIFY(!cell.intersects(calendar.previousMonthButtonRect()));
            previous = cell;
        }
        QVERIFY(calendar.dayRect(calendar.FirstShownDate().addDays(-1)).isNull() && calendar.dayRect(date).isNull());
        QVERIFY(!calendar.dateAt(calendar.previousMonthButtonRect().center()).isValid() &&
                !calendar.dateAt(calendar.nextMonthButtonRect().center()).isValid());
        QImage image(calendar.size(), QImage::Format_ARGB32);
        image.fill(Qt::black);
        calendar.render(&image);
        // A point inside the cell well left of the centred digits and clear of the corner marks.
        for (int i = 0; i < 3; ++i) {
            const QRect cell = calendar.dayRect(QDate(2026, 11, QList<int>{18, 10, 19}.at(i)));
            QCOMPARE(image.pixelColor(cell.left() + cell.width() / 6, cell.center().y()), designs.at(i).second);
        }
        // Which of green (1) and blue (2) show in a rectangle.
        const auto inks = [&image](const QRect& area) {
            int found = 0;
            for (int y = area.top(); y <= area.bottom(); ++y) {
                for (int x = area.left(); x <= area.right(); ++x) {
                    const QColor c = image.pixelColor(x, y);
                    found |= (c.green() > c.red() + 80 && c.green() > c.blue() + 80 ? 1 : 0) |
                             (c.blue() > c.red() + 80 && c.blue() > c.green() + 80 ? 2 : 0);
                }
            }
            return found;
        };
        // Sunday, Saturday and a plain Wednesday: the day's digits, and its column's heading.
        const int firstRowTop = calendar.dayRect(calendar.FirstShownDate()).top();
        for (const auto& [day, ink] : {std::pair{22, 1}, std::pair{21, 2}, std::pair{25, 0}}) {
            const QRect cell = calendar.dayRect(QDate(2026, 11, day));
            QCOMPARE(inks(cell), ink);
            QCOMPARE(inks(QRect(cell.left(), firstRowTop - cell.height() / 2, cell.width(), cell.height() / 2 - 1)),
                     ink);
        }
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
        QCOMPARE(QList<int>({table->rowCount(), table->columnCount(), grid->childCount()}), QList<int>({6, 7, 42}));
        // A Sunday-first grid of November 2026 starts on the 1st.
        QCOMPARE(table->cellAt(0, 0)->text(QAccessible::Name), "2026年11月1日 日曜日");
        QCOMPARE(table->cellAt(5, 6)->text(QAccessible::Name), "2026年12月12日 土曜日");
        QCOMPARE(table->columnDescription(5), "金曜日");
        QAccessibleInterface* selected = CellOf(calendar, QDate(2026, 11, 22));
        QVERIFY(selected->state().selected);
        QCOMPARE(table->selectedCells(), QList<QAccessibleInterface*>{selected});
        // Row, column and child index; the same cell is handed out each time, where the day is drawn.
        QAccessibleTableCellInterface* place = selected->tableCellInterface();
        QCOMPARE(QList<int>({place->rowIndex(), place->columnIndex(), grid->indexOfChild(selected)}),
                 QList<int>({3, 0, 21}));
        QCOMPARE(grid->child(21), selected);
        QCOMPARE(selected->rect(), calendar.dayRect(QDate(2026, 11, 22)).translated(calendar.mapToGlobal(QPoint())));
        QCOMPARE(grid->childAt(selected->rect().center().x(), selected->rect().center().y()), selected);

        // Names follow the marks and the holidays shown; clearing one kind of mark keeps the other.
        const QDate day(2026, 11, 25);
        QAccessibleInterface* cell = CellOf(calendar, day);
        calendar.MarkEntryDay(day);
        calendar.MarkDayOff(day);
        QCOMPARE(cell->text(QAccessible::Name), "2026年11月25日 水曜日 予定あり 休日");
        calendar.ClearEntryMarks();
        QCOMPARE(cell->text(QAccessible::Name), "2026年11月25日 水曜日 休日");
        calendar.MarkEntryDay(day);
        calendar.ClearDayOffMarks();
        QCOMPARE(cell->text(QAccessible::Name), "2026年11月25日 水曜日 予定あり");
        // A day-off's own name is said after the holiday's, and not again when it is the same.
        calendar.MarkDayOff(QDate(2026, 11, 3), " 文化の日");
        QCOMPARE(CellOf(calendar, QDate(2026, 11, 3))->text(QAccessible::Name), "2026年11月3日 火曜日 文化の日");
        QAccessibleInterface* holiday = CellOf(calendar, QDate(2026, 11, 23));
        calendar.MarkEntryDay(QDate(2026, 11, 23));
        calendar.MarkDayOff(QDate(2026, 11, 23), " 会社休み ");
        QCOMPARE(holiday->text(QAccessible::Name), "2026年11月23日 月曜日 予定あり 勤労感謝の日 会社休み");
        calendar.setHolidaysShown(false);
        QCOMPARE(holiday->text(QAccessible::Name), "2026年11月23日 月曜日 予定あり 会社休み");
        calendar.setHolidaysShown(true);

        // "Press" chooses the day, even one of the next month.
        QSignalSpy changed(&calendar, &HalvernCalendar::dateChanged);
        CellOf(calendar, QDate(2026, 12, 3))->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_COMPARE(calendar.CurrentDate(), QDate(2026, 12, 3));
        QCOMPARE(changed.size(), 1);
        QCOMPARE(CellOf(calendar, QDate(2026, 12, 3))->text(QAccessible::Name), "2026年12月3日 木曜日");
        // The grid's place now holds a day of the new month.
        calendar.setCurrentDate(QDate(2027, 2, 10));
        QCOMPARE(cell->text(QAccessible::Name), "2027年2月24日 水曜日");
        QVERIFY(!cell->state().selected);

        // A mark outside 2026-11-01 .. 2026-12-12 is dropped, and does not surface when its day is shown.
        const QList<QPair<QDate, bool>> days = {{QDate(2026, 11, 1), true},   {QDate(2026, 12, 12), true},
                                                {QDate(2026, 10, 31), false}, {QDate(2026, 12, 13), false},
                                                {QDate(2025, 11, 18), false}, {QDate(), false}};
        for (const auto& [date, kept] : days) {
            calendar.setCurrentDate(Nov15);
            calendar.MarkEntryDay(date);
            QVERIFY(!calendar.isDayOff(date));
            calendar.MarkDayOff(date);
            QCOMPARE(QList<bool>({calendar.isEntryDay(date), calendar.isDayOff(date)}), QList<bool>({kept, kept}));
            calendar.setCurrentDate(date);
            QCOMPARE(QList<bool>({calendar.isEntryDay(date), calendar.isDayOff(date)}), QList<bool>({kept, kept}));
        }
    }
};

VERDALY_TEST(TestCalendarControl)
#include "tst_calendarcontrol.moc"
