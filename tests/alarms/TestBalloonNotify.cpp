// The real notifier on a desktop of its own: with a real notification server on a private
// session bus, and with none.
#include "support/DesktopSession.h"
#include "support/TestKit.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestBalloonNotify final : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void badCommandLineIsRefused_data();
    void badCommandLineIsRefused();
    void postsToTheNotificationServer_data();
    void postsToTheNotificationServer();
    void ownBalloonWithoutAServer();

private:
    QString notifier() const;
    DesktopSession m_desktop;
    QTemporaryDir m_dir;
};

QString TestBalloonNotify::notifier() const
{
    return QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(QStringLiteral("BalloonNotify"));
}

void TestBalloonNotify::initTestCase()
{
    QVERIFY2(QFileInfo(notifier()).isExecutable(), qPrintable(notifier()));
    QString why;
    QVERIFY2(m_desktop.startDisplay(&why), qPrintable(why));
    QVERIFY2(m_desktop.startBus(&why), qPrintable(why));
    QVERIFY2(m_desktop.startNotificationServer(&why), qPrintable(why));
    QFile broken(m_dir.filePath(QStringLiteral("broken.wav")));
    QVERIFY(broken.open(QIODevice::WriteOnly));
    broken.write("RIFF but nothing of a wave after it");
}

void TestBalloonNotify::badCommandLineIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("nothing") << QStringList();
    QTest::newRow("no text") << QStringList{"/t", "会議"};
}

void TestBalloonNotify::badCommandLineIsRefused()
{
    QFETCH(QStringList, arguments);
    QProcess process;
    process.setProcessEnvironment(m_desktop.environment());
    process.start(notifier(), arguments);
    QVERIFY(process.waitForFinished(10000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QVERIFY(process.exitCode() != 0);
    QVERIFY(QString::fromUtf8(process.readAllStandardError()).contains(QStringLiteral("usage: BalloonNotify")));
    QCOMPARE(m_desktop.shownNotifications(), 0);
}

void TestBalloonNotify::postsToTheNotificationServer_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sound"); // a file in the test's folder, or none
    QTest::addColumn<QString>("logged");

    // clang-format off
    QTest::newRow("Japanese, no sound")    << "会議 /c 3F" << "第二会議室にて\n資料を持参" << ""            << "";
    QTest::newRow("missing sound")         << "締切 A"     << ""                           << "gone.wav"    << "sound file not found";
    QTest::newRow("broken sound")          << "締切 B"     << "報告書"                     << "broken.wav"  << "cannot be played";
    // clang-format on
}

void TestBalloonNotify::postsToTheNotificationServer()
{
    QFETCH(QString, title);
    QFETCH(QString, text);
    QFETCH(QString, sound);
    QFETCH(QString, logged);

    QStringList arguments{"/t", title, "/c", text, "/i", "i"};
    if (!sound.isEmpty())
        arguments << "/a" << m_dir.filePath(sound);
    QProcess process;
    process.setProcessEnvironment(m_desktop.environment());
    process.start(notifier(), arguments);
    QVERIFY(process.waitForFinished(20000));
    const QString errors = QString::fromUtf8(process.readAllStandardError());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QVERIFY2(process.exitCode() == 0, qPrintable(errors));
    if (logged.isEmpty()) {
        QVERIFY2(!errors.contains(QStringLiteral("not found")), qPrintable(errors));
        QVERIFY2(!errors.contains(QStringLiteral("cannot be played")), qPrintable(errors));
    } else {
        QVERIFY2(errors.contains(logged), qPrintable(errors));
    }
    QVERIFY2(!errors.contains(QStringLiteral("balloon of our own")), qPrintable(errors));

    int found = 0;
    for (const DesktopSession::Notification& n : m_desktop.closeAllAndReadHistory()) {
        if (n.summary != title)
            continue;
        ++found;
        QCOMPARE(n.body, text);
        QCOMPARE(n.appName, QStringLiteral("Halvern Verdaly"));
    }
    QCOMPARE(found, 1);
}

void TestBalloonNotify::ownBalloonWithoutAServer()
{
    QProcessEnvironment env = m_desktop.environment();
    env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent/no-bus"));
    const int shownBefore = m_desktop.shownNotifications();
    QProcess process;
    process.setProcessEnvironment(env);
    const QString title = QStringLiteral("会議 3F");
    process.start(notifier(), {"/t", title, "/c", "第二会議室にて", "/i", "i"});
    QVERIFY(process.waitForStarted());
    QStringList windows;
    QVERIFY2(WaitUntil([&] { return !(windows = m_desktop.visibleWindows(process.processId())).isEmpty(); }, 10000),
             "no balloon appeared");
    QCOMPARE(windows.size(), 1);
    QCOMPARE(m_desktop.run("xdotool", {"getwindowname", windows.front()}).trimmed(), title);

    // Near the bottom-right corner of the 1024 x 768 screen.
    QMap<QString, int> geometry;
    for (const QString& line :
         m_desktop.run("xdotool", {"getwindowgeometry", "--shell", windows.front()}).split('\n', Qt::SkipEmptyParts))
        geometry.insert(line.section('=', 0, 0), line.section('=', 1).toInt());
    const int right = geometry.value("X") + geometry.value("WIDTH");
    const int bottom = geometry.value("Y") + geometry.value("HEIGHT");
    QVERIFY2(right > 1024 - 60 && right <= 1024, qPrintable(QString::number(right)));
    QVERIFY2(bottom > 768 - 60 && bottom <= 768, qPrintable(QString::number(bottom)));
    QVERIFY(geometry.value("WIDTH") > 100);

    // A click closes it long before its ten seconds are up, and the notifier ends.
    QElapsedTimer clicked;
    clicked.start();
    m_desktop.run("xdotool", {"mousemove", "--window", windows.front(), "20", "20", "click", "1"});
    QVERIFY(process.waitForFinished(5000));
    QVERIFY(clicked.elapsed() < 5000);
    QCOMPARE(process.exitCode(), 0);
    QCOMPARE(m_desktop.shownNotifications(), shownBefore);
}

VERDALY_TEST(TestBalloonNotify)

#include "TestBalloonNotify.moc"
