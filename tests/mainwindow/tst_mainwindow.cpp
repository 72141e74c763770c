// The main window over a month of entries: start-up, the design, the panel's order, the
// grid's marks across months, and today following the clock.
#include "calendarcontrol/HalvernCalendar.h"
#include "common/LinkLabel.h"
#include "entries/EntryKinds.h"
#include "mainwindow/FrmMain.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QLabel>
#include <QtTest>

namespace {

void AddEntry(DatabaseConnection& db, int id, const char* kind, const QString& subject, const char* startDate,
              const char* startTime, const char* endDate, const char* endTime, int priority = 0,
              const char* completion = "")
{
    StoredEntry e = Entry(id, kind, startDate, startTime, endDate, endTime, subject);
    e.priority = priority;
    e.completion = completion;
    StoreEntry(db, e);
}

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

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void aMonthOfEntries()
    {
        TestEnvironment env;
        env.clock.current = QDateTime(QDate(2026, 11, 22), QTime(10, 0));
        AddEntry(env.db(), 1, "A4", QStringLiteral("歯医者"), "20261122", "09:30", "20261122", "10:00");
        // A span entering December, a task due in the grid's trailing days (January), an
        // entry far off, an open-ended one; day-offs on 1/2, 12/24 and the leap day.
        AddEntry(env.db(), 2, "C1", QStringLiteral("旅行"), "20261125", "", "20261208", "");
        AddEntry(env.db(), 3, "T1", QStringLiteral("年賀状"), "", "", "20270102", "");
        AddEntry(env.db(), 4, "A1", QStringLiteral("遠い予定"), "20270315", "", "20270315", "");
        AddEntry(env.db(), 5, "D3", QStringLiteral("開始のみ"), "20261216", "08:00", "", "");
        for (const auto& [month, day] : {std::pair{12, 24}, std::pair{1, 2}, std::pair{2, 29}})
            StoreGeneral(env.db(), 200, {{"DATAS1", "off"}, {"DATAN1", month}, {"DATAN2", day}});
        // Inserted out of order: the panel shows tasks first (empty start date), then by start
        // time, and by priority among equal times; three lines, then "more...".
        AddEntry(env.db(), 11, "A3", QStringLiteral("夕方の会議"), "20261110", "17:00", "20261110", "");
        AddEntry(env.db(), 12, "T2", QStringLiteral("報告書"), "", "", "20261110", "12:00", 3, "1");
        AddEntry(env.db(), 13, "A4", QStringLiteral("朝会"), "20261110", "09:00", "20261110", "09:15");
        AddEntry(env.db(), 14, "T1", QStringLiteral("請求書"), "", "", "20261110", "", 1, "0");
        AddEntry(env.db(), 15, "A4", QStringLiteral("it's lunch"), "20261110", "12:00", "20261110", "13:00");
        // The design and the transparency come from the database, so they must be applied
        // after it was opened: on top, 30% transparent, Monday first, the panel's colours.
        for (const auto& [code, value] : {std::pair{312, 1}, std::pair{313, 30}, std::pair{302, 2}})
            env.db().ExecuteSql(
                QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = %2").arg(value).arg(code));
        env.db().ExecuteSql(
            QStringLiteral("UPDATE TRNCOLOR SET FORECOLOR = %1, BACKCOLOR = %2, FSIZE = 11.5 WHERE CODE = 140")
                .arg(0x00FF0000) // blue in 0x00BBGGRR
                .arg(0x00E0F0FF));
        auto started = StartMainWindow(env);
        FrmMain& main = *started;
        HalvernCalendar* calendar = main.calendar();
        QCOMPARE(calendar->CurrentDate(), QDate(2026, 11, 22));
        QCOMPARE(main.windowTitle(), QStringLiteral("2026/11/22 (日)"));
        QVERIFY(qAbs(main.windowOpacity() - 0.7) < 0.01);
        QVERIFY(main.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QCOMPARE(calendar->FirstDayOfWeek(), 2);
        QCOMPARE(main.LabelForeColor(), QColor(0, 0, 255));
        QCOMPARE(main.palette().color(QPalette::Window), QColor(0xFF, 0xF0, 0xE0));
        for (const char* name : {"LabTime(1)", "LabYotei(2)", "LabHelp"})
            QCOMPARE(Control<QLabel>(&main, name)->palette().color(QPalette::WindowText), QColor(0, 0, 255));
        QCOMPARE(Control<QLabel>(&main, "LabYotei(2)")->font().pointSizeF(), 11.5);
        // Time texts line up in columns: blanks, digits, colons and arrows are all one width.
        const QFontMetrics metrics(Control<QLabel>(&main, "LabTime(1)")->font());
        QCOMPARE(metrics.horizontalAdvance(QStringLiteral(" 9:30 - 10:00")),
                 metrics.horizontalAdvance(QStringLiteral("      ->17:00")));
        QCOMPARE(metrics.horizontalAdvance(QStringLiteral("20:30 - 24:00")),
                 metrics.horizontalAdvance(QStringLiteral(" 5/ 1 -> 5/ 3")));
        QCOMPARE(Shown(&main, QStringLiteral("LabTime(0)")), QStringLiteral(" 9:30 - 10:00"));
        QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("歯医者"));
        // The Monday-first grid runs from 10/26 to 12/6.
        QCOMPARE(Marked(calendar), QList<QDate>({QDate(2026, 11, 10), QDate(2026, 11, 22)}) +
                                       Span(QDate(2026, 11, 25), QDate(2026, 12, 6)));
        QVERIFY(Marked(calendar, true).isEmpty());

        calendar->setCurrentDate(QDate(2026, 11, 10));
        QCOMPARE(Column(main, "LabYotei"), (QStringList{"請求書", "[済]報告書", "朝会"}));
        QCOMPARE(Column(main, "LabTime"), (QStringList{"      ->11/10", "      ->12:00", " 9:00 -  9:15"}));
        QCOMPARE((QList<int>{main.PanelEntryId(0), main.PanelEntryId(1), main.PanelEntryId(2)}),
                 (QList<int>{14, 12, 13}));
        QCOMPARE(main.PanelEntryData(0), QStringLiteral("2"));
        QCOMPARE(main.PanelEntryData(2), QStringLiteral("1"));
        QVERIFY(Control<LinkLabel>(&main, "LabMore")->isVisibleTo(&main));

        // Only the current month's day-offs are marked, even where the grid shows other days.
        calendar->setCurrentDate(QDate(2026, 12, 3));
        QCOMPARE(Marked(calendar), Span(QDate(2026, 11, 30), QDate(2026, 12, 8)) +
                                       QList<QDate>({QDate(2026, 12, 16), QDate(2027, 1, 2)}));
        QCOMPARE(Marked(calendar, true), QList<QDate>{QDate(2026, 12, 24)});
        QCOMPARE(Shown(&main, QStringLiteral("LabTime(0)")), QStringLiteral("11/25 ->12/ 8"));
        // Moving on clears the previous month's marks.
        calendar->setCurrentDate(QDate(2027, 3, 1));
        QCOMPARE(Marked(calendar), QList<QDate>{QDate(2027, 3, 15)});
        QVERIFY(Marked(calendar, true).isEmpty());
        // The leap day is a day-off only in a leap year, and never turns into another day.
        calendar->setCurrentDate(QDate(2027, 2, 10));
        QVERIFY(Marked(calendar, true).isEmpty());
        calendar->setCurrentDate(QDate(2028, 2, 10));
        QCOMPARE(Marked(calendar, true), QList<QDate>{QDate(2028, 2, 29)});

        // The panel reads every change: a write, a rollback, a database opened anew.
        calendar->setCurrentDate(QDate(2026, 11, 22));
        env.db().BeginTrans();
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '変更' WHERE ID = 1"));
        main.RefreshDayPanel();
        QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("変更"));
        env.db().RollbackTrans();
        main.RefreshDayPanel();
        QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("歯医者"));
        env.services.connection.reset();
        env.open();
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '復元' WHERE ID = 1"));
        main.RefreshDayPanel();
        QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("復元"));

        // Switching the option off again takes the window off the top.
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 0 WHERE CODE = 312"));
        main.ApplyDesignSettings();
        QVERIFY(!main.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        // Opaque at 0, never invisible at 100, and no row keeps the window as it is.
        for (const auto& [sql, opacity] : {std::pair{"UPDATE TRNGENERAL SET DATAN1 = 0 WHERE CODE = 313", 1.0},
                                           std::pair{"UPDATE TRNGENERAL SET DATAN1 = 100 WHERE CODE = 313", 0.1},
                                           std::pair{"DELETE FROM TRNGENERAL WHERE CODE = 313", 0.1}}) {
            env.db().ExecuteSql(QLatin1String(sql));
            main.ApplyTransparency();
            QVERIFY2(qAbs(main.windowOpacity() - opacity) < 0.01, sql);
        }
        // A link under the pointer is underlined in the highlight colour until reset.
        auto* link = Control<LinkLabel>(&main, "LabScaedule");
        QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), link->mapToGlobal(QPointF(2, 2)));
        QCoreApplication::sendEvent(link, &enter);
        QVERIFY(link->font().underline());
        QCOMPARE(link->palette().color(QPalette::WindowText), link->palette().color(QPalette::Highlight));
        main.ResetLinkStyles();
        QVERIFY(!link->font().underline());
        QCOMPARE(link->palette().color(QPalette::WindowText), main.LabelForeColor());
        QVERIFY(env.prompter.shown.isEmpty());
        main.Form_Unload();
    }

    // With no input at all the grid follows the clock across midnight and sleep; a refresh
    // that fails (the file locked by another program) leaves nothing stale behind and is made
    // good by the next tick of time. Each clock setting is just before a midnight, so that
    // the clock's next look comes within a moment.
    void followingTheClock()
    {
        TestEnvironment env;
        // clang-format off
        for (const auto& [id, day, subject] : {std::tuple{1, "20261110", "十一月"}, std::tuple{2, "20261222", "十二月"},
                                               std::tuple{3, "20261124", "新しい日"}, std::tuple{4, "20270102", "年始"}})
            StoreEntry(env.db(), Entry(id, "A1", day, QString(), day, QString(), QString::fromUtf8(subject)));
        // clang-format on
        const QTime lastMoment(23, 59, 59, 900);
        env.clock.current = QDateTime(QDate(2026, 11, 22), lastMoment);
        auto main = StartMainWindow(env);
        HalvernCalendar* calendar = main->calendar();
        calendar->setCurrentDate(QDate(2026, 11, 10));
        QVERIFY(calendar->isEntryDay(QDate(2026, 11, 10)));
        QCOMPARE(Shown(main.get(), "LabYotei(0)"), QStringLiteral("十一月"));

        // Another connection holds the file locked while the user turns the page.
        auto other = OpenDatabaseConnection(env.path(), QString());
        other->ExecuteSql(QStringLiteral("BEGIN EXCLUSIVE"));
        QElapsedTimer waited;
        waited.start();
        calendar->showNextMonth();
        QVERIFY2(waited.elapsed() < 4000, qPrintable(QString::number(waited.elapsed())));
        QCOMPARE(calendar->CurrentDate(), QDate(2026, 12, 10));
        // Nothing of November is left to be read as December's.
        QVERIFY(!calendar->isEntryDay(QDate(2026, 11, 10)));
        QCOMPARE(Shown(main.get(), "LabYotei(0)"), QString());
        QCOMPARE(env.prompter.shown.size(), 1);
        calendar->setCurrentDate(QDate(2026, 12, 22));
        QCOMPARE(env.prompter.shown.size(), 1); // told once, not at every click
        other->ExecuteSql(QStringLiteral("ROLLBACK"));
        QTRY_VERIFY_WITH_TIMEOUT(calendar->isEntryDay(QDate(2026, 12, 22)), 8000);
        QTRY_COMPARE_WITH_TIMEOUT(Shown(main.get(), "LabYotei(0)"), QStringLiteral("十二月"), 3000);
        QCOMPARE(env.prompter.shown.size(), 1);

        // Another selected day stays when the day turns.
        env.clock.current = QDateTime(QDate(2026, 11, 23), lastMoment);
        QTest::qWait(500); // the clock is looked at every 150 ms this close to midnight
        QCOMPARE(calendar->CurrentDate(), QDate(2026, 12, 22));
        // A selection on today moves with it, at midnight and after a sleep into another
        // month and year; the new day's grid and panel are filled, not left from before.
        calendar->setCurrentDate(QDate(2026, 11, 23));
        for (const auto& [day, subject] :
             {std::pair{QDate(2026, 11, 24), "新しい日"}, std::pair{QDate(2027, 1, 2), "年始"}}) {
            env.clock.current = QDateTime(day, lastMoment);
            QTRY_COMPARE_WITH_TIMEOUT(calendar->CurrentDate(), day, 3000);
            QCOMPARE(calendar->today(), day);
            QVERIFY(calendar->isEntryDay(day));
            QCOMPARE(Shown(main.get(), "LabYotei(0)"), QString::fromUtf8(subject));
        }
        QCOMPARE(env.prompter.shown.size(), 1);
        main->Form_Unload();
    }
};

VERDALY_TEST(TestMainWindow)
#include "tst_mainwindow.moc"
