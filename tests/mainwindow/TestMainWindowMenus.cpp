// The links under the calendar, their menus and the tray icon as a user (or a screen reader)
// works them: each answers only while no dialog opened from the window is up.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "mainwindow/MonthJump.h"
#include "mainwindow/OnlineHelp.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QDialog>
#include <QLabel>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QtTest>

class TestMainWindowMenus : public QObject
{
    Q_OBJECT

private slots:
    void controlsAnswerOnlyWhenIdle_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("button");
        QTest::addColumn<QString>("name"); // a link's name for a screen reader; "" not a link
        QTest::addColumn<QString>("menu"); // the menu it pops once idle; "" a dialog instead
        // clang-format off
        QTest::newRow("Menu") << "LabMenu" << int(Qt::LeftButton) << "Menu" << "MnuSubMenu";
        QTest::newRow("Jump") << "LabJump" << int(Qt::LeftButton) << "Jump" << "MnuJumpDay";
        QTest::newRow("Schedule") << "LabScaedule" << int(Qt::LeftButton) << "Schedule" << "MnuEntry";
        QTest::newRow("Help") << "LabHelp" << int(Qt::LeftButton) << "Help" << "MnuHelp";
        QTest::newRow("entry label") << "LabYotei(0)" << int(Qt::LeftButton) << "" << "";
        QTest::newRow("entry label, right") << "LabYotei(0)" << int(Qt::RightButton) << "" << "MnuScheduleEditMenu";
        // clang-format on
    }
    void controlsAnswerOnlyWhenIdle()
    {
        QFETCH(QString, control);
        QFETCH(int, button);
        QFETCH(QString, name);
        QFETCH(QString, menu);
        TestEnvironment env;
        StoreEntry(env.db(), Entry(1, QStringLiteral("A4"), QStringLiteral("20261122"), QStringLiteral("09:00"),
                                   QStringLiteral("20261122"), QStringLiteral("10:00"), QStringLiteral("朝会")));
        auto main = StartMainWindow(env);
        const auto reject = [](QWidget* window) { static_cast<QDialog*>(window)->reject(); };
        env.services.state.MainWindowIdle = false;
        {
            MenuAnswer busyMenu{QString()};
            ModalAnswer busyDialog(reject);
            ClickControl(*main, control, Qt::MouseButton(button));
            QTest::qWait(100);
            QVERIFY(!busyMenu.opened() && !busyDialog.opened());
        }
        env.services.state.MainWindowIdle = true;
        MenuAnswer byMouse{QString()};
        ModalAnswer dialog(reject);
        ClickControl(*main, control, Qt::MouseButton(button));
        QTRY_VERIFY(menu.isEmpty() ? dialog.opened() : byMouse.opened());
        QCOMPARE(byMouse.menu(), menu);
        if (name.isEmpty())
            return;
        // A screen reader finds the link by its caption and presses it.
        QAccessibleInterface* access = QAccessible::queryAccessibleInterface(main->findChild<QLabel*>(control));
        QCOMPARE(access->role(), QAccessible::Link);
        QCOMPARE(access->text(QAccessible::Name), name);
        MenuAnswer byReader{QString()};
        access->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(byReader.opened());
        QCOMPARE(byReader.menu(), menu);
        QVERIFY(env.services.state.MainWindowIdle);
    }

    // The jump menu's month rule: the selected day is kept, unless today's day of the month is
    // past the target month's length; a day the month lacks is no date at all.
    void jumpRule_data()
    {
        QTest::addColumn<QDate>("selected");
        QTest::addColumn<QDate>("today");
        QTest::addColumn<int>("month");
        QTest::addColumn<QDate>("expected"); // invalid: no such day
        // clang-format off
        QTest::newRow("selected 31st, today mid-month, to February") << QDate(2007, 1, 31) << QDate(2007, 3, 15) << 2 << QDate();
        QTest::newRow("today the 30th, to February")                << QDate(2007, 1, 10) << QDate(2007, 1, 30) << 2 << QDate(2007, 2, 28);
        QTest::newRow("today the 31st, to a 30-day month")          << QDate(2007, 3, 15) << QDate(2007, 1, 31) << 4 << QDate(2007, 4, 30);
        QTest::newRow("today the 30th is not past April's 30")      << QDate(2007, 5, 31) << QDate(2007, 1, 30) << 4 << QDate();
        QTest::newRow("today the 31st rescues a selected 31st")     << QDate(2007, 5, 31) << QDate(2007, 1, 31) << 4 << QDate(2007, 4, 30);
        QTest::newRow("leap day today still counts February as 28") << QDate(2008, 1, 10) << QDate(2008, 2, 29) << 2 << QDate(2008, 2, 28);
        QTest::newRow("selected 29th reaches a leap February")      << QDate(2008, 1, 29) << QDate(2008, 1, 5)  << 2 << QDate(2008, 2, 29);
        QTest::newRow("selected 29th misses a common February")     << QDate(2007, 1, 29) << QDate(2007, 1, 5)  << 2 << QDate();
        QTest::newRow("the year is the selected day's")             << QDate(1999, 6, 5)  << QDate(2026, 11, 22) << 12 << QDate(1999, 12, 5);
        QTest::newRow("31st to a 31-day month")                     << QDate(2026, 1, 31) << QDate(2026, 11, 22) << 12 << QDate(2026, 12, 31);
        QTest::newRow("no thirteenth month")                        << QDate(2026, 1, 5)  << QDate(2026, 11, 22) << 13 << QDate();
        // clang-format on
    }
    void jumpRule()
    {
        QFETCH(QDate, selected);
        QFETCH(QDate, today);
        QFETCH(int, month);
        QFETCH(QDate, expected);
        QCOMPARE(MonthJumpDate(selected, today, month), expected);
    }

    void jumpMenu()
    {
        // clang-format off
        const QList<std::tuple<QDate, QDate, QString, QDate>> jumps = {
            {QDate(2026, 11, 22), QDate(2026, 3, 3), "MnuToday", QDate(2026, 11, 22)},
            {QDate(2026, 1, 30), QDate(2026, 3, 10), "MnuMonth2", QDate(2026, 2, 28)},   // today past the month's end
            {QDate(2026, 11, 22), QDate(2026, 1, 31), "MnuMonth4", QDate(2026, 1, 31)},  // no such day: stay
            {QDate(2026, 11, 22), QDate(2026, 1, 31), "MnuMonth12", QDate(2026, 12, 31)}};
        // clang-format on
        for (const auto& [today, selected, item, expected] : jumps) {
            TestEnvironment env;
            env.clock.current = QDateTime(today, QTime(9, 0));
            const QString day = expected.toString(QStringLiteral("yyyyMMdd"));
            StoreEntry(env.db(),
                       Entry(1, QStringLiteral("A1"), day, QString(), day, QString(), QStringLiteral("行き先")));
            auto main = StartMainWindow(env);
            main->calendar()->setCurrentDate(selected);
            MenuAnswer menu(item);
            ClickControl(*main, QStringLiteral("LabJump"));
            QVERIFY(menu.opened());
            QCOMPARE(main->calendar()->CurrentDate(), expected);
            // The panel shows the day the jump landed on.
            QCOMPARE(Shown(main.get(), "LabYotei(0)"), QStringLiteral("行き先"));
            QVERIFY(main->calendar()->isEntryDay(expected));
        }
    }

    void onlineHelp_data()
    {
        QTest::addColumn<QString>("page"); // where the page is, under the temporary root; "" none
        QTest::addColumn<bool>("browserOpens");
        QTest::addColumn<QString>("message"); // what the user is told ("" nothing)
        QTest::newRow("beside the program") << "bin/help/index.html" << true << "";
        QTest::newRow("installed") << "share/halvern-verdaly/help/index.html" << true << "";
        QTest::newRow("missing") << "" << true << "ヘルプのページが見つかりません。";
        QTest::newRow("no browser") << "bin/help/index.html" << false << "ブラウザを起動できませんでした。";
    }
    void onlineHelp()
    {
        QFETCH(QString, page);
        QFETCH(bool, browserOpens);
        QFETCH(QString, message);
        TestEnvironment env;
        QTemporaryDir root;
        QDir(root.path()).mkpath(QStringLiteral("bin"));
        const QString pagePath = page.isEmpty() ? QString() : QDir(root.path()).filePath(page);
        if (!page.isEmpty()) {
            QDir().mkpath(QFileInfo(pagePath).path());
            QFile file(pagePath);
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        env.services.programDir = QDir(root.path()).filePath(QStringLiteral("bin"));
        env.urlOpener.opens = browserOpens;
        auto main = StartMainWindow(env);
        MenuAnswer menu(QStringLiteral("MnuOnline"));
        ClickControl(*main, QStringLiteral("LabHelp"));
        QCOMPARE(menu.menu(), QStringLiteral("MnuHelp"));
        QCOMPARE(env.urlOpener.opened.size(), page.isEmpty() ? 0 : 1);
        if (!page.isEmpty())
            QCOMPARE(QFileInfo(env.urlOpener.opened.front().toLocalFile()).canonicalFilePath(),
                     QFileInfo(pagePath).canonicalFilePath());
        QCOMPARE(env.prompter.shown.size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty()) {
            QVERIFY2(env.prompter.shown.front().text.startsWith(message), qPrintable(env.prompter.shown.front().text));
            // The user learns which file it is about.
            const QString named = page.isEmpty() ? HelpPageCandidates(env.services.programDir).front() : pagePath;
            QVERIFY(env.prompter.shown.front().text.contains(QDir::cleanPath(named)));
        }
        QVERIFY(env.services.state.MainWindowIdle);
    }

    void theBuildShipsTheHelpPage()
    {
        const QString page = FindHelpPage(qEnvironmentVariable("VERDALY_BIN_DIR"));
        QVERIFY2(!page.isEmpty(), "the build puts no help page beside the program");
        QFile file(page);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QString html = QString::fromUtf8(file.readAll());
        QVERIFY(html.contains(QStringLiteral("lang=\"ja\"")));
        // Where the data lives.
        QVERIFY(html.contains(QStringLiteral("QMCalendar.mdb")));
    }

    // The version box and the tray icon: a click brings the window back from hiding, its menu
    // opens the calendar, makes a sticky note, or ends the program through the normal unload.
    void versionAndTray()
    {
        TestEnvironment env;
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 1 WHERE CODE = 311"));
        auto main = StartMainWindow(env);
        bool idleWhileOpen = true;
        QString title;
        {
            MenuAnswer menu(QStringLiteral("MnuVersion"));
            ModalAnswer dialog([&](QWidget* window) {
                idleWhileOpen = env.services.state.MainWindowIdle;
                title = Control<QLabel>(window, "LabTitle")->text();
                Click(window, "ComOK");
            });
            ClickControl(*main, QStringLiteral("LabHelp"));
            QVERIFY(dialog.opened());
            QVERIFY(!dialog.stayedOpen()); // its OK closes it
            QCOMPARE(dialog.title(), QStringLiteral("バージョン情報"));
        }
        QVERIFY(title.endsWith(QStringLiteral(" 1.2")));
        QVERIFY(!idleWhileOpen);
        QVERIFY(env.services.state.MainWindowIdle);

        main->setTrayAvailabilityForTesting(1);
        QPointer<QSystemTrayIcon> tray = main->trayIcon();
        QMenu* trayMenu = tray->contextMenu();
        QCOMPARE(trayMenu->objectName(), QStringLiteral("MnuTaskMenu"));
        const QList<QPair<QSystemTrayIcon::ActivationReason, bool>> clicks = {{QSystemTrayIcon::Context, false},
                                                                              {QSystemTrayIcon::MiddleClick, false},
                                                                              {QSystemTrayIcon::Trigger, true},
                                                                              {QSystemTrayIcon::DoubleClick, true}};
        for (const auto& [reason, shown] : clicks) {
            // The close box of a resident calendar hides it in the tray.
            main->close();
            QVERIFY(!main->isVisible());
            emit tray->activated(reason);
            QCOMPARE(main->isVisible(), shown);
            QCOMPARE(main->isMinimized(), !shown);
        }
        main->close();
        Control<QAction>(trayMenu, "MnuMainOpen")->trigger();
        QVERIFY(main->isVisible() && !main->isMinimized());
        // A new note takes the hand-over slot's place, in a colour drawn from the seven.
        env.random.values = {0.999};
        Control<QAction>(trayMenu, "MnuTaskPost")->trigger();
        QCOMPARE(env.services.state.StickyNotes[0].colorIndex, 6);
        QVERIFY(env.services.state.StickyNotes[0].text.isEmpty());
        QVERIFY(!main->isUnloaded());
        // Even a resident calendar ends for the exit item: it is no close-box close.
        Control<QAction>(trayMenu, "MnuEnd")->trigger();
        QVERIFY(main->isUnloaded());
        QVERIFY(!env.services.connection || !env.services.connection->isOpen());
        QVERIFY(!main->trayIcon());
        QTRY_VERIFY(tray.isNull());
        CloseStickyNoteWindows();
    }
};

VERDALY_TEST(TestMainWindowMenus)
#include "TestMainWindowMenus.moc"
