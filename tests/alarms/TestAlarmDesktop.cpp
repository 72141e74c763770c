// The real notifier and program on a desktop and notification server of their own (or none): on time, once.
#include "support/DesktopSession.h"
#include "support/TestKit.h"

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
        QVERIFY(WriteFile(m_dir.filePath("broken.wav"), "RIFF but nothing of a wave after it"));
    }

    void alarmIsDeliveredOnceAtItsMoment()
    {
        // The first whole minute at least half a minute ahead, so the program is up well before.
        SystemClock clock;
        const QDateTime later = clock.now().addMSecs(89999);
        const QDateTime moment(later.date(), QTime(later.time().hour(), later.time().minute()));
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
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("posted"); // else refused with its usage line
        // clang-format off
        QTest::newRow("nothing") << QStringList() << false;
        QTest::newRow("no text") << QStringList{"/t", "会議"} << false;
        QTest::newRow("Japanese, no sound") << QStringList{"/t", "会議 /c 3F", "/c", "第二会議室にて\n資料を持参", "/i", "i"} << true;
        QTest::newRow("missing sound") << QStringList{"/t", "締切 A", "/c", "", "/i", "i", "/a", m_dir.filePath("gone.wav")} << true;
        QTest::newRow("broken sound") << QStringList{"/t", "締切 B", "/c", "報告書", "/i", "i", "/a", m_dir.filePath("broken.wav")} << true;
        // clang-format on
    }
    void notifierPostsToTheServer()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, posted);
        QProcess process;
        process.setProcessEnvironment(m_desktop.environment());
        process.start(program("BalloonNotify"), arguments);
        QVERIFY(process.waitForFinished(20000));
        const QString errors = QString::fromUtf8(process.readAllStandardError());
        QVERIFY2(process.exitStatus() == QProcess::NormalExit && (process.exitCode() == 0) == posted,
                 qPrintable(errors));
        QVERIFY2(posted || errors.contains("usage: BalloonNotify"), qPrintable(errors));
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
        QProcess process;
        process.setProcessEnvironment(env);
        const QString title = "会議 3F";
        process.start(program("BalloonNotify"), {"/t", title, "/c", "第二会議室にて", "/i", "i"});
        QStringList windows;
        QVERIFY2(WaitUntil([&] { return !(windows = m_desktop.visibleWindows(process.processId())).isEmpty(); }, 10000),
                 "no balloon appeared");
        QCOMPARE(windows.size(), 1);
        QCOMPARE(m_desktop.run("xdotool", {"getwindowname", windows.front()}).trimmed(), title);
        // Near the bottom-right corner of the 1024 x 768 screen.
        const QString shell = m_desktop.run("xdotool", {"getwindowgeometry", "--shell", windows.front()});
        const auto value = [&shell](const QString& key) {
            return QRegularExpression("\\b" + key + "=(\\d+)").match(shell).captured(1).toInt();
        };
        const QPoint corner(value("X") + value("WIDTH"), value("Y") + value("HEIGHT"));
        QVERIFY2(QRect(1024 - 60, 768 - 60, 61, 61).contains(corner), qPrintable(shell));
        // A click closes it long before its ten seconds are up, and the notifier ends.
        m_desktop.run("xdotool", {"mousemove", "--window", windows.front(), "20", "20", "click", "1"});
        QVERIFY(process.waitForFinished(5000));
        QCOMPARE(process.exitCode(), 0);
    }
};

VERDALY_TEST(TestAlarmDesktop)
#include "TestAlarmDesktop.moc"
