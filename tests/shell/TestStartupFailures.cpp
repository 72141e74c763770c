// What the user sees when the files around the database are broken: a message that names
// the file and what is wrong with it, an exit code, and the file left exactly as it was.
#include "mainwindow/FrmMain.h"
#include "shell/DataFolder.h"
#include "support/TestKit.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QtTest>

namespace {

QByteArray FileBytes(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<no file>");
}

void WriteFile(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(bytes);
}

QByteArray RandomBytes(int size)
{
    QByteArray bytes(size, '\0');
    for (char& b : bytes)
        b = static_cast<char>(QRandomGenerator::global()->bounded(256));
    return bytes;
}

} // namespace

class TestStartupFailures : public QObject
{
    Q_OBJECT

private slots:
    void brokenFiles_data();
    void brokenFiles();
    void commandLine_data();
    void commandLine();
};

void TestStartupFailures::brokenFiles_data()
{
    QTest::addColumn<QString>("setup");
    QTest::addColumn<QString>("message"); // a part of the one message shown; "" = none
    QTest::addColumn<int>("exitCode");    // -1: the program starts
    QTest::addColumn<bool>("fileKept");   // the database file is byte-identical afterwards
    // clang-format off
    QTest::newRow("random bytes") << "random" << "読み込めません" << 1 << true;
    QTest::newRow("locked by another program") << "locked" << "他のプログラムに使用されています" << 1 << true;
    QTest::newRow("folder in place of the file") << "folder" << "ファイルではありません" << 1 << false;
    QTest::newRow("cannot be built") << "unbuildable" << "作成できません" << 1 << false;
    QTest::newRow("first start builds the database") << "nofile" << "" << -1 << false;
    QTest::newRow("0-byte file is built anew") << "empty" << "" << -1 << false;
    QTest::newRow("lock of a process that is gone") << "deadlock" << "" << -1 << true;
    QTest::newRow("empty lock file") << "emptylock" << "" << -1 << true;
    QTest::newRow("garbage lock file") << "garbagelock" << "" << -1 << true;
    QTest::newRow("lock naming pid 0") << "pid0lock" << "" << -1 << true;
    QTest::newRow("folder cannot be written") << "unwritable" << "データフォルダに書き込めません" << 1 << true;
    // clang-format on
}

void TestStartupFailures::brokenFiles()
{
    QFETCH(QString, setup);
    QFETCH(QString, message);
    QFETCH(int, exitCode);
    QFETCH(bool, fileKept);

    TestEnvironment env(setup != QLatin1String("random") && setup != QLatin1String("folder") &&
                        setup != QLatin1String("unbuildable") && setup != QLatin1String("empty") &&
                        setup != QLatin1String("nofile"));
    env.services.connection.reset();
    const QString db = env.path();
    const QString lock = env.services.lockPath();
    QProcess holder;
    if (setup == QLatin1String("random"))
        WriteFile(db, RandomBytes(8192));
    else if (setup == QLatin1String("empty"))
        WriteFile(db, QByteArray());
    else if (setup == QLatin1String("folder"))
        QVERIFY(QDir().mkpath(db));
    else if (setup == QLatin1String("unbuildable"))
        QVERIFY(QDir().mkpath(db + QStringLiteral(".building/x")));
    else if (setup == QLatin1String("emptylock"))
        WriteFile(lock, QByteArray());
    else if (setup == QLatin1String("garbagelock"))
        WriteFile(lock, RandomBytes(64));
    else if (setup == QLatin1String("pid0lock"))
        WriteFile(lock, "0\nverdaly\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    else if (setup == QLatin1String("deadlock")) {
        // The copy that held it was killed: its process is gone, its lock file is not.
        holder.start(QStringLiteral("true"));
        QVERIFY(holder.waitForStarted());
        const qint64 gone = holder.processId();
        QVERIFY(holder.waitForFinished());
        WriteFile(lock, QByteArray::number(gone) + "\nverdaly\n" + QSysInfo::machineHostName().toUtf8() + "\n");
    } else if (setup == QLatin1String("unwritable"))
        env.services.dataDir = QStringLiteral("/proc"); // not writable, not even for root
    else if (setup == QLatin1String("locked")) {
        // Another program (the engine's own shell) holds the file with an exclusive lock.
        holder.start(QStringLiteral("sqlite3"), {db});
        QVERIFY(holder.waitForStarted());
        holder.write("BEGIN EXCLUSIVE;\nSELECT 'holding';\n");
        QVERIFY(holder.waitForReadyRead(5000));
        QCOMPARE(holder.readAll().trimmed(), QByteArray("holding"));
    }
    const QByteArray before = FileBytes(db);

    QElapsedTimer clock;
    clock.start();
    {
        FrmMain main(env.services);
        const bool started = main.Form_Load();
        QCOMPARE(started, exitCode < 0);
        if (started) {
            QVERIFY2(env.prompter.shown.isEmpty(), qPrintable(env.prompter.texts().join(QLatin1Char('|'))));
            main.Form_Unload();
        } else {
            QCOMPARE(main.loadExitCode(), exitCode);
            QCOMPARE(env.prompter.shown.size(), 1);
            const QString text = env.prompter.shown.front().text;
            QVERIFY2(text.contains(message), qPrintable(text));
            // The message names the file (or the folder) it is about.
            QVERIFY2(text.contains(setup == QLatin1String("unwritable") ? env.services.dataDir : db), qPrintable(text));
            QVERIFY(!main.trayIcon());
            QVERIFY(!env.services.connection || !env.services.connection->isOpen());
        }
    }
    // A lock is waited for a few seconds at most.
    QVERIFY2(clock.elapsed() < 6000, qPrintable(QString::number(clock.elapsed())));
    if (holder.state() == QProcess::Running) {
        holder.write("ROLLBACK;\n.quit\n");
        holder.closeWriteChannel();
        QVERIFY(holder.waitForFinished(5000));
    }
    if (fileKept)
        QCOMPARE(FileBytes(db), before);
    if (exitCode < 0) {
        // It started on a usable database, and the lock is free again for the next start.
        env.open();
        QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10")), 12);
        QLockFile next(lock);
        QVERIFY(next.tryLock(0));
    } else {
        QVERIFY(!QFileInfo::exists(env.services.iniPath()));
    }
}

void TestStartupFailures::commandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("accepted");
    // clang-format off
    QTest::newRow("no arguments") << QStringList{} << true;
    QTest::newRow("folder after the option") << QStringList{"--data-dir", "DIR"} << true;
    QTest::newRow("folder joined with =") << QStringList{"--data-dir=DIR"} << true;
    QTest::newRow("started at login") << QStringList{"--autostart", "--data-dir", "DIR"} << true;
    QTest::newRow("option without a folder") << QStringList{"--data-dir"} << false;
    QTest::newRow("empty folder after =") << QStringList{"--data-dir="} << false;
    QTest::newRow("option where the folder should be") << QStringList{"--data-dir", "--other"} << false;
    QTest::newRow("unknown option") << QStringList{"--colour"} << false;
    QTest::newRow("stray word") << QStringList{"--data-dir", "DIR", "extra"} << false;
    // clang-format on
}

void TestStartupFailures::commandLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, accepted);
    QTemporaryDir dir;
    for (QString& a : arguments)
        a.replace(QStringLiteral("DIR"), dir.filePath(QStringLiteral("data")));

    // The real program, told nothing but these arguments.
    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), dir.filePath(QStringLiteral("home")));
    environment.remove(QStringLiteral("XDG_DATA_HOME"));
    program.setProcessEnvironment(environment);
    program.start(QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(QStringLiteral("verdaly")), arguments);
    QVERIFY(program.waitForStarted());
    if (accepted) {
        // It gets as far as its data folder and runs on; no usage is printed.
        QVERIFY(!program.waitForFinished(1500));
        program.terminate();
        QVERIFY(program.waitForFinished(10000));
        QVERIFY(!program.readAllStandardError().contains("verdaly ["));
    } else {
        QVERIFY(program.waitForFinished(10000));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 2);
        const QString err = QString::fromUtf8(program.readAllStandardError());
        QVERIFY2(err.contains(QStringLiteral("使い方: verdaly [--data-dir")), qPrintable(err));
        // Nothing was created anywhere.
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("data"))));
        QVERIFY(!QFileInfo::exists(dir.filePath(QStringLiteral("home"))));
    }
}

VERDALY_TEST(TestStartupFailures)
#include "TestStartupFailures.moc"
