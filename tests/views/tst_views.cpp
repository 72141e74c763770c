#include "calendarcontrol/HalvernCalendar.h"
#include "support/TestKit.h"
#include "views/FrmDate.h"
#include "views/FrmDatePicker.h"

#include <QtTest>

class TestViews : public QObject
{
    Q_OBJECT

private slots:
    void opensWhereAskedWithTheDate_data();
    void opensWhereAskedWithTheDate();
    void picks_data();
    void picks();
    void appliesTheCalendarDesign();
    void pickerSeamRunsTheDialog();
};

void TestViews::opensWhereAskedWithTheDate_data()
{
    QTest::addColumn<QDate>("given");
    QTest::addColumn<QDate>("shown");
    QTest::addColumn<QString>("title");
    QTest::newRow("the box's date") << QDate(2027, 2, 14) << QDate(2027, 2, 14) << "2027/2/14 (日)";
    QTest::newRow("an empty box opens on today") << QDate() << QDate(2026, 11, 22) << "2026/11/22 (日)";
}

void TestViews::opensWhereAskedWithTheDate()
{
    QFETCH(QDate, given);
    QFETCH(QDate, shown);
    QFETCH(QString, title);
    TestEnvironment env;
    DatePickHandOver handOver;
    handOver.PickedDate = given;
    handOver.DatePicked = true; // stale from an earlier use: the picker starts from "nothing picked"
    handOver.PickerLeft = 1500;
    handOver.PickerTop = 3000;
    FrmDate picker(env.services, handOver);
    QCOMPARE(picker.pos(), QPoint(100, 200)); // twips at 96 dpi
    QCOMPARE(picker.calendar()->CurrentDate(), shown);
    QVERIFY(!handOver.DatePicked);
    QCOMPARE(picker.windowTitle(), title);
    QCOMPARE(Shown(&picker, "LabToday"), QStringLiteral("Today : 2026/11/22 (日)"));
}

void TestViews::picks_data()
{
    QTest::addColumn<QString>("how");
    QTest::addColumn<bool>("picked");
    QTest::addColumn<QDate>("date");
    // The picker opens on 2026/12/10 and is browsed to 2027/01 before the choice.
    QTest::newRow("a day of the next month") << "click" << true << QDate(2027, 1, 2);
    QTest::newRow("today link") << "today" << true << QDate(2026, 11, 22);
    QTest::newRow("cancel") << "cancel" << false << QDate(2026, 12, 10);
    QTest::newRow("escape") << "escape" << false << QDate(2026, 12, 10);
}

void TestViews::picks()
{
    QFETCH(QString, how);
    QFETCH(bool, picked);
    QFETCH(QDate, date);
    TestEnvironment env;
    DatePickHandOver handOver;
    handOver.PickedDate = QDate(2026, 12, 10);
    FrmDate picker(env.services, handOver);
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    HalvernCalendar* calendar = picker.calendar();
    calendar->setCurrentDate(QDate(2027, 1, 20));
    if (how == QLatin1String("click"))
        QTest::mouseClick(calendar, Qt::LeftButton, Qt::NoModifier, calendar->dayRect(date).center());
    else if (how == QLatin1String("today"))
        QTest::mouseClick(Control(&picker, "LabToday"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
    else if (how == QLatin1String("cancel"))
        Click(&picker, "ComCancel");
    else
        QTest::keyClick(&picker, Qt::Key_Escape);
    QCOMPARE(handOver.DatePicked, picked);
    QCOMPARE(handOver.PickedDate, date);
    QCOMPARE(picker.result(), int(picked ? QDialog::Accepted : QDialog::Rejected));
    QVERIFY(!picker.isVisible());
}

void TestViews::appliesTheCalendarDesign()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 2 WHERE CODE = 302"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 80603 WHERE CODE = 301"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = %1 WHERE CODE = 80").arg(0x00336699));
    DatePickHandOver handOver;
    handOver.PickedDate = QDate(2026, 11, 22);
    FrmDate picker(env.services, handOver);
    QCOMPARE(picker.calendar()->FirstShownDate(), QDate(2026, 10, 26)); // Monday first
    QCOMPARE(picker.calendar()->titleText(), QStringLiteral("2026 / 11"));
    QCOMPARE(picker.calendar()->spotDesign(80).back, QColor(0x99, 0x66, 0x33));
}

void TestViews::pickerSeamRunsTheDialog()
{
    TestEnvironment env;
    FrmDatePicker seam(env.services);
    DatePickHandOver handOver;
    handOver.PickedDate = QDate(2026, 11, 5);
    ModalAnswer answer([](QWidget* dialog) {
        HalvernCalendar* calendar = qobject_cast<FrmDate*>(dialog)->calendar();
        QTest::mouseClick(calendar, Qt::LeftButton, Qt::NoModifier, calendar->dayRect(QDate(2026, 11, 19)).center());
    });
    seam.pickDate(nullptr, handOver);
    QVERIFY(answer.opened());
    QVERIFY(handOver.DatePicked);
    QCOMPARE(handOver.PickedDate, QDate(2026, 11, 19));
}

VERDALY_TEST(TestViews)
#include "tst_views.moc"
