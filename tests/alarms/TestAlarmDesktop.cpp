// The real notifier and the real program on a desktop of their own, with a real notification
// server on a private session bus (and once with none): the alarm arrives on time, and once.
#include "support/DesktopSession.h"
#include "support/TestKit.h"

#include <QTemporaryDir>
#include <QtTest>

class TestAlarmDesktop final : public QObject
{
    Q_OBJECT

    DesktopSession m_desktop;
    QTemporaryDir m_dir;
    QString program(const char* name) const { return QDir(qEnvironmentVariable("VERDALY_BIN_DIR")).filePath(name); }

private slots:
    void initTestCase()
    {
        QString why;
        QVERIFY2(m_desktop.startDisplay(&why) && m_desktop.startBus(&why) && m_desktop.startNotificationServer(&why),
                 qPrintable(why));
        QVERIFY(WriteFile(m_dir.filePath(QStringLiteral("broken.wav")), "RIFF but nothing of a wave after it"));
    }

    void alarmIsDeliveredOnceAtItsMoment()
    {
        // The first whole minute at least half a minute ahead, so the program is up well before.
        SystemClock clock;
        const QDateTime start = clock.now();
        QDateTime moment(start.date(), QTime(start.time().hour(), start.time().minute()));
        while (start.msecsTo(moment) < 30000)
            moment = moment.addSecs(60);
        TestEnvironment env;
        StoreAlarmSettings(env.db(), 0, true);
        const QString day = moment.date().toString("yyyyMMdd");
        StoredEntry entry = WithAlarm(Entry(1, "A3", day, moment.toString("HH:mm"), day, QString(), "定例会議"));
        entry.comment = "第一会議室";
        StoreEntry(env.db(), entry);
        env.services.connection.reset();

        QProcess calendar;
        calendar.setProcessEnvironment(m_desktop.environment());
        calendar.start(VerdalyProgram(), {"--data-dir", env.services.dataDir});
        QVERIFY(calendar.waitForStarted());
        QVERIFY2(WaitUntil([&] { return !m_desktop.visibleWindows(calendar.processId()).isEmpty(); }, 20000),
                 "the calendar showed no window");
        QVERIFY2(clock.now() < moment, "the program took too long to start for the alarm's moment");
        QVERIFY2(WaitUntil([&] { return m_desktop.shownNotifications() > 0; },
                           static_cast<int>(clock.now().msecsTo(moment)) + 5000),
                 "no alarm arrived");
        const qint64 delay = moment.msecsTo(clock.now());
        QVERIFY2(delay >= 0 && delay <= 2000, qPrintable(QString("the alarm came %1 ms after its moment").arg(delay)));

        QTest::qWait(3000); // time for a second delivery, if there were one
        QStringList rung;
        for (const DesktopSession::Notification& n : m_desktop.closeAllAndReadHistory())
            rung << n.summary + "|" + n.body;
        QCOMPARE(rung, QStringList{entry.business + "|" + entry.comment});
        calendar.terminate();
        QVERIFY(calendar.waitForFinished(15000));
    }

    void notifierPostsToTheServer_data()
    {
        QTest::addColumn<QStringList>("arguments"); // a sound file is one of the test's folder
        QTest::addColumn<QString>("logged");        // empty: nothing about the sound
        QTest::addColumn<bool>("posted");           // else refused with its usage line
        // clang-format off
        QTest::newRow("nothing") << QStringList() << "usage: BalloonNotify" << false;
        QTest::newRow("no text") << QStringList{"/t", "会議"} << "usage: BalloonNotify" << false;
        QTest::newRow("Japanese, no sound") << QStringList{"/t", "会議 /c 3F", "/c", "第二会議室にて\n資料を持参", "/i", "i"} << "" << true;
        QTest::newRow("missing sound") << QStringList{"/t", "締切 A", "/c", "", "/i", "i", "/a", "gone.wav"} << "sound file not found" << true;
        QTest::newRow("broken sound") << QStringList{"/t", "締切 B", "/c", "報告書", "/i", "i", "/a", "broken.wav"} << "cannot be played" << true;
        // clang-format on
    }
    void notifierPostsToTheServer()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, logged);
        QFETCH(bool, posted);
        if (arguments.size() > 7)
            arguments[7] = m_dir.filePath(arguments[7]);
        QProcess process;
        process.setProcessEnvironment(m_desktop.environment());
        process.start(program("BalloonNotify"), arguments);
        QVERIFY(process.waitForFinished(20000));
        const QString errors = QString::fromUtf8(process.readAllStandardError());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QVERIFY2((process.exitCode() == 0) == posted, qPrintable(errors));
        QVERIFY2(logged.isEmpty() ? !errors.contains("not found") && !errors.contains("cannot be played")
                                  : errors.contains(logged),
                 qPrintable(errors));
        QVERIFY2(!errors.contains("balloon of our own"), qPrintable(errors));
        QStringList found;
        for (const DesktopSession::Notification& n : m_desktop.closeAllAndReadHistory())
            if (n.summary == arguments.value(1))
                found << n.appName + "|" + n.body;
        QCOMPARE(found, posted ? QStringList{"Halvern Verdaly|" + arguments.value(3)} : QStringList());
    }

    void ownBalloonWithoutAServer()
    {
        QProcessEnvironment env = m_desktop.environment();
        env.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/no-bus");
        const int shownBefore = m_desktop.shownNotifications();
        QProcess process;
        process.setProcessEnvironment(env);
        const QString title = "会議 3F";
        process.start(program("BalloonNotify"), {"/t", title, "/c", "第二会議室にて", "/i", "i"});
        QVERIFY(process.waitForStarted());
        QStringList windows;
        QVERIFY2(WaitUntil([&] { return !(windows = m_desktop.visibleWindows(process.processId())).isEmpty(); }, 10000),
                 "no balloon appeared");
        QCOMPARE(windows.size(), 1);
        QCOMPARE(m_desktop.run("xdotool", {"getwindowname", windows.front()}).trimmed(), title);
        // Near the bottom-right corner of the 1024 x 768 screen.
        QMap<QString, int> g;
        for (const QString& line :
             m_desktop.run("xdotool", {"getwindowgeometry", "--shell", windows.front()}).split('\n'))
            g.insert(line.section('=', 0, 0), line.section('=', 1).toInt());
        const QRect balloon(g["X"], g["Y"], g["WIDTH"], g["HEIGHT"]);
        QVERIFY2(QRect(1024 - 60, 768 - 60, 60, 60).contains(balloon.bottomRight()) && balloon.width() > 100,
                 qPrintable(QDebug::toString(balloon)));
        // A click closes it long before its ten seconds are up, and the notifier ends.
        m_desktop.run("xdotool", {"mousemove", "--window", windows.front(), "20", "20", "click", "1"});
        QVERIFY(process.waitForFinished(5000));
        QCOMPARE(process.exitCode(), 0);
        QCOMPARE(m_desktop.shownNotifications(), shownBefore);
    }
};

VERDALY_TEST(TestAlarmDesktop)
#include "TestAlarmDesktop.moc"
