#include "calendarcontrol/HalvernCalendar.h"
#include "common/LinkLabel.h"
#include "common/Units.h"
#include "mainwindow/FrmMain.h"
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

void AddDayOff(DatabaseConnection& db, int month, int day)
{
    StoreGeneral(db, 200, {{"DATAS1", "off"}, {"DATAN1", month}, {"DATAN2", day}});
}

QStringList Column(FrmMain& main, const char* label)
{
    QStringList texts;
    for (int row = 0; row < PanelRows; ++row)
        texts << Shown(&main, QStringLiteral("%1(%2)").arg(QLatin1String(label)).arg(row));
    return texts;
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void startUpShowsToday();
    void panelOrderAndTexts();
    void monthSwitchMarks();
    void panelFollowsEveryChange();
    void designSettings();
    void transparency_data();
    void transparency();
    void linkHover();
};

void TestMainWindow::startUpShowsToday()
{
    TestEnvironment env;
    env.clock.current = QDateTime(QDate(2026, 11, 22), QTime(10, 0));
    AddEntry(env.db(), 1, "A4", QStringLiteral("歯医者"), "20261122", "09:30", "20261122", "10:00");
    AddEntry(env.db(), 2, "C1", QStringLiteral("出張"), "20261130", "", "20261202", "");
    // The design and the transparency come from the database, so they must be applied
    // after it was opened.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 1 WHERE CODE = 312"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 30 WHERE CODE = 313"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET FORECOLOR = %1 WHERE CODE = 140").arg(0x00FF0000));
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QCOMPARE(main.calendar()->CurrentDate(), QDate(2026, 11, 22));
    QCOMPARE(main.windowTitle(), QStringLiteral("2026/11/22 (日)"));
    QVERIFY(qAbs(main.windowOpacity() - 0.7) < 0.01);
    QVERIFY(main.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(main.LabelForeColor(), QColor(0, 0, 255));
    QCOMPARE(Shown(&main, QStringLiteral("LabTime(0)")), QStringLiteral(" 9:30 - 10:00"));
    QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("歯医者"));
    QVERIFY(main.calendar()->isEntryDay(QDate(2026, 11, 22)));
    // The span marks every day of it that the grid shows, into the next month.
    for (const QDate& d : {QDate(2026, 11, 30), QDate(2026, 12, 1), QDate(2026, 12, 2)})
        QVERIFY2(main.calendar()->isEntryDay(d), qPrintable(d.toString()));
    QVERIFY(!main.calendar()->isEntryDay(QDate(2026, 12, 3)));
    QVERIFY(env.prompter.shown.isEmpty());
    main.Form_Unload();
}

void TestMainWindow::panelOrderAndTexts()
{
    TestEnvironment env;
    // Inserted out of order: the panel shows tasks first (empty start date), then by start
    // time, and by priority among equal times; three lines, then "more...".
    AddEntry(env.db(), 1, "A3", QStringLiteral("夕方の会議"), "20261110", "17:00", "20261110", "");
    AddEntry(env.db(), 2, "T2", QStringLiteral("報告書"), "", "", "20261110", "12:00", 3, "1");
    AddEntry(env.db(), 3, "A4", QStringLiteral("朝会"), "20261110", "09:00", "20261110", "09:15");
    AddEntry(env.db(), 4, "T1", QStringLiteral("請求書"), "", "", "20261110", "", 1, "0");
    AddEntry(env.db(), 5, "A4", QStringLiteral("it's lunch"), "20261110", "12:00", "20261110", "13:00");
    FrmMain main(env.services);
    main.calendar()->setCurrentDate(QDate(2026, 11, 10));
    main.RefreshMonthMarks();
    QCOMPARE(Column(main, "LabYotei"), (QStringList{"請求書", "[済]報告書", "朝会"}));
    QCOMPARE(Column(main, "LabTime"), (QStringList{"      ->11/10", "      ->12:00", " 9:00 -  9:15"}));
    QCOMPARE((QList<int>{main.PanelEntryId(0), main.PanelEntryId(1), main.PanelEntryId(2)}), (QList<int>{4, 2, 3}));
    QCOMPARE(main.PanelEntryData(0), QStringLiteral("2"));
    QCOMPARE(main.PanelEntryData(2), QStringLiteral("1"));
    QVERIFY(Control<LinkLabel>(&main, "LabMore")->isVisibleTo(&main));
}

void TestMainWindow::monthSwitchMarks()
{
    TestEnvironment env;
    // A two-week span entering December from November, a task due in the grid's trailing
    // days (January), an open-ended entry, day-offs on 1/2, 12/24 and the leap day.
    AddEntry(env.db(), 1, "C1", QStringLiteral("旅行"), "20261125", "", "20261208", "");
    AddEntry(env.db(), 2, "T1", QStringLiteral("年賀状"), "", "", "20270102", "");
    AddEntry(env.db(), 3, "A1", QStringLiteral("遠い予定"), "20270315", "", "20270315", "");
    AddEntry(env.db(), 4, "D3", QStringLiteral("開始のみ"), "20261216", "08:00", "", "");
    AddDayOff(env.db(), 12, 24);
    AddDayOff(env.db(), 1, 2);
    AddDayOff(env.db(), 2, 29);
    FrmMain main(env.services);
    HalvernCalendar* calendar = main.calendar();
    calendar->setCurrentDate(QDate(2026, 11, 3));
    main.RefreshMonthMarks();
    calendar->setCurrentDate(QDate(2026, 12, 3)); // the month signal refreshes the marks
    QVERIFY(calendar->LastShownDate() >= QDate(2027, 1, 2));
    for (int day = 1; day <= 8; ++day)
        QVERIFY(calendar->isEntryDay(QDate(2026, 12, day)));
    QVERIFY(!calendar->isEntryDay(QDate(2026, 12, 9)));
    QVERIFY(calendar->isEntryDay(QDate(2026, 12, 16)));
    QVERIFY(!calendar->isEntryDay(QDate(2026, 12, 17)));
    QVERIFY(calendar->isEntryDay(QDate(2027, 1, 2)));
    QVERIFY(calendar->isDayOff(QDate(2026, 12, 24)));
    // Only the current month's day-offs are marked, even where the grid shows other days.
    QVERIFY(!calendar->isDayOff(QDate(2027, 1, 2)));
    QCOMPARE(Shown(&main, QStringLiteral("LabTime(0)")), QStringLiteral("11/25 ->12/ 8"));

    // Moving on clears the previous month's marks.
    calendar->setCurrentDate(QDate(2027, 3, 1));
    QVERIFY(calendar->isEntryDay(QDate(2027, 3, 15)));
    QVERIFY(!calendar->isEntryDay(QDate(2026, 12, 16)));
    QVERIFY(!calendar->isDayOff(QDate(2026, 12, 24)));
    // The leap day is a day-off only in a leap year, and never turns into another day.
    for (const int year : {2027, 2028}) {
        calendar->setCurrentDate(QDate(year, 2, 10));
        QStringList marked;
        for (QDate d = calendar->FirstShownDate(); d <= calendar->LastShownDate(); d = d.addDays(1))
            if (calendar->isDayOff(d))
                marked << d.toString(Qt::ISODate);
        QCOMPARE(marked, year == 2028 ? QStringList{"2028-02-29"} : QStringList{});
    }
    QVERIFY(env.prompter.shown.isEmpty());
}

void TestMainWindow::panelFollowsEveryChange()
{
    TestEnvironment env;
    FrmMain main(env.services);
    main.calendar()->setCurrentDate(QDate(2026, 11, 10));
    // A write is seen by the next refresh of the same day.
    AddEntry(env.db(), 1, "A1", QStringLiteral("追加"), "20261110", "", "20261110", "");
    main.RefreshDayPanel();
    QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("追加"));
    // So is a rollback that takes a change back.
    env.db().BeginTrans();
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '変更' WHERE ID = 1"));
    main.RefreshDayPanel();
    QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("変更"));
    env.db().RollbackTrans();
    main.RefreshDayPanel();
    QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("追加"));
    // And a database opened anew (as after a restore) is read again, whatever it holds.
    env.services.connection.reset();
    env.open();
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '復元' WHERE ID = 1"));
    main.RefreshDayPanel();
    QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("復元"));
}

void TestMainWindow::designSettings()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 1 WHERE CODE = 312"));
    env.db().ExecuteSql(
        QStringLiteral("UPDATE TRNCOLOR SET FORECOLOR = %1, BACKCOLOR = %2, FSIZE = 11.5 WHERE CODE = 140")
            .arg(0x00FF0000) // blue in 0x00BBGGRR
            .arg(0x00E0F0FF));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 2 WHERE CODE = 302"));
    FrmMain main(env.services);
    main.ApplyDesignSettings();
    QCOMPARE(main.calendar()->FirstDayOfWeek(), 2);
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

    // Switching the option off again takes the window off the top, every time it is applied.
    QVERIFY(main.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 0 WHERE CODE = 312"));
    main.ApplyDesignSettings();
    QVERIFY(!main.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

void TestMainWindow::transparency_data()
{
    QTest::addColumn<int>("value"); // -1: no row
    QTest::addColumn<double>("opacity");
    QTest::newRow("opaque") << 0 << 1.0;
    QTest::newRow("never invisible") << 100 << 0.1;
    QTest::newRow("no row keeps the window as it is") << -1 << 1.0;
}

void TestMainWindow::transparency()
{
    QFETCH(int, value);
    QFETCH(double, opacity);
    TestEnvironment env;
    if (value < 0)
        env.db().ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 313"));
    else
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = 313").arg(value));
    FrmMain main(env.services);
    main.ApplyTransparency();
    QVERIFY(qAbs(main.windowOpacity() - opacity) < 0.01);
}

void TestMainWindow::linkHover()
{
    TestEnvironment env;
    FrmMain main(env.services);
    main.ApplyDesignSettings();
    main.show();
    QVERIFY(QTest::qWaitForWindowExposed(&main));
    auto* link = Control<LinkLabel>(&main, "LabScaedule");
    QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), link->mapToGlobal(QPointF(2, 2)));
    QCoreApplication::sendEvent(link, &enter);
    QVERIFY(link->font().underline());
    QCOMPARE(link->palette().color(QPalette::WindowText), link->palette().color(QPalette::Highlight));
    main.ResetLinkStyles();
    QVERIFY(!link->font().underline());
    QCOMPARE(link->palette().color(QPalette::WindowText), main.LabelForeColor());
}

VERDALY_TEST(TestMainWindow)
#include "tst_mainwindow.moc"
