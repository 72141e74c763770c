#include "calendarcontrol/HalvernCalendar.h"
#include "support/TestKit.h"

#include <QHelpEvent>
#include <QImage>
#include <QToolTip>
#include <QtTest>

// Holidays on the month grid: which shown days carry them, the painting and the tip (the
// switch that hides them is tested with the settings dialog that sets it).
class TestHolidayMarks final : public QObject
{
    Q_OBJECT

private slots:
    void neighbouringMonthsToo();
    void paintHolidayAndDayOff();
    void toolTip_data();
    void toolTip();
};

void TestHolidayMarks::neighbouringMonthsToo()
{
    HalvernCalendar calendar;
    calendar.setCurrentDate(QDate(2026, 12, 10)); // grid 2026-11-29 .. 2027-01-09
    QCOMPARE(calendar.holidayName(QDate(2027, 1, 1)), QStringLiteral("元日"));
    QVERIFY(calendar.holidayName(QDate(2026, 11, 23)).isEmpty()); // not shown
    calendar.setCurrentDate(QDate(2026, 11, 10));                 // grid 2026-11-01 .. 2026-12-12
    QCOMPARE(calendar.holidayName(QDate(2026, 11, 23)), QStringLiteral("勤労感謝の日"));
    QVERIFY(calendar.holidayName(QDate(2027, 1, 1)).isEmpty());
    // A Monday-first grid of September 2026 starts on 31 August and still holds the week.
    calendar.setFirstDayOfWeek(2);
    calendar.setCurrentDate(QDate(2026, 9, 1));
    QCOMPARE(calendar.holidayName(QDate(2026, 9, 22)), QStringLiteral("国民の休日"));
}

void TestHolidayMarks::paintHolidayAndDayOff()
{
    HalvernCalendar calendar;
    calendar.resize(490, 420);
    calendar.setCurrentDate(QDate(2026, 5, 20));
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

void TestHolidayMarks::toolTip_data()
{
    QTest::addColumn<QDate>("day");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<QString>("owner"); // what the owner says about the day
    QTest::addColumn<QString>("tip");
    const QDate labour(2026, 11, 23);
    const QDate plain(2026, 11, 24);
    const QString entry = QStringLiteral("10:00 会議");
    QTest::newRow("holiday alone") << labour << true << QString() << QStringLiteral("勤労感謝の日");
    QTest::newRow("holiday and entries") << labour << true << entry << QStringLiteral("勤労感謝の日\n10:00 会議");
    QTest::newRow("plain day") << plain << true << entry << entry;
    QTest::newRow("holidays hidden") << labour << false << entry << entry;
    QTest::newRow("nothing to say") << plain << true << QString() << QString();
}

void TestHolidayMarks::toolTip()
{
    QFETCH(QDate, day);
    QFETCH(bool, shown);
    QFETCH(QString, owner);
    QFETCH(QString, tip);
    HalvernCalendar calendar;
    calendar.resize(490, 420);
    calendar.setCurrentDate(day);
    calendar.setHolidaysShown(shown);
    calendar.setDayToolTipProvider([owner](const QDate&) { return owner; });
    calendar.show();
    QToolTip::hideText();
    const QPoint at = calendar.dayRect(day).center();
    QHelpEvent event(QEvent::ToolTip, at, calendar.mapToGlobal(at));
    QApplication::sendEvent(&calendar, &event);
    QCOMPARE(QToolTip::isVisible() ? QToolTip::text() : QString(), tip);
}

VERDALY_TEST(TestHolidayMarks)
#include "TestHolidayMarks.moc"
