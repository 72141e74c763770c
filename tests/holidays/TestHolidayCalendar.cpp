// Holidays and eras on the month grid: the era title, which shown days carry a holiday, the
// painting and the tip (the switch that hides them is tested with the settings dialog).
#include "calendarcontrol/HalvernCalendar.h"
#include "support/TestKit.h"

#include <QHelpEvent>
#include <QImage>
#include <QToolTip>
#include <QtTest>

class TestHolidayCalendar final : public QObject
{
    Q_OBJECT

private slots:
    // The era title format ("gge年m月") across the changes of era.
    void eraTitle_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QString>("title");
        const auto row = [](const char* what, const char* iso, const char* title) {
            QTest::newRow(what) << QDate::fromString(QLatin1String(iso), Qt::ISODate) << QString::fromUtf8(title);
        };
        // clang-format off
        row("last day of Heisei", "2019-04-30", "平成31年4月");
        row("first day of Reiwa", "2019-05-01", "令和元年5月");
        row("last day of Showa", "1989-01-07", "昭和64年1月");
        row("first day of Heisei", "1989-01-08", "平成元年1月");
        row("rest of Heisei 1", "1989-12-31", "平成元年12月");
        row("Heisei 2", "1990-01-01", "平成2年1月");
        row("first day of Showa", "1926-12-25", "昭和元年12月");
        row("last day of Taisho", "1926-12-24", "大正15年12月");
        row("first day of Taisho", "1912-07-30", "大正元年7月");
        row("solar calendar begins in Meiji 6", "1873-01-01", "明治6年1月");
        row("lunisolar days keep the western year", "1872-12-31", "1872年12月");
        // clang-format on
    }
    void eraTitle()
    {
        QFETCH(QDate, day);
        QFETCH(QString, title);
        HalvernCalendar calendar;
        calendar.setTitleFormat(QStringLiteral("gge年m月"));
        calendar.setCurrentDate(day);
        QCOMPARE(calendar.titleText(), title);
    }

    // The tip of a day under the mouse: its holiday, then what the owner says about the day.
    void toolTip_data()
    {
        QTest::addColumn<QDate>("month"); // the month shown
        QTest::addColumn<int>("firstDayOfWeek");
        QTest::addColumn<QDate>("day");
        QTest::addColumn<bool>("shown");
        QTest::addColumn<QString>("owner");
        QTest::addColumn<QString>("tip");
        const QDate november(2026, 11, 10);
        const QDate labour(2026, 11, 23);
        const QDate plain(2026, 11, 24);
        const QString entry = QStringLiteral("10:00 会議");
        // clang-format off
        QTest::newRow("holiday alone") << november << 1 << labour << true << QString() << QStringLiteral("勤労感謝の日");
        QTest::newRow("holiday and entries") << november << 1 << labour << true << entry << QStringLiteral("勤労感謝の日\n10:00 会議");
        QTest::newRow("plain day") << november << 1 << plain << true << entry << entry;
        QTest::newRow("holidays hidden") << november << 1 << labour << false << entry << entry;
        QTest::newRow("nothing to say") << november << 1 << plain << true << QString() << QString();
        QTest::newRow("next year's day in the grid") << QDate(2026, 12, 10) << 1 << QDate(2027, 1, 1) << true << QString() << QStringLiteral("元日");
        // A Monday-first grid of September 2026 starts on 31 August and still holds the week.
        QTest::newRow("Monday-first grid") << QDate(2026, 9, 1) << 2 << QDate(2026, 9, 22) << true << QString() << QStringLiteral("国民の休日");
        // clang-format on
    }
    void toolTip()
    {
        QFETCH(QDate, month);
        QFETCH(int, firstDayOfWeek);
        QFETCH(QDate, day);
        QFETCH(bool, shown);
        QFETCH(QString, owner);
        QFETCH(QString, tip);
        HalvernCalendar calendar;
        calendar.resize(490, 420);
        calendar.setFirstDayOfWeek(firstDayOfWeek);
        calendar.setCurrentDate(month);
        calendar.setHolidaysShown(shown);
        calendar.setDayToolTipProvider([owner](const QDate&) { return owner; });
        calendar.show();
        QToolTip::hideText();
        const QPoint at = calendar.dayRect(day).center();
        QHelpEvent event(QEvent::ToolTip, at, calendar.mapToGlobal(at));
        QApplication::sendEvent(&calendar, &event);
        QCOMPARE(QToolTip::isVisible() ? QToolTip::text() : QString(), tip);
    }

    void paintHolidayAndDayOff()
    {
        HalvernCalendar calendar;
        calendar.resize(490, 420);
        calendar.setCurrentDate(QDate(2026, 5, 20)); // grid 2026-04-26 .. 2026-06-06
        // Only the shown days carry their holidays.
        QCOMPARE(calendar.holidayName(QDate(2026, 4, 29)), QStringLiteral("昭和の日"));
        QVERIFY(calendar.holidayName(QDate(2026, 3, 20)).isEmpty());
        QVERIFY(calendar.holidayName(QDate(2026, 7, 20)).isEmpty());
        const auto design = [&calendar](int code, const QColor& back, const QColor& text) {
            SpotDesign spot = calendar.spotDesign(code);
            spot.back = back;
            spot.text = text;
            calendar.setSpotDesign(code, spot);
        };
        design(130, QColor(0x10, 0x20, 0x30), QColor(0x01, 0x02, 0x03)); // day-off
        design(135, QColor(0x40, 0x50, 0x60), QColor(0x04, 0x05, 0x06)); // holiday
        design(60, QColor(0xF0, 0xF0, 0xF0), QColor(0x90, 0x90, 0x90));  // neighbouring months
        calendar.MarkDayOff(QDate(2026, 5, 5));                          // children's day, also the user's day off
        calendar.MarkDayOff(QDate(2026, 5, 7));

        QImage image(calendar.size(), QImage::Format_ARGB32);
        calendar.render(&image);
        const auto back = [&](const QDate& day) {
            const QRect cell = calendar.dayRect(day);
            return image.pixelColor(cell.left() + cell.width() / 6, cell.center().y());
        };
        const auto corner = [&](const QDate& day) {
            const QRect cell = calendar.dayRect(day);
            return image.pixelColor(cell.right() - 1, cell.top() + 1);
        };
        QCOMPARE(back(QDate(2026, 5, 4)), QColor(0x40, 0x50, 0x60));    // holiday
        QCOMPARE(back(QDate(2026, 5, 5)), QColor(0x40, 0x50, 0x60));    // holiday and day-off ...
        QCOMPARE(corner(QDate(2026, 5, 5)), QColor(0x01, 0x02, 0x03));  // ... with the day-off corner
        QCOMPARE(back(QDate(2026, 5, 7)), QColor(0x10, 0x20, 0x30));    // day-off only
        QVERIFY(corner(QDate(2026, 5, 4)) != QColor(0x01, 0x02, 0x03)); // no corner on a plain holiday
        // 29 April is in the grid's first row, a neighbouring day: marked, but paler.
        QCOMPARE(back(QDate(2026, 4, 29)), QColor(0x98, 0xA0, 0xA8));

        calendar.setHolidaysShown(false);
        calendar.render(&image);
        QCOMPARE(back(QDate(2026, 5, 5)), QColor(0x10, 0x20, 0x30));
        QCOMPARE(back(QDate(2026, 4, 29)), QColor(0xF0, 0xF0, 0xF0));
    }
};

VERDALY_TEST(TestHolidayCalendar)
#include "TestHolidayCalendar.moc"
