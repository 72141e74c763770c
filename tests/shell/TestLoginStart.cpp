// A start at login waits quietly in the tray when the calendar stays resident, and never
// leaves the window out of reach.
#include "mainwindow/FrmMain.h"
#include "support/TestKit.h"

#include <QtTest>

class TestLoginStart final : public QObject
{
    Q_OBJECT

private slots:
    void loginStart_data();
    void loginStart();
};

void TestLoginStart::loginStart_data()
{
    QTest::addColumn<bool>("autostarted");
    QTest::addColumn<int>("resident"); // DATAN1 of 311
    QTest::addColumn<int>("tray");     // 1: a tray to wait in, 0: none
    QTest::addColumn<bool>("shownAtOnce");
    QTest::addColumn<bool>("shownLater");
    QTest::newRow("started from the menu, resident") << false << 1 << 1 << true << true;
    QTest::newRow("login, not resident") << true << 0 << 1 << true << true;
    QTest::newRow("login, resident, tray") << true << 1 << 1 << false << false;
    // The window must stay reachable: once no tray came, it shows.
    QTest::newRow("login, resident, no tray ever") << true << 1 << 0 << false << true;
}

void TestLoginStart::loginStart()
{
    QFETCH(bool, autostarted);
    QFETCH(int, resident);
    QFETCH(int, tray);
    QFETCH(bool, shownAtOnce);
    QFETCH(bool, shownLater);
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = 311").arg(resident));
    FrmMain main(env.services);
    main.setTrayAvailabilityForTesting(tray);
    QVERIFY(main.Form_Load());
    main.ShowAtStart(autostarted);
    QCOMPARE(main.isVisible(), shownAtOnce);
    QTest::qWait(shownLater == shownAtOnce ? 600 : 0);
    QTRY_COMPARE_WITH_TIMEOUT(main.isVisible(), shownLater, 8000);
    main.RequestShutdown(UnloadMode::AppWindows);
}

VERDALY_TEST(TestLoginStart)
#include "TestLoginStart.moc"
