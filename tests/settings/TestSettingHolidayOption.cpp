// "祝日を表示": read from CODE 317 by the calendar and the dialog alike (no row reads as on),
// written by OK (the row is added to a database that lacks it), and obeyed afterwards.
#include "calendarcontrol/CalendarDesign.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "settings/FrmSetting.h"
#include "support/TestKit.h"

#include <QAbstractButton>
#include <QtTest>

class TestSettingHolidayOption final : public QObject
{
    Q_OBJECT

private slots:
    void toggleAndSave_data();
    void toggleAndSave();
};

void TestSettingHolidayOption::toggleAndSave_data()
{
    QTest::addColumn<int>("stored"); // DATAN1 of row 317; -1: no row
    QTest::addColumn<bool>("checked");
    QTest::newRow("no row") << -1 << true;
    QTest::newRow("on") << 1 << true;
    QTest::newRow("off") << 0 << false;
}

void TestSettingHolidayOption::toggleAndSave()
{
    QFETCH(int, stored);
    QFETCH(bool, checked);
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 317"));
    if (stored >= 0)
        StoreGeneral(env.db(), 317, {{QStringLiteral("DATAN1"), stored}});
    HalvernCalendar calendar;
    calendar.setHolidaysShown(!checked); // the design must set it either way
    calendar.setCurrentDate(QDate(2026, 5, 10));
    ApplyCalendarDesign(env.db(), calendar);
    QCOMPARE(calendar.holidaysShown(), checked);
    QCOMPARE(calendar.holidayName(QDate(2026, 5, 6)).isEmpty(), !checked);
    FrmSetting dialog(env.services);
    auto* box = Control<QAbstractButton>(&dialog, "ChkHoliday");
    QCOMPARE(box->isChecked(), checked);
    box->click();
    Click(&dialog, "ComOK");
    QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 317"), {QStringLiteral("DATAN1")}),
             QStringList{checked ? QStringLiteral("0") : QStringLiteral("1")});
    ApplyCalendarDesign(env.db(), calendar);
    QCOMPARE(calendar.holidaysShown(), !checked);
}

VERDALY_TEST(TestSettingHolidayOption)
#include "TestSettingHolidayOption.moc"
