#include "calendarcontrol/HalvernCalendar.h"
#include "common/LinkLabel.h"
#include "common/Units.h"
#include "support/TestKit.h"
#include "views/FrmDate.h"
#include "views/FrmDatePicker.h"

#include <QPushButton>
#include <QtTest>

class TestViews : public QObject
{
    Q_OBJECT

private slots:
    void opensWhereAskedWithTheDate_data();
    void opensWhereAskedWithTheDate();
    void clickingADayPicksIt();
    void todayLinkPicksToday();
    void cancelPicksNothing_data();
    void cancelPicksNothing();
    void appliesTheCalendarDesign();
    void pickerSeamRunsTheDialog();
};

void TestViews::opensWhereAskedWithTheDate_data()
{
    QTest::addColumn<QDate>("given");
    QTest::addColumn<QDate>("shown");
    QTest::newRow("the box's date") << QDate(2027, 2, 14) << QDate(2027, 2, 14);
    QTest::newRow("an empty box opens on today") << QDate() << QDate(2026, 11, 22);
}

void TestViews::opensWhereAskedWithTheDate()
{
    QFETCH(QDate, given);
    QFETCH(QDate, shown);
    TestEnvironment env;
    DatePickHandOver handOver;
    handOver.PickedDate = given;
    handOver.DatePicked = true; // stale from an earlier use: the picker starts from "nothing picked"
    handOver.PickerLeft = 1500;
    handOver.PickerTop = 3000;
    FrmDate picker(env.services, handOver);
    const double dpi = Units::LogicalDpi(&picker);
    QCOMPARE(picker.pos(), QPoint(Units::TwipsToPixels(1500, dpi), Units::TwipsToPixels(3000, dpi)));
    QCOMPARE(picker.calendar()->CurrentDate(), shown);
    QVERIFY(!handOver.DatePicked);
    const QString weekdays = QStringLiteral("日月火水木金土");
    const QString caption = QStringLiteral("%1/%2/%3 (%4)")
                                .arg(shown.year())
                                .arg(shown.month())
                                .arg(shown.day())
                                .arg(weekdays.at(shown.dayOfWeek() % 7));
    QCOMPARE(picker.windowTitle(), caption);
    auto* today = picker.findChild<LinkLabel*>(QStringLiteral("LabToday"));
    QVERIFY(today);
    QCOMPARE(today->text(), QStringLiteral("Today : 2026/11/22 (日)"));
    QVERIFY(env.prompter.shown.isEmpty());
}

void TestViews::clickingADayPicksIt()
{
    TestEnvironment env;
    DatePickHandOver handOver;
    handOver.PickedDate = QDate(2026, 12, 10);
    FrmDate picker(env.services, handOver);
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    HalvernCalendar* calendar = picker.calendar();
    // A day of the next month, shown in the grid's last row.
    const QDate target(2027, 1, 2);
    QVERIFY(calendar->isShown(target));
    const QRect cell = calendar->dayRect(target);
    QVERIFY(!cell.isEmpty());
    QTest::mouseClick(calendar, Qt::LeftButton, Qt::NoModifier, cell.center());
    QVERIFY(handOver.DatePicked);
    QCOMPARE(handOver.PickedDate, target);
    QCOMPARE(picker.result(), int(QDialog::Accepted));
    QVERIFY(!picker.isVisible());
}

void TestViews::todayLinkPicksToday()
{
    TestEnvironment env;
    env.clock.current = QDateTime(QDate(2026, 11, 22), QTime(8, 0));
    DatePickHandOver handOver;
    handOver.PickedDate = QDate(2025, 3, 3);
    FrmDate picker(env.services, handOver);
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    picker.calendar()->setCurrentDate(QDate(2025, 4, 9)); // browsed elsewhere first
    auto* today = picker.findChild<LinkLabel*>(QStringLiteral("LabToday"));
    QTest::mouseClick(today, Qt::LeftButton, Qt::NoModifier, today->rect().center());
    QVERIFY(handOver.DatePicked);
    QCOMPARE(handOver.PickedDate, QDate(2026, 11, 22));
    QVERIFY(!picker.isVisible());
}

void TestViews::cancelPicksNothing_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("cancel button") << false;
    QTest::newRow("escape key") << true;
}

void TestViews::cancelPicksNothing()
{
    QFETCH(bool, byEscape);
    TestEnvironment env;
    DatePickHandOver handOver;
    handOver.PickedDate = QDate(2026, 5, 1);
    FrmDate picker(env.services, handOver);
    picker.show();
    QVERIFY(QTest::qWaitForWindowExposed(&picker));
    picker.calendar()->setCurrentDate(QDate(2026, 6, 17)); // changed on the calendar, then abandoned
    if (byEscape) {
        QTest::keyClick(&picker, Qt::Key_Escape);
    } else {
        auto* cancel = picker.findChild<QPushButton*>(QStringLiteral("ComCancel"));
        QVERIFY(cancel);
        QCOMPARE(cancel->text(), QStringLiteral("キャンセル"));
        QTest::mouseClick(cancel, Qt::LeftButton);
    }
    QVERIFY(!handOver.DatePicked);
    QCOMPARE(handOver.PickedDate, QDate(2026, 5, 1));
    QCOMPARE(picker.result(), int(QDialog::Rejected));
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
    QCOMPARE(picker.calendar()->FirstDayOfWeek(), 2);
    QCOMPARE(picker.calendar()->FirstShownDate().dayOfWeek(), 1); // Monday
    QCOMPARE(picker.calendar()->titleText(), QStringLiteral("2026 / 11"));
    QCOMPARE(picker.calendar()->spotDesign(80).back, Units::ColorFromStored(0x00336699));
}

void TestViews::pickerSeamRunsTheDialog()
{
    TestEnvironment env;
    FrmDatePicker seam(env.services);
    DatePickHandOver handOver;
    handOver.PickedDate = QDate(2026, 11, 5);
    QDate clicked;
    QTimer::singleShot(0, this, [&] {
        auto* picker = qobject_cast<FrmDate*>(QApplication::activeModalWidget());
        if (!picker)
            picker = qobject_cast<FrmDate*>(QApplication::activePopupWidget());
        if (!picker) {
            for (QWidget* w : QApplication::topLevelWidgets())
                if (auto* candidate = qobject_cast<FrmDate*>(w); candidate && candidate->isVisible())
                    picker = candidate;
        }
        QVERIFY(picker);
        clicked = QDate(2026, 11, 19);
        QTest::mouseClick(picker->calendar(), Qt::LeftButton, Qt::NoModifier,
                          picker->calendar()->dayRect(clicked).center());
    });
    seam.pickDate(nullptr, handOver);
    QVERIFY(clicked.isValid());
    QVERIFY(handOver.DatePicked);
    QCOMPARE(handOver.PickedDate, clicked);
}

VERDALY_TEST(TestViews)
#include "tst_views.moc"
