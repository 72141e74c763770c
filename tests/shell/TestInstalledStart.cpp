// An installed calendar: a start at login waits quietly in the tray when it stays resident,
// and its data never lives beside the installed programs.
#include "mainwindow/FrmMain.h"
#include "shell/DataFolder.h"
#include "support/TestKit.h"

#include <QtTest>

class TestInstalledStart final : public QObject
{
    Q_OBJECT

private slots:
    void loginStart_data();
    void loginStart();
    void dataFolder_data();
    void dataFolder();
};

void TestInstalledStart::loginStart_data()
{
    QTest::addColumn<bool>("autostarted");
    QTest::addColumn<int>("resident"); // DATAN1 of 311
    QTest::addColumn<int>("tray");     // 1: a tray to wait in, 0: none
    QTest::addColumn<bool>("shownAtOnce");
    QTest::addColumn<bool>("shownLater");
    // clang-format off
    QTest::newRow("started from the menu, resident") << false << 1 << 1 << true << true;
    QTest::newRow("login, not resident") << true << 0 << 1 << true << true;
    QTest::newRow("login, resident, tray") << true << 1 << 1 << false << false;
    // The window must stay reachable: once no tray came, it shows.
    QTest::newRow("login, resident, no tray ever") << true << 1 << 0 << false << true;
    // clang-format on
}

void TestInstalledStart::loginStart()
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
    if (shownLater)
        QTRY_VERIFY_WITH_TIMEOUT(main.isVisible(), 8000);
    else
        QTest::qWait(600);
    QCOMPARE(main.isVisible(), shownLater);
    QVERIFY(main.trayIcon() != nullptr);
    main.RequestShutdown(UnloadMode::AppWindows);
}

void TestInstalledStart::dataFolder_data()
{
    QTest::addColumn<bool>("menuEntryInstalled"); // share/applications/<id>.desktop beside bin/
    QTest::addColumn<bool>("keptBesideProgram");
    QTest::newRow("copied folder with its database: portable") << false << true;
    QTest::newRow("installed tree: the per-user folder") << true << false;
}

void TestInstalledStart::dataFolder()
{
    QFETCH(bool, menuEntryInstalled);
    QFETCH(bool, keptBesideProgram);
    QStandardPaths::setTestModeEnabled(true);
    QTemporaryDir prefix;
    const QString bin = prefix.filePath(QStringLiteral("bin"));
    QVERIFY(QDir().mkpath(bin));
    QFile stray(QDir(bin).filePath(QStringLiteral("QMCalendar.mdb")));
    QVERIFY(stray.open(QIODevice::WriteOnly));
    if (menuEntryInstalled) {
        QVERIFY(QDir().mkpath(prefix.filePath(QStringLiteral("share/applications"))));
        QFile entry(prefix.filePath(QStringLiteral("share/applications/org.halvern.verdaly.desktop")));
        QVERIFY(entry.open(QIODevice::WriteOnly));
    }
    const QString dir = ResolveDataDir({QStringLiteral("verdaly")}, bin);
    QCOMPARE(dir, keptBesideProgram ? QDir::cleanPath(bin)
                                    : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

VERDALY_TEST(TestInstalledStart)
#include "TestInstalledStart.moc"
