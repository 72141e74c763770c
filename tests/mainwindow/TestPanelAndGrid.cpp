// The grid and the panel read as a user reads them: rows that cannot be read leave no
// trace, the grid keeps its geometry whatever the panel holds, subjects stay on one line,
// and hovering a day tells what it carries.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QHelpEvent>
#include <QLabel>
#include <QToolTip>
#include <QtTest>

namespace {

const QDate PanelDay(2026, 11, 10);

QString Subject(FrmMain& main, int row)
{
    return Control<QLabel>(&main, qPrintable(QStringLiteral("LabYotei(%1)").arg(row)))->text();
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

} // namespace

class TestPanelAndGrid : public QObject
{
    Q_OBJECT

private slots:
    void unreadableRowsLeaveNoTrace_data();
    void unreadableRowsLeaveNoTrace();
    void gridKeepsItsGeometry_data();
    void gridKeepsItsGeometry();
    void hoveringADay_data();
    void hoveringADay();
};

void TestPanelAndGrid::unreadableRowsLeaveNoTrace_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("startDt");
    QTest::addColumn<QString>("startTm");
    QTest::addColumn<QString>("endDt");
    QTest::addColumn<QString>("endTm");
    // clang-format off
    QTest::newRow("span with no start date") << "B1" << "" << "" << "20261130" << "";
    QTest::newRow("span with no end date") << "C1" << "20261101" << "" << "" << "";
    QTest::newRow("one day, start not a date") << "A1" << "2026x110" << "" << "2026x110" << "";
    QTest::newRow("task, deadline 13th month") << "T1" << "" << "" << "20261310" << "";
    QTest::newRow("open end, start time 25:99") << "D3" << "20261101" << "25:99" << "" << "";
    QTest::newRow("unknown kind") << "Z9" << "20261101" << "" << "20261101" << "";
    QTest::newRow("empty kind") << "" << "20261101" << "" << "20261101" << "";
    // clang-format on
}

void TestPanelAndGrid::unreadableRowsLeaveNoTrace()
{
    QFETCH(QString, kind);
    QFETCH(QString, startDt);
    QFETCH(QString, startTm);
    QFETCH(QString, endDt);
    QFETCH(QString, endTm);
    TestEnvironment env;
    StoreEntry(env.db(), Entry(1, kind, startDt, startTm, endDt, endTm, QStringLiteral("壊れた行")));
    StoreEntry(env.db(), Entry(2, QStringLiteral("A1"), QStringLiteral("20261110"), QString(),
                               QStringLiteral("20261110"), QString(), QStringLiteral("正しい行")));
    env.clock.current = QDateTime(PanelDay, QTime(9, 0));
    auto started = StartMainWindow(env);
    FrmMain& main = *started;

    // Only the good row's day is marked, in this month and the neighbouring ones.
    for (const QDate& month : {PanelDay.addMonths(-1), PanelDay, PanelDay.addMonths(1)}) {
        main.calendar()->setCurrentDate(month);
        for (QDate d = main.calendar()->FirstShownDate(); d <= main.calendar()->LastShownDate(); d = d.addDays(1))
            QVERIFY2(main.calendar()->isEntryDay(d) == (d == PanelDay), qPrintable(d.toString(Qt::ISODate)));
    }
    // The good row has the first line; the bad one takes no line on any day.
    main.calendar()->setCurrentDate(PanelDay);
    QCOMPARE(Subject(main, 0), QStringLiteral("正しい行"));
    QCOMPARE(Subject(main, 1), QString());
    for (const QDate& day : {QDate(2026, 11, 1), QDate(2026, 11, 30), QDate(1990, 1, 1)}) {
        main.calendar()->setCurrentDate(day);
        QCOMPARE(Subject(main, 0), QString());
        QCOMPARE(Control<QLabel>(&main, "LabTime(0)")->text(), QString());
    }
    main.calendar()->setCurrentDate(QDate(2026, 11, 1));
    QCOMPARE(HoverText(main, QDate(2026, 11, 1)), QString());
    QVERIFY(env.prompter.shown.isEmpty());
}

void TestPanelAndGrid::gridKeepsItsGeometry_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<QString>("subject");
    QTest::addColumn<QString>("shownStart"); // what the first line shows, up to any ellipsis
    QTest::addColumn<bool>("elided");
    const QString longSubject = QStringLiteral("とても長い件名") + QString(30, QChar(u'長'));
    // clang-format off
    QTest::newRow("four entries show more...") << 4 << "会議" << "会議" << false;
    QTest::newRow("CR LF and tab") << 1 << "一行目\r\n二行目\t三" << "一行目 二行目 三" << false;
    QTest::newRow("two lines and too long") << 4 << "一行目\n" + longSubject << "一行目 とても長い件名" << true;
    // clang-format on
}

void TestPanelAndGrid::gridKeepsItsGeometry()
{
    QFETCH(int, entries);
    QFETCH(QString, subject);
    QFETCH(QString, shownStart);
    QFETCH(bool, elided);
    TestEnvironment env;
    for (int i = 1; i <= entries; ++i)
        StoreEntry(env.db(), Entry(i, QStringLiteral("A1"), QStringLiteral("20261110"), QString(),
                                   QStringLiteral("20261110"), QString(), subject));
    env.clock.current = QDateTime(QDate(2026, 11, 9), QTime(9, 0));
    auto started = StartMainWindow(env);
    FrmMain& main = *started;
    const QRect emptyPanelGrid = main.calendar()->geometry();
    const QSize window = main.size();

    main.calendar()->setCurrentDate(PanelDay);
    QCoreApplication::processEvents();
    QCOMPARE(main.calendar()->geometry(), emptyPanelGrid);
    QCOMPARE(main.size(), window);
    QCOMPARE(Control<QWidget>(&main, "LabMore")->isVisible(), entries > 3);
    const QString shown = Subject(main, 0);
    QVERIFY2(!shown.contains(QLatin1Char('\n')) && !shown.contains(QLatin1Char('\r')), qPrintable(shown));
    QVERIFY2(shown.startsWith(shownStart), qPrintable(shown));
    QCOMPARE(shown.endsWith(QChar(0x2026)), elided);
    auto* label = Control<QLabel>(&main, "LabYotei(0)");
    QVERIFY(label->fontMetrics().horizontalAdvance(shown) <= label->contentsRect().width());
    // The whole subject is still there to read by hovering.
    QVERIFY(label->toolTip().startsWith(shownStart));
}

void TestPanelAndGrid::hoveringADay_data()
{
    QTest::addColumn<QString>("remark"); // of a day-off on the day; "-" for none
    QTest::addColumn<QStringList>("subjects");
    QTest::addColumn<QString>("expected");
    // clang-format off
    QTest::newRow("day-off remark") << "創立記念日" << QStringList{} << "休日: 創立記念日";
    QTest::newRow("day-off without remark") << "" << QStringList{} << "休日";
    QTest::newRow("entries") << "-" << QStringList{"歯医者", "買い物\n牛乳"} << "歯医者\n買い物 牛乳";
    QTest::newRow("day-off and entry") << "振替" << QStringList{"旅行"} << "休日: 振替\n旅行";
    // clang-format on
}

void TestPanelAndGrid::hoveringADay()
{
    QFETCH(QString, remark);
    QFETCH(QStringList, subjects);
    QFETCH(QString, expected);
    TestEnvironment env;
    if (remark != QLatin1String("-"))
        StoreGeneral(env.db(), 200, {{"DATAN1", 11}, {"DATAN2", 10}, {"DATAS1", remark}, {"DATAS2", QString()}});
    int id = 0;
    for (const QString& subject : subjects)
        StoreEntry(env.db(), Entry(++id, QStringLiteral("A1"), QStringLiteral("20261110"), QString(),
                                   QStringLiteral("20261110"), QString(), subject));
    // Another day's entry is not this day's.
    StoreEntry(env.db(), Entry(99, QStringLiteral("A1"), QStringLiteral("20261111"), QString(),
                               QStringLiteral("20261111"), QString(), QStringLiteral("翌日")));
    env.clock.current = QDateTime(QDate(2026, 11, 1), QTime(9, 0));
    auto started = StartMainWindow(env);
    FrmMain& main = *started;
    QCOMPARE(HoverText(main, PanelDay), expected);
}

VERDALY_TEST(TestPanelAndGrid)
#include "TestPanelAndGrid.moc"
