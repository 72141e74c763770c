// Starts the real program on a real (virtual) X display and talks to it from outside,
// as a user and the desktop would: start, a refused second start, being told to stop.
#include "shell/IniFile.h"
#include "support/DesktopSession.h"
#include "support/TestKit.h"

#include <QProcess>
#include <QtTest>

class TestEndToEnd : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void firstStartSecondCopyAndTermination();

private:
    DesktopSession m_desktop;
};

void TestEndToEnd::initTestCase()
{
    QVERIFY2(QFileInfo(VerdalyProgram()).isExecutable(), qPrintable(VerdalyProgram()));
    QString why;
    QVERIFY2(m_desktop.startDisplay(&why), qPrintable(why));
}

void TestEndToEnd::firstStartSecondCopyAndTermination()
{
    QTemporaryDir data;
    const QString dataDir = data.filePath(QStringLiteral("empty"));
    QProcess first;
    first.setProcessEnvironment(m_desktop.environment());
    first.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    first.start(VerdalyProgram(), {QStringLiteral("--data-dir"), dataDir});
    QVERIFY(first.waitForStarted());
    QVERIFY2(WaitUntil([&] { return !m_desktop.visibleWindows(first.processId()).isEmpty(); }), "no window appeared");

    // The database it built from nothing.
    {
        auto db = OpenDatabaseConnection(QDir(dataDir).filePath(QStringLiteral("QMCalendar.mdb")), QString());
        QVERIFY(db->isOpen());
        QCOMPARE(db->ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501")).size(), size_t(30));
    }

    // A second copy on the same folder says so and ends; the first runs on.
    QProcess second;
    second.setProcessEnvironment(m_desktop.environment());
    second.start(VerdalyProgram(), {QStringLiteral("--data-dir"), dataDir});
    QVERIFY(second.waitForStarted());
    QStringList box;
    QVERIFY2(WaitUntil([&] { return !(box = m_desktop.visibleWindows(second.processId())).isEmpty(); }),
             "the second copy showed no message");
    // The box may not take keys the moment it is mapped: press Return until it ends.
    const bool ended = WaitUntil([&] {
        m_desktop.run(QStringLiteral("xdotool"),
                      {QStringLiteral("key"), QStringLiteral("--window"), box.first(), QStringLiteral("Return")});
        return second.waitForFinished(1000);
    });
    QVERIFY2(ended, "the second copy did not end");
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(first.state(), QProcess::Running);

    // Being told to stop is an orderly shutdown: the placement is written.
    const QString ini = QDir(dataDir).filePath(QStringLiteral("dayvane.ini"));
    QVERIFY(!QFileInfo::exists(ini));
    first.terminate(); // SIGTERM
    QVERIFY(first.waitForFinished(15000));
    QCOMPARE(first.exitStatus(), QProcess::NormalExit);
    QCOMPARE(first.exitCode(), 0);
    for (const char* name : {"Top", "Left", "Width"})
        QVERIFY(!ReadIniValue(ini, QStringLiteral("frmMAIN"), QString::fromLatin1(name)).isEmpty());
    QVERIFY(ReadIniValue(ini, QStringLiteral("frmMAIN"), QStringLiteral("Height")).toInt() > 0);
}

VERDALY_TEST(TestEndToEnd)
#include "tst_e2e.moc"
