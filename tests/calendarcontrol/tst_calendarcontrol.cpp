// The month grid on its own: which days it shows, the marks it keeps, its title and
// headings, and how keys, the wheel and the mouse move the selection.
#include "calendarcontrol/HalvernCalendar.h"
#include "support/TestKit.h"

#include <QSignalSpy>
#include <QWheelEvent>
#include <QtTest>

const QDate Nov15(2026, 11, 15);

class TestCalendarControl : public QObject
{
    Q_OBJECT

private slots:
    void shownRange_data()
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
    void shownRange()
    {
        QFETCH(int, year);
        QFETCH(int, month);
        QFETCH(QStringList, firsts);
        const QDate day(year, month, 15);
        HalvernCalendar calendar;
        calendar.setCurrentDate(day);
        QSignalSpy months(&calendar, &HalvernCalendar::monthChanged);
        // Out-of-range values mean Sunday; the design may arrive after the day was chosen.
        for (const int firstDay : {3, 0, 1, 2, 3, 4, 5, 6, 7, 8, -1, 255}) {
            const int expected = firstDay >= 1 && firstDay <= 7 ? firstDay : 1;
            calendar.setFirstDayOfWeek(firstDay);
            QCOMPARE(calendar.FirstDayOfWeek(), expected);
            QCOMPARE(months.count(), 0);
            QCOMPARE(calendar.CurrentDate(), day);
            for (int pass = 0; pass < 2; ++pass) {
                const QDate first = calendar.FirstShownDate();
                QVERIFY2(first == QDate::fromString(firsts.at(expected - 1), Qt::ISODate),
                         qPrintable(QStringLiteral("first day %1 gave %2").arg(firstDay).arg(first.toString())));
                QCOMPARE(first.daysTo(calendar.LastShownDate()), 41);
                // Coming back from another month lays the grid out the same way.
                calendar.setCurrentDate(day.addMonths(1));
                calendar.setCurrentDate(day);
                months.clear();
            }
        }
    }

    void marks()
    {
        // Nov 2026 with Sunday first shows 2026-11-01 .. 2026-12-12; a mark outside it is
        // dropped and must not surface when its day is shown later.
        const QList<QPair<QDate, bool>> days = {{QDate(2026, 11, 1), true},   {QDate(2026, 12, 12), true},
                                                {QDate(2026, 10, 31), false}, {QDate(2026, 12, 13), false},
                                                {QDate(2025, 11, 18), false}, {QDate(), false}};
        for (const auto& [date, kept] : days) {
            HalvernCalendar calendar;
            calendar.setCurrentDate(Nov15);
            calendar.MarkEntryDay(date);
            QCOMPARE(calendar.isEntryDay(date), kept);
            QVERIFY(!calendar.isDayOff(date));
            calendar.MarkDayOff(date);
            QCOMPARE(calendar.isDayOff(date), kept);
            calendar.setCurrentDate(date);
            QCOMPARE(calendar.isEntryDay(date), kept);
            QCOMPARE(calendar.isDayOff(date), kept);
        }
    }

    void titleAndHeadings_data()
    {
        QTest::addColumn<QString>("titleFormat");
        QTest::addColumn<QDate>("date");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("weekdayFormat");
        QTest::addColumn<int>("firstDay");
        QTest::addColumn<QStringList>("headings");
        const QDate march(2026, 3, 9);
        // clang-format off
        QTest::newRow("80601 / 80801") << "yyyy年m月" << march << "2026年3月" << "日" << 1 << QStringList{"日", "月", "火", "水", "木", "金", "土"};
        QTest::newRow("80602 / 80802") << "yyyy年mm月" << march << "2026年03月" << "(日)" << 7 << QStringList{"(土)", "(日)", "(月)", "(火)", "(水)", "(木)", "(金)"};
        QTest::newRow("80603 / 80803") << "yyyy / m" << march << "2026 / 3" << "日曜" << 2 << QStringList{"月曜", "火曜", "水曜", "木曜", "金曜", "土曜", "日曜"};
        QTest::newRow("80604 / 80804") << "yyyy/mm" << march << "2026/03" << "日曜日" << 4 << QStringList{"水曜日", "木曜日", "金曜日", "土曜日", "日曜日", "月曜日", "火曜日"};
        QTest::newRow("80605 / 80805") << "m月 yyyy" << march << "3月 2026" << "Sun" << 1 << QStringList{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
        QTest::newRow("80606 / 80806") << "mm/yyyy" << march << "03/2026" << "SUN" << 6 << QStringList{"FRI", "SAT", "SUN", "MON", "TUE", "WED", "THU"};
        QTest::newRow("year 999 / 80807") << "mm/yyyy" << QDate(999, 1, 5) << "01/0999" << "S" << 2 << QStringList{"M", "T", "W", "T", "F", "S", "S"};
        QTest::newRow("unknown weekday format reads as kanji") << "yyyy/mm" << Nov15 << "2026/11" << "xyz" << 2 << QStringList{"月", "火", "水", "木", "金", "土", "日"};
        // clang-format on
    }
    void titleAndHeadings()
    {
        QFETCH(QString, titleFormat);
        QFETCH(QDate, date);
        QFETCH(QString, title);
        QFETCH(QString, weekdayFormat);
        QFETCH(int, firstDay);
        QFETCH(QStringList, headings);
        HalvernCalendar calendar;
        calendar.setTitleFormat(titleFormat);
        calendar.setWeekdayFormat(weekdayFormat);
        calendar.setFirstDayOfWeek(firstDay);
        calendar.setCurrentDate(date);
        QCOMPARE(calendar.titleText(), title);
        QCOMPARE(calendar.weekdayHeaders(), headings);
        // The title follows the month without the format being set again.
        calendar.setCurrentDate(date.addMonths(1));
        QVERIFY(calendar.titleText() != title);
    }

    void navigation_data()
    {
        // "set yyyy-MM-dd" (from code), "key N", "wheel DELTA", "click yyyy-MM-dd",
        // "right yyyy-MM-dd", "next", "previous", "right next"; "first": from now on a month
        // listener selects the 1st, and the stale day is not reported after it
        QTest::addColumn<QDate>("start");
        QTest::addColumn<QStringList>("actions");
        QTest::addColumn<QDate>("expected");
        QTest::addColumn<QStringList>("expectedEvents");
        using L = QStringList;
        const auto key = [](Qt::Key k) { return QStringLiteral("key %1").arg(int(k)); };
        // clang-format off
        QTest::newRow("set, same month") << Nov15 << L{"set 2026-11-20"} << QDate(2026, 11, 20) << L{"date 2026-11-20"};
        QTest::newRow("set, next month") << Nov15 << L{"set 2026-12-03"} << QDate(2026, 12, 3) << L{"month 2026/12 grid 2026-11-29", "date 2026-12-03"};
        QTest::newRow("set, same month other year") << Nov15 << L{"set 2027-11-15"} << QDate(2027, 11, 15) << L{"month 2027/11 grid 2027-10-31", "date 2027-11-15"};
        QTest::newRow("set, same date") << Nov15 << L{"set 2026-11-15"} << Nov15 << L{};
        QTest::newRow("set, invalid date") << Nov15 << L{"set x"} << Nov15 << L{};
        QTest::newRow("right in month") << QDate(2026, 11, 10) << L{key(Qt::Key_Right)} << QDate(2026, 11, 11) << L{"date 2026-11-11"};
        QTest::newRow("right over month end") << QDate(2026, 11, 30) << L{key(Qt::Key_Right)} << QDate(2026, 12, 1) << L{"month 2026/12 grid 2026-11-29", "date 2026-12-01"};
        QTest::newRow("left over month start") << QDate(2026, 11, 1) << L{key(Qt::Key_Left)} << QDate(2026, 10, 31) << L{"month 2026/10 grid 2026-09-27", "date 2026-10-31"};
        QTest::newRow("up a week into last month") << QDate(2026, 11, 3) << L{key(Qt::Key_Up)} << QDate(2026, 10, 27) << L{"month 2026/10 grid 2026-09-27", "date 2026-10-27"};
        QTest::newRow("down a week into next year") << QDate(2026, 12, 29) << L{key(Qt::Key_Down)} << QDate(2027, 1, 5) << L{"month 2027/1 grid 2026-12-27", "date 2027-01-05"};
        QTest::newRow("page up 31st to February") << QDate(2026, 3, 31) << L{key(Qt::Key_PageUp)} << QDate(2026, 2, 28) << L{"month 2026/2 grid 2026-02-01", "date 2026-02-28"};
        QTest::newRow("page up 31st to leap February") << QDate(2028, 3, 31) << L{key(Qt::Key_PageUp)} << QDate(2028, 2, 29) << L{"month 2028/2 grid 2028-01-30", "date 2028-02-29"};
        QTest::newRow("page down 31st to November") << QDate(2026, 10, 31) << L{key(Qt::Key_PageDown)} << QDate(2026, 11, 30) << L{"month 2026/11 grid 2026-11-01", "date 2026-11-30"};
        QTest::newRow("page down over year end") << QDate(2026, 12, 31) << L{key(Qt::Key_PageDown)} << QDate(2027, 1, 31) << L{"month 2027/1 grid 2026-12-27", "date 2027-01-31"};
        QTest::newRow("home goes to today") << QDate(2027, 3, 5) << L{key(Qt::Key_Home)} << QDate(2026, 11, 22) << L{"month 2026/11 grid 2026-11-01", "date 2026-11-22"};
        QTest::newRow("enter and return confirm the day") << Nov15 << L{key(Qt::Key_Return), key(Qt::Key_Right), key(Qt::Key_Enter)} << QDate(2026, 11, 16) << L{"click 2026-11-15", "date 2026-11-16", "click 2026-11-16"};
        QTest::newRow("wheel up: previous month") << Nov15 << L{"wheel 120"} << QDate(2026, 10, 15) << L{"month 2026/10 grid 2026-09-27", "date 2026-10-15"};
        QTest::newRow("two notches down") << Nov15 << L{"wheel -240"} << QDate(2027, 1, 15) << L{"month 2026/12 grid 2026-11-29", "date 2026-12-15", "month 2027/1 grid 2026-12-27", "date 2027-01-15"};
        QTest::newRow("half notches add up") << Nov15 << L{"wheel 60", "wheel 60"} << QDate(2026, 10, 15) << L{"month 2026/10 grid 2026-09-27", "date 2026-10-15"};
        QTest::newRow("half a notch up and down cancel") << Nov15 << L{"wheel -60", "wheel 60", "wheel -60"} << Nov15 << L{};
        QTest::newRow("click a day of the month") << Nov15 << L{"click 2026-11-18"} << QDate(2026, 11, 18) << L{"date 2026-11-18", "click 2026-11-18"};
        QTest::newRow("click next month's day") << Nov15 << L{"click 2026-12-05"} << QDate(2026, 12, 5) << L{"month 2026/12 grid 2026-11-29", "date 2026-12-05", "click 2026-12-05"};
        QTest::newRow("click the selected day") << Nov15 << L{"click 2026-11-15"} << Nov15 << L{"click 2026-11-15"};
        QTest::newRow("a month listener may move the day") << Nov15 << L{"first", "set 2026-12-20"} << QDate(2026, 12, 1) << L{"month 2026/12 grid 2026-11-29", "date 2026-12-01"};
        QTest::newRow("right clicks do nothing") << Nov15 << L{"right 2026-11-20", "right next"} << Nov15 << L{};
        QTest::newRow("arrows keep the day where they can") << QDate(2026, 10, 31) << L{"next", "previous", "previous"} << QDate(2026, 9, 30) << L{"month 2026/11 grid 2026-11-01", "date 2026-11-30", "month 2026/10 grid 2026-09-27", "date 2026-10-30", "month 2026/9 grid 2026-08-30", "date 2026-09-30"};
        // clang-format on
    }
    void navigation()
    {
        QFETCH(QDate, start);
        QFETCH(QStringList, actions);
        QFETCH(QDate, expected);
        QFETCH(QStringList, expectedEvents);
        HalvernCalendar calendar;
        calendar.resize(420, 360);
        calendar.setCurrentDate(start);
        calendar.setTodayProvider([] { return QDate(2026, 11, 22); });
        calendar.show();
        QVERIFY(QTest::qWaitForWindowExposed(&calendar));
        // Every signal in the order it came, with the grid shown at a month change.
        QStringList events;
        const auto logDay = [&events](const char* what) {
            return [&events, what](const QDate& date) { events << QLatin1String(what) + date.toString(Qt::ISODate); };
        };
        connect(&calendar, &HalvernCalendar::dateChanged, &calendar, logDay("date "));
        connect(&calendar, &HalvernCalendar::dateClicked, &calendar, logDay("click "));
        connect(&calendar, &HalvernCalendar::monthChanged, &calendar, [&](int year, int month) {
            events << QStringLiteral("month %1/%2 grid %3")
                          .arg(year)
                          .arg(month)
                          .arg(calendar.FirstShownDate().toString(Qt::ISODate));
        });
        for (const QString& action : actions) {
            const QString verb = action.section(QLatin1Char(' '), 0, 0);
            const QString what = action.section(QLatin1Char(' '), 1);
            const QDate day = QDate::fromString(what, Qt::ISODate);
            const QRect arrow = what == QLatin1String("next") || verb == QLatin1String("next")
                                    ? calendar.nextMonthButtonRect()
                                    : calendar.previousMonthButtonRect();
            if (verb == QLatin1String("first")) {
                connect(&calendar, &HalvernCalendar::monthChanged, &calendar,
                        [&calendar](int year, int month) { calendar.setCurrentDate(QDate(year, month, 1)); });
            } else if (verb == QLatin1String("set")) {
                calendar.setCurrentDate(day);
            } else if (verb == QLatin1String("key")) {
                QTest::keyClick(&calendar, static_cast<Qt::Key>(what.toInt()));
            } else if (verb == QLatin1String("wheel")) {
                const QPointF at(calendar.width() / 2.0, calendar.height() / 2.0);
                QWheelEvent wheel(at, calendar.mapToGlobal(at), QPoint(), QPoint(0, what.toInt()), Qt::NoButton,
                                  Qt::NoModifier, Qt::NoScrollPhase, false);
                QApplication::sendEvent(&calendar, &wheel);
            } else {
                QTest::mouseClick(&calendar, verb == QLatin1String("right") ? Qt::RightButton : Qt::LeftButton,
                                  Qt::NoModifier, day.isValid() ? calendar.dayRect(day).center() : arrow.center());
            }
        }
        QCOMPARE(calendar.CurrentDate(), expected);
        QCOMPARE(events, expectedEvents);
        QVERIFY(calendar.isShown(expected));
    }

    void cellsTileTheGrid()
    {
        for (const QSize& size : {QSize(301, 257), QSize(180, 200)}) {
            HalvernCalendar calendar;
            calendar.resize(size);
            calendar.setCurrentDate(Nov15);
            QDate day = calendar.FirstShownDate();
            QRect previous;
            for (int i = 0; i < 42; ++i, day = day.addDays(1)) {
                const QRect cell = calendar.dayRect(day);
                QVERIFY2(!cell.isEmpty() && calendar.rect().contains(cell), qPrintable(day.toString(Qt::ISODate)));
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
    }
};

VERDALY_TEST(TestCalendarControl)
#include "tst_calendarcontrol.moc"
