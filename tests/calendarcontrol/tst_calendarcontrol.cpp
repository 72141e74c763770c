#include "calendarcontrol/CalendarDesign.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "store/SqlText.h"
#include "support/TestKit.h"

#include <QImage>
#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

namespace {

const QDate Nov15(2026, 11, 15);

// Every signal of the calendar in the order it came, with what the calendar showed then.
struct SignalLog
{
    QStringList events;

    explicit SignalLog(HalvernCalendar& calendar)
    {
        QObject::connect(&calendar, &HalvernCalendar::monthChanged, &calendar, [this, &calendar](int year, int month) {
            events << QStringLiteral("month %1/%2 grid %3")
                          .arg(year)
                          .arg(month)
                          .arg(calendar.FirstShownDate().toString(Qt::ISODate));
        });
        QObject::connect(&calendar, &HalvernCalendar::dateChanged, &calendar,
                         [this](const QDate& date) { events << QStringLiteral("date ") + date.toString(Qt::ISODate); });
        QObject::connect(&calendar, &HalvernCalendar::dateClicked, &calendar, [this](const QDate& date) {
            events << QStringLiteral("click ") + date.toString(Qt::ISODate);
        });
    }
};

void SendWheel(HalvernCalendar& calendar, int delta)
{
    const QPointF at(calendar.width() / 2.0, calendar.height() / 2.0);
    QWheelEvent event(at, calendar.mapToGlobal(at), QPoint(), QPoint(0, delta), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&calendar, &event);
}

QRgb PixelAt(const QImage& image, const QPoint& point)
{
    return image.pixelColor(point).rgb();
}

// A point inside the cell well left of the centred digits and clear of the corner marks.
QPoint BesideTheDigits(const QRect& cell)
{
    return QPoint(cell.left() + cell.width() / 6, cell.center().y());
}

} // namespace

class TestCalendarControl : public QObject
{
    Q_OBJECT

private slots:
    void shownRange_data();
    void shownRange();
    void firstDayOfWeekOutOfRangeMeansSunday();
    void firstDayOfWeekChangeMovesTheGrid();
    void marks_data();
    void marks();
    void clearMarks();
    void titleText_data();
    void titleText();
    void weekdayHeaders_data();
    void weekdayHeaders();
    void signalOrder_data();
    void signalOrder();
    void monthListenerMayMoveTheDay();
    void navigation_data();
    void navigation();
    void cellsTileTheGrid_data();
    void cellsTileTheGrid();
    void designMissingRowsKeepValues_data();
    void designMissingRowsKeepValues();
    void designSpotFromRow_data();
    void designSpotFromRow();
    void designIgnoresPanelSpotAndOtherSets();
    void paintDayOffAndSelection();
    void weekendColours();
};

void TestCalendarControl::shownRange_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<QStringList>("firsts"); // first shown day for FirstDayOfWeek 1..7
    // clang-format off
    QTest::newRow("2026-11 starts on Sunday") << 2026 << 11 << QStringList{"2026-11-01", "2026-10-26", "2026-10-27", "2026-10-28", "2026-10-29", "2026-10-30", "2026-10-31"};
    QTest::newRow("2026-01 Thursday, year edge") << 2026 << 1 << QStringList{"2025-12-28", "2025-12-29", "2025-12-30", "2025-12-31", "2026-01-01", "2025-12-26", "2025-12-27"};
    QTest::newRow("2024-02 leap") << 2024 << 2 << QStringList{"2024-01-28", "2024-01-29", "2024-01-30", "2024-01-31", "2024-02-01", "2024-01-26", "2024-01-27"};
    QTest::newRow("2026-08 starts on Saturday") << 2026 << 8 << QStringList{"2026-07-26", "2026-07-27", "2026-07-28", "2026-07-29", "2026-07-30", "2026-07-31", "2026-08-01"};
    QTest::newRow("2015-02 exactly four weeks") << 2015 << 2 << QStringList{"2015-02-01", "2015-01-26", "2015-01-27", "2015-01-28", "2015-01-29", "2015-01-30", "2015-01-31"};
    // clang-format on
}

void TestCalendarControl::shownRange()
{
    QFETCH(int, year);
    QFETCH(int, month);
    QFETCH(QStringList, firsts);
    for (int firstDay = 1; firstDay <= 7; ++firstDay) {
        HalvernCalendar calendar;
        calendar.setFirstDayOfWeek(firstDay);
        calendar.setCurrentDate(QDate(year, month, 15));
        const QDate first = calendar.FirstShownDate();
        const QByteArray where = QByteArray("first day of week ") + QByteArray::number(firstDay);
        QVERIFY2(first == QDate::fromString(firsts.at(firstDay - 1), Qt::ISODate),
                 where + " gave " + first.toString(Qt::ISODate).toLatin1());
        QCOMPARE(first.daysTo(calendar.LastShownDate()), 41);
        QVERIFY(calendar.isShown(first));
        QVERIFY(calendar.isShown(calendar.LastShownDate()));
        QVERIFY(!calendar.isShown(first.addDays(-1)));
        QVERIFY(!calendar.isShown(calendar.LastShownDate().addDays(1)));
    }
}

void TestCalendarControl::firstDayOfWeekOutOfRangeMeansSunday()
{
    for (const int firstDay : {0, 8, -1, 255}) {
        HalvernCalendar calendar;
        calendar.setFirstDayOfWeek(3);
        calendar.setCurrentDate(Nov15);
        calendar.setFirstDayOfWeek(firstDay);
        QCOMPARE(calendar.FirstDayOfWeek(), 1);
        QCOMPARE(calendar.FirstShownDate(), QDate(2026, 11, 1));
    }
}

void TestCalendarControl::firstDayOfWeekChangeMovesTheGrid()
{
    // The design may be applied after the day was chosen; the grid must follow.
    HalvernCalendar calendar;
    calendar.setCurrentDate(Nov15);
    QCOMPARE(calendar.FirstShownDate(), QDate(2026, 11, 1));
    QSignalSpy months(&calendar, &HalvernCalendar::monthChanged);
    calendar.setFirstDayOfWeek(2);
    QCOMPARE(calendar.FirstShownDate(), QDate(2026, 10, 26));
    QCOMPARE(calendar.LastShownDate(), QDate(2026, 12, 6));
    QCOMPARE(calendar.CurrentDate(), Nov15);
    QCOMPARE(months.count(), 0);
}

void TestCalendarControl::marks_data()
{
    // Nov 2026 with Sunday first shows 2026-11-01 .. 2026-12-12.
    QTest::addColumn<QDate>("date");
    QTest::addColumn<bool>("kept");
    // clang-format off
    QTest::newRow("first shown day") << QDate(2026, 11, 1) << true;
    QTest::newRow("last shown day") << QDate(2026, 12, 12) << true;
    QTest::newRow("day before the grid") << QDate(2026, 10, 31) << false;
    QTest::newRow("day after the grid") << QDate(2026, 12, 13) << false;
    QTest::newRow("same day another year") << QDate(2025, 11, 18) << false;
    QTest::newRow("invalid") << QDate() << false;
    // clang-format on
}

void TestCalendarControl::marks()
{
    QFETCH(QDate, date);
    QFETCH(bool, kept);
    HalvernCalendar calendar;
    calendar.setCurrentDate(Nov15);
    calendar.MarkEntryDay(date);
    QCOMPARE(calendar.isEntryDay(date), kept);
    QVERIFY(!calendar.isDayOff(date));
    calendar.MarkDayOff(date);
    QCOMPARE(calendar.isDayOff(date), kept);
    // A mark ignored outside the grid must not surface when that day is shown later.
    if (date.isValid()) {
        calendar.setCurrentDate(date);
        QCOMPARE(calendar.isEntryDay(date), kept);
        QCOMPARE(calendar.isDayOff(date), kept);
    }
}

void TestCalendarControl::clearMarks()
{
    HalvernCalendar calendar;
    calendar.setCurrentDate(Nov15);
    const QList<QDate> days = {QDate(2026, 11, 3), QDate(2026, 11, 4), QDate(2026, 12, 1)};
    for (const QDate& day : days) {
        calendar.MarkEntryDay(day);
        calendar.MarkDayOff(day);
    }
    calendar.MarkEntryDay(days.first()); // twice is still one mark
    calendar.ClearEntryMarks();
    for (const QDate& day : days) {
        QVERIFY(!calendar.isEntryDay(day));
        QVERIFY2(calendar.isDayOff(day), "clearing entry marks must keep the day-offs");
    }
    calendar.MarkEntryDay(days.last());
    calendar.ClearDayOffMarks();
    for (const QDate& day : days)
        QVERIFY(!calendar.isDayOff(day));
    QVERIFY2(calendar.isEntryDay(days.last()), "clearing day-offs must keep the entry marks");
}

void TestCalendarControl::titleText_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("title");
    const QDate march(2026, 3, 9);
    const QDate november(2026, 11, 22);
    // clang-format off
    QTest::newRow("80601 March") << "yyyy年m月" << march << "2026年3月";
    QTest::newRow("80602 March") << "yyyy年mm月" << march << "2026年03月";
    QTest::newRow("80603 March") << "yyyy / m" << march << "2026 / 3";
    QTest::newRow("80604 March") << "yyyy/mm" << march << "2026/03";
    QTest::newRow("80605 March") << "m月 yyyy" << march << "3月 2026";
    QTest::newRow("80606 March") << "mm/yyyy" << march << "03/2026";
    QTest::newRow("80606 year 999") << "mm/yyyy" << QDate(999, 1, 5) << "01/0999";
    // clang-format on
}

void TestCalendarControl::titleText()
{
    QFETCH(QString, format);
    QFETCH(QDate, date);
    QFETCH(QString, title);
    HalvernCalendar calendar;
    calendar.setTitleFormat(format);
    calendar.setCurrentDate(date);
    QCOMPARE(calendar.TitleFormat(), format);
    QCOMPARE(calendar.titleText(), title);
    // The title follows the month without the format being set again.
    calendar.setCurrentDate(date.addMonths(1));
    QVERIFY(calendar.titleText() != title);
}

void TestCalendarControl::weekdayHeaders_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("firstDay");
    QTest::addColumn<QStringList>("headers");
    // clang-format off
    QTest::newRow("80801 Sunday first") << "日" << 1 << QStringList{"日", "月", "火", "水", "木", "金", "土"};
    QTest::newRow("80802 Saturday first") << "(日)" << 7 << QStringList{"(土)", "(日)", "(月)", "(火)", "(水)", "(木)", "(金)"};
    QTest::newRow("80803 Monday first") << "日曜" << 2 << QStringList{"月曜", "火曜", "水曜", "木曜", "金曜", "土曜", "日曜"};
    QTest::newRow("80804 Wednesday first") << "日曜日" << 4 << QStringList{"水曜日", "木曜日", "金曜日", "土曜日", "日曜日", "月曜日", "火曜日"};
    QTest::newRow("80805 Sunday first") << "Sun" << 1 << QStringList{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    QTest::newRow("80806 Friday first") << "SUN" << 6 << QStringList{"FRI", "SAT", "SUN", "MON", "TUE", "WED", "THU"};
    QTest::newRow("80807 Monday first") << "S" << 2 << QStringList{"M", "T", "W", "T", "F", "S", "S"};
    QTest::newRow("unknown reads as kanji") << "xyz" << 2 << QStringList{"月", "火", "水", "木", "金", "土", "日"};
    // clang-format on
}

void TestCalendarControl::weekdayHeaders()
{
    QFETCH(QString, format);
    QFETCH(int, firstDay);
    QFETCH(QStringList, headers);
    HalvernCalendar calendar;
    calendar.setWeekdayFormat(format);
    calendar.setFirstDayOfWeek(firstDay);
    calendar.setCurrentDate(Nov15);
    QCOMPARE(calendar.weekdayHeaders(), headers);
}

void TestCalendarControl::signalOrder_data()
{
    QTest::addColumn<QDate>("target");
    QTest::addColumn<QStringList>("expected");
    // clang-format off
    QTest::newRow("same month") << QDate(2026, 11, 20) << QStringList{"date 2026-11-20"};
    QTest::newRow("next month") << QDate(2026, 12, 3) << QStringList{"month 2026/12 grid 2026-11-29", "date 2026-12-03"};
    QTest::newRow("same month, other year") << QDate(2027, 11, 15) << QStringList{"month 2027/11 grid 2027-10-31", "date 2027-11-15"};
    QTest::newRow("same date") << Nov15 << QStringList{};
    QTest::newRow("invalid date") << QDate() << QStringList{};
    // clang-format on
}

void TestCalendarControl::signalOrder()
{
    QFETCH(QDate, target);
    QFETCH(QStringList, expected);
    HalvernCalendar calendar;
    calendar.setCurrentDate(Nov15);
    SignalLog log(calendar);
    calendar.setCurrentDate(target);
    QCOMPARE(log.events, expected);
    QCOMPARE(calendar.CurrentDate(), target.isValid() ? target : Nov15);
}

void TestCalendarControl::monthListenerMayMoveTheDay()
{
    // A month listener that selects another day (say the 1st) wins; the stale day is not
    // reported after it.
    HalvernCalendar calendar;
    calendar.setCurrentDate(Nov15);
    connect(&calendar, &HalvernCalendar::monthChanged, &calendar,
            [&calendar](int year, int month) { calendar.setCurrentDate(QDate(year, month, 1)); });
    QSignalSpy days(&calendar, &HalvernCalendar::dateChanged);
    calendar.setCurrentDate(QDate(2026, 12, 20));
    QCOMPARE(calendar.CurrentDate(), QDate(2026, 12, 1));
    QCOMPARE(days.count(), 1);
    QCOMPARE(days.at(0).at(0).toDate(), QDate(2026, 12, 1));
}

void TestCalendarControl::navigation_data()
{
    QTest::addColumn<QDate>("start");
    QTest::addColumn<QStringList>(
        "actions"); // "key N", "wheel DELTA", "click yyyy-MM-dd", "right yyyy-MM-dd", "next", "previous"
    QTest::addColumn<QDate>("expected");
    QTest::addColumn<QStringList>("events");
    using L = QStringList;
    const QString right = QString::number(Qt::Key_Right);
    const QString left = QString::number(Qt::Key_Left);
    const QString up = QString::number(Qt::Key_Up);
    const QString down = QString::number(Qt::Key_Down);
    const QString pageUp = QString::number(Qt::Key_PageUp);
    const QString pageDown = QString::number(Qt::Key_PageDown);
    const QString home = QString::number(Qt::Key_Home);
    const QString enter = QString::number(Qt::Key_Enter);
    const QString ret = QString::number(Qt::Key_Return);
    // clang-format off
    QTest::newRow("right in month") << QDate(2026, 11, 10) << L{"key " + right} << QDate(2026, 11, 11) << L{"date 2026-11-11"};
    QTest::newRow("right over month end") << QDate(2026, 11, 30) << L{"key " + right} << QDate(2026, 12, 1) << L{"month 2026/12 grid 2026-11-29", "date 2026-12-01"};
    QTest::newRow("left over month start") << QDate(2026, 11, 1) << L{"key " + left} << QDate(2026, 10, 31) << L{"month 2026/10 grid 2026-09-27", "date 2026-10-31"};
    QTest::newRow("up a week into last month") << QDate(2026, 11, 3) << L{"key " + up} << QDate(2026, 10, 27) << L{"month 2026/10 grid 2026-09-27", "date 2026-10-27"};
    QTest::newRow("down a week into next year") << QDate(2026, 12, 29) << L{"key " + down} << QDate(2027, 1, 5) << L{"month 2027/1 grid 2026-12-27", "date 2027-01-05"};
    QTest::newRow("page up 31st to February") << QDate(2026, 3, 31) << L{"key " + pageUp} << QDate(2026, 2, 28) << L{"month 2026/2 grid 2026-02-01", "date 2026-02-28"};
    QTest::newRow("page up 31st to leap February") << QDate(2028, 3, 31) << L{"key " + pageUp} << QDate(2028, 2, 29) << L{"month 2028/2 grid 2028-01-30", "date 2028-02-29"};
    QTest::newRow("page down 31st to November") << QDate(2026, 10, 31) << L{"key " + pageDown} << QDate(2026, 11, 30) << L{"month 2026/11 grid 2026-11-01", "date 2026-11-30"};
    QTest::newRow("page down over year end") << QDate(2026, 12, 31) << L{"key " + pageDown} << QDate(2027, 1, 31) << L{"month 2027/1 grid 2026-12-27", "date 2027-01-31"};
    QTest::newRow("home goes to today") << QDate(2027, 3, 5) << L{"key " + home} << QDate(2026, 11, 22) << L{"month 2026/11 grid 2026-11-01", "date 2026-11-22"};
    QTest::newRow("enter and return confirm the day") << Nov15 << L{"key " + ret, "key " + right, "key " + enter} << QDate(2026, 11, 16) << L{"click 2026-11-15", "date 2026-11-16", "click 2026-11-16"};
    QTest::newRow("wheel up: previous month") << Nov15 << L{"wheel 120"} << QDate(2026, 10, 15) << L{"month 2026/10 grid 2026-09-27", "date 2026-10-15"};
    QTest::newRow("two notches down") << Nov15 << L{"wheel -240"} << QDate(2027, 1, 15) << L{"month 2026/12 grid 2026-11-29", "date 2026-12-15", "month 2027/1 grid 2026-12-27", "date 2027-01-15"};
    QTest::newRow("half notches add up") << Nov15 << L{"wheel 60", "wheel 60"} << QDate(2026, 10, 15) << L{"month 2026/10 grid 2026-09-27", "date 2026-10-15"};
    QTest::newRow("half a notch up and down cancel") << Nov15 << L{"wheel -60", "wheel 60", "wheel -60"} << Nov15 << L{};
    QTest::newRow("click a day of the month") << Nov15 << L{"click 2026-11-18"} << QDate(2026, 11, 18) << L{"date 2026-11-18", "click 2026-11-18"};
    QTest::newRow("click next month's day") << Nov15 << L{"click 2026-12-05"} << QDate(2026, 12, 5) << L{"month 2026/12 grid 2026-11-29", "date 2026-12-05", "click 2026-12-05"};
    QTest::newRow("click the selected day") << Nov15 << L{"click 2026-11-15"} << Nov15 << L{"click 2026-11-15"};
    QTest::newRow("right clicks do nothing") << Nov15 << L{"right 2026-11-20", "right next"} << Nov15 << L{};
    QTest::newRow("arrows keep the day where they can") << QDate(2026, 10, 31) << L{"next", "previous", "previous"} << QDate(2026, 9, 30) << L{"month 2026/11 grid 2026-11-01", "date 2026-11-30", "month 2026/10 grid 2026-09-27", "date 2026-10-30", "month 2026/9 grid 2026-08-30", "date 2026-09-30"};
    // clang-format on
}

void TestCalendarControl::navigation()
{
    QFETCH(QDate, start);
    QFETCH(QStringList, actions);
    QFETCH(QDate, expected);
    QFETCH(QStringList, events);
    HalvernCalendar calendar;
    calendar.resize(420, 360);
    calendar.setCurrentDate(start);
    calendar.setTodayProvider([] { return QDate(2026, 11, 22); });
    calendar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&calendar));
    SignalLog log(calendar);
    for (const QString& action : actions) {
        const QString verb = action.section(QLatin1Char(' '), 0, 0);
        const QString what = action.section(QLatin1Char(' '), 1);
        const QRect arrow = what == QLatin1String("next") || verb == QLatin1String("next")
                                ? calendar.nextMonthButtonRect()
                                : calendar.previousMonthButtonRect();
        const QPoint at =
            what.size() == 10 ? calendar.dayRect(QDate::fromString(what, Qt::ISODate)).center() : arrow.center();
        if (verb == QLatin1String("key"))
            QTest::keyClick(&calendar, static_cast<Qt::Key>(what.toInt()));
        else if (verb == QLatin1String("wheel"))
            SendWheel(calendar, what.toInt());
        else
            QTest::mouseClick(&calendar, verb == QLatin1String("right") ? Qt::RightButton : Qt::LeftButton,
                              Qt::NoModifier, at);
    }
    QCOMPARE(calendar.CurrentDate(), expected);
    QCOMPARE(log.events, events);
    QVERIFY(calendar.isShown(expected));
}

void TestCalendarControl::cellsTileTheGrid_data()
{
    QTest::addColumn<QSize>("size");
    // clang-format off
    QTest::newRow("odd sizes") << QSize(301, 257);
    QTest::newRow("narrow") << QSize(180, 200);
    // clang-format on
}

void TestCalendarControl::cellsTileTheGrid()
{
    QFETCH(QSize, size);
    HalvernCalendar calendar;
    calendar.resize(size);
    calendar.setCurrentDate(Nov15);
    QDate day = calendar.FirstShownDate();
    QRect previous;
    for (int i = 0; i < 42; ++i, day = day.addDays(1)) {
        const QRect cell = calendar.dayRect(day);
        QVERIFY2(!cell.isEmpty(), qPrintable(day.toString(Qt::ISODate)));
        QVERIFY(calendar.rect().contains(cell));
        QCOMPARE(calendar.dateAt(cell.topLeft()), day);
        QCOMPARE(calendar.dateAt(cell.bottomRight()), day);
        QCOMPARE(calendar.dateAt(cell.center()), day);
        if (i % 7 != 0)
            QCOMPARE(cell.left(), previous.right() + 1); // no gap, no overlap
        QVERIFY(!cell.intersects(calendar.previousMonthButtonRect()));
        previous = cell;
    }
    QVERIFY(calendar.dayRect(calendar.FirstShownDate().addDays(-1)).isNull());
    QVERIFY(calendar.dayRect(calendar.LastShownDate().addDays(1)).isNull());
    QVERIFY(!calendar.dateAt(calendar.previousMonthButtonRect().center()).isValid());
    QVERIFY(!calendar.dateAt(calendar.nextMonthButtonRect().center()).isValid());
}

void TestCalendarControl::designMissingRowsKeepValues_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<bool>("titleKept");
    QTest::addColumn<bool>("firstDayKept");
    QTest::addColumn<bool>("weekdayKept");
    // clang-format off
    QTest::newRow("no 301") << "DELETE FROM TRNGENERAL WHERE CODE = 301" << true << false << false;
    QTest::newRow("301 names no row") << "UPDATE TRNGENERAL SET DATAN1 = 80699 WHERE CODE = 301" << true << false << false;
    QTest::newRow("no 302") << "DELETE FROM TRNGENERAL WHERE CODE = 302" << false << true << false;
    QTest::newRow("no 303") << "DELETE FROM TRNGENERAL WHERE CODE = 303" << false << false << true;
    // clang-format on
}

void TestCalendarControl::designMissingRowsKeepValues()
{
    QFETCH(QString, sql);
    QFETCH(bool, titleKept);
    QFETCH(bool, firstDayKept);
    QFETCH(bool, weekdayKept);
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 80603 WHERE CODE = 301"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 2 WHERE CODE = 302"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 80805 WHERE CODE = 303"));
    env.db().ExecuteSql(sql);
    HalvernCalendar calendar;
    calendar.setTitleFormat(QStringLiteral("mm.yyyy"));
    calendar.setFirstDayOfWeek(4);
    calendar.setWeekdayFormat(QStringLiteral("(日)"));
    ApplyCalendarDesign(env.db(), calendar);
    QCOMPARE(calendar.TitleFormat(), titleKept ? QStringLiteral("mm.yyyy") : QStringLiteral("yyyy / m"));
    QCOMPARE(calendar.FirstDayOfWeek(), firstDayKept ? 4 : 2);
    QCOMPARE(calendar.WeekdayFormat(), weekdayKept ? QStringLiteral("(日)") : QStringLiteral("Sun"));
}

void TestCalendarControl::designSpotFromRow_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("bold");
    QTest::addColumn<QString>("italic");
    QTest::addColumn<bool>("expectBold");
    QTest::addColumn<bool>("expectItalic");
    // clang-format off
    QTest::newRow("90 entry day, numbers") << 90 << "0" << "1" << false << true;
    QTest::newRow("130 day-off, bold") << 130 << "1" << "0" << true << false;
    QTest::newRow("10 title, words") << 10 << "'True'" << "'False'" << true << false;
    QTest::newRow("30 day, minus one is true") << 30 << "-1" << "-1" << true << true;
    QTest::newRow("135 last calendar spot") << 135 << "0" << "0" << false << false;
    // clang-format on
}

void TestCalendarControl::designSpotFromRow()
{
    QFETCH(int, code);
    QFETCH(QString, bold);
    QFETCH(QString, italic);
    QFETCH(bool, expectBold);
    QFETCH(bool, expectItalic);
    TestEnvironment env;
    // 0x00BBGGRR: blue 0x56, green 0x34, red 0x12.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = %1, FORECOLOR = %2, FOREFONT = %3, "
                                       "FSIZE = 10.5, FBOLD = %4, FITALIC = %5 WHERE CODE = %6 AND SETNUM = 0")
                            .arg(0x563412)
                            .arg(0x0000F0)
                            .arg(QuoteText(QStringLiteral("IPAGothic")), bold, italic)
                            .arg(code));
    HalvernCalendar calendar;
    ApplyCalendarDesign(env.db(), calendar);
    const SpotDesign design = calendar.spotDesign(code);
    QCOMPARE(design.back, QColor(0x12, 0x34, 0x56));
    QCOMPARE(design.text, QColor(0xF0, 0x00, 0x00));
    QCOMPARE(design.font.family(), QStringLiteral("IPAGothic"));
    QCOMPARE(design.font.pointSizeF(), 10.5);
    QCOMPARE(design.font.bold(), expectBold);
    QCOMPARE(design.font.italic(), expectItalic);
    // Other spots keep the shipped row's look (spot 60 is stored as 16316664 = 0xF8F8F8).
    const SpotDesign other = calendar.spotDesign(60);
    QCOMPARE(other.back, QColor(0xF8, 0xF8, 0xF8));
    QCOMPARE(other.font.pointSizeF(), 10.0);
}

void TestCalendarControl::designIgnoresPanelSpotAndOtherSets()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = 255, FORECOLOR = 255, FSIZE = 30 "
                                       "WHERE CODE = 140"));
    // A second design set must not leak into the one in use.
    env.db().ExecuteSql(
        QStringLiteral("INSERT INTO TRNCOLOR (CODE,SETNUM,SPOT,BACKCOLOR,FOREFONT,FSIZE,FBOLD,FITALIC,FORECOLOR) "
                       "VALUES (30, 1, 'x', 65280, 'IPAGothic', 20, 1, 1, 65280)"));
    HalvernCalendar calendar;
    calendar.setGridLineColor(Qt::red);
    const SpotDesign panelBefore = calendar.spotDesign(140);
    ApplyCalendarDesign(env.db(), calendar);
    QCOMPARE(calendar.gridLineColor(), QColor(0xE0, 0xE0, 0xE0));
    QCOMPARE(calendar.spotDesign(140).back, panelBefore.back);
    QCOMPARE(calendar.spotDesign(140).text, panelBefore.text);
    QVERIFY(calendar.spotDesign(140).font.pointSizeF() != 30.0);
    const SpotDesign day = calendar.spotDesign(30);
    QCOMPARE(day.back, QColor(0xFF, 0xFF, 0xFF));
    QCOMPARE(day.text, QColor(0x20, 0x20, 0x20));
    QCOMPARE(day.font.pointSizeF(), 10.0);
    QVERIFY(!day.font.bold());
    // The shipped rows themselves arrive: Saturday's text is 12582912 = 0xC00000 (blue).
    QCOMPARE(calendar.spotDesign(50).text, QColor(0x00, 0x00, 0xC0));
    QCOMPARE(calendar.spotDesign(70).text, QColor(0xFF, 0x80, 0x00));
}

void TestCalendarControl::paintDayOffAndSelection()
{
    HalvernCalendar calendar;
    calendar.resize(490, 420);
    calendar.setCurrentDate(QDate(2026, 11, 10));
    SpotDesign dayOff = calendar.spotDesign(130);
    dayOff.back = QColor(0x12, 0x34, 0x56);
    calendar.setSpotDesign(130, dayOff);
    SpotDesign selected = calendar.spotDesign(80);
    selected.back = QColor(0x65, 0x43, 0x21);
    calendar.setSpotDesign(80, selected);
    SpotDesign plain = calendar.spotDesign(30);
    plain.back = QColor(0xAB, 0xCD, 0xEF);
    calendar.setSpotDesign(30, plain);
    calendar.MarkDayOff(QDate(2026, 11, 18));

    QImage image(calendar.size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    calendar.render(&image);
    QCOMPARE(PixelAt(image, BesideTheDigits(calendar.dayRect(QDate(2026, 11, 18)))), QColor(0x12, 0x34, 0x56).rgb());
    QCOMPARE(PixelAt(image, BesideTheDigits(calendar.dayRect(QDate(2026, 11, 10)))), QColor(0x65, 0x43, 0x21).rgb());
    QCOMPARE(PixelAt(image, BesideTheDigits(calendar.dayRect(QDate(2026, 11, 19)))), QColor(0xAB, 0xCD, 0xEF).rgb());

    // Clearing the mark and moving the selection repaint those days as plain days.
    calendar.ClearDayOffMarks();
    calendar.setCurrentDate(QDate(2026, 11, 12));
    calendar.render(&image);
    QCOMPARE(PixelAt(image, BesideTheDigits(calendar.dayRect(QDate(2026, 11, 18)))), QColor(0xAB, 0xCD, 0xEF).rgb());
    QCOMPARE(PixelAt(image, BesideTheDigits(calendar.dayRect(QDate(2026, 11, 10)))), QColor(0xAB, 0xCD, 0xEF).rgb());
    QCOMPARE(PixelAt(image, BesideTheDigits(calendar.dayRect(QDate(2026, 11, 12)))), QColor(0x65, 0x43, 0x21).rgb());
}

void TestCalendarControl::weekendColours()
{
    // Sundays in green, Saturdays in blue, digits and headings alike; other days and
    // headings keep their own dark text.
    HalvernCalendar calendar;
    calendar.resize(490, 420);
    calendar.setCurrentDate(QDate(2026, 11, 18));
    for (const int spot : {40, 100, 50, 110}) {
        SpotDesign design = calendar.spotDesign(spot);
        design.text = spot == 40 || spot == 100 ? QColor(0, 200, 0) : QColor(0, 0, 255);
        calendar.setSpotDesign(spot, design);
    }
    QImage image(calendar.size(), QImage::Format_ARGB32);
    calendar.render(&image);
    const QRect firstRow = calendar.dayRect(calendar.FirstShownDate());
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
    const auto heading = [&](const QDate& day) {
        const QRect cell = calendar.dayRect(day);
        return QRect(cell.left(), firstRow.top() - cell.height() / 2, cell.width(), cell.height() / 2 - 1);
    };
    QCOMPARE(inks(calendar.dayRect(QDate(2026, 11, 22))), QStringLiteral("g")); // Sunday
    QCOMPARE(inks(calendar.dayRect(QDate(2026, 11, 21))), QStringLiteral("b")); // Saturday
    QCOMPARE(inks(calendar.dayRect(QDate(2026, 11, 25))), QString());
    QCOMPARE(inks(heading(QDate(2026, 11, 1))), QStringLiteral("g"));
    QCOMPARE(inks(heading(QDate(2026, 11, 7))), QStringLiteral("b"));
    QCOMPARE(inks(heading(QDate(2026, 11, 4))), QString());
}

VERDALY_TEST(TestCalendarControl)
#include "tst_calendarcontrol.moc"
