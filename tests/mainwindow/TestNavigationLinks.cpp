// The links under the calendar as a user (or a screen reader) works them: each pops its
// menu, "Schedule" creates entries on the selected day, "Jump" moves the selection, and
// nothing answers while a dialog opened from the window is up.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

class TestNavigationLinks : public QObject
{
    Q_OBJECT

private slots:
    void linksAreLinksThatPopTheirMenus_data();
    void linksAreLinksThatPopTheirMenus();
    void newEntryOnTheSelectedDay_data();
    void newEntryOnTheSelectedDay();
    void cancelledEditorChangesNothing();
    void busyWindowIgnoresClicks_data();
    void busyWindowIgnoresClicks();
    void jumpMenu_data();
    void jumpMenu();
};

void TestNavigationLinks::linksAreLinksThatPopTheirMenus_data()
{
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("menu");
    QTest::newRow("Menu") << "LabMenu"
                          << "Menu"
                          << "MnuSubMenu";
    QTest::newRow("Jump") << "LabJump"
                          << "Jump"
                          << "MnuJumpDay";
    QTest::newRow("Schedule") << "LabScaedule"
                              << "Schedule"
                              << "MnuEntry";
    QTest::newRow("Help") << "LabHelp"
                          << "Help"
                          << "MnuHelp";
}

void TestNavigationLinks::linksAreLinksThatPopTheirMenus()
{
    QFETCH(QString, link);
    QFETCH(QString, name);
    QFETCH(QString, menu);
    TestEnvironment env;
    auto main = StartMainWindow(env);

    // A screen reader finds the link by its caption and presses it.
    QAccessibleInterface* access = QAccessible::queryAccessibleInterface(main->findChild<QLabel*>(link));
    QVERIFY(access);
    QCOMPARE(access->role(), QAccessible::Link);
    QCOMPARE(access->text(QAccessible::Name), name);
    QVERIFY(access->actionInterface());
    MenuAnswer byReader{QString()};
    access->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QTRY_VERIFY(byReader.opened());
    QCOMPARE(byReader.menu(), menu);

    // And the mouse does the same.
    MenuAnswer byMouse{QString()};
    ClickControl(*main, link);
    QVERIFY(byMouse.opened());
    QCOMPARE(byMouse.menu(), menu);
    QVERIFY(env.services.state.MainWindowIdle);
}

void TestNavigationLinks::newEntryOnTheSelectedDay_data()
{
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("dateBox");
    QTest::addColumn<QString>("expectedRow"); // DATA|BUSINESS|STARTDT|ENDDT
    QTest::newRow("schedule") << "MnuSchedule"
                              << "FrmSchedule"
                              << "TxtStartDate"
                              << "1|O'Neil と打合せ|20261125|";
    QTest::newRow("task") << "MnuTask"
                          << "FrmTask"
                          << "TxtEndDate"
                          << "2|O'Neil と打合せ||20261125";
}

void TestNavigationLinks::newEntryOnTheSelectedDay()
{
    QFETCH(QString, item);
    QFETCH(QString, dialog);
    QFETCH(QString, dateBox);
    QFETCH(QString, expectedRow);
    TestEnvironment env;
    auto main = StartMainWindow(env);
    main->calendar()->setCurrentDate(QDate(2026, 11, 25));
    const QString subject = QStringLiteral("O'Neil と打合せ");

    bool idleWhileOpen = true;
    QString shownDate;
    QString opened;
    MenuAnswer menu(item);
    ModalAnswer editor([&](QWidget* window) {
        idleWhileOpen = env.services.state.MainWindowIdle;
        opened = window->objectName();
        shownDate = Control<QLineEdit>(window, dateBox.toLatin1().constData())->text();
        Control<QLineEdit>(window, "TxtYouken")->setText(subject);
        Click(window, "ComOK");
    });
    ClickControl(*main, QStringLiteral("LabScaedule"));

    QCOMPARE(menu.menu(), QStringLiteral("MnuEntry"));
    QCOMPARE(opened, dialog);
    QCOMPARE(shownDate, QStringLiteral("2026/11/25"));
    QVERIFY(!idleWhileOpen);
    QVERIFY(env.services.state.MainWindowIdle);
    QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM TRNSCHTSK"), {"DATA", "BUSINESS", "STARTDT", "ENDDT"}),
             QStringList{expectedRow});
    // The grid and the panel follow at once.
    QVERIFY(main->calendar()->isEntryDay(QDate(2026, 11, 25)));
    QCOMPARE(Control<QLabel>(main.get(), "LabYotei(0)")->text(), subject);
}

void TestNavigationLinks::cancelledEditorChangesNothing()
{
    TestEnvironment env;
    auto main = StartMainWindow(env);
    MenuAnswer menu(QStringLiteral("MnuSchedule"));
    ModalAnswer editor([](QWidget* window) {
        Control<QLineEdit>(window, "TxtYouken")->setText(QStringLiteral("やめた"));
        Click(window, "ComCancel");
    });
    ClickControl(*main, QStringLiteral("LabScaedule"));
    QVERIFY(editor.opened());
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 0);
    QVERIFY(!main->calendar()->isEntryDay(QDate(2026, 11, 22)));
    QVERIFY(Control<QLabel>(main.get(), "LabYotei(0)")->text().isEmpty());
    QVERIFY(env.services.state.MainWindowIdle);
}

void TestNavigationLinks::busyWindowIgnoresClicks_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("opensDialog"); // once idle: a dialog rather than a menu
    QTest::newRow("Menu") << "LabMenu" << int(Qt::LeftButton) << false;
    QTest::newRow("Jump") << "LabJump" << int(Qt::LeftButton) << false;
    QTest::newRow("Schedule") << "LabScaedule" << int(Qt::LeftButton) << false;
    QTest::newRow("Help") << "LabHelp" << int(Qt::LeftButton) << false;
    QTest::newRow("entry label") << "LabYotei(0)" << int(Qt::LeftButton) << true;
    QTest::newRow("entry label, right") << "LabYotei(0)" << int(Qt::RightButton) << false;
}

void TestNavigationLinks::busyWindowIgnoresClicks()
{
    QFETCH(QString, control);
    QFETCH(int, button);
    QFETCH(bool, opensDialog);
    TestEnvironment env;
    StoreEntry(env.db(), Entry(1, QStringLiteral("A4"), QStringLiteral("20261122"), QStringLiteral("09:00"),
                               QStringLiteral("20261122"), QStringLiteral("10:00"), QStringLiteral("朝会")));
    auto main = StartMainWindow(env);

    env.services.state.MainWindowIdle = false;
    {
        MenuAnswer menu{QString()};
        ModalAnswer dialog([](QWidget* window) { static_cast<QDialog*>(window)->reject(); });
        ClickControl(*main, control, Qt::MouseButton(button));
        QTest::qWait(100);
        QVERIFY(!menu.opened());
        QVERIFY(!dialog.opened());
    }

    // The same click answers once the window is idle again.
    env.services.state.MainWindowIdle = true;
    MenuAnswer menu{QString()};
    ModalAnswer dialog([](QWidget* window) { static_cast<QDialog*>(window)->reject(); });
    ClickControl(*main, control, Qt::MouseButton(button));
    QTRY_VERIFY(opensDialog ? dialog.opened() : menu.opened());
}

void TestNavigationLinks::jumpMenu_data()
{
    QTest::addColumn<QDate>("today");
    QTest::addColumn<QDate>("selected");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QDate>("expected");
    // clang-format off
    QTest::newRow("today")                      << QDate(2026, 11, 22) << QDate(2026, 3, 3)  << "MnuToday"   << QDate(2026, 11, 22);
    QTest::newRow("a month keeps the day")      << QDate(2026, 11, 22) << QDate(2026, 3, 10) << "MnuMonth7"  << QDate(2026, 7, 10);
    QTest::newRow("today past the month's end") << QDate(2026, 1, 30)  << QDate(2026, 3, 10) << "MnuMonth2"  << QDate(2026, 2, 28);
    QTest::newRow("no such day: stay")          << QDate(2026, 11, 22) << QDate(2026, 1, 31) << "MnuMonth4"  << QDate(2026, 1, 31);
    QTest::newRow("December")                   << QDate(2026, 11, 22) << QDate(2026, 1, 31) << "MnuMonth12" << QDate(2026, 12, 31);
    // clang-format on
}

void TestNavigationLinks::jumpMenu()
{
    QFETCH(QDate, today);
    QFETCH(QDate, selected);
    QFETCH(QString, item);
    QFETCH(QDate, expected);
    TestEnvironment env;
    env.clock.current = QDateTime(today, QTime(9, 0));
    const QString day = expected.toString(QStringLiteral("yyyyMMdd"));
    StoreEntry(env.db(), Entry(1, QStringLiteral("A1"), day, QString(), day, QString(), QStringLiteral("行き先")));
    auto main = StartMainWindow(env);
    main->calendar()->setCurrentDate(selected);

    MenuAnswer menu(item);
    ClickControl(*main, QStringLiteral("LabJump"));
    QVERIFY(menu.opened());
    QCOMPARE(main->calendar()->CurrentDate(), expected);
    // The panel shows the day the jump landed on.
    QCOMPARE(Control<QLabel>(main.get(), "LabYotei(0)")->text(), QStringLiteral("行き先"));
    QVERIFY(main->calendar()->isEntryDay(expected));
}

VERDALY_TEST(TestNavigationLinks)
#include "TestNavigationLinks.moc"
