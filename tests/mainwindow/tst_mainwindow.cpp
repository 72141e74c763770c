#include "calendarcontrol/HalvernCalendar.h"
#include "common/LinkLabel.h"
#include "common/Units.h"
#include "entries/EntryKinds.h"
#include "mainwindow/FrmMain.h"
#include "store/SqlText.h"
#include "support/TestKit.h"

#include <QLabel>
#include <QtTest>

namespace {

// Inserts one entry; its kind is computed as the editors do.
void AddEntry(DatabaseConnection& db, int id, const QString& data, const QString& subject, const QString& startDate,
              const QString& startTime, const QString& endDate, const QString& endTime, int priority = 0,
              const QString& completion = QString())
{
    db.ExecuteSql(
        QStringLiteral("INSERT INTO TRNSCHTSK (ID,DATA,BUSINESS,STARTDT,STARTTM,ENDDT,ENDTM,ENDLESS,CLASS,ALARM,"
                       "PRIORITY,COMPLETION,COMPDT,FROMTOKBN,COMMENT,UPDTIME) VALUES (") +
        QString::number(id) + QStringLiteral(", ") + QuoteText(data) + QStringLiteral(", ") + QuoteText(subject) +
        QStringLiteral(", ") + QuoteText(startDate) + QStringLiteral(", ") + QuoteText(startTime) +
        QStringLiteral(", ") + QuoteText(endDate) + QStringLiteral(", ") + QuoteText(endTime) +
        QStringLiteral(", '', 0, '0', ") + QString::number(priority) + QStringLiteral(", ") + QuoteText(completion) +
        QStringLiteral(", '', ") + QuoteText(KindCode(startDate, startTime, endDate, endTime)) +
        QStringLiteral(", '', '2026/11/01 00:00:00')"));
}

void AddDayOff(DatabaseConnection& db, int month, int day)
{
    db.ExecuteSql(QStringLiteral("INSERT INTO TRNGENERAL (CODE,DATAS1,DATAN1,DATAN2) VALUES (200, 'off', %1, %2)")
                      .arg(month)
                      .arg(day));
}

QString LabelText(const FrmMain& main, const QString& name)
{
    auto* label = main.findChild<QLabel*>(name);
    return label ? label->text() : QStringLiteral("<missing %1>").arg(name);
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
    AddEntry(env.db(), 1, QStringLiteral("1"), QStringLiteral("歯医者"), QStringLiteral("20261122"),
             QStringLiteral("09:30"), QStringLiteral("20261122"), QStringLiteral("10:00"));
    AddEntry(env.db(), 2, QStringLiteral("1"), QStringLiteral("出張"), QStringLiteral("20261130"), QString(),
             QStringLiteral("20261202"), QString());
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QCOMPARE(main.calendar()->CurrentDate(), QDate(2026, 11, 22));
    QCOMPARE(main.windowTitle(), QStringLiteral("2026/11/22 (日)"));
    QCOMPARE(LabelText(main, QStringLiteral("LabTime(0)")), QStringLiteral(" 9:30 - 10:00"));
    QCOMPARE(LabelText(main, QStringLiteral("LabYotei(0)")), QStringLiteral("歯医者"));
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
        QString data, subject, startDate, startTime, endDate, endTime;
        int priority;
        QString done;
    } rows[] = {
        {QStringLiteral("1"), QStringLiteral("夕方の会議"), day, QStringLiteral("17:00"), day, QString(), 0, QString()},
        {QStringLiteral("2"), QStringLiteral("報告書"), QString(), QString(), day, QStringLiteral("12:00"), 3,
         QStringLiteral("1")},
        {QStringLiteral("1"), QStringLiteral("朝会"), day, QStringLiteral("09:00"), day, QStringLiteral("09:15"), 0,
         QString()},
        {QStringLiteral("2"), QStringLiteral("請求書"), QString(), QString(), day, QString(), 1, QStringLiteral("0")},
        {QStringLiteral("1"), QStringLiteral("it's lunch"), day, QStringLiteral("12:00"), day, QStringLiteral("13:00"),
         0, QString()},
    };
    for (int i = 0; i < entries; ++i) {
        const auto& r = rows[i];
        AddEntry(env.db(), i + 1, r.data, r.subject, r.startDate, r.startTime, r.endDate, r.endTime, r.priority,
                 r.done);
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
        const QString yotei = LabelText(main, QStringLiteral("LabYotei(%1)").arg(row));
        if (row >= present.size()) {
            QCOMPARE(yotei, QString());
            QCOMPARE(main.PanelEntryId(row), 0);
            QCOMPARE(main.PanelEntryData(row), QString());
            continue;
        }
        const int id = present.at(row);
        const auto& r = rows[id - 1];
        QCOMPARE(main.PanelEntryId(row), id);
        QCOMPARE(main.PanelEntryData(row), r.data);
        QCOMPARE(yotei, r.done == QStringLiteral("1") ? QStringLiteral("[済]") + r.subject : r.subject);
        QCOMPARE(LabelText(main, QStringLiteral("LabTime(%1)").arg(row)),
                 EntryLineText(QDate(2026, 11, 10), r.startDate, r.startTime, r.endDate, r.endTime,
                               KindCode(r.startDate, r.startTime, r.endDate, r.endTime), r.done));
    }
    auto* more = main.findChild<LinkLabel*>(QStringLiteral("LabMore"));
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
    AddEntry(env.db(), 1, QStringLiteral("1"), QStringLiteral("旅行"), QStringLiteral("20261125"), QString(),
             QStringLiteral("20261208"), QString());
    AddEntry(env.db(), 2, QStringLiteral("2"), QStringLiteral("年賀状"), QString(), QString(),
             QStringLiteral("20270102"), QString());
    AddEntry(env.db(), 3, QStringLiteral("1"), QStringLiteral("遠い予定"), QStringLiteral("20270315"), QString(),
             QStringLiteral("20270315"), QString());
    AddEntry(env.db(), 4, QStringLiteral("1"), QStringLiteral("開始のみ"), QStringLiteral("20261216"),
             QStringLiteral("08:00"), QString(), QString());
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
    QCOMPARE(LabelText(main, QStringLiteral("LabYotei(0)")), QStringLiteral("旅行"));
    QCOMPARE(LabelText(main, QStringLiteral("LabTime(0)")), QStringLiteral("11/25 ->12/ 8"));

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
    QCOMPARE(LabelText(main, QStringLiteral("LabYotei(0)")), QString());

    // A write is seen by the next refresh of the same day.
    AddEntry(env.db(), 1, QStringLiteral("1"), QStringLiteral("追加"), QStringLiteral("20261110"), QString(),
             QStringLiteral("20261110"), QString());
    main.RefreshDayPanel();
    QCOMPARE(LabelText(main, QStringLiteral("LabYotei(0)")), QStringLiteral("追加"));

    // So is a rollback that takes a change back.
    env.db().BeginTrans();
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '変更' WHERE ID = 1"));
    main.RefreshDayPanel();
    QCOMPARE(LabelText(main, QStringLiteral("LabYotei(0)")), QStringLiteral("変更"));
    env.db().RollbackTrans();
    main.RefreshDayPanel();
    QCOMPARE(LabelText(main, QStringLiteral("LabYotei(0)")), QStringLiteral("追加"));

    // And a database opened anew (as after a restore) is read again, whatever it holds.
    env.services.connection.reset();
    env.open();
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '復元' WHERE ID = 1"));
    env.services.connection.reset();
    env.open();
    main.RefreshDayPanel();
    QCOMPARE(LabelText(main, QStringLiteral("LabYotei(0)")), QStringLiteral("復元"));
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
    auto* time = main.findChild<QLabel*>(QStringLiteral("LabTime(1)"));
    QCOMPARE(time->palette().color(QPalette::WindowText), QColor(0, 0, 255));
    // Time texts line up in columns: blanks, digits, colons and arrows are all one width.
    const QFontMetrics metrics(time->font());
    QCOMPARE(metrics.horizontalAdvance(QStringLiteral(" 9:30 - 10:00")),
             metrics.horizontalAdvance(QStringLiteral("20:30 - 24:00")));
    QCOMPARE(metrics.horizontalAdvance(QStringLiteral("      ->17:00")),
             metrics.horizontalAdvance(QStringLiteral(" 5/ 1 -> 5/ 3")));
    auto* subject = main.findChild<LinkLabel*>(QStringLiteral("LabYotei(2)"));
    QCOMPARE(subject->palette().color(QPalette::WindowText), QColor(0, 0, 255));
    QCOMPARE(subject->font().pointSizeF(), 11.5);
    auto* link = main.findChild<LinkLabel*>(QStringLiteral("LabHelp"));
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
    auto* link = main.findChild<LinkLabel*>(QStringLiteral("LabScaedule"));
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
