// The main window as a user meets it: the grid, the panel and the links under the calendar.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "mainwindow/OnlineHelp.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QtTest>

namespace {

QStringList Column(FrmMain& main, const char* label)
{
    QStringList texts;
    for (int row = 0; row < PanelRows; ++row)
        texts << Shown(&main, QStringLiteral("%1(%2)").arg(QLatin1String(label)).arg(row));
    return texts;
}

// The days of the shown grid that carry an entry mark (or a day-off mark).
QList<QDate> Marked(HalvernCalendar* calendar, bool dayOffs = false)
{
    QList<QDate> days;
    for (QDate d = calendar->FirstShownDate(); d <= calendar->LastShownDate(); d = d.addDays(1))
        if (dayOffs ? calendar->isDayOff(d) : calendar->isEntryDay(d))
            days << d;
    return days;
}

QList<QDate> Span(const QDate& from, const QDate& to)
{
    QList<QDate> days;
    for (QDate d = from; d <= to; d = d.addDays(1))
        days << d;
    return days;
}

// A one-day entry on day (yyyyMMdd).
void StoreOneDay(DatabaseConnection& db, int id, const QString& day, const QString& subject)
{
    StoreEntry(db, Entry(id, QStringLiteral("A1"), day, QString(), day, QString(), subject));
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void aMonthOfEntries()
    {
        TestEnvironment env;
        env.clock.current = QDateTime(QDate(2026, 11, 22), QTime(10, 0));
        StoreEntry(env.db(), Entry(1, "A4", "20261122", "09:30", "20261122", "10:00", "歯医者"));
        // A span into December, a task due in the grid's trailing days, an open end.
        StoreEntry(env.db(), Entry(2, "C1", "20261125", "", "20261208", "", "旅行"));
        StoreEntry(env.db(), Entry(3, "T1", "", "", "20270102", "", "年賀状"));
        StoreEntry(env.db(), Entry(5, "D3", "20261216", "08:00", "", "", "開始のみ"));
        for (const auto& [month, day] : {std::pair{12, 24}, std::pair{1, 2}, std::pair{2, 29}})
            StoreDayOff(env.db(), month, day, QStringLiteral("off"));
        // Out of order: tasks first, then by start time and by priority; three lines, then "more".
        StoreEntry(env.db(), Entry(11, "A3", "20261110", "17:00", "20261110", "", "夕方の会議"));
        StoreEntry(env.db(), Entry(12, "T2", "", "", "20261110", "12:00", "報告書"));
        StoreEntry(env.db(), Entry(13, "A4", "20261110", "09:00", "20261110", "09:15", "朝会"));
        StoreEntry(env.db(), Entry(14, "T1", "", "", "20261110", "", "請求書"));
        StoreEntry(env.db(), Entry(15, "A4", "20261110", "12:00", "20261110", "13:00", "it's lunch"));
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET PRIORITY = 3, COMPLETION = '1' WHERE ID = 12"));
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET PRIORITY = 1, COMPLETION = '0' WHERE ID = 14"));
        // On top, 30% transparent, Monday first, the panel's colours: read once the file is open.
        for (const auto& [code, value] : {std::pair{312, 1}, std::pair{313, 30}, std::pair{302, 2}})
            SetGeneral(env.db(), code, {{"DATAN1", value}});
        env.db().ExecuteSql(
            QStringLiteral("UPDATE TRNCOLOR SET FORECOLOR = %1, BACKCOLOR = %2, FSIZE = 11.5 WHERE CODE = 140")
                .arg(0x00FF0000) // blue in 0x00BBGGRR
                .arg(0x00E0F0FF));
        auto main = StartMainWindow(env);
        HalvernCalendar* calendar = main->calendar();
        QCOMPARE(main->windowTitle(), QStringLiteral("2026/11/22 (日)"));
        QVERIFY(qAbs(main->windowOpacity() - 0.7) < 0.01);
        QVERIFY(main->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QCOMPARE(main->palette().color(QPalette::Window), QColor(0xFF, 0xF0, 0xE0));
        for (const char* name : {"LabTime(1)", "LabYotei(2)", "LabHelp"})
            QCOMPARE(Control<QLabel>(main.get(), name)->palette().color(QPalette::WindowText), QColor(0, 0, 255));
        QCOMPARE(Control<QLabel>(main.get(), "LabYotei(2)")->font().pointSizeF(), 11.5);
        QCOMPARE(Shown(main.get(), QStringLiteral("LabTime(0)")), QStringLiteral(" 9:30 - 10:00"));
        QCOMPARE(Shown(main.get(), QStringLiteral("LabYotei(0)")), QStringLiteral("歯医者"));
        // The Monday-first grid runs from 10/26 to 12/6.
        QCOMPARE(Marked(calendar), QList<QDate>({QDate(2026, 11, 10), QDate(2026, 11, 22)}) +
                                       Span(QDate(2026, 11, 25), QDate(2026, 12, 6)));

        calendar->setCurrentDate(QDate(2026, 11, 10));
        QCOMPARE(Column(*main, "LabYotei"), (QStringList{"請求書", "[済]報告書", "朝会"}));
        QCOMPARE(Column(*main, "LabTime"), (QStringList{"      ->11/10", "      ->12:00", " 9:00 -  9:15"}));

        // Only the current month's day-offs are marked, even where the grid shows other days.
        calendar->setCurrentDate(QDate(2026, 12, 3));
        QCOMPARE(Marked(calendar), Span(QDate(2026, 11, 30), QDate(2026, 12, 8)) +
                                       QList<QDate>({QDate(2026, 12, 16), QDate(2027, 1, 2)}));
        QCOMPARE(Marked(calendar, true), QList<QDate>{QDate(2026, 12, 24)});
        QCOMPARE(Shown(main.get(), QStringLiteral("LabTime(0)")), QStringLiteral("11/25 ->12/ 8"));
        // The leap day is a day-off only in a leap year, and never turns into another day.
        calendar->setCurrentDate(QDate(2027, 2, 10));
        QVERIFY(Marked(calendar, true).isEmpty());
        calendar->setCurrentDate(QDate(2028, 2, 10));
        QCOMPARE(Marked(calendar, true), QList<QDate>{QDate(2028, 2, 29)});

        // The panel reads every change: a write, a rollback, a database opened anew.
        calendar->setCurrentDate(QDate(2026, 11, 22));
        env.db().BeginTrans();
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '変更' WHERE ID = 1"));
        main->RefreshDayPanel();
        QCOMPARE(Shown(main.get(), QStringLiteral("LabYotei(0)")), QStringLiteral("変更"));
        env.db().RollbackTrans();
        main->RefreshDayPanel();
        QCOMPARE(Shown(main.get(), QStringLiteral("LabYotei(0)")), QStringLiteral("歯医者"));
        env.services.connection.reset();
        env.open();
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '復元' WHERE ID = 1"));
        main->RefreshDayPanel();
        QCOMPARE(Shown(main.get(), QStringLiteral("LabYotei(0)")), QStringLiteral("復元"));

        // Switching the option off again takes the window off the top.
        SetGeneral(env.db(), 312, {{"DATAN1", 0}});
        main->ApplyDesignSettings();
        QVERIFY(!main->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        // Opaque at 0, never invisible at 100, and no row keeps the window as it is.
        for (const auto& [sql, opacity] : {std::pair{"UPDATE TRNGENERAL SET DATAN1 = 0 WHERE CODE = 313", 1.0},
                                           std::pair{"UPDATE TRNGENERAL SET DATAN1 = 100 WHERE CODE = 313", 0.1},
                                           std::pair{"DELETE FROM TRNGENERAL WHERE CODE = 313", 0.1}}) {
            env.db().ExecuteSql(QLatin1String(sql));
            main->ApplyTransparency();
            QVERIFY2(qAbs(main->windowOpacity() - opacity) < 0.01, sql);
        }
        QVERIFY(env.prompter.shown.isEmpty());
        main->Form_Unload();
    }

    // The grid follows the clock across midnight and sleep; a refresh that fails on a locked file
    // leaves nothing stale and is made good at the next tick. Each time set is just before midnight.
    void followingTheClock()
    {
        TestEnvironment env;
        for (const auto& [id, day, subject] :
             {std::tuple{1, "20261110", "十一月"}, std::tuple{2, "20261222", "十二月"},
              std::tuple{3, "20261124", "新しい日"}, std::tuple{4, "20270102", "年始"}})
            StoreOneDay(env.db(), id, day, subject);
        const QTime lastMoment(23, 59, 59, 900);
        env.clock.current = QDateTime(QDate(2026, 11, 22), lastMoment);
        auto main = StartMainWindow(env);
        HalvernCalendar* calendar = main->calendar();
        calendar->setCurrentDate(QDate(2026, 11, 10));

        // Another connection holds the file locked while the user turns the page.
        auto other = OpenDatabaseConnection(env.path(), QString());
        other->ExecuteSql(QStringLiteral("BEGIN EXCLUSIVE"));
        const QDeadlineTimer fewSeconds(4000);
        calendar->showNextMonth();
        QVERIFY(!fewSeconds.hasExpired());
        QCOMPARE(calendar->CurrentDate(), QDate(2026, 12, 10));
        // Nothing of November is left to be read as December's.
        QVERIFY(!calendar->isEntryDay(QDate(2026, 11, 10)));
        QCOMPARE(Shown(main.get(), "LabYotei(0)"), QString());
        QCOMPARE(env.prompter.shown.size(), 1);
        calendar->setCurrentDate(QDate(2026, 12, 22));
        other->ExecuteSql(QStringLiteral("ROLLBACK"));
        QTRY_VERIFY_WITH_TIMEOUT(calendar->isEntryDay(QDate(2026, 12, 22)), 8000);
        QTRY_COMPARE_WITH_TIMEOUT(Shown(main.get(), "LabYotei(0)"), QStringLiteral("十二月"), 3000);

        // Another selected day stays when the day turns.
        env.clock.current = QDateTime(QDate(2026, 11, 23), lastMoment);
        QTest::qWait(500); // the clock is looked at every 150 ms this close to midnight
        QCOMPARE(calendar->CurrentDate(), QDate(2026, 12, 22));
        // A selection on today moves with it, also after a sleep into another month and year.
        calendar->setCurrentDate(QDate(2026, 11, 23));
        for (const auto& [day, subject] :
             {std::pair{QDate(2026, 11, 24), "新しい日"}, std::pair{QDate(2027, 1, 2), "年始"}}) {
            env.clock.current = QDateTime(day, lastMoment);
            QTRY_COMPARE_WITH_TIMEOUT(calendar->CurrentDate(), day, 3000);
            QCOMPARE(calendar->today(), day);
            QVERIFY(calendar->isEntryDay(day));
            QCOMPARE(Shown(main.get(), "LabYotei(0)"), QString::fromUtf8(subject));
        }
        QCOMPARE(env.prompter.shown.size(), 1); // told once, not at every click or tick
        main->Form_Unload();
    }

    void readingTheMonth()
    {
        TestEnvironment env;
        // Rows that cannot be read leave no trace: no mark, no line, no hover text.
        // clang-format off
        const QList<QStringList> unreadable = {
            {"B1", "", "", "20261130", ""},         // span with no start date
            {"C1", "20261101", "", "", ""},         // span with no end date
            {"A1", "2026x110", "", "2026x110", ""}, // one day, start not a date
            {"T1", "", "", "20261310", ""},         // task, deadline in the 13th month
            {"D3", "20261101", "25:99", "", ""},    // open end, start time 25:99
            {"Z9", "20261101", "", "20261101", ""}, // unknown kind
            {"", "20261101", "", "20261101", ""}};  // empty kind
        // clang-format on
        for (const QStringList& r : unreadable)
            StoreEntry(env.db(),
                       Entry(101 + unreadable.indexOf(r), r[0], r[1], r[2], r[3], r[4], QStringLiteral("壊れた行")));
        // Panels of four lines, line breaks and a long subject.
        const QString longSubject = QStringLiteral("とても長い件名") + QString(30, QChar(u'長'));
        for (int i = 1; i <= 4; ++i) {
            StoreOneDay(env.db(), i, QStringLiteral("20261110"), QStringLiteral("会議"));
            StoreOneDay(env.db(), 10 + i, QStringLiteral("20261112"), QStringLiteral("一行目\n") + longSubject);
        }
        // Hovering a day tells its day-off remark and its entries, not the next day's.
        for (const auto& [entry, day, subject] :
             {std::tuple{5, "20261111", "一行目\r\n二行目\t三"}, std::tuple{21, "20261118", "歯医者"},
              std::tuple{22, "20261118", "買い物\n牛乳"}, std::tuple{23, "20261119", "旅行"},
              std::tuple{24, "20261120", "翌日"}})
            StoreOneDay(env.db(), entry, day, subject);
        StoreDayOff(env.db(), 11, 16, QStringLiteral("創立記念日"));
        StoreDayOff(env.db(), 11, 17);
        StoreDayOff(env.db(), 11, 19, QStringLiteral("振替"));
        env.clock.current = QDateTime(QDate(2026, 11, 9), QTime(9, 0));
        auto main = StartMainWindow(env);
        HalvernCalendar* calendar = main->calendar();

        const QList<int> goodDays = {10, 11, 12, 18, 19, 20};
        for (const QDate& month : {QDate(2026, 10, 9), QDate(2026, 12, 9), QDate(2026, 11, 9)}) {
            calendar->setCurrentDate(month);
            for (QDate d = calendar->FirstShownDate(); d <= calendar->LastShownDate(); d = d.addDays(1))
                QVERIFY2(calendar->isEntryDay(d) == (d.year() == 2026 && d.month() == 11 && goodDays.contains(d.day())),
                         qPrintable(d.toString(Qt::ISODate)));
        }
        for (const QDate& day : {QDate(1990, 1, 1), QDate(2026, 11, 30), QDate(2026, 11, 1)}) {
            calendar->setCurrentDate(day);
            QCOMPARE(Column(*main, "LabYotei"), QStringList({"", "", ""}));
        }
        QCOMPARE(DayToolTip(*main->calendar(), QDate(2026, 11, 1)), QString());

        // clang-format off
        const QList<std::tuple<int, bool, QString, bool>> panels = {
            {10, true, "会議", false}, {11, false, "一行目 二行目 三", false}, {12, true, "一行目 とても長い件名", true}};
        // clang-format on
        for (const auto& [day, more, shownStart, elided] : panels) {
            calendar->setCurrentDate(QDate(2026, 11, day));
            QCoreApplication::processEvents();
            QCOMPARE(Control<QWidget>(main.get(), "LabMore")->isVisible(), more);
            auto* label = Control<QLabel>(main.get(), "LabYotei(0)");
            const QString shown = label->text();
            QVERIFY2(shown.startsWith(shownStart), qPrintable(shown));
            QCOMPARE(shown.endsWith(QChar(0x2026)), elided);
            QVERIFY(label->fontMetrics().horizontalAdvance(shown) <= label->contentsRect().width());
            QVERIFY(label->toolTip().startsWith(shownStart)); // the whole subject, to read by hovering
        }
        QCOMPARE(DayToolTip(*main->calendar(), QDate(2026, 11, 16)), QStringLiteral("休日: 創立記念日"));
        QCOMPARE(DayToolTip(*main->calendar(), QDate(2026, 11, 17)), QStringLiteral("休日"));
        QCOMPARE(DayToolTip(*main->calendar(), QDate(2026, 11, 18)), QStringLiteral("歯医者\n買い物 牛乳"));
        QCOMPARE(DayToolTip(*main->calendar(), QDate(2026, 11, 19)), QStringLiteral("休日: 振替\n旅行"));
        QVERIFY(env.prompter.shown.isEmpty());
    }

    void entryLabels()
    {
        TestEnvironment env;
        // Subjects A to E, one an hour from 08:00; A is a task, so the panel lists it first.
        StoreEntry(env.db(), Entry(1, "T2", "", "", "20261122", "08:00", "A"));
        for (int i = 1; i < 5; ++i)
            StoreEntry(env.db(), Entry(i + 1, "D3", "20261122", QStringLiteral("%1:00").arg(8 + i, 2, 10, QChar('0')),
                                       "", "", QChar(u'A' + i)));
        auto main = StartMainWindow(env);

        // The task opens on a click, a schedule through the menu's edit item.
        for (const auto& [row, throughMenu, dialog] :
             {std::tuple{0, false, "FrmTask"}, std::tuple{1, true, "FrmSchedule"}}) {
            const QString label = QStringLiteral("LabYotei(%1)").arg(row);
            QString opened;
            ModalAnswer editor([&](QWidget* window) {
                opened = window->objectName();
                auto* subject = Control<QLineEdit>(window, "TxtYouken");
                subject->setText(subject->text() + QStringLiteral("変更後"));
                Click(window, "ComOK");
            });
            MenuAnswer menu(QStringLiteral("MnuScheduleEdit"));
            ClickControl(*main, label, throughMenu ? Qt::RightButton : Qt::LeftButton);
            QCOMPARE(menu.menu(), throughMenu ? QStringLiteral("MnuScheduleEditMenu") : QString());
            QCOMPARE(opened, QLatin1String(dialog));
            const QString changed = QString(QChar(u'A' + row)) + QStringLiteral("変更後");
            QCOMPARE(Column(env.db(), row + 1, "BUSINESS"), changed);
            QCOMPARE(Shown(main.get(), label), changed);
        }

        // Each delete is asked first, Cancel answering a hasty Enter; the rows then hold what they show.
        // clang-format off
        const QList<std::tuple<int, bool, QStringList, bool>> deletes = {
            {1, false, {"A変更後", "B変更後", "C"}, true}, // cancel keeps it
            {1, true, {"A変更後", "C", "D"}, true},
            {0, true, {"C", "D", "E"}, false},            // a task goes like a schedule
            {1, true, {"C", "E", ""}, false}};
        // clang-format on
        for (const auto& [row, confirmed, panelAfter, moreAfter] : deletes) {
            env.prompter.shown.clear();
            env.prompter.answers.push_back(confirmed ? PromptAnswer::Ok : PromptAnswer::Cancel);
            MenuAnswer menu(QStringLiteral("MnuScheduleDel"));
            ClickControl(*main, QStringLiteral("LabYotei(%1)").arg(row), Qt::RightButton);
            QCOMPARE(env.prompter.shown.size(), 1);
            QCOMPARE(env.prompter.shown.front().buttons, PromptButtons::OkCancel);
            QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
            QCOMPARE(Column(*main, "LabYotei"), panelAfter);
            QCOMPARE(Control<QLabel>(main.get(), "LabMore")->isVisible(), moreAfter);
            for (int i = 0; i < PanelRows; ++i)
                QCOMPARE(main->PanelEntryId(i), panelAfter[i].isEmpty() ? 0 : panelAfter[i].at(0).unicode() - u'A' + 1);
            QCOMPARE(env.db().transactionDepth(), 0);
        }

        // An empty label's menu deletes nothing.
        {
            MenuAnswer menu(QStringLiteral("MnuScheduleDel"));
            ClickControl(*main, QStringLiteral("LabYotei(2)"), Qt::RightButton);
            QVERIFY(menu.opened());
            QVERIFY(env.prompter.shown.size() == 1);
            // A screen reader is offered nothing on it.
            QAccessibleInterface* empty =
                QAccessible::queryAccessibleInterface(Control<QLabel>(main.get(), "LabYotei(2)"));
            QVERIFY(empty->actionInterface()->actionNames().isEmpty());
        }

        // The last two go, and the day loses its mark.
        for (int i = 0; i < 2; ++i) {
            MenuAnswer last(QStringLiteral("MnuScheduleDel"));
            ClickControl(*main, QStringLiteral("LabYotei(0)"), Qt::RightButton);
        }
        QCOMPARE(Column(*main, "LabYotei"), QStringList({"", "", ""}));
        QVERIFY(!main->calendar()->isEntryDay(QDate(2026, 11, 22)));

        // "Schedule" makes a schedule or a task on the selected day; grid and panel follow at once.
        main->calendar()->setCurrentDate(QDate(2026, 11, 25));
        const QString subject = QStringLiteral("O'Neil と打合せ");
        for (const char* item : {"MnuSchedule", "MnuTask"}) {
            bool idleWhileOpen = true;
            MenuAnswer entryMenu{QLatin1String(item)};
            ModalAnswer newEntry([&](QWidget* window) {
                idleWhileOpen = env.services.state.MainWindowIdle;
                Control<QLineEdit>(window, "TxtYouken")->setText(subject);
                Click(window, "ComOK");
            });
            ClickControl(*main, QStringLiteral("LabScaedule"));
            QVERIFY(!idleWhileOpen);
            QVERIFY(main->calendar()->isEntryDay(QDate(2026, 11, 25)));
            QCOMPARE(Shown(main.get(), "LabYotei(0)"), subject);
        }
        QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM TRNSCHTSK ORDER BY DATA"),
                       {"DATA", "BUSINESS", "STARTDT", "ENDDT"}),
                 QStringList({"1|O'Neil と打合せ|20261125|", "2|O'Neil と打合せ||20261125"}));
    }

    void controlsAnswerOnlyWhenIdle_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("button");
        QTest::addColumn<QString>("menu"); // the menu it pops once idle; "" a dialog instead
        // clang-format off
        QTest::newRow("Menu") << "LabMenu" << int(Qt::LeftButton) << "MnuSubMenu";
        QTest::newRow("Jump") << "LabJump" << int(Qt::LeftButton) << "MnuJumpDay";
        QTest::newRow("Schedule") << "LabScaedule" << int(Qt::LeftButton) << "MnuEntry";
        QTest::newRow("Help") << "LabHelp" << int(Qt::LeftButton) << "MnuHelp";
        QTest::newRow("entry label") << "LabYotei(0)" << int(Qt::LeftButton) << "";
        QTest::newRow("entry label, right") << "LabYotei(0)" << int(Qt::RightButton) << "MnuScheduleEditMenu";
        // clang-format on
    }
    void controlsAnswerOnlyWhenIdle()
    {
        QFETCH(QString, control);
        QFETCH(int, button);
        QFETCH(QString, menu);
        TestEnvironment env;
        StoreOneDay(env.db(), 1, QStringLiteral("20261122"), QStringLiteral("朝会"));
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
        // A screen reader does the same through the label's own action.
        MenuAnswer byReader{QString()};
        ModalAnswer readerDialog(reject);
        QAccessible::queryAccessibleInterface(main->findChild<QLabel*>(control))
            ->actionInterface()
            ->doAction(button == Qt::RightButton ? QAccessibleActionInterface::showMenuAction()
                                                 : QAccessibleActionInterface::pressAction());
        QTRY_VERIFY(menu.isEmpty() ? readerDialog.opened() : byReader.opened());
        QCOMPARE(byReader.menu(), menu);
        QVERIFY(env.services.state.MainWindowIdle);
    }

    // The selected day is kept, unless today's day is past the month's length (February is 28
    // days, leap year or not); a day the month lacks is no jump at all. The grid and the panel
    // follow the selected day as they do for any other change of it.
    void jumpMenu()
    {
        // clang-format off
        const QList<std::tuple<QDate, QDate, QString, QDate>> jumps = { // today, selected, item, landing
            {QDate(2026, 11, 22), QDate(2026, 3, 3), "MnuToday", QDate(2026, 11, 22)},
            {QDate(2007, 3, 15), QDate(2007, 1, 31), "MnuMonth2", QDate(2007, 1, 31)},  // no 31 February: stay
            {QDate(2007, 1, 30), QDate(2007, 1, 10), "MnuMonth2", QDate(2007, 2, 28)},
            {QDate(2007, 1, 31), QDate(2007, 3, 15), "MnuMonth4", QDate(2007, 4, 30)},
            {QDate(2007, 1, 30), QDate(2007, 5, 31), "MnuMonth4", QDate(2007, 5, 31)},  // 30 is not past April's 30
            {QDate(2008, 2, 29), QDate(2008, 1, 10), "MnuMonth2", QDate(2008, 2, 28)},
            {QDate(2008, 1, 5), QDate(2008, 1, 29), "MnuMonth2", QDate(2008, 2, 29)},
            {QDate(2026, 11, 22), QDate(1999, 6, 5), "MnuMonth12", QDate(1999, 12, 5)}}; // the selected day's year
        // clang-format on
        TestEnvironment env;
        auto main = StartMainWindow(env);
        for (const auto& [today, selected, item, expected] : jumps) {
            env.clock.current = QDateTime(today, QTime(9, 0));
            main->calendar()->setCurrentDate(selected);
            MenuAnswer menu(item);
            ClickControl(*main, QStringLiteral("LabJump"));
            QCOMPARE(main->calendar()->CurrentDate(), expected);
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
        const QString pagePath = root.filePath(page);
        QDir().mkpath(root.filePath(QStringLiteral("bin")));
        if (!page.isEmpty())
            QVERIFY(QDir().mkpath(QFileInfo(pagePath).path()) && WriteFile(pagePath, QByteArray()));
        env.services.programDir = root.filePath(QStringLiteral("bin"));
        env.urlOpener.opens = browserOpens;
        auto main = StartMainWindow(env);
        MenuAnswer menu(QStringLiteral("MnuOnline"));
        ClickControl(*main, QStringLiteral("LabHelp"));
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

    // The version box; the tray icon's clicks and its menu's note and exit items.
    void versionAndTray()
    {
        TestEnvironment env;
        SetGeneral(env.db(), 311, {{"DATAN1", 1}});
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
            QVERIFY(!dialog.stayedOpen()); // its OK closes it
        }
        QVERIFY(title.endsWith(QStringLiteral(" 1.2")));
        QVERIFY(!idleWhileOpen);
        QVERIFY(env.services.state.MainWindowIdle);

        main->setTrayAvailabilityForTesting(1);
        QPointer<QSystemTrayIcon> tray = main->trayIcon();
        // A click or a double click on the icon brings the hidden window back, other buttons do not.
        for (const auto reason : {QSystemTrayIcon::Context, QSystemTrayIcon::MiddleClick, QSystemTrayIcon::Trigger,
                                  QSystemTrayIcon::DoubleClick}) {
            main->close(); // a resident calendar's close box hides it in the tray
            emit tray->activated(reason);
            const bool shown = reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick;
            QCOMPARE(main->isVisible(), shown);
            QCOMPARE(main->isMinimized(), !shown);
        }
        // A new note takes the hand-over slot's place, in a colour drawn from the seven.
        env.random.values = {0.999};
        Control<QAction>(tray->contextMenu(), "MnuTaskPost")->trigger();
        QVERIFY(!main->isUnloaded());
        QCOMPARE(env.services.state.StickyNotes[0].colorIndex, 6);
        QVERIFY(env.services.state.StickyNotes[0].text.isEmpty());
        // Even a resident calendar ends for the exit item: it is no close-box close.
        Control<QAction>(tray->contextMenu(), "MnuEnd")->trigger();
        QVERIFY(main->isUnloaded());
        QVERIFY(!env.services.connection || !env.services.connection->isOpen());
        QVERIFY(!main->trayIcon());
        QTRY_VERIFY(tray.isNull());
        CloseStickyNoteWindows();
    }
};

VERDALY_TEST(TestMainWindow)
#include "tst_mainwindow.moc"
