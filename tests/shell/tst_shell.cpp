#include "common/Units.h"
#include "mainwindow/FrmMain.h"
#include "shell/DataFolder.h"
#include "shell/IniFile.h"
#include "shell/WindowPlacement.h"
#include "store/DatabaseVersion.h"
#include "store/SqlText.h"
#include "support/TestKit.h"

#include <QtTest>

class TestShell : public QObject
{
    Q_OBJECT

private slots:
    void iniMissingValues_data();
    void iniMissingValues();
    void units_data();
    void units();
    void placementRoundTrip();
    void placementPartialAndBadValues_data();
    void placementPartialAndBadValues();
    void dataFolder_data();
    void dataFolder();
    void startUpgradesOldDatabase();
    void secondCopyRefuses();
    void closeRules_data();
    void closeRules();
    void unloadWritesEveryStickyNote();
    void unloadAfterRestoreSkipsNotes();
    void unloadSavesPlacementUnlessMinimised();
};

void TestShell::iniMissingValues_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("section");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");
    // clang-format off
    QTest::newRow("no file") << QByteArray() << "frmMAIN" << "Top" << "";
    QTest::newRow("key in another section") << QByteArray("[Other]\nTop=5\n") << "frmMAIN" << "Top" << "";
    QTest::newRow("empty value") << QByteArray("[frmMAIN]\nTop=\n") << "frmMAIN" << "Top" << "";
    QTest::newRow("case-insensitive") << QByteArray("[FRMMAIN]\ntop = 7\n") << "frmMAIN" << "Top" << "7";
    QTest::newRow("cut at NUL") << QByteArray("[frmMAIN]\nTop=12\0zz\n", 20) << "frmMAIN" << "Top" << "12";
    // clang-format on
}

void TestShell::iniMissingValues()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, section);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("dayvane.ini"));
    if (!content.isEmpty()) {
        QFile file(ini);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QCOMPARE(ReadIniValue(ini, section, key), expected);
}

void TestShell::units_data()
{
    QTest::addColumn<double>("dpi");
    QTest::addColumn<int>("pixels");
    QTest::addColumn<int>("twips");
    QTest::addColumn<int>("backToPixels"); // the twips read back
    // clang-format off
    QTest::newRow("96 dpi") << 96.0 << 100 << 1500 << 100;
    QTest::newRow("120 dpi") << 120.0 << 100 << 1200 << 100;
    QTest::newRow("144 dpi") << 144.0 << 100 << 1000 << 100;
    QTest::newRow("144 dpi, odd pixel") << 144.0 << 7 << 70 << 7;
    QTest::newRow("96 dpi, negative") << 96.0 << -3 << -45 << -3;
    // clang-format on
}

void TestShell::units()
{
    QFETCH(double, dpi);
    QFETCH(int, pixels);
    QFETCH(int, twips);
    QFETCH(int, backToPixels);
    QCOMPARE(Units::PixelsToTwips(pixels, dpi), twips);
    QCOMPARE(Units::TwipsToPixels(twips, dpi), backToPixels);
    // Twips stored by another screen round to the nearest pixel.
    QCOMPARE(Units::TwipsToPixels(twips + 1440 * 0.4 / dpi, dpi), backToPixels);
    QCOMPARE(Units::ColorFromStored(0x563412), QColor(0x12, 0x34, 0x56));
    QCOMPARE(Units::ColorToStored(QColor(0x12, 0x34, 0x56)), 0x563412);
}

void TestShell::placementRoundTrip()
{
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("dayvane.ini"));
    const double dpi = Units::LogicalDpi();
    QWidget first;
    first.setGeometry(120, 80, 260, 330);
    first.show();
    QVERIFY(QTest::qWaitForWindowExposed(&first));
    SaveWindowPlacement(first, ini, QStringLiteral("frmMAIN"));
    const QRect saved = first.frameGeometry();
    QCOMPARE(ReadIniValue(ini, QStringLiteral("frmMAIN"), QStringLiteral("Top")),
             QString::number(Units::PixelsToTwips(saved.top(), dpi)));
    QCOMPARE(ReadIniValue(ini, QStringLiteral("frmMAIN"), QStringLiteral("Width")),
             QString::number(Units::PixelsToTwips(saved.width(), dpi)));

    QWidget second;
    second.setGeometry(10, 10, 100, 100);
    RestoreWindowPlacement(second, ini, QStringLiteral("frmMAIN"));
    second.show();
    QVERIFY(QTest::qWaitForWindowExposed(&second));
    // The size is made exact once the frame is known.
    QTRY_COMPARE(second.frameGeometry(), saved);
}

void TestShell::placementPartialAndBadValues_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QRect>("expected"); // pixels at 96 dpi: 15 twips a pixel
    // clang-format off
    QTest::newRow("only top and left keep the designed size") << QByteArray("[frmMAIN]\nTop=1500\nLeft=3000\n") << QRect(200, 100, 150, 120);
    QTest::newRow("fraction read as a whole number") << QByteArray("[frmMAIN]\nTop=1500.4\nLeft=2999.6\nWidth=3000\n") << QRect(200, 100, 200, 120);
    QTest::newRow("not a number is ignored") << QByteArray("[frmMAIN]\nTop=abc\nLeft=150\nHeight=zz\n") << QRect(10, 20, 150, 120);
    QTest::newRow("no file keeps everything") << QByteArray() << QRect(10, 20, 150, 120);
    // clang-format on
}

void TestShell::placementPartialAndBadValues()
{
    QFETCH(QByteArray, content);
    QFETCH(QRect, expected);
    if (!qFuzzyCompare(Units::LogicalDpi(), 96.0))
        QSKIP("expects a 96 dpi screen");
    QTemporaryDir dir;
    const QString ini = dir.filePath(QStringLiteral("dayvane.ini"));
    if (!content.isEmpty()) {
        QFile file(ini);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QWidget window;
    window.setGeometry(10, 20, 150, 120);
    RestoreWindowPlacement(window, ini, QStringLiteral("frmMAIN"));
    QCOMPARE(window.frameGeometry(), expected);
}

void TestShell::dataFolder_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("databaseBesideProgram");
    QTest::addColumn<QString>("expected"); // "ARG", "EXE" or "USER"
    // clang-format off
    QTest::newRow("--data-dir DIR") << QStringList{"--data-dir", "ARG"} << true << "ARG";
    QTest::newRow("--data-dir=DIR") << QStringList{"--data-dir=ARG"} << false << "ARG";
    QTest::newRow("portable install") << QStringList{} << true << "EXE";
    QTest::newRow("per-user folder") << QStringList{} << false << "USER";
    QTest::newRow("dangling option") << QStringList{"--data-dir"} << false << "USER";
    // clang-format on
}

void TestShell::dataFolder()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, databaseBesideProgram);
    QFETCH(QString, expected);
    QStandardPaths::setTestModeEnabled(true);
    QTemporaryDir dir;
    const QString exeDir = dir.filePath(QStringLiteral("bin"));
    const QString argDir = dir.filePath(QStringLiteral("given/nested"));
    QDir().mkpath(exeDir);
    if (databaseBesideProgram) {
        QFile db(QDir(exeDir).filePath(QStringLiteral("QMCalendar.mdb")));
        QVERIFY(db.open(QIODevice::WriteOnly));
    }
    QStringList args{QStringLiteral("verdaly")};
    for (const QString& a : arguments)
        args << QString(a).replace(QStringLiteral("ARG"), argDir);
    const QString resolved = ResolveDataDir(args, exeDir);
    const QString want = expected == QStringLiteral("ARG") ? argDir
                         : expected == QStringLiteral("EXE")
                             ? exeDir
                             : QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QCOMPARE(resolved, QDir::cleanPath(want));
    QVERIFY(QFileInfo(resolved).isDir());
}

void TestShell::startUpgradesOldDatabase()
{
    TestEnvironment env;
    DowngradeDatabase(env.db(), 10);
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10")), 12);
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("82000 <= CODE AND CODE < 82999")), 5);
    main.Form_Unload();
}

void TestShell::secondCopyRefuses()
{
    TestEnvironment env;
    env.services.connection.reset();
    FrmMain first(env.services);
    QVERIFY(first.Form_Load());
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET MEMO1 = 'first' WHERE CODE = 501 AND DATAN1 = 1"));

    FakePrompter secondPrompter;
    AppServices secondServices;
    secondServices.dataDir = env.services.dataDir;
    secondServices.clock = &env.clock;
    secondServices.prompter = &secondPrompter;
    FrmMain second(secondServices);
    QVERIFY(!second.Form_Load());
    QCOMPARE(secondPrompter.texts(), QStringList{QStringLiteral("既に起動されています。")});
    QCOMPARE(secondPrompter.shown.front().icon, PromptIcon::Critical);
    QVERIFY(!secondServices.connection);
    QVERIFY(!second.trayIcon());

    // The first copy runs on untouched.
    QVERIFY(env.db().isOpen());
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("CODE = 501 AND MEMO1 = 'first'")), 1);
    first.Form_Unload();
}

void TestShell::closeRules_data()
{
    QTest::addColumn<int>("option"); // CODE 311 DATAN1; -1 = no row
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("trayAvailable");
    QTest::addColumn<bool>("cancelled");
    QTest::addColumn<bool>("visibleAfter");
    QTest::addColumn<bool>("minimisedAfter");
    const int box = static_cast<int>(UnloadMode::FormControlMenu);
    const int code = static_cast<int>(UnloadMode::FormCode);
    const int session = static_cast<int>(UnloadMode::AppWindows);
    // clang-format off
    QTest::newRow("resident: close box hides to the tray") << 1 << box << true << true << false << true;
    QTest::newRow("resident without a tray: minimise instead") << 1 << box << false << true << true << true;
    QTest::newRow("not resident: close box exits") << 0 << box << true << false << false << false;
    QTest::newRow("other value exits") << 2 << box << true << false << false << false;
    QTest::newRow("no row exits") << -1 << box << true << false << false << false;
    QTest::newRow("resident: exit menu exits") << 1 << code << true << false << false << false;
    QTest::newRow("resident: session end exits") << 1 << session << true << false << false << false;
    // clang-format on
}

void TestShell::closeRules()
{
    QFETCH(int, option);
    QFETCH(int, mode);
    QFETCH(bool, trayAvailable);
    QFETCH(bool, cancelled);
    QFETCH(bool, visibleAfter);
    QFETCH(bool, minimisedAfter);
    TestEnvironment env;
    if (option < 0)
        env.db().ExecuteSql(QStringLiteral("DELETE * FROM TRNGENERAL WHERE CODE = 311"));
    else
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = 311").arg(option));
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    main.setTrayAvailabilityForTesting(trayAvailable ? 1 : 0);
    main.show();
    QVERIFY(QTest::qWaitForWindowExposed(&main));

    if (mode == static_cast<int>(UnloadMode::FormControlMenu))
        main.close();
    else
        main.RequestShutdown(static_cast<UnloadMode>(mode));

    QCOMPARE(main.isUnloaded(), !cancelled);
    QCOMPARE(main.isVisible(), visibleAfter);
    QCOMPARE(main.isMinimized(), minimisedAfter);
    QCOMPARE(env.services.connection != nullptr, cancelled);
    if (cancelled)
        main.RequestShutdown(UnloadMode::FormCode);
    QVERIFY(main.isUnloaded());
}

void TestShell::unloadWritesEveryStickyNote()
{
    TestEnvironment env;
    // Each closed slot has a place of its own that must be kept.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN2 = DATAN1 * 100, DATAN3 = DATAN1 * 200, "
                                       "DATAS2 = '6', MEMO1 = 'old' WHERE CODE = 501"));
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QStringList expected;
    QList<QPointer<QWidget>> windows;
    for (int n = 1; n <= 30; ++n) {
        if (n % 3 == 2) {
            expected << QStringLiteral("%1|0|||%2|%3").arg(n).arg(n * 100).arg(n * 200);
            continue;
        }
        StickyNoteSlot& slot = env.services.state.StickyNotes[static_cast<size_t>(n)];
        slot.inUse = true;
        slot.text = QStringLiteral("メモ %1\nit's").arg(n);
        slot.colorIndex = n % 7;
        slot.left = n * 15;
        slot.top = n * 30;
        slot.window = new QWidget;
        slot.window->setAttribute(Qt::WA_DeleteOnClose);
        slot.window->show();
        windows << slot.window;
        expected << QStringLiteral("%1|1|%2|%3|%4|%5").arg(n).arg(n % 7).arg(slot.text).arg(n * 15).arg(n * 30);
    }
    main.Form_Unload();
    QTest::qWait(0);
    for (const QPointer<QWidget>& window : windows)
        QVERIFY(!window || !window->isVisible());
    env.open();
    QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 ORDER BY DATAN1"),
                   {"DATAN1", "DATAS3", "DATAS2", "MEMO1", "DATAN2", "DATAN3"}),
             expected);
}

void TestShell::unloadAfterRestoreSkipsNotes()
{
    TestEnvironment env;
    env.db().ExecuteSql(
        QStringLiteral("UPDATE TRNGENERAL SET DATAS3 = '1', MEMO1 = 'restored' WHERE CODE = 501 AND DATAN1 = 2"));
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    env.services.state.RestoreDone = true;
    main.Form_Unload();
    env.open();
    QCOMPARE(
        env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("CODE = 501 AND DATAS3 = '1' AND MEMO1 = 'restored'")),
        1);
    QVERIFY(QFileInfo::exists(env.services.iniPath()));
}

void TestShell::unloadSavesPlacementUnlessMinimised()
{
    for (const bool minimised : {false, true}) {
        TestEnvironment env;
        env.services.connection.reset();
        FrmMain main(env.services);
        QVERIFY(main.Form_Load());
        main.show();
        QVERIFY(QTest::qWaitForWindowExposed(&main));
        if (minimised)
            main.setWindowState(Qt::WindowMinimized);
        main.Form_Unload();
        QCOMPARE(ReadIniValue(env.services.iniPath(), QStringLiteral("frmMAIN"), QStringLiteral("Height")).isEmpty(),
                 minimised);
    }
}

VERDALY_TEST(TestShell)
#include "tst_shell.moc"
