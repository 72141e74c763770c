// The grid and the panel read as a user reads them, and the panel's entry labels worked as
// a user works them: a click opens the entry in its editor, the right button offers edit
// and delete, a delete asks first and closes the panel's gap after, and "Schedule" makes
// new entries on the selected day.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QDialog>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolTip>
#include <QtTest>

namespace {

QStringList PanelSubjects(FrmMain& main)
{
    QStringList subjects;
    for (int i = 0; i < PanelRows; ++i)
        subjects << Shown(&main, QStringLiteral("LabYotei(%1)").arg(i));
    return subjects;
}

QString HoverText(FrmMain& main, const QDate& day)
{
    QToolTip::hideText();
    HalvernCalendar* grid = main.calendar();
    const QPoint at = grid->dayRect(day).center();
    QHelpEvent event(QEvent::ToolTip, at, grid->mapToGlobal(at));
    QCoreApplication::sendEvent(grid, &event);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

void StoreOneDay(DatabaseConnection& db, int id, int day, const QString& subject)
{
    const QString date = QStringLiteral("202611%1").arg(day, 2, 10, QLatin1Char('0'));
    StoreEntry(db, Entry(id, QStringLiteral("A1"), date, QString(), date, QString(), subject));
}

} // namespace

class TestMainWindowPanel : public QObject
{
    Q_OBJECT

private slots:
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
        int id = 100;
        for (const QStringList& r : unreadable)
            StoreEntry(env.db(), Entry(++id, r[0], r[1], r[2], r[3], r[4], QStringLiteral("壊れた行")));
        // Panels that must keep the grid's geometry: four lines, line breaks, a long subject.
        const QString longSubject = QStringLiteral("とても長い件名") + QString(30, QChar(u'長'));
        for (int i = 1; i <= 4; ++i) {
            StoreOneDay(env.db(), i, 10, QStringLiteral("会議"));
            StoreOneDay(env.db(), 10 + i, 12, QStringLiteral("一行目\n") + longSubject);
        }
        StoreOneDay(env.db(), 5, 11, QStringLiteral("一行目\r\n二行目\t三"));
        // Hovering a day tells its day-off remark and its entries, not the next day's.
        StoreGeneral(env.db(), 200, {{"DATAN1", 11}, {"DATAN2", 16}, {"DATAS1", "創立記念日"}, {"DATAS2", QString()}});
        StoreGeneral(env.db(), 200, {{"DATAN1", 11}, {"DATAN2", 17}, {"DATAS1", QString()}, {"DATAS2", QString()}});
        StoreGeneral(env.db(), 200, {{"DATAN1", 11}, {"DATAN2", 19}, {"DATAS1", "振替"}, {"DATAS2", QString()}});
        StoreOneDay(env.db(), 21, 18, QStringLiteral("歯医者"));
        StoreOneDay(env.db(), 22, 18, QStringLiteral("買い物\n牛乳"));
        StoreOneDay(env.db(), 23, 19, QStringLiteral("旅行"));
        StoreOneDay(env.db(), 24, 20, QStringLiteral("翌日"));
        env.clock.current = QDateTime(QDate(2026, 11, 9), QTime(9, 0));
        auto started = StartMainWindow(env);
        FrmMain& main = *started;
        HalvernCalendar* calendar = main.calendar();

        const QList<int> goodDays = {10, 11, 12, 18, 19, 20};
        for (const QDate& month : {QDate(2026, 10, 9), QDate(2026, 12, 9), QDate(2026, 11, 9)}) {
            calendar->setCurrentDate(month);
            for (QDate d = calendar->FirstShownDate(); d <= calendar->LastShownDate(); d = d.addDays(1)) {
                const bool good = d.year() == 2026 && d.month() == 11 && goodDays.contains(d.day());
                QVERIFY2(calendar->isEntryDay(d) == good, qPrintable(d.toString(Qt::ISODate)));
            }
        }
        for (const QDate& day : {QDate(2026, 11, 1), QDate(2026, 11, 30), QDate(1990, 1, 1)}) {
            calendar->setCurrentDate(day);
            QCOMPARE(PanelSubjects(main), QStringList({"", "", ""}));
            QCOMPARE(Shown(&main, "LabTime(0)"), QString());
        }
        calendar->setCurrentDate(QDate(2026, 11, 1));
        QCOMPARE(HoverText(main, QDate(2026, 11, 1)), QString());

        calendar->setCurrentDate(QDate(2026, 11, 9));
        QCoreApplication::processEvents();
        const QRect emptyPanelGrid = calendar->geometry();
        const QSize window = main.size();
        // clang-format off
        const QList<std::tuple<int, bool, QString, bool>> panels = {
            {10, true, "会議", false}, {11, false, "一行目 二行目 三", false}, {12, true, "一行目 とても長い件名", true}};
        // clang-format on
        for (const auto& [day, more, shownStart, elided] : panels) {
            calendar->setCurrentDate(QDate(2026, 11, day));
            QCoreApplication::processEvents();
            QCOMPARE(calendar->geometry(), emptyPanelGrid);
            QCOMPARE(main.size(), window);
            QCOMPARE(Control<QWidget>(&main, "LabMore")->isVisible(), more);
            auto* label = Control<QLabel>(&main, "LabYotei(0)");
            const QString shown = label->text();
            QVERIFY2(!shown.contains(QLatin1Char('\n')) && !shown.contains(QLatin1Char('\r')), qPrintable(shown));
            QVERIFY2(shown.startsWith(shownStart), qPrintable(shown));
            QCOMPARE(shown.endsWith(QChar(0x2026)), elided);
            QVERIFY(label->fontMetrics().horizontalAdvance(shown) <= label->contentsRect().width());
            // The whole subject is still there to read by hovering.
            QVERIFY(label->toolTip().startsWith(shownStart));
        }
        QCOMPARE(HoverText(main, QDate(2026, 11, 16)), QStringLiteral("休日: 創立記念日"));
        QCOMPARE(HoverText(main, QDate(2026, 11, 17)), QStringLiteral("休日"));
        QCOMPARE(HoverText(main, QDate(2026, 11, 18)), QStringLiteral("歯医者\n買い物 牛乳"));
        QCOMPARE(HoverText(main, QDate(2026, 11, 19)), QStringLiteral("休日: 振替\n旅行"));
        QVERIFY(env.prompter.shown.isEmpty());
    }

    void entryLabels()
    {
        TestEnvironment env;
        // Five entries on the test's today, one an hour from 08:00, subjects A to E; A is a task
        // due at its hour, which the panel lists first as it has no start day.
        const QString today = QStringLiteral("20261122");
        for (int i = 0; i < 5; ++i) {
            const QString time = QStringLiteral("%1:00").arg(8 + i, 2, 10, QLatin1Char('0'));
            const QString subject(QChar(u'A' + i));
            if (i == 0)
                StoreEntry(env.db(), Entry(1, QStringLiteral("T2"), QString(), QString(), today, time, subject));
            else
                StoreEntry(env.db(), Entry(i + 1, QStringLiteral("D3"), today, time, QString(), QString(), subject));
        }
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
            QVERIFY(env.services.state.MainWindowIdle);
        }

        // Each delete is asked first, with Cancel as the answer to a hasty Enter; the rows then
        // stand for the entries they show.
        // clang-format off
        const QList<std::tuple<int, bool, QStringList, bool>> deletes = {
            {1, false, {"A変更後", "B変更後", "C"}, true}, // cancel keeps it
            {1, true, {"A変更後", "C", "D"}, true},
            {0, true, {"C", "D", "E"}, false},            // a task goes like a schedule
            {1, true, {"C", "E", ""}, false}};
        // clang-format on
        int left = 5;
        for (const auto& [row, confirmed, panelAfter, moreAfter] : deletes) {
            const int id = main->PanelEntryId(row);
            env.prompter.shown.clear();
            env.prompter.answers.push_back(confirmed ? PromptAnswer::Ok : PromptAnswer::Cancel);
            MenuAnswer menu(QStringLiteral("MnuScheduleDel"));
            ClickControl(*main, QStringLiteral("LabYotei(%1)").arg(row), Qt::RightButton);
            QCOMPARE(env.prompter.shown.size(), 1);
            QCOMPARE(env.prompter.shown.front().buttons, PromptButtons::OkCancel);
            QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
            QCOMPARE(Column(env.db(), id, "ID") == QLatin1String("<no row>"), confirmed);
            left -= confirmed ? 1 : 0;
            QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), left);
            QCOMPARE(PanelSubjects(*main), panelAfter);
            QCOMPARE(Control<QLabel>(main.get(), "LabMore")->isVisible(), moreAfter);
            for (int i = 0; i < PanelRows; ++i) {
                const QString subject = panelAfter.at(i);
                QCOMPARE(main->PanelEntryId(i), subject.isEmpty() ? 0 : subject.at(0).unicode() - u'A' + 1);
            }
            QCOMPARE(env.db().transactionDepth(), 0);
        }

        // An empty label opens nothing, and its menu deletes nothing.
        {
            ModalAnswer editor([](QWidget* window) { static_cast<QDialog*>(window)->reject(); });
            ClickControl(*main, QStringLiteral("LabYotei(2)"));
            QTest::qWait(100);
            QVERIFY(!editor.opened());
            MenuAnswer menu(QStringLiteral("MnuScheduleDel"));
            ClickControl(*main, QStringLiteral("LabYotei(2)"), Qt::RightButton);
            QVERIFY(menu.opened());
            QVERIFY(env.prompter.shown.size() == 1);
            QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 2);
            // A screen reader is offered the menu of a filled label only.
            QAccessibleInterface* filled =
                QAccessible::queryAccessibleInterface(main->findChild<QLabel*>("LabYotei(0)"));
            QAccessibleInterface* empty =
                QAccessible::queryAccessibleInterface(main->findChild<QLabel*>("LabYotei(2)"));
            QCOMPARE(filled->text(QAccessible::Name), QStringLiteral("C"));
            QVERIFY(empty->actionInterface()->actionNames().isEmpty());
            MenuAnswer byReader{QString()};
            filled->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
            QTRY_VERIFY(byReader.opened());
            QCOMPARE(byReader.menu(), QStringLiteral("MnuScheduleEditMenu"));
        }

        // The last two go, and the day loses its mark.
        for (int i = 0; i < 2; ++i) {
            MenuAnswer last(QStringLiteral("MnuScheduleDel"));
            ClickControl(*main, QStringLiteral("LabYotei(0)"), Qt::RightButton);
        }
        QCOMPARE(PanelSubjects(*main), QStringList({"", "", ""}));
        QVERIFY(!main->calendar()->isEntryDay(QDate(2026, 11, 22)));

        // "Schedule" makes a schedule or a task on the selected day; the grid and the panel
        // follow at once.
        main->calendar()->setCurrentDate(QDate(2026, 11, 25));
        const QString subject = QStringLiteral("O'Neil と打合せ");
        for (const auto& [item, dialog, dateBox] : {std::tuple{"MnuSchedule", "FrmSchedule", "TxtStartDate"},
                                                    std::tuple{"MnuTask", "FrmTask", "TxtEndDate"}}) {
            bool idleWhileOpen = true;
            QString shownDate;
            QString opened;
            MenuAnswer entryMenu{QLatin1String(item)};
            ModalAnswer newEntry([&, box = dateBox](QWidget* window) {
                idleWhileOpen = env.services.state.MainWindowIdle;
                opened = window->objectName();
                shownDate = Shown(window, QLatin1String(box));
                Control<QLineEdit>(window, "TxtYouken")->setText(subject);
                Click(window, "ComOK");
            });
            ClickControl(*main, QStringLiteral("LabScaedule"));
            QCOMPARE(opened, QLatin1String(dialog));
            QCOMPARE(shownDate, QStringLiteral("2026/11/25"));
            QVERIFY(!idleWhileOpen);
            QVERIFY(env.services.state.MainWindowIdle);
            QVERIFY(main->calendar()->isEntryDay(QDate(2026, 11, 25)));
            QCOMPARE(Shown(main.get(), "LabYotei(0)"), subject);
        }
        QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM TRNSCHTSK ORDER BY DATA"),
                       {"DATA", "BUSINESS", "STARTDT", "ENDDT"}),
                 QStringList({"1|O'Neil と打合せ|20261125|", "2|O'Neil と打合せ||20261125"}));
    }
};

VERDALY_TEST(TestMainWindowPanel)
#include "TestMainWindowPanel.moc"
