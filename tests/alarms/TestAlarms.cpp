// The alarm's tick, delivery and command line on a real database and fake clock; its timers in the main window.
#include "NotifyCommandLine.h"
#include "alarms/AlarmEngine.h"
#include "alarms/AlarmTick.h"
#include "alarms/Notifier.h"
#include "mainwindow/FrmMain.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"
#include "views/FrmList.h"
#include "views/ListGridModel.h"

#include <QMenu>
#include <QTableView>
#include <QtTest>

namespace {

const QDate Today(2026, 11, 22);

const auto At = [](int h, int m, int s = 0, int ms = 0) { return QDateTime(Today, QTime(h, m, s, ms)); };

// Today's timed one-day entry with its alarm set.
const auto StoreToday = [](DatabaseConnection& db, int id, const QString& time, const QString& subject) {
    StoreEntry(db, WithAlarm(Entry(id, "A3", "20261122", time, "20261122", QString(), subject)));
};

// A started main window over a database with today's alarms at the given times.
struct Running
{
    explicit Running(int advance, const QStringList& times, const QDateTime& now, bool balloon = false)
    {
        StoreAlarmSettings(env.db(), advance, balloon);
        for (int i = 0; i < times.size(); ++i)
            StoreToday(env.db(), i + 1, times.at(i), QString("entry %1").arg(i + 1));
        env.clock.current = now;
        main = StartMainWindow(env);
        timer = main->findChild<QTimer*>("Timer");
    }
    ~Running()
    {
        if (!main->isUnloaded())
            main->Form_Unload();
    }
    AlarmEngine& alarms() { return *main->alarms(); }

    TestEnvironment env;
    std::unique_ptr<FrmMain> main;
    QTimer* timer = nullptr;
};

// Delivery: balloon or box, the sound file (sound is on), a notifier that cannot start; what
// the notifier is given (none: a message box instead).
struct DeliveryRow
{
    bool balloon, launcherFails;
    QString soundFile, subject, comment;
    QStringList arguments;
};

} // namespace

Q_DECLARE_METATYPE(DeliveryRow)

class TestAlarms final : public QObject
{
    Q_OBJECT

private slots:
    void ringsOnceWhenDue_data()
    {
        QTest::addColumn<QString>("entry"); // kind|start date|start time|end date|end time|completion
        QTest::addColumn<int>("advance");
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<bool>("rings");
        // clang-format off
        QTest::newRow("advance 15, at the moment")  << "A3|20261122|10:30|20261122||" << 15 << At(10, 15) << false;
        QTest::newRow("advance 15, just after")     << "A3|20261122|10:30|20261122||" << 15 << At(10, 15, 0, 1) << true;
        QTest::newRow("A2 is date-only")            << "A2|20261122||20261122|17:00|" << 0  << At(0, 0, 0, 1) << true;
        QTest::newRow("D3 one-digit hour")          << "D3|20261122|9:05|||"          << 0  << At(9, 5, 1) << true;
        QTest::newRow("B1 span over today")         << "B1|20261121||20261123||"      << 0  << At(0, 0, 1) << true;
        QTest::newRow("C3 began yesterday evening") << "C3|20261121|23:00|20261125||" << 0  << At(0, 0, 1) << true;
        QTest::newRow("T1 open, due today")         << "T1|||20261122||0"             << 0  << At(0, 0, 0, 1) << true;
        QTest::newRow("T1 completed")               << "T1|||20261122||1"             << 0  << At(23, 59, 59) << false;
        QTest::newRow("T2 after its time")          << "T2|||20261122|17:00|0"        << 5  << At(16, 55, 0, 1) << true;
        QTest::newRow("tomorrow's, advance 15")     << "A3|20261123|00:10|20261123||" << 15 << At(23, 59) << false;
        QTest::newRow("span ended yesterday")       << "C1|20261118||20261121||"      << 0  << At(12, 0) << false;
        // clang-format on
    }
    void ringsOnceWhenDue()
    {
        QFETCH(QString, entry);
        QFETCH(int, advance);
        QFETCH(QDateTime, now);
        QFETCH(bool, rings);
        TestEnvironment env;
        StoreAlarmSettings(env.db(), advance);
        const QStringList f = entry.split('|');
        StoredEntry stored = WithAlarm(Entry(7, f[0], f[1], f[2], f[3], f[4]));
        stored.completion = f[5];
        StoreEntry(env.db(), stored);
        AlarmTick tick(env.services);
        // Rung at the moment, not a tick later, and then quiet.
        for (const QDateTime& at : {now, now, now.addSecs(rings ? 1800 : 0)}) {
            env.clock.current = at;
            QVERIFY(tick.run(nullptr, Today));
            QCOMPARE(env.prompter.shown.size(), rings ? 1 : 0);
        }
        QCOMPARE(Column(env.db(), 7, "ALARM"), rings ? "0" : "1");
    }

    void delivery_data()
    {
        QTest::addColumn<DeliveryRow>("row");
        const QString subject = "会議 /c 3F";
        const QString comment = "第二会議室\n資料を持参";
        // clang-format off
        QTest::newRow("message box")             << DeliveryRow{false, false, "/x/a.wav", subject, comment, {}};
        QTest::newRow("balloon with sound")      << DeliveryRow{true, false, "/x/my a.wav", subject, comment, {"/t", subject, "/c", comment, "/i", "i", "/a", "/x/my a.wav"}};
        QTest::newRow("blanks kept as typed")    << DeliveryRow{true, false, "", "  週次  定例 ", "a  b", {"/t", "  週次  定例 ", "/c", "a  b", "/i", "i"}};
        QTest::newRow("values that are switches") << DeliveryRow{true, false, "/t.wav", "/a", "/c", {"/t", "/a", "/c", "/c", "/i", "i", "/a", "/t.wav"}};
        QTest::newRow("empty comment")           << DeliveryRow{true, false, "", "締切", "", {"/t", "締切", "/c", "", "/i", "i"}};
        QTest::newRow("notifier cannot start")   << DeliveryRow{true, true, "", subject, comment, {}};
        // clang-format on
    }
    void delivery()
    {
        QFETCH(DeliveryRow, row);
        TestEnvironment env;
        StoreAlarmSettings(env.db(), 0, row.balloon, true, row.soundFile);
        StoredEntry entry = WithAlarm(Entry(1, "A4", "20261122", "09:00", "20261122", "10:30", row.subject));
        entry.comment = row.comment;
        StoreEntry(env.db(), entry);
        env.clock.current = At(9, 0, 1);
        env.launcher.failing = row.launcherFails;
        if (row.launcherFails)
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression("notifier could not be started"));
        QVERIFY(AlarmTick(env.services).run(nullptr, Today));
        QCOMPARE(env.launcher.started.size(), row.balloon ? 1 : 0);
        if (row.arguments.isEmpty()) { // the box tells even when the notifier could not
            QCOMPARE(env.prompter.texts(), QStringList{" 9:00 - 10:30   " + row.subject});
            QCOMPARE(env.prompter.shown.front().title, "ALARM");
        } else {
            QCOMPARE(env.prompter.shown.size(), 0);
            QCOMPARE(env.launcher.started.front().program, QCoreApplication::applicationDirPath() + "/BalloonNotify");
            QCOMPARE(env.launcher.started.front().arguments, row.arguments);
            // The notifier reads back exactly what the calendar meant.
            const NotifyCommand read = ParseNotifyCommandLine(row.arguments);
            QVERIFY2(read.valid, qPrintable(read.error));
            QCOMPARE(QStringList({read.title, read.text, read.icon, read.sound}),
                     QStringList({row.subject, row.comment, "i", row.soundFile}));
        }
        QCOMPARE(Column(env.db(), 1, "ALARM"), "0");
    }

    void oneLineForm()
    {
        // The line the log shows for each alarm; without a sound file it ends in a blank.
        QCOMPARE(NotifierCommandLine("/opt/v/", "会議", "3F", true, "/x/a.wav"),
                 "/opt/v/BalloonNotify /t 会議 /c 3F /i i /a /x/a.wav");
        QCOMPARE(NotifierCommandLine("/opt/v/", "会議", "3F", true, ""), "/opt/v/BalloonNotify /t 会議 /c 3F /i i ");
    }

    void unreadableAndChangedRows()
    {
        TestEnvironment env;
        StoreAlarmSettings(env.db(), 0);
        const QStringList times = {"08:00", "25:00", "08:30", "8h", "09:00"};
        for (int i = 0; i < times.size(); ++i)
            StoreToday(env.db(), i + 1, times.at(i), "entry");
        StoreEntry(env.db(), WithAlarm(Entry(6, "B1", "2026/11/1", "", "20261130")));
        env.clock.current = At(10, 0);
        // While the first box is open, an editor saves its entry again (its alarm still set).
        env.prompter.whileShown = [&](const Prompt&) {
            if (env.prompter.shown.size() == 1)
                env.db().ExecuteSql(
                    "UPDATE TRNSCHTSK SET BUSINESS = 'moved', UPDTIME = '2026/11/22 09:59:15' WHERE ID = 1");
        };
        for (int id : {2, 4, 6})
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QString("entry %1 has a date or time that").arg(id)));
        AlarmTick tick(env.services);
        QVERIFY(tick.run(nullptr, Today));
        QCOMPARE(Lines(env.db(), "SELECT * FROM TRNSCHTSK ORDER BY ID", {"ALARM"}).join(""), "110101");

        // Unreadable rows are logged once; the changed one rings with what the editor saved.
        QTest::failOnWarning(QRegularExpression("cannot be read"));
        env.clock.current = At(10, 0, 30);
        QVERIFY(tick.run(nullptr, Today));
        QCOMPARE(env.prompter.texts(),
                 QStringList({" 8:00   entry", " 8:30   entry", " 9:00   entry", " 8:00   moved"}));
        QCOMPARE(Lines(env.db(), "SELECT * FROM TRNSCHTSK ORDER BY ID", {"ALARM"}).join(""), "010101");
    }

    void timersAroundTheMessageBox()
    {
        Running run(30, {"15:00", "11:00"}, At(9, 0));
        QVERIFY(run.timer->isActive() && run.timer->interval() == 30000);
        QCOMPARE(run.alarms().armedFor(), At(10, 30));

        run.env.prompter.whileShown = [&](const Prompt&) {
            QVERIFY(!run.timer->isActive());
            run.main->Timer_Timer(); // the timer's own event, or the single shot, arriving meanwhile
            run.main->RearmAlarms(); // an editor saved meanwhile
            QVERIFY(!run.alarms().armedFor().isValid());
        };
        run.env.clock.current = At(14, 40);
        run.main->Timer_Timer();
        QCOMPARE(run.env.prompter.texts(), (QStringList{"15:00   entry 1", "11:00   entry 2"}));
        QVERIFY(run.timer->isActive());
        QCOMPARE(run.alarms().armedFor(), QDateTime(Today.addDays(1), QTime(0, 0)));
    }

    void singleShotAndShutdown()
    {
        Running run(0, {"10:30", "13:00", "23:00"}, At(10, 29, 59, 700), true);
        QCOMPARE(run.alarms().armedFor(), At(10, 30));
        QTest::qWait(150);
        QCOMPARE(run.env.launcher.started.size(), 0);
        run.env.clock.current = At(10, 30, 0, 20); // the program's clock keeps up with the real one
        // Within a second of the start, so never the 30-second tick's work.
        QTRY_COMPARE_WITH_TIMEOUT(run.env.launcher.started.size(), 1, 850);
        QCOMPARE(run.alarms().armedFor(), At(13, 0));
        // Back from hours of sleep: the single shot's own clock stood still meanwhile.
        run.env.clock.current = At(13, 5);
        QTRY_COMPARE_WITH_TIMEOUT(run.env.launcher.started.size(), 2, 5000);
        QCOMPARE(run.alarms().armedFor(), At(23, 0));

        run.main->Form_Unload();
        QVERIFY(!run.timer->isActive() && !run.alarms().armedFor().isValid());
        run.env.clock.current = At(23, 30);
        run.main->Timer_Timer(); // a tick already queued finds the alarms stopped
        QCOMPARE(run.env.launcher.started.size(), 2);
    }

    void rearmedWhileTheListIsOpen()
    {
        Running run(0, {"11:00", "15:00", "16:00"}, At(9, 0));
        QCOMPARE(run.alarms().armedFor(), At(11, 0));
        // One list, one change after another (command, entry chosen, what the editor is given):
        // the armed entry deleted, the next one moved earlier, then its alarm cleared, and a new
        // entry before the rest.
        const QStringList steps = {"delete 1", "edit 2 CmbStartTime=10:00", "edit 2 ChkAraamu=0",
                                   "new 3 TxtYouken=電話 CmbStartTime=10:30 ChkAraamu=1"};
        QList<QTime> armed;
        ModalAnswer listAnswer([&](QWidget* dialog) {
            auto* list = qobject_cast<FrmList*>(dialog);
            auto* grid = Control<QTableView>(list, "GrdGrid");
            for (const QString& step : steps) {
                const QStringList words = step.split(' ');
                const QString command = words.at(0);
                grid->setCurrentIndex(list->model()->index(list->model()->rowOfId(words.at(1).toInt()), 0));
                ModalAnswer editorAnswer([words](QWidget* editor) {
                    TypeAll(editor, words.mid(2));
                    Click(editor, "ComOK");
                });
                if (command == "delete")
                    QTest::keyClick(grid, Qt::Key_Delete);
                else if (command == "edit")
                    QTest::keyClick(grid, Qt::Key_Return);
                else
                    list->actionMenu()->findChild<QAction*>("MnuSchedule")->trigger();
                QCOMPARE(editorAnswer.opened(), command != "delete");
                armed << run.alarms().armedFor().time();
            }
            list->reject();
        });
        run.main->OpenList(Today, Today.addMonths(1));
        QCOMPARE(armed, (QList<QTime>{QTime(15, 0), QTime(10, 0), QTime(16, 0), QTime(10, 30)}));
    }
};

VERDALY_TEST(TestAlarms)
#include "TestAlarms.moc"
