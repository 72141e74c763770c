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

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void startUpShowsToday();
    void panelRows_data();
    void panelRows();
    void monthSwitchMarks();
    void panelFollowsEveryChange();
    void dayOffsOfLeapDays_data();
    void dayOffsOfLeapDays();
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
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 80605 WHERE CODE = 301"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 30 WHERE CODE = 313"));
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QCOMPARE(main.calendar()->CurrentDate(), QDate(2026, 11, 22));
    QCOMPARE(main.windowTitle(), QStringLiteral("2026/11/22 (日)"));
    QCOMPARE(main.calendar()->titleText(), QStringLiteral("11月 2026"));
    QVERIFY(qAbs(main.windowOpacity() - 0.7) < 0.01);
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

void TestMainWindow::panelRows_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<bool>("moreShown");
    QTest::newRow("none") << 0 << false;
    QTest::newRow("exactly three") << 3 << false;
    QTest::newRow("four shows more") << 4 << true;
    QTest::newRow("five shows more") << 5 << true;
}

void TestMainWindow::panelRows()
{
    QFETCH(int, entries);
    QFETCH(bool, moreShown);
    TestEnvironment env;
    const QString day = QStringLiteral("20261110");
    // Inserted out of order: the panel shows tasks first (empty start date), then by start
    // time, and by priority among equal times.
    const struct
    {
        const char *kind, *subject, *startDate, *startTime, *endDate, *endTime;
        int priority;
        const char *done, *shownSubject, *shownTime;
    } rows[] = {
        // clang-format off
        {"A3", "夕方の会議", "20261110", "17:00", "20261110", "", 0, "", "夕方の会議", "17:00"},
        {"T2", "報告書", "", "", "20261110", "12:00", 3, "1", "[済]報告書", "      ->12:00"},
        {"A4", "朝会", "20261110", "09:00", "20261110", "09:15", 0, "", "朝会", " 9:00 -  9:15"},
        {"T1", "請求書", "", "", "20261110", "", 1, "0", "請求書", "      ->11/10"},
        {"A4", "it's lunch", "20261110", "12:00", "20261110", "13:00", 0, "", "it's lunch", "12:00 - 13:00"},
        // clang-format on
    };
    for (int i = 0; i < entries; ++i) {
        const auto& r = rows[i];
        AddEntry(env.db(), i + 1, r.kind, QString::fromUtf8(r.subject), r.startDate, r.startTime, r.endDate, r.endTime,
                 r.priority, r.done);
    }
    FrmMain main(env.services);
    main.calendar()->setCurrentDate(QDate(2026, 11, 10));
    main.RefreshMonthMarks();

    // The expected order over all five; the panel shows the first three of those present.
    const QList<int> order = {4, 2, 3, 5, 1};
    QList<int> present;
    for (int id : order)
        if (id <= entries)
            present << id;
    for (int row = 0; row < PanelRows; ++row) {
        const QString yotei = Shown(&main, QStringLiteral("LabYotei(%1)").arg(row));
        if (row >= present.size()) {
            QCOMPARE(yotei, QString());
            QCOMPARE(main.PanelEntryId(row), 0);
            QCOMPARE(main.PanelEntryData(row), QString());
            continue;
        }
        const int id = present.at(row);
        const auto& r = rows[id - 1];
        QCOMPARE(main.PanelEntryId(row), id);
        QCOMPARE(main.PanelEntryData(row), r.kind[0] == 'T' ? QStringLiteral("2") : QStringLiteral("1"));
        QCOMPARE(yotei, QString::fromUtf8(r.shownSubject));
        QCOMPARE(Shown(&main, QStringLiteral("LabTime(%1)").arg(row)), QString::fromUtf8(r.shownTime));
    }
    auto* more = Control<LinkLabel>(&main, "LabMore");
    QVERIFY(more);
    QCOMPARE(more->isVisibleTo(&main), moreShown);
    QCOMPARE(more->text(), QStringLiteral("more..."));
    QCOMPARE(main.windowTitle(), QStringLiteral("2026/11/10 (火)"));
}

void TestMainWindow::monthSwitchMarks()
{
    TestEnvironment env;
    // A two-week span entering December from November, a task due in the grid's trailing
    // days (January), a one-day entry far away, and day-offs on 1/2 and 12/24.
    AddEntry(env.db(), 1, "C1", QStringLiteral("旅行"), "20261125", "", "20261208", "");
    AddEntry(env.db(), 2, "T1", QStringLiteral("年賀状"), "", "", "20270102", "");
    AddEntry(env.db(), 3, "A1", QStringLiteral("遠い予定"), "20270315", "", "20270315", "");
    AddEntry(env.db(), 4, "D3", QStringLiteral("開始のみ"), "20261216", "08:00", "", "");
    AddDayOff(env.db(), 12, 24);
    AddDayOff(env.db(), 1, 2);
    FrmMain main(env.services);
    HalvernCalendar* calendar = main.calendar();
    calendar->setCurrentDate(QDate(2026, 11, 3));
    main.RefreshMonthMarks();
    calendar->setCurrentDate(QDate(2026, 12, 3)); // the month signal refreshes the marks
    QVERIFY(calendar->FirstShownDate() <= QDate(2026, 11, 30));
    QVERIFY(calendar->LastShownDate() >= QDate(2027, 1, 2));

    for (int day = 29; day <= 30; ++day) {
        if (calendar->isShown(QDate(2026, 11, day)))
            QVERIFY(calendar->isEntryDay(QDate(2026, 11, day)));
    }
    for (int day = 1; day <= 8; ++day)
        QVERIFY(calendar->isEntryDay(QDate(2026, 12, day)));
    QVERIFY(!calendar->isEntryDay(QDate(2026, 12, 9)));
    QVERIFY(calendar->isEntryDay(QDate(2026, 12, 16)));
    QVERIFY(!calendar->isEntryDay(QDate(2026, 12, 17)));
    QVERIFY(calendar->isEntryDay(QDate(2027, 1, 2)));
    QVERIFY(calendar->isDayOff(QDate(2026, 12, 24)));
    // Only the current month's day-offs are marked, even where the grid shows other days.
    QVERIFY(!calendar->isDayOff(QDate(2027, 1, 2)));
    QCOMPARE(main.windowTitle(), QStringLiteral("2026/12/3 (木)"));
    QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("旅行"));
    QCOMPARE(Shown(&main, QStringLiteral("LabTime(0)")), QStringLiteral("11/25 ->12/ 8"));

    // Moving on clears the previous month's marks.
    calendar->setCurrentDate(QDate(2027, 3, 1));
    QVERIFY(calendar->isEntryDay(QDate(2027, 3, 15)));
    QVERIFY(!calendar->isEntryDay(QDate(2026, 12, 16)));
    QVERIFY(!calendar->isDayOff(QDate(2026, 12, 24)));
    QVERIFY(env.prompter.shown.isEmpty());
}

void TestMainWindow::panelFollowsEveryChange()
{
    TestEnvironment env;
    FrmMain main(env.services);
    main.calendar()->setCurrentDate(QDate(2026, 11, 10));
    main.RefreshDayPanel();
    QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QString());

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
    env.services.connection.reset();
    env.open();
    main.RefreshDayPanel();
    QCOMPARE(Shown(&main, QStringLiteral("LabYotei(0)")), QStringLiteral("復元"));
}

void TestMainWindow::dayOffsOfLeapDays_data()
{
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("day");
    QTest::addColumn<bool>("marked");
    QTest::newRow("2/29 in a leap year") << 2028 << 29 << true;
    QTest::newRow("2/29 in a common year") << 2027 << 29 << false;
    QTest::newRow("2/30 never") << 2028 << 30 << false;
    QTest::newRow("2/28 always") << 2027 << 28 << true;
}

void TestMainWindow::dayOffsOfLeapDays()
{
    QFETCH(int, year);
    QFETCH(int, day);
    QFETCH(bool, marked);
    TestEnvironment env;
    AddDayOff(env.db(), 2, day);
    FrmMain main(env.services);
    main.calendar()->setCurrentDate(QDate(year, 2, 10));
    main.RefreshMonthMarks();
    int marks = 0;
    for (QDate d = main.calendar()->FirstShownDate(); d <= main.calendar()->LastShownDate(); d = d.addDays(1))
        marks += main.calendar()->isDayOff(d) ? 1 : 0;
    QCOMPARE(marks, marked ? 1 : 0);
    if (marked)
        QVERIFY(main.calendar()->isDayOff(QDate(year, 2, day)));
    QVERIFY(env.prompter.shown.isEmpty());
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
    QVERIFY(main.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    QCOMPARE(main.LabelForeColor(), QColor(0, 0, 255));
    QCOMPARE(main.calendar()->FirstDayOfWeek(), 2);
    QCOMPARE(main.palette().color(QPalette::Window), Units::ColorFromStored(0x00E0F0FF));
    auto* time = Control<QLabel>(&main, "LabTime(1)");
    QCOMPARE(time->palette().color(QPalette::WindowText), QColor(0, 0, 255));
    // Time texts line up in columns: blanks, digits, colons and arrows are all one width.
    const QFontMetrics metrics(time->font());
    QCOMPARE(metrics.horizontalAdvance(QStringLiteral(" 9:30 - 10:00")),
             metrics.horizontalAdvance(QStringLiteral("20:30 - 24:00")));
    QCOMPARE(metrics.horizontalAdvance(QStringLiteral("      ->17:00")),
             metrics.horizontalAdvance(QStringLiteral(" 5/ 1 -> 5/ 3")));
    auto* subject = Control<LinkLabel>(&main, "LabYotei(2)");
    QCOMPARE(subject->palette().color(QPalette::WindowText), QColor(0, 0, 255));
    QCOMPARE(subject->font().pointSizeF(), 11.5);
    auto* link = Control<LinkLabel>(&main, "LabHelp");
    QCOMPARE(link->palette().color(QPalette::WindowText), QColor(0, 0, 255));

    // Switching the option off again takes the window off the top, every time it is applied.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 0 WHERE CODE = 312"));
    main.ApplyDesignSettings();
    QVERIFY(!main.windowFlags().testFlag(Qt::WindowStaysOnTopHint));
}

void TestMainWindow::transparency_data()
{
    QTest::addColumn<int>("value"); // -1: no row
    QTest::addColumn<double>("opacity");
    QTest::newRow("opaque") << 0 << 1.0;
    QTest::newRow("30 percent") << 30 << 0.7;
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
    QVERIFY(link);
    QCOMPARE(link->text(), QStringLiteral("Schedule"));
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
