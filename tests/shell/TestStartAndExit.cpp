// The main window's life from a start on broken files to what exit writes for the next run.
#include "common/Units.h"
#include "mainwindow/FrmMain.h"
#include "shell/DataFolder.h"
#include "shell/IniFile.h"
#include "shell/WindowPlacement.h"
#include "support/TestKit.h"

#include <QtTest>

#include <csignal>
#include <sys/resource.h>

namespace {
// DATAN1 of 311 (-1: no row), a tray ever, login start, a restore before the exit; shown "at
// once", "later" or "never"; then "exited", "in the tray" or "minimised"; closed by.
struct RunRow
{
    int resident;
    bool tray, autostarted, restoreDone;
    QString shown, after;
    UnloadMode closedBy;
};
} // namespace
Q_DECLARE_METATYPE(RunRow)

class TestStartAndExit final : public QObject
{
    Q_OBJECT

private slots:
    void units_data()
    {
        QTest::addColumn<double>("dpi");
        QTest::addColumn<int>("pixels");
        QTest::addColumn<int>("twips");
        // clang-format off
        QTest::newRow("96 dpi") << 96.0 << 100 << 1500;
        QTest::newRow("120 dpi") << 120.0 << 100 << 1200;
        QTest::newRow("144 dpi") << 144.0 << 100 << 1000;
        QTest::newRow("96 dpi, negative") << 96.0 << -3 << -45;
        // clang-format on
    }
    void units()
    {
        QFETCH(double, dpi);
        QFETCH(int, pixels);
        QFETCH(int, twips);
        QCOMPARE(Units::PixelsToTwips(pixels, dpi), twips);
        QCOMPARE(Units::TwipsToPixels(twips, dpi), pixels);
        // Twips stored by another screen round to the nearest pixel.
        QCOMPARE(Units::TwipsToPixels(twips + 1440 * 0.4 / dpi, dpi), pixels);
    }

    // A window designed at (10, 20) 150 x 120 takes what the file says (15 twips to a pixel at the
    // test screen's 96 dpi); its save replaces the section whole or leaves the file as it was.
    void placementFile_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<int>("writableBytes"); // how much the disk takes; 0 = no limit
        QTest::addColumn<QRect>("restored");
        QTest::addColumn<QByteArray>("after"); // "=" : byte-identical to before
        const QByteArray old(
            "; mine\n[Other]\nA=1\n\n[frmMAIN]\nTop=1500\nLeft=3000\nHeight=3000\nWidth=4500\nStale=x\n");
        const QRect designed(10, 20, 150, 120);
        const QByteArray kept("[frmMAIN]\nTop=300\nLeft=150\nHeight=1800\nWidth=2250\n");
        // clang-format off
        QTest::newRow("no file") << QByteArray() << 0 << designed << kept;
        QTest::newRow("all four, the rest of the file kept") << old << 0 << QRect(200, 100, 300, 200) << QByteArray("; mine\n[Other]\nA=1\n\n[frmMAIN]\nTop=1500\nLeft=3000\nHeight=3000\nWidth=4500\n");
        QTest::newRow("full disk keeps the old file") << old << 8 << QRect(200, 100, 300, 200) << QByteArray("=");
        QTest::newRow("only top and left keep the designed size") << QByteArray("[frmMAIN]\nTop=1500\nLeft=3000\n") << 0 << QRect(200, 100, 150, 120) << QByteArray("[frmMAIN]\nTop=1500\nLeft=3000\nHeight=1800\nWidth=2250\n");
        QTest::newRow("fraction read as a whole number") << QByteArray("[frmMAIN]\nTop=1500.4\nLeft=2999.6\nWidth=3000\n") << 0 << QRect(200, 100, 200, 120) << QByteArray("[frmMAIN]\nTop=1500\nLeft=3000\nHeight=1800\nWidth=3000\n");
        QTest::newRow("not a number is ignored") << QByteArray("[frmMAIN]\nTop=abc\nLeft=150\nHeight=zz\n") << 0 << designed << kept;
        QTest::newRow("key of another section") << QByteArray("[Other]\nTop=1500\n[frmMAIN]\nLeft=150\n") << 0 << designed << QByteArray("[Other]\nTop=1500\n[frmMAIN]\nTop=300\nLeft=150\nHeight=1800\nWidth=2250\n");
        QTest::newRow("value cut at NUL") << QByteArray("[frmMAIN]\nTop=1500\0zz\n", 22) << 0 << QRect(10, 100, 150, 120) << QByteArray("[frmMAIN]\nTop=1500\nLeft=150\nHeight=1800\nWidth=2250\n");
        QTest::newRow("section and key in any case") << QByteArray("[FRMMAIN]\ntop = 1500\n") << 0 << QRect(10, 100, 150, 120) << QByteArray("[FRMMAIN]\nTop=1500\nLeft=150\nHeight=1800\nWidth=2250\n");
        // clang-format on
    }
    void placementFile()
    {
        QFETCH(QByteArray, before);
        QFETCH(int, writableBytes);
        QFETCH(QRect, restored);
        QFETCH(QByteArray, after);
        QTemporaryDir dir;
        const QString ini = dir.filePath(QStringLiteral("dayvane.ini"));
        if (!before.isEmpty())
            QVERIFY(WriteFile(ini, before));
        QWidget window;
        window.setGeometry(10, 20, 150, 120);
        RestoreWindowPlacement(window, ini, QStringLiteral("frmMAIN"));
        QCOMPARE(window.frameGeometry(), restored);
        rlimit unlimited{};
        getrlimit(RLIMIT_FSIZE, &unlimited);
        const rlimit limit{writableBytes > 0 ? rlim_t(writableBytes) : unlimited.rlim_cur, unlimited.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN); // a write past the limit fails instead of ending the test
        setrlimit(RLIMIT_FSIZE, &limit);
        SaveWindowPlacement(window, ini, QStringLiteral("frmMAIN"));
        setrlimit(RLIMIT_FSIZE, &unlimited);
        QCOMPARE(FileBytes(ini), after == "=" ? before : after);
        // Nothing half-written is left beside it.
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList{QStringLiteral("dayvane.ini")});
    }

    void dataFolder_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("databaseBesideProgram");
        QTest::addColumn<QString>("expected"); // under the temporary folder; "" the user's data folder
        // clang-format off
        QTest::newRow("given folder beats a portable install") << QStringList{"--data-dir", "given/nested"} << true << "given/nested";
        QTest::newRow("portable install") << QStringList{} << true << "bin";
        QTest::newRow("dangling option") << QStringList{"--data-dir"} << false << "";
        // clang-format on
    }
    void dataFolder()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, databaseBesideProgram);
        QFETCH(QString, expected);
        QStandardPaths::setTestModeEnabled(true);
        QTemporaryDir dir;
        QDir().mkpath(dir.filePath(QStringLiteral("bin")));
        if (databaseBesideProgram)
            QVERIFY(WriteFile(dir.filePath(QStringLiteral("bin/QMCalendar.mdb")), QByteArray()));
        QStringList args{QStringLiteral("verdaly")};
        for (const QString& a : arguments)
            args << (a.startsWith(QLatin1Char('-')) ? a : dir.filePath(a));
        const QString resolved = ResolveDataDir(args, dir.filePath(QStringLiteral("bin")));
        QCOMPARE(resolved, expected.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                                              : dir.filePath(expected));
    }

    // Broken files: one message naming the file and what is wrong, an exit code, the file kept.
    void brokenFiles_data()
    {
        QTest::addColumn<QString>("setup");
        QTest::addColumn<QString>("message"); // a part of the one message shown; "" = none
        QTest::addColumn<int>("exitCode");    // -1: the program starts
        // clang-format off
        QTest::newRow("not a database") << "random" << "読み込めません" << 1;
        QTest::newRow("locked by another program") << "locked" << "他のプログラムに使用されています" << 1;
        QTest::newRow("a second copy") << "second" << "既に起動されています。" << 0;
        QTest::newRow("folder in place of the file") << "folder" << "ファイルではありません" << 1;
        QTest::newRow("cannot be built") << "unbuildable" << "作成できません" << 1;
        QTest::newRow("first start builds the database") << "nofile" << "" << -1;
        QTest::newRow("0-byte file is built anew") << "empty" << "" << -1;
        QTest::newRow("old release's database is upgraded") << "old" << "" << -1;
        QTest::newRow("lock of a process that is gone") << "deadlock" << "" << -1;
        QTest::newRow("empty lock file") << "emptylock" << "" << -1;
        QTest::newRow("folder cannot be written") << "unwritable" << "データフォルダに書き込めません" << 1;
        // clang-format on
    }
    void brokenFiles()
    {
        QFETCH(QString, setup);
        QFETCH(QString, message);
        QFETCH(int, exitCode);
        TestEnvironment env(!QStringList{"random", "folder", "unbuildable", "empty", "nofile"}.contains(setup));
        if (setup == "old")
            DowngradeDatabase(env.db(), 10);
        env.services.connection.reset();
        const QString db = env.path();
        const QString lock = env.services.lockPath();
        // A pid past any the system hands out stands for a killed copy that left its lock behind.
        const QMap<QString, QPair<QString, QByteArray>> files{
            {"random", {db, QByteArray(8192, '\x5a')}},
            {"empty", {db, ""}},
            {"emptylock", {lock, ""}},
            {"deadlock", {lock, "99999999\nverdaly\n" + QSysInfo::machineHostName().toUtf8() + "\n"}}};
        if (files.contains(setup))
            QVERIFY(WriteFile(files[setup].first, files[setup].second));
        if (setup == "folder" || setup == "unbuildable")
            QVERIFY(QDir().mkpath(setup == "folder" ? db : db + ".building/x"));
        if (setup == "unwritable")
            env.services.dataDir = QStringLiteral("/proc"); // not writable, not even for root
        QLockFile firstCopy(lock); // a copy that runs holds the lock, as every start checks below
        if (setup == "second")
            QVERIFY(firstCopy.tryLock(0));
        // Another program (the engine's own shell) holds the file with an exclusive lock.
        QProcess holder;
        if (setup == "locked") {
            holder.start(QStringLiteral("sqlite3"), {db});
            QVERIFY(holder.waitForStarted());
            holder.write("BEGIN EXCLUSIVE;\nSELECT 'holding';\n");
            QVERIFY(holder.waitForReadyRead(5000));
        }
        const QByteArray before = FileBytes(db);

        const QDeadlineTimer fewSeconds(6000);
        {
            FrmMain main(env.services);
            const bool started = main.Form_Load();
            QCOMPARE(started, exitCode < 0);
            if (started) {
                QVERIFY2(env.prompter.shown.isEmpty(), qPrintable(env.prompter.texts().join(QLatin1Char('|'))));
                QVERIFY(!QLockFile(lock).tryLock(0));
                main.Form_Unload();
            } else {
                QCOMPARE(main.loadExitCode(), exitCode);
                QCOMPARE(env.prompter.shown.size(), 1);
                QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Critical);
                const QString text = env.prompter.shown.front().text;
                QVERIFY2(text.contains(message), qPrintable(text));
                // The message names the file (or the folder) it is about; a second copy needs not.
                if (setup != "second")
                    QVERIFY2(text.contains(setup == "unwritable" ? env.services.dataDir : db), qPrintable(text));
                QVERIFY(!main.trayIcon());
            }
        }
        // A lock is waited for a few seconds at most.
        QVERIFY(!fewSeconds.hasExpired());
        holder.kill();
        holder.waitForFinished();
        // Left as it was, unless the start built it anew, upgraded it or took over a lock.
        if (exitCode >= 0 || setup.endsWith(QLatin1String("lock")))
            QCOMPARE(FileBytes(db), before);
        if (exitCode < 0) {
            // On a database of this release, and the lock free again for the next start.
            env.open();
            QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10")), 12);
            QLockFile next(lock);
            QVERIFY(next.tryLock(0));
        } else {
            QVERIFY(!QFileInfo::exists(env.services.iniPath()));
        }
    }

    void commandLine_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("database"); // where the first start builds it; "" = refused
        // clang-format off
        QTest::newRow("no arguments") << QStringList{} << "home/.local/share/halvern-verdaly/QMCalendar.mdb";
        QTest::newRow("folder joined with =") << QStringList{"--data-dir=DIR"} << "data/QMCalendar.mdb";
        QTest::newRow("started at login") << QStringList{"--autostart", "--data-dir", "DIR"} << "data/QMCalendar.mdb";
        QTest::newRow("option without a folder") << QStringList{"--data-dir"} << "";
        QTest::newRow("empty folder after =") << QStringList{"--data-dir="} << "";
        QTest::newRow("option where the folder should be") << QStringList{"--data-dir", "--other"} << "";
        QTest::newRow("unknown option") << QStringList{"--colour"} << "";
        QTest::newRow("stray word") << QStringList{"--data-dir", "DIR", "extra"} << "";
        // clang-format on
    }
    void commandLine()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, database);
        QTemporaryDir dir;
        for (QString& a : arguments)
            a.replace(QStringLiteral("DIR"), dir.filePath(QStringLiteral("data")));
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), dir.filePath(QStringLiteral("home")));
        environment.remove(QStringLiteral("XDG_DATA_HOME"));
        program.setProcessEnvironment(environment);
        program.start(QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(QStringLiteral("verdaly")), arguments);
        if (!database.isEmpty()) {
            // It builds its database in its data folder and runs on; no usage is printed.
            QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(dir.filePath(database)), 10000);
            QVERIFY(!program.waitForFinished(1000));
            program.terminate();
            QVERIFY(program.waitForFinished(10000));
            QVERIFY(!program.readAllStandardError().contains("verdaly ["));
        } else {
            QVERIFY(program.waitForFinished(10000));
            QCOMPARE(program.exitStatus(), QProcess::NormalExit);
            QCOMPARE(program.exitCode(), 2);
            QVERIFY(QString::fromUtf8(program.readAllStandardError()).contains(QStringLiteral("使い方: verdaly [")));
            QVERIFY(QDir(dir.path()).isEmpty()); // nothing was created anywhere
        }
    }

    // A resident calendar's login start waits in the tray, but without a tray the window shows
    // and its close box minimises it. Exit writes all 30 note slots (none after a restore) and
    // the placement, unless minimised.
    void startToExit_data()
    {
        QTest::addColumn<RunRow>("row");
        // clang-format off
        QTest::newRow("from the menu, resident, session end") << RunRow{1, true, false, false, "at once", "exited", UnloadMode::AppWindows};
        QTest::newRow("resident: exit menu") << RunRow{1, true, false, false, "at once", "exited", UnloadMode::FormCode};
        QTest::newRow("resident: close box hides to the tray") << RunRow{1, true, false, false, "at once", "in the tray", UnloadMode::FormControlMenu};
        QTest::newRow("login, not resident: close box exits") << RunRow{0, true, true, false, "at once", "exited", UnloadMode::FormControlMenu};
        QTest::newRow("no row: close box exits") << RunRow{-1, true, false, false, "at once", "exited", UnloadMode::FormControlMenu};
        QTest::newRow("login, resident, tray") << RunRow{1, true, true, false, "never", "exited", UnloadMode::AppWindows};
        QTest::newRow("login, resident, no tray ever") << RunRow{1, false, true, false, "later", "minimised", UnloadMode::FormControlMenu};
        QTest::newRow("exit after a restore") << RunRow{0, true, false, true, "at once", "exited", UnloadMode::FormCode};
        // clang-format on
    }
    void startToExit()
    {
        QFETCH(RunRow, row);
        TestEnvironment env;
        if (row.resident < 0)
            env.db().ExecuteSql(QStringLiteral("DELETE * FROM TRNGENERAL WHERE CODE = 311"));
        else
            SetGeneral(env.db(), 311, {{"DATAN1", row.resident}});
        // Each closed slot has a place of its own that must be kept.
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN2 = DATAN1 * 100, DATAN3 = DATAN1 * 200, "
                                           "DATAS2 = '6', MEMO1 = 'old' WHERE CODE = 501"));
        const QString notesSql = QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 ORDER BY DATAN1");
        const QStringList columns{"DATAN1", "DATAS3", "DATAS2", "MEMO1", "DATAN2", "DATAN3"};
        const QStringList stored = Lines(env.db(), notesSql, columns);
        env.services.connection.reset();
        FrmMain main(env.services);
        main.setTrayAvailabilityForTesting(row.tray ? 1 : 0);
        QVERIFY(main.Form_Load());
        QStringList expected;
        QWidget windows[31]; // the notes' windows, closed at exit
        for (int n = 1; n <= 30; ++n) {
            if (n % 3 == 2) {
                expected << QStringLiteral("%1|0|||%2|%3").arg(n).arg(n * 100).arg(n * 200);
                continue;
            }
            windows[n].show();
            env.services.state.StickyNotes[static_cast<size_t>(n)] = {
                true, QStringLiteral("メモ %1\nit's").arg(n), n % 7, n * 15, n * 30, &windows[n]};
            expected << QStringLiteral("%1|1|%2|メモ %1\nit's|%3|%4").arg(n).arg(n % 7).arg(n * 15).arg(n * 30);
        }

        main.ShowAtStart(row.autostarted);
        QCOMPARE(main.isVisible(), row.shown == "at once");
        QTest::qWait(row.shown == "later" ? 0 : 600); // what shows at once or never stays so
        QTRY_COMPARE_WITH_TIMEOUT(main.isVisible(), row.shown != "never", 8000);
        if (main.isVisible())
            QVERIFY(QTest::qWaitForWindowExposed(&main));

        env.services.state.RestoreDone = row.restoreDone;
        if (row.closedBy == UnloadMode::FormControlMenu)
            main.close();
        else
            main.RequestShutdown(row.closedBy);
        QCOMPARE(main.isUnloaded(), row.after == "exited");
        QCOMPARE(main.isVisible(), row.after == "minimised");
        QCOMPARE(main.isMinimized(), row.after != "exited");
        if (!main.isUnloaded())
            main.RequestShutdown(UnloadMode::FormCode);

        for (const QWidget& window : windows)
            QVERIFY(!window.isVisible());
        env.open();
        QCOMPARE(Lines(env.db(), notesSql, columns), row.restoreDone ? stored : expected);
        QCOMPARE(ReadIniValue(env.services.iniPath(), QStringLiteral("frmMAIN"), QStringLiteral("Height")).isEmpty(),
                 row.after != "exited");
    }
};

VERDALY_TEST(TestStartAndExit)
#include "TestStartAndExit.moc"
