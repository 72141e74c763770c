
#include "entries/ClassCombo.h"
#include "entries/EntryStatements.h"
#include "entries/LinkLabels.h"
#include "entries/TypedDateTime.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QEnterEvent>
#include <QLabel>
#include <QtTest>

class TestEditorParts final : public QObject
{
    Q_OBJECT

private slots:
    void parseTypedDate_data();
    void parseTypedDate();
    void parseTypedTime_data();
    void parseTypedTime();
    void ensureClassFromCombo_data();
    void ensureClassFromCombo();
    void ensureClassTypedTwiceInsertsOnce();
    void ensureClassOnEmptyTable();
    void insertStatement();
    void scheduleUpdateStatement_data();
    void scheduleUpdateStatement();
    void taskUpdateStatement();
    void linkLabelHoverAndClick();
};

void TestEditorParts::parseTypedDate_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("boxText");
    // clang-format off
    QTest::newRow("normal form") << "2006/05/03" << "2006/05/03";
    QTest::newRow("no leading zeros") << "2006/5/3" << "2006/05/03";
    QTest::newRow("hyphens") << "2006-5-3" << "2006/05/03";
    QTest::newRow("dots") << "2006.05.03" << "2006/05/03";
    QTest::newRow("eight digits") << "20060503" << "2006/05/03";
    QTest::newRow("month and day in the default year") << "5/3" << "2026/05/03";
    QTest::newRow("full-width") << "２００６／０５／０３" << "2006/05/03";
    QTest::newRow("blanks around") << "  2006/05/03 " << "2006/05/03";
    QTest::newRow("leap day") << "2008/2/29" << "2008/02/29";
    QTest::newRow("no leap day") << "2006/2/29" << "";
    QTest::newRow("2/30") << "2/30" << "";
    QTest::newRow("month 13") << "2006/13/01" << "";
    QTest::newRow("words") << "あした" << "";
    QTest::newRow("empty") << "" << "";
    QTest::newRow("two-digit year") << "06/05/03" << "";
    QTest::newRow("trailing junk") << "2006/05/03x" << "";
    // clang-format on
}

void TestEditorParts::parseTypedDate()
{
    QFETCH(QString, typed);
    QFETCH(QString, boxText);
    QCOMPARE(DateBoxText(ParseTypedDate(typed, 2026)), boxText);
}

void TestEditorParts::parseTypedTime_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("boxText");
    // clang-format off
    QTest::newRow("normal form") << "09:30" << "09:30";
    QTest::newRow("9:5") << "9:5" << "09:05";
    QTest::newRow("7:3") << "7:3" << "07:03";
    QTest::newRow("midnight") << "0:0" << "00:00";
    QTest::newRow("last minute") << "23:59" << "23:59";
    QTest::newRow("seconds dropped") << "10:15:45" << "10:15";
    QTest::newRow("full-width") << "１０：３０" << "10:30";
    QTest::newRow("hour 24") << "24:00" << "";
    QTest::newRow("minute 60") << "10:60" << "";
    QTest::newRow("second 60") << "10:10:60" << "";
    QTest::newRow("hour only") << "9" << "";
    QTest::newRow("words") << "昼" << "";
    QTest::newRow("empty") << "" << "";
    QTest::newRow("negative") << "-1:00" << "";
    // clang-format on
}

void TestEditorParts::parseTypedTime()
{
    QFETCH(QString, typed);
    QFETCH(QString, boxText);
    QCOMPARE(TimeBoxText(ParseTypedTime(typed)), boxText);
}

void TestEditorParts::ensureClassFromCombo_data()
{
    QTest::addColumn<int>("selectIndex"); // -1: type instead of choosing
    QTest::addColumn<QString>("typed");
    QTest::addColumn<qint64>("classId");
    QTest::addColumn<int>("classRows");
    QTest::addColumn<int>("comboCount");

    // The combo offers 仕事 (ID 3) and 私用 (ID 7); the table holds those two.
    // clang-format off
    QTest::newRow("chosen item") << 1 << "" << qint64(7) << 2 << 2;
    QTest::newRow("nothing") << -1 << "" << qint64(0) << 2 << 2;
    QTest::newRow("blanks only") << -1 << "   " << qint64(0) << 2 << 2;
    QTest::newRow("typed name of an item") << -1 << "仕事" << qint64(3) << 2 << 2;
    QTest::newRow("typed with blanks around") << -1 << " 私用 " << qint64(7) << 2 << 2;
    QTest::newRow("typed over a chosen item") << 0 << "私用" << qint64(7) << 2 << 2;
    QTest::newRow("new name") << -1 << "出張" << qint64(8) << 3 << 3;
    QTest::newRow("new name over a chosen item") << 0 << "出張" << qint64(8) << 3 << 3;
    QTest::newRow("apostrophe kept") << -1 << "it's mine" << qint64(8) << 3 << 3;
    // clang-format on
}

void TestEditorParts::ensureClassFromCombo()
{
    QFETCH(int, selectIndex);
    QFETCH(QString, typed);
    QFETCH(qint64, classId);
    QFETCH(int, classRows);
    QFETCH(int, comboCount);

    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS,SORTKEY) VALUES (3,'仕事',1)"));
    env.db().ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS,SORTKEY) VALUES (7,'私用',2)"));
    QComboBox combo;
    combo.setEditable(true);
    FillClassCombo(env.db(), &combo, QStringLiteral("SELECT * FROM MSTCLASS ORDER BY SORTKEY"));
    QCOMPARE(combo.currentIndex(), -1);
    combo.setCurrentIndex(selectIndex);
    if (selectIndex < 0 || !typed.isEmpty())
        combo.setEditText(typed);

    QCOMPARE(EnsureClassFromCombo(env.db(), &combo), classId);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), classRows);
    QCOMPARE(combo.count(), comboCount);
    if (classId != 0) {
        QCOMPARE(combo.currentData().toLongLong(), classId);
        const QString name = env.db()
                                 .ReadRows(QStringLiteral("SELECT CLASS FROM MSTCLASS WHERE ID = %1").arg(classId))
                                 .front()
                                 .text(QStringLiteral("CLASS"));
        QCOMPARE(combo.currentText(), name);
        if (classRows == 3) {
            QCOMPARE(name, typed.trimmed());
            QCOMPARE(env.scalar(QStringLiteral("SELECT SORTKEY AS V FROM MSTCLASS WHERE ID = 8")), qint64(0));
        }
    }
}

void TestEditorParts::ensureClassTypedTwiceInsertsOnce()
{
    TestEnvironment env;
    QComboBox combo;
    combo.setEditable(true);
    combo.setEditText(QStringLiteral("出張"));
    const qint64 first = EnsureClassFromCombo(env.db(), &combo);
    // The user types the same name again (as if the editor had stayed open).
    combo.setCurrentIndex(-1);
    combo.setEditText(QStringLiteral("出張"));
    QCOMPARE(EnsureClassFromCombo(env.db(), &combo), first);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = '出張'")), 1);
    QCOMPARE(combo.count(), 1);
}

void TestEditorParts::ensureClassOnEmptyTable()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("DELETE FROM MSTCLASS"));
    QComboBox combo;
    combo.setEditable(true);
    combo.setEditText(QStringLiteral("家族"));
    QCOMPARE(EnsureClassFromCombo(env.db(), &combo), qint64(1));
    QCOMPARE(env.scalar(QStringLiteral("SELECT ID AS V FROM MSTCLASS WHERE CLASS = '家族'")), qint64(1));
}

namespace {
EntryValues SampleSchedule()
{
    EntryValues v;
    v.ID = 12;
    v.DATA = QStringLiteral("1");
    v.BUSINESS = QStringLiteral("Bob's 会議");
    v.STARTDT = QStringLiteral("20060501");
    v.STARTTM = QStringLiteral("09:00");
    v.ENDDT = QStringLiteral("20060502");
    v.ENDTM = QStringLiteral("10:00");
    v.CLASS = 4;
    v.ALARM = QStringLiteral("1");
    v.FROMTOKBN = QStringLiteral("B4");
    v.COMMENT = QStringLiteral("詳細");
    return v;
}
const QDateTime Now(QDate(2006, 5, 1), QTime(9, 5, 3));
} // namespace

void TestEditorParts::insertStatement()
{
    QCOMPARE(EntryInsertSql(SampleSchedule(), Now),
             QStringLiteral("INSERT INTO TRNSCHTSK (ID,DATA,BUSINESS,STARTDT,STARTTM,ENDDT,ENDTM,ENDLESS,CLASS,ALARM,"
                            "PRIORITY,COMPLETION,COMPDT,FROMTOKBN,COMMENT,UPDTIME) VALUES ( 12, '1', 'Bob''s 会議', "
                            "'20060501', '09:00', '20060502', '10:00', '', 4, '1', 0, '', '', 'B4', '詳細', "
                            "#2006/05/01 09:05:03#) "));
}

void TestEditorParts::scheduleUpdateStatement_data()
{
    QTest::addColumn<QString>("endDate");
    QTest::addColumn<qint64>("classId");
    QTest::addColumn<QString>("sql");
    // clang-format off
    QTest::newRow("end date and class")
        // clang-format on
        << "20060502" << qint64(4)
        << "UPDATE TRNSCHTSK SET BUSINESS  = 'Bob''s 会議', STARTDT   = '20060501', STARTTM   = '09:00', "
           "ENDDT = '20060502', ENDTM     = '10:00', CLASS = 4, ALARM     = '1', FROMTOKBN = 'B4', "
           "COMMENT   = '詳細', UPDTIME   = #2006/05/01 09:05:03# WHERE ID      = 12 "
           "AND   UPDTIME = #2006/04/30 08:00:00# ";
    // clang-format off
    QTest::newRow("neither")
        // clang-format on
        << "" << qint64(0)
        << "UPDATE TRNSCHTSK SET BUSINESS  = 'Bob''s 会議', STARTDT   = '20060501', STARTTM   = '09:00', "
           "ENDDT = '', ENDTM     = '10:00', CLASS = 0, ALARM     = '1', FROMTOKBN = 'B4', "
           "COMMENT   = '詳細', UPDTIME   = #2006/05/01 09:05:03# WHERE ID      = 12 "
           "AND   UPDTIME = #2006/04/30 08:00:00# ";
}

void TestEditorParts::scheduleUpdateStatement()
{
    QFETCH(QString, endDate);
    QFETCH(qint64, classId);
    QFETCH(QString, sql);
    EntryValues v = SampleSchedule();
    v.ENDDT = endDate;
    v.CLASS = classId;
    QCOMPARE(ScheduleUpdateSql(v, Now, QStringLiteral("2006/04/30 08:00:00")), sql);
}

void TestEditorParts::taskUpdateStatement()
{
    EntryValues v;
    v.ID = 5;
    v.DATA = QStringLiteral("2");
    v.BUSINESS = QStringLiteral("報告書");
    v.ENDDT = QStringLiteral("20060510");
    v.ENDTM = QStringLiteral("17:00");
    v.ENDLESS = QStringLiteral("0");
    v.PRIORITY = 2;
    v.COMPLETION = QStringLiteral("1");
    v.COMPDT = QStringLiteral("20060509");
    v.FROMTOKBN = QStringLiteral("T2");
    v.COMMENT = QStringLiteral("");
    QCOMPARE(TaskUpdateSql(v, Now, QStringLiteral("2006/04/30 08:00:00")),
             QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS   = '報告書', ENDDT  = '20060510', ENDTM      = '17:00', "
                            "ENDLESS    = '0', CLASS  = 0, PRIORITY   = 2, COMPLETION = '1', COMPDT = '20060509', "
                            "FROMTOKBN  = 'T2', COMMENT    = '', UPDTIME    = #2006/05/01 09:05:03# "
                            "WHERE ID      = 5 AND   UPDTIME =#2006/04/30 08:00:00# "));
    v.COMPDT.clear();
    v.CLASS = 9;
    const QString sql = TaskUpdateSql(v, Now, QStringLiteral("2006/04/30 08:00:00"));
    QVERIFY(sql.contains(QStringLiteral(", CLASS  = 9, ")));
    QVERIFY(sql.contains(QStringLiteral(", COMPDT = '', FROMTOKBN")));
}

void TestEditorParts::linkLabelHoverAndClick()
{
    QWidget window;
    auto* first = new QLabel(QStringLiteral("カレンダー"), &window);
    auto* second = new QLabel(QStringLiteral("分類の編集"), &window);
    second->move(0, 40);
    int firstClicks = 0;
    auto* links = new LinkLabelGroup(&window);
    links->add(first, [&] { ++firstClicks; });
    links->add(second, nullptr);
    // At rest before the pointer ever came near (showing may put the pointer over one).
    QCOMPARE(first->palette().color(QPalette::WindowText), LinkLabelGroup::restColor());
    QVERIFY(!first->font().underline());
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QColor highlight = first->palette().color(QPalette::Active, QPalette::Highlight);
    QVERIFY(highlight != LinkLabelGroup::restColor());

    QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
    QApplication::sendEvent(first, &enter);
    QCOMPARE(first->palette().color(QPalette::WindowText), highlight);
    QVERIFY(first->font().underline());
    QCOMPARE(second->palette().color(QPalette::WindowText), LinkLabelGroup::restColor());

    QEnterEvent enterSecond(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
    QApplication::sendEvent(second, &enterSecond);
    QCOMPARE(first->palette().color(QPalette::WindowText), LinkLabelGroup::restColor());
    QVERIFY(!first->font().underline());
    QVERIFY(second->font().underline());

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(second, &leave);
    QCOMPARE(second->palette().color(QPalette::WindowText), LinkLabelGroup::restColor());
    QVERIFY(!second->font().underline());

    QTest::mouseClick(first, Qt::LeftButton);
    QCOMPARE(firstClicks, 1);
    QTest::mouseClick(first, Qt::RightButton);
    QCOMPARE(firstClicks, 1);
    first->setEnabled(false);
    // A link that cannot be used looks disabled, not like one at rest.
    QVERIFY(first->palette().color(QPalette::Disabled, QPalette::WindowText) != LinkLabelGroup::restColor());
    QTest::mouseClick(first, Qt::LeftButton);
    QCOMPARE(firstClicks, 1);
    QTest::mouseClick(second, Qt::LeftButton); // a link without an action is harmless
}

VERDALY_TEST(TestEditorParts)
#include "TestEditorParts.moc"
