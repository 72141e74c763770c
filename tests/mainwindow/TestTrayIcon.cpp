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
    void bringsBackAHiddenWindow();
    void exitEndsTheProgram();
};

void TestTrayIcon::bringsBackAHiddenWindow()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 1 WHERE CODE = 311"));
    auto main = StartMainWindow(env);
    main->setTrayAvailabilityForTesting(1);
    QMenu* trayMenu = main->trayIcon()->contextMenu();
    QCOMPARE(trayMenu->objectName(), QStringLiteral("MnuTaskMenu"));
    const QList<QPair<QSystemTrayIcon::ActivationReason, bool>> clicks = {{QSystemTrayIcon::Context, false},
                                                                          {QSystemTrayIcon::MiddleClick, false},
                                                                          {QSystemTrayIcon::Trigger, true},
                                                                          {QSystemTrayIcon::DoubleClick, true}};
    for (const auto& [reason, shown] : clicks) {
        // The close box of a resident calendar hides it in the tray.
        main->close();
        QVERIFY(!main->isVisible());
        emit main->trayIcon()->activated(reason);
        QCOMPARE(main->isVisible(), shown);
        QCOMPARE(main->isMinimized(), !shown);
    }
    main->close();
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
