// The tray icon: a click brings the window back from hiding, its menu opens the calendar,
// makes a sticky note, or ends the program through the normal unload.
#include "mainwindow/FrmMain.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QMenu>
#include <QSystemTrayIcon>
#include <QtTest>

class TestTrayIcon : public QObject
{
    Q_OBJECT

private slots:
    void clickBringsBackAHiddenWindow_data();
    void clickBringsBackAHiddenWindow();
    void menu();
    void exitEndsTheProgram();
};

void TestTrayIcon::clickBringsBackAHiddenWindow_data()
{
    QTest::addColumn<int>("reason");
    QTest::addColumn<bool>("shown");
    QTest::newRow("left click") << int(QSystemTrayIcon::Trigger) << true;
    QTest::newRow("double click") << int(QSystemTrayIcon::DoubleClick) << true;
    QTest::newRow("right click: only the menu") << int(QSystemTrayIcon::Context) << false;
    QTest::newRow("middle click") << int(QSystemTrayIcon::MiddleClick) << false;
}

void TestTrayIcon::clickBringsBackAHiddenWindow()
{
    QFETCH(int, reason);
    QFETCH(bool, shown);
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 1 WHERE CODE = 311"));
    auto main = StartMainWindow(env);
    main->setTrayAvailabilityForTesting(1);
    QVERIFY(main->trayIcon());

    // The close box of a resident calendar hides it in the tray.
    main->close();
    QVERIFY(!main->isVisible());
    QVERIFY(!main->isUnloaded());

    emit main->trayIcon()->activated(QSystemTrayIcon::ActivationReason(reason));
    QCOMPARE(main->isVisible(), shown);
    if (shown)
        QVERIFY(!main->isMinimized());
}

void TestTrayIcon::menu()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 1 WHERE CODE = 311"));
    auto main = StartMainWindow(env);
    main->setTrayAvailabilityForTesting(1);
    QMenu* trayMenu = main->trayIcon()->contextMenu();
    QVERIFY(trayMenu);
    QCOMPARE(trayMenu->objectName(), QStringLiteral("MnuTaskMenu"));

    main->close();
    QVERIFY(!main->isVisible());
    Control<QAction>(trayMenu, "MnuMainOpen")->trigger();
    QVERIFY(main->isVisible());
    QVERIFY(!main->isMinimized());

    // A new note takes the hand-over slot's place, in a colour drawn from the seven.
    env.random.values = {0.999};
    Control<QAction>(trayMenu, "MnuTaskPost")->trigger();
    QCOMPARE(env.services.state.StickyNotes[0].colorIndex, 6);
    QVERIFY(env.services.state.StickyNotes[0].text.isEmpty());
    QVERIFY(!main->isUnloaded());
}

void TestTrayIcon::exitEndsTheProgram()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 1 WHERE CODE = 311"));
    auto main = StartMainWindow(env);
    main->setTrayAvailabilityForTesting(1);
    QPointer<QSystemTrayIcon> tray = main->trayIcon();

    // Even a resident calendar ends for the exit item: it is no close-box close.
    Control<QAction>(main->trayIcon()->contextMenu(), "MnuEnd")->trigger();
    QVERIFY(main->isUnloaded());
    QVERIFY(!env.services.connection || !env.services.connection->isOpen());
    QVERIFY(!main->trayIcon());
    QTRY_VERIFY(tray.isNull());
}

VERDALY_TEST(TestTrayIcon)
#include "TestTrayIcon.moc"
