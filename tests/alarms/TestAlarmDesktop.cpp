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
        QVERIFY2(QFileInfo(program("BalloonNotify")).isExecutable(), qPrintable(program("BalloonNotify")));
        QString why;
        QVERIFY2(m_desktop.startDisplay(&why), qPrintable(why));
        QVERIFY2(m_desktop.startBus(&why), qPrintable(why));
        QVERIFY2(m_desktop.startNotificationServer(&why), qPrintable(why));
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
        entry.comment = QStringLiteral("第一会議室");
        StoreEntry(env.db(), entry);
        env.services.connection.reset();

        QProcess calendar;
        calendar.setProcessEnvironment(m_desktop.environment());
        calendar.start(program("verdaly"), {QStringLiteral("--data-dir"), env.services.dataDir});
        QVERIFY(calendar.waitForStarted());
        QVERIFY2(WaitUntil([&] { return !m_desktop.visibleWindows(calendar.processId()).isEmpty(); }, 20000),
                 "the calendar showed no window");
        QVERIFY2(clock.now() < moment, "the program took too long to start for the alarm's moment");
        QVERIFY2(WaitUntil([&] { return m_desktop.shownNotifications() > 0; },
                           static_cast<int>(clock.now().msecsTo(moment)) + 5000),
                 "no alarm arrived");
        const QDateTime seen = clock.now();
        const qint64 delay = moment.msecsTo(seen);
        QVERIFY2(delay >= 0, "the alarm rang before its moment");
        QVERIFY2(delay <= 2000, qPrintable(QStringLiteral("the alarm came %1 ms late").arg(delay)));

        QTest::qWait(3000); // time for a second delivery, if there were one
        int rung = 0;
        for (const DesktopSession::Notification& n : m_desktop.closeAllAndReadHistory()) {
            QVERIFY2(n.summary == entry.business, qPrintable(n.summary));
            QCOMPARE(n.body, entry.comment);
            ++rung;
        }
        QCOMPARE(rung, 1);
        env.open();
        QCOMPARE(Column(env.db(), 1, "ALARM"), QStringLiteral("0"));
        calendar.terminate();
        QVERIFY(calendar.waitForFinished(15000));
        QCOMPARE(calendar.exitCode(), 0);
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
        if (logged.isEmpty())
            QVERIFY2(!errors.contains("not found") && !errors.contains("cannot be played"), qPrintable(errors));
        else
            QVERIFY2(errors.contains(logged), qPrintable(errors));
        QVERIFY2(!errors.contains(QStringLiteral("balloon of our own")), qPrintable(errors));
        QStringList found;
        for (const DesktopSession::Notification& n : m_desktop.closeAllAndReadHistory()) {
            if (n.summary == arguments.value(1))
                found << n.appName + "|" + n.body;
        }
        QCOMPARE(found, posted ? QStringList{"Halvern Verdaly|" + arguments.value(3)} : QStringList());
    }

    void ownBalloonWithoutAServer()
    {
        QProcessEnvironment env = m_desktop.environment();
        env.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QStringLiteral("unix:path=/nonexistent/no-bus"));
        const int shownBefore = m_desktop.shownNotifications();
        QProcess process;
        process.setProcessEnvironment(env);
        const QString title = QStringLiteral("会議 3F");
        process.start(program("BalloonNotify"), {"/t", title, "/c", "第二会議室にて", "/i", "i"});
        QVERIFY(process.waitForStarted());
        QStringList windows;
        QVERIFY2(WaitUntil([&] { return !(windows = m_desktop.visibleWindows(process.processId())).isEmpty(); }, 10000),
                 "no balloon appeared");
        QCOMPARE(windows.size(), 1);
        QCOMPARE(m_desktop.run("xdotool", {"getwindowname", windows.front()}).trimmed(), title);
        // Near the bottom-right corner of the 1024 x 768 screen.
        QMap<QString, int> geometry;
        for (const QString& line : m_desktop.run("xdotool", {"getwindowgeometry", "--shell", windows.front()})
                                       .split('\n', Qt::SkipEmptyParts))
            geometry.insert(line.section('=', 0, 0), line.section('=', 1).toInt());
        const int right = geometry.value("X") + geometry.value("WIDTH");
        const int bottom = geometry.value("Y") + geometry.value("HEIGHT");
        QVERIFY2(right > 1024 - 60 && right <= 1024, qPrintable(QString::number(right)));
        QVERIFY2(bottom > 768 - 60 && bottom <= 768, qPrintable(QString::number(bottom)));
        QVERIFY(geometry.value("WIDTH") > 100);
        // A click closes it long before its ten seconds are up, and the notifier ends.
        m_desktop.run("xdotool", {"mousemove", "--window", windows.front(), "20", "20", "click", "1"});
        QVERIFY(process.waitForFinished(5000));
        QCOMPARE(process.exitCode(), 0);
        QCOMPARE(m_desktop.shownNotifications(), shownBefore);
    }
};

VERDALY_TEST(TestAlarmDesktop)
#include "TestAlarmDesktop.moc"
