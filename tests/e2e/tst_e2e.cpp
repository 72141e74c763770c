// Starts the real program on a real (virtual) X display and talks to it from outside,
// as a user and the desktop would: start, a refused second start, being told to stop.
#include "shell/IniFile.h"
#include "support/DesktopSession.h"
#include "support/TestKit.h"

#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

class TestEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void firstStartSecondCopyAndTermination();
    void oldDatabaseIsUpgradedAtStart();

private:
    QProcessEnvironment programEnvironment() const;
    QString windowsOf(qint64 pid);
    QString program() const;

    QProcess m_xvfb;
    QString m_display;
};

QString TestEndToEnd::program() const
{
    return QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(QStringLiteral("verdaly"));
}

void TestEndToEnd::initTestCase()
{
    QVERIFY2(QFileInfo(program()).isExecutable(), qPrintable(program()));
    const QString xvfb = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    QVERIFY2(!xvfb.isEmpty(), "Xvfb is needed for the end-to-end test (scripts/test installs it)");
    QVERIFY(!QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty());
    // -displayfd lets the server pick a free display and tell us which.
    m_xvfb.start(xvfb,
                 {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
                  QStringLiteral("1024x768x24"), QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    QVERIFY(m_xvfb.waitForStarted());
    QVERIFY(WaitUntil([&] { return m_xvfb.canReadLine() || m_xvfb.state() != QProcess::Running; }, 15000));
    m_display = QLatin1Char(':') + QString::fromLatin1(m_xvfb.readLine()).trimmed();
    QVERIFY2(m_display.size() > 1, "Xvfb did not report its display");
}

void TestEndToEnd::cleanupTestCase()
{
    m_xvfb.terminate();
    m_xvfb.waitForFinished(5000);
}

QProcessEnvironment TestEndToEnd::programEnvironment() const
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("DISPLAY"), m_display);
    env.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    return env;
}

// Visible top-level windows that belong to the process, as xdotool finds them.
QString TestEndToEnd::windowsOf(qint64 pid)
{
    QProcess xdotool;
    xdotool.setProcessEnvironment(programEnvironment());
    xdotool.start(QStringLiteral("xdotool"), {QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                                              QStringLiteral("--pid"), QString::number(pid)});
    xdotool.waitForFinished(5000);
    return QString::fromLatin1(xdotool.readAllStandardOutput()).trimmed();
}

void TestEndToEnd::firstStartSecondCopyAndTermination()
{
    QTemporaryDir data;
    const QString dataDir = data.filePath(QStringLiteral("empty"));
    QProcess first;
    first.setProcessEnvironment(programEnvironment());
    first.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    first.start(program(), {QStringLiteral("--data-dir"), dataDir});
    QVERIFY(first.waitForStarted());
    QVERIFY2(WaitUntil([&] { return !windowsOf(first.processId()).isEmpty(); }, 20000), "no window appeared");

    // The database it built from nothing.
    const QString dbPath = QDir(dataDir).filePath(QStringLiteral("QMCalendar.mdb"));
    QVERIFY(QFileInfo::exists(dbPath));
    {
        auto db = OpenDatabaseConnection(dbPath, QString());
        QVERIFY(db->isOpen());
        QCOMPARE(db->ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 10"))
                     .front()
                     .number(QStringLiteral("DATAN1")),
                 12);
        QCOMPARE(db->ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501")).size(), size_t(30));
        QCOMPARE(db->ReadRows(QStringLiteral("SELECT * FROM TRNCOLOR WHERE SETNUM = 0")).size(), size_t(15));
    }

    // A second copy on the same folder says so and ends; the first runs on.
    QProcess second;
    second.setProcessEnvironment(programEnvironment());
    second.start(program(), {QStringLiteral("--data-dir"), dataDir});
    QVERIFY(second.waitForStarted());
    QString box;
    QVERIFY2(WaitUntil([&] { return !(box = windowsOf(second.processId())).isEmpty(); }, 20000),
             "the second copy showed no message");
    // The box may not take keys the moment it is mapped: press Return until it ends.
    const QString boxWindow = box.split(QLatin1Char('\n')).first();
    const bool ended = WaitUntil(
        [&] {
            QProcess key;
            key.setProcessEnvironment(programEnvironment());
            key.start(QStringLiteral("xdotool"),
                      {QStringLiteral("key"), QStringLiteral("--window"), boxWindow, QStringLiteral("Return")});
            key.waitForFinished(5000);
            return second.waitForFinished(1000);
        },
        20000);
    QVERIFY2(ended, "the second copy did not end");
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(first.state(), QProcess::Running);

    // Being told to stop is an orderly shutdown: the placement is written.
    QVERIFY(!QFileInfo::exists(QDir(dataDir).filePath(QStringLiteral("dayvane.ini"))));
    first.terminate(); // SIGTERM
    QVERIFY(first.waitForFinished(15000));
    QCOMPARE(first.exitStatus(), QProcess::NormalExit);
    QCOMPARE(first.exitCode(), 0);
    const QString ini = QDir(dataDir).filePath(QStringLiteral("dayvane.ini"));
    QVERIFY(QFileInfo::exists(ini));
    for (const char* name : {"Top", "Left", "Height", "Width"})
        QVERIFY(!ReadIniValue(ini, QStringLiteral("frmMAIN"), QString::fromLatin1(name)).isEmpty());
    QVERIFY(ReadIniValue(ini, QStringLiteral("frmMAIN"), QStringLiteral("Height")).toInt() > 0);
}

void TestEndToEnd::oldDatabaseIsUpgradedAtStart()
{
    TestEnvironment env;
    DowngradeDatabase(env.db(), 10);
    env.services.connection.reset();

    QProcess calendar;
    calendar.setProcessEnvironment(programEnvironment());
    calendar.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    calendar.start(program(), {QStringLiteral("--data-dir=") + env.services.dataDir});
    QVERIFY(calendar.waitForStarted());
    QVERIFY2(WaitUntil([&] { return !windowsOf(calendar.processId()).isEmpty(); }, 20000), "no window appeared");
    calendar.terminate();
    QVERIFY(calendar.waitForFinished(15000));

    env.open();
    QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10")), 12);
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("82000 <= CODE AND CODE < 82999")), 5);
    QCOMPARE(env.count(QStringLiteral("TRNCOLOR"), QStringLiteral("CODE = 135")), 1);
}

VERDALY_TEST(TestEndToEnd)
#include "tst_e2e.moc"
