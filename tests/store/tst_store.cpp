#include "common/UserAction.h"
#include "entries/EntryQueries.h"
#include "store/DatabaseConnection.h"
#include "store/DatabaseError.h"
#include "store/DatabaseVersion.h"
#include "store/JetDialect.h"
#include "store/SqlText.h"
#include "store/StartingDatabase.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QFile>
#include <QFontDatabase>
#include <QLineEdit>
#include <QtTest>

class TestStore : public QObject
{
    Q_OBJECT

private slots:
    void quotedTextIsStoredIntact_data();
    void quotedTextIsStoredIntact();
    void selectComboByItemData();
    void selectAllText();
    void jetRewrite_data();
    void jetRewrite();
    void scriptSplitting();
    void nestedTransactions_data();
    void nestedTransactions();
    void rollbackToDepth();
    void failedStatementRaises();
    void unopenedConnection();
    void readRowsIsASnapshot();
    void userActionRollsBackItsOwnLevels();
    void startingDatabase();
    void startingDatabaseFontsExist();
    void partialIndexesServeMonthQuery();
    void upgradeFromOlderVersions_data();
    void upgradeFromOlderVersions();
    void upgradeLeavesOthersUntouched_data();
    void upgradeLeavesOthersUntouched();
    void copyFileOverwrite();
    void createStartingDatabaseRefusesBadFolder();
};

void TestStore::quotedTextIsStoredIntact_data()
{
    QTest::addColumn<QString>("text");
    // clang-format off
    QTest::newRow("apostrophe") << "it's";
    QTest::newRow("injection attempt") << "x'); DELETE FROM MSTCLASS; --";
    QTest::newRow("hash date inside text") << "#2006/05/01 09:05:03#";
    QTest::newRow("multi-line japanese") << "一行目\n二行目 'です'";
    // clang-format on
}

void TestStore::quotedTextIsStoredIntact()
{
    QFETCH(QString, text);
    TestEnvironment env;
    StoreClass(env.db(), 7, text);
    const Rows rows = env.db().ReadRows(QStringLiteral("SELECT * FROM MSTCLASS WHERE ID = 7"));
    QCOMPARE(rows.size(), size_t(1));
    QCOMPARE(rows.front().text(QStringLiteral("CLASS")), text);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 1);
    QVERIFY(!HasQuote(text)); // so the editors' quote messages never show
}

void TestStore::selectComboByItemData()
{
    QComboBox combo;
    combo.addItem(QStringLiteral("a"), 5);
    combo.addItem(QStringLiteral("b"), 7);
    combo.addItem(QStringLiteral("c"), 7);
    combo.addItem(QStringLiteral("no data"));
    SelectComboByItemData(&combo, 7);
    QCOMPARE(combo.currentIndex(), 1);
    SelectComboByItemData(&combo, 5);
    QCOMPARE(combo.currentIndex(), 0);
    SelectComboByItemData(&combo, 0);
    QCOMPARE(combo.currentIndex(), -1);
    SelectComboByItemData(&combo, 99);
    QCOMPARE(combo.currentIndex(), -1);
}

void TestStore::selectAllText()
{
    QLineEdit box;
    box.setText(QStringLiteral("2026/11/22"));
    box.setCursorPosition(4);
    SelectAllText(&box);
    QCOMPARE(box.selectedText(), QStringLiteral("2026/11/22"));
}

void TestStore::jetRewrite_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("expected");
    // clang-format off
    QTest::newRow("date literal") << "UPDATE T SET UPDTIME = #2006/05/01 09:05:03# WHERE ID = 1" << "UPDATE T SET UPDTIME = '2006/05/01 09:05:03' WHERE ID = 1";
    QTest::newRow("two literals") << "A = #2006/05/01 09:05:03# AND B = #2007/01/02 00:00:00#" << "A = '2006/05/01 09:05:03' AND B = '2007/01/02 00:00:00'";
    QTest::newRow("literal inside text untouched") << "SET X = 'at #2006/05/01 09:05:03#'" << "SET X = 'at #2006/05/01 09:05:03#'";
    QTest::newRow("delete star") << "DELETE * FROM TRNSCHTSK WHERE ID = 3" << "DELETE FROM TRNSCHTSK WHERE ID = 3";
    QTest::newRow("delete star lower case") << "delete  *  from X" << "DELETE FROM X";
    QTest::newRow("delete star inside text untouched") << "SET X = 'DELETE * FROM Y'" << "SET X = 'DELETE * FROM Y'";
    QTest::newRow("doubled quote keeps the string open") << "SET X = 'it''s #2006/05/01 09:05:03#', Y = #2006/05/01 09:05:03#" << "SET X = 'it''s #2006/05/01 09:05:03#', Y = '2006/05/01 09:05:03'";
    QTest::newRow("count star untouched") << "SELECT COUNT(*) AS RECCNT FROM T" << "SELECT COUNT(*) AS RECCNT FROM T";
    QTest::newRow("unterminated quote left alone") << "SET X = 'DELETE * FROM" << "SET X = 'DELETE * FROM";
    // clang-format on
}

void TestStore::jetRewrite()
{
    QFETCH(QString, sql);
    QFETCH(QString, expected);
    QCOMPARE(RewriteJetSql(sql), expected);
}

void TestStore::scriptSplitting()
{
    const QStringList parts = SplitSqlScript(
        QStringLiteral("-- a comment; with a semicolon\nCREATE TABLE A (X TEXT);\nINSERT INTO A VALUES ('a;b');\n\n"
                       "INSERT INTO A VALUES ('multi\nline; text');\n"));
    QCOMPARE(parts.size(), 3);
    QCOMPARE(parts.at(1), QStringLiteral("INSERT INTO A VALUES ('a;b')"));
    QCOMPARE(parts.at(2), QStringLiteral("INSERT INTO A VALUES ('multi\nline; text')"));
}

// Each case: a sequence of steps (B begin, I insert the next id, C commit, R rollback) and
// the ids that survive.
void TestStore::nestedTransactions_data()
{
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QList<int>>("survivors");
    // clang-format off
    QTest::newRow("commit") << "BIC" << QList<int>{1};
    QTest::newRow("rollback") << "BIR" << QList<int>{};
    QTest::newRow("inner rollback, outer commit") << "BIBIRC" << QList<int>{1};
    QTest::newRow("inner commit, outer rollback") << "BIBICR" << QList<int>{};
    QTest::newRow("three levels, middle rolled back") << "BIBIBICRC" << QList<int>{1};
    QTest::newRow("inner rollback then more work") << "BIBIRIC" << QList<int>{1, 3};
    QTest::newRow("no transaction autocommits") << "II" << QList<int>{1, 2};
    // clang-format on
}

void TestStore::nestedTransactions()
{
    QFETCH(QString, steps);
    QFETCH(QList<int>, survivors);
    TestEnvironment env;
    DatabaseConnection& db = env.db();
    int next = 1;
    int depth = 0;
    for (const QChar step : steps) {
        switch (step.toLatin1()) {
        case 'B':
            db.BeginTrans();
            ++depth;
            break;
        case 'C':
            db.CommitTrans();
            --depth;
            break;
        case 'R':
            db.RollbackTrans();
            --depth;
            break;
        case 'I':
            db.ExecuteSql(
                QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS, SORTKEY ) VALUES ( %1, 'c', 0 ) ").arg(next++));
            break;
        }
        QCOMPARE(db.transactionDepth(), depth);
    }
    // What survives must survive a reopen, i.e. be really committed.
    env.services.connection.reset();
    env.open();
    QList<int> ids;
    for (const Row& row : env.db().ReadRows(QStringLiteral("SELECT ID FROM MSTCLASS ORDER BY ID")))
        ids << static_cast<int>(row.number(QStringLiteral("ID")));
    QCOMPARE(ids, survivors);
}

void TestStore::rollbackToDepth()
{
    TestEnvironment env;
    DatabaseConnection& db = env.db();
    db.BeginTrans();
    db.ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS, SORTKEY ) VALUES ( 1, 'kept', 0 ) "));
    db.BeginTrans();
    db.ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS, SORTKEY ) VALUES ( 2, 'gone', 0 ) "));
    db.BeginTrans();
    db.ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS, SORTKEY ) VALUES ( 3, 'gone', 0 ) "));
    db.RollbackTo(1);
    QCOMPARE(db.transactionDepth(), 1);
    db.CommitTrans();
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 1);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = 'kept'")), 1);
}

void TestStore::failedStatementRaises()
{
    TestEnvironment env;
    QVERIFY_THROWS_EXCEPTION(DatabaseError, env.db().ExecuteSql(QStringLiteral("UPDATE NOSUCHTABLE SET X = 1")));
    QVERIFY_THROWS_EXCEPTION(DatabaseError, env.db().ReadRows(QStringLiteral("SELECT * FROM NOSUCHTABLE")));
    try {
        env.db().ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS,SORTKEY) VALUES (1,'a',0)"));
        env.db().ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS,SORTKEY) VALUES (1,'b',0)"));
        QFAIL("a duplicate key must fail");
    } catch (const DatabaseError& error) {
        QVERIFY(error.engineMessage().contains(QStringLiteral("UNIQUE"), Qt::CaseInsensitive));
        QVERIFY(error.sql().contains(QStringLiteral("'b'")));
    }
}

void TestStore::unopenedConnection()
{
    QVERIFY(OpenDatabaseConnection(QString(), QString()) == nullptr);
    QTemporaryDir dir;
    const QString missing = dir.filePath(QStringLiteral("none.mdb"));
    auto db = OpenDatabaseConnection(missing, QString());
    QVERIFY(db);
    QVERIFY(!db->isOpen());
    QVERIFY_THROWS_EXCEPTION(DatabaseError, db->ReadRows(QStringLiteral("SELECT 1")));
    QVERIFY(!QFile::exists(missing));
}

void TestStore::readRowsIsASnapshot()
{
    TestEnvironment env;
    const Rows before = env.db().ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1"));
    env.db().ExecuteSql(QStringLiteral("DELETE * FROM TRNGENERAL WHERE CODE = 100"));
    QCOMPARE(before.size(), size_t(3));
    QCOMPARE(before.at(1).text(QStringLiteral("DATAS1")), QStringLiteral("中"));
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("CODE = 100")), 0);

    env.db().ExecuteSql(QStringLiteral("INSERT INTO TRNGENERAL (CODE) VALUES (999)"));
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET MEMO1 = NULL, DATAN1 = NULL WHERE CODE = 999"));
    const Rows rows = env.db().ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 999"));
    QCOMPARE(rows.front().text(QStringLiteral("MEMO1")), QString());
    QVERIFY(rows.front().isNull(QStringLiteral("memo1")));
    QCOMPARE(rows.front().number(QStringLiteral("DATAN1")), 0);
}

void TestStore::userActionRollsBackItsOwnLevels()
{
    TestEnvironment env;
    DatabaseConnection& db = env.db();
    db.BeginTrans(); // a dialog's transaction, open before the action
    db.ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS, SORTKEY ) VALUES ( 1, 'dialog', 0 ) "));
    const bool ok = RunUserAction(env.services, nullptr, [&] {
        db.BeginTrans();
        db.ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS, SORTKEY ) VALUES ( 2, 'action', 0 ) "));
        db.ExecuteSql(QStringLiteral("INSERT INTO NOSUCHTABLE VALUES (1)"));
    });
    QVERIFY(!ok);
    QCOMPARE(db.transactionDepth(), 1);
    QCOMPARE(env.prompter.shown.size(), 1);
    QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Critical);
    QVERIFY(env.prompter.shown.front().text.contains(QStringLiteral("NOSUCHTABLE")));
    db.CommitTrans();
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 1);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = 'dialog'")), 1);

    QVERIFY(RunUserAction(env.services, nullptr, [] {}));
    QCOMPARE(env.prompter.shown.size(), 1);
}

void TestStore::startingDatabase()
{
    TestEnvironment env;
    const auto lines = [&](const QString& where, const QStringList& columns) {
        return Lines(env.db(), QStringLiteral("SELECT * FROM TRNGENERAL WHERE ") + where, columns);
    };
    QCOMPARE(lines(QStringLiteral("CODE = 10"), {"DATAN1"}), QStringList{"12"});
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")) + env.count(QStringLiteral("MSTCLASS")), 0);
    // Sticky-note slots 1..30, closed; five hot keys, none set.
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"),
                       QStringLiteral("CODE = 501 AND DATAS3 = '0' AND DATAN1 BETWEEN 1 AND 30")),
             30);
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("82000 <= CODE AND CODE < 82999 AND DATAN1 = 0")),
             5);
    // Each single-row option once; the list options name a row of their list.
    for (int code : {301, 302, 303, 304, 311, 312, 313, 314, 315, 316})
        QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("CODE = %1").arg(code)), 1);
    for (const auto& [option, list] :
         {std::pair{301, "CODE BETWEEN 80600 AND 80699 AND CODE"},
          std::pair{303, "CODE BETWEEN 80800 AND 80899 AND CODE"},
          std::pair{302, "CODE BETWEEN 80700 AND 80799 AND DATAN1"}, std::pair{313, "CODE = 411 AND DATAN1"},
          std::pair{304, "CODE BETWEEN 80900 AND 80999 AND DATAN1"}}) {
        const QString value = lines(QStringLiteral("CODE = %1").arg(option), {"DATAN1"}).value(0);
        QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QString::fromLatin1(list) + QStringLiteral(" = ") + value), 1);
    }
    // Design spots with their defaults also in the D columns.
    QCOMPARE(Lines(env.db(),
                   QStringLiteral("SELECT * FROM TRNCOLOR WHERE SETNUM = 0 AND BACKCOLOR = DBACKCOLOR AND "
                                  "FORECOLOR = DFORECOLOR AND FSIZE = DFSIZE AND FSIZE > 0 ORDER BY CODE"),
                   {"CODE"})
                 .join(QLatin1Char(' ')),
             QStringLiteral("10 20 30 40 50 60 70 80 90 100 110 120 130 135 140"));
}

void TestStore::startingDatabaseFontsExist()
{
    TestEnvironment env;
    const QStringList families = QFontDatabase::families();
    for (const Row& row : env.db().ReadRows(QStringLiteral("SELECT DISTINCT FOREFONT FROM TRNCOLOR"))) {
        const QString font = row.text(QStringLiteral("FOREFONT"));
        QVERIFY2(families.contains(font, Qt::CaseInsensitive), qPrintable(font + " is not installed"));
    }
}

void TestStore::partialIndexesServeMonthQuery()
{
    TestEnvironment env;
    const Rows plan = env.db().ReadRows(QStringLiteral("EXPLAIN QUERY PLAN ") +
                                        MonthQuerySql(QDate(2026, 11, 1), QDate(2026, 12, 12)));
    QStringList details;
    for (const Row& row : plan)
        details << row.text(QStringLiteral("detail"));
    const QString text = details.join(QLatin1Char('\n'));
    QVERIFY2(!text.contains(QStringLiteral("SCAN TRNSCHTSK")), qPrintable(text));
    for (const char* index : {"IX_TRNSCHTSK_A", "IX_TRNSCHTSK_B", "IX_TRNSCHTSK_C", "IX_TRNSCHTSK_D", "IX_TRNSCHTSK_T"})
        QVERIFY2(text.contains(QLatin1String(index)), qPrintable(text));
}

void TestStore::upgradeFromOlderVersions_data()
{
    QTest::addColumn<int>("version");
    // clang-format off
    QTest::newRow("10") << 10;
    QTest::newRow("11") << 11;
    // clang-format on
}

void TestStore::upgradeFromOlderVersions()
{
    QFETCH(int, version);
    TestEnvironment env;
    DowngradeDatabase(env.db(), version);
    const int generalBefore = env.count(QStringLiteral("TRNGENERAL"));
    env.clock.current = QDateTime(QDate(2026, 11, 22), QTime(8, 0, 1));

    CheckDatabaseVersion(env.db(), env.clock);

    QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10")), 12);
    const int added = version == 10 ? 5 + 4 : 4;
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL")), generalBefore + added);
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("82000 <= CODE AND CODE < 82999")), 5);
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"),
                       QStringLiteral("CODE = 82030 AND DATAS1 = 'タスク入力' AND DATAN1 = 0 AND DATAN2 = 0")),
             1);
    QCOMPARE(Lines(env.db(),
                   QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE IN (314, 315, 316, 80907) ORDER BY CODE"),
                   {"CODE", "DATAN1", "DATAS1", "MEMO1", "UPDTIME"}),
             QStringList({"314|0|||2026/11/22 08:00:01", "315|0|||2026/11/22 08:00:01", "316|0|||2026/11/22 08:00:01",
                          "80907|0|０分前||2026/11/22 08:00:01"}));
    // From version 10 the holiday spot starts as a copy of the day-off spot.
    const QStringList look{"BACKCOLOR", "FORECOLOR", "FOREFONT", "FSIZE", "DBACKCOLOR", "SETBCOLOR"};
    const QStringList spots =
        Lines(env.db(), QStringLiteral("SELECT * FROM TRNCOLOR WHERE CODE IN (130, 135) ORDER BY CODE"),
              QStringList{"SPOT"} + look);
    QCOMPARE(spots.size(), 2);
    QVERIFY(spots.at(0).startsWith(QStringLiteral("休日|")));
    QVERIFY(spots.at(1).startsWith(QStringLiteral("祝日|")));
    if (version == 10)
        QCOMPARE(spots.at(1).section(QLatin1Char('|'), 1), spots.at(0).section(QLatin1Char('|'), 1));

    // Running the check again changes nothing.
    const int after = env.count(QStringLiteral("TRNGENERAL"));
    CheckDatabaseVersion(env.db(), env.clock);
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL")), after);
}

void TestStore::upgradeLeavesOthersUntouched_data()
{
    QTest::addColumn<QString>("prepare");
    // clang-format off
    QTest::newRow("version 12") << QString();
    QTest::newRow("no version row") << QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 10");
    QTest::newRow("unknown version") << QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 9 WHERE CODE = 10");
    QTest::newRow("old rows missing, no version row") << QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 10 OR CODE = 80907");
    // clang-format on
}

void TestStore::upgradeLeavesOthersUntouched()
{
    QFETCH(QString, prepare);
    TestEnvironment env;
    if (!prepare.isEmpty())
        env.db().ExecuteSql(prepare);
    const auto snapshot = [&] {
        QStringList lines;
        for (const QString& table : {QStringLiteral("TRNGENERAL"), QStringLiteral("TRNCOLOR")}) {
            for (const Row& row :
                 env.db().ReadRows(QStringLiteral("SELECT * FROM ") + table + QStringLiteral(" ORDER BY 1, 2, 3")))
                lines << row.text(QStringLiteral("CODE")) + QLatin1Char('|') + row.text(QStringLiteral("UPDTIME")) +
                             QLatin1Char('|') +
                             row.text(table == QStringLiteral("TRNCOLOR") ? QStringLiteral("SPOT")
                                                                          : QStringLiteral("DATAS1"));
        }
        return lines;
    };
    const QStringList before = snapshot();
    CheckDatabaseVersion(env.db(), env.clock);
    QCOMPARE(snapshot(), before);
}

void TestStore::copyFileOverwrite()
{
    QTemporaryDir dir;
    const QString source = dir.filePath(QStringLiteral("a.mdb"));
    const QString target = dir.filePath(QStringLiteral("b.bdc"));
    QByteArray bytes(3 * 1024 * 1024 + 17, '\0');
    for (int i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(i * 31);
    QFile s(source), t(target);
    QVERIFY(s.open(QIODevice::WriteOnly) && s.write(bytes) == bytes.size());
    s.close();
    QVERIFY(t.open(QIODevice::WriteOnly) && t.write("old and longer content that must disappear entirely") > 0);
    t.close();
    QVERIFY(CopyFileOverwrite(source, target));
    QVERIFY(t.open(QIODevice::ReadOnly));
    QCOMPARE(t.readAll(), bytes);
    t.close();

    // A missing source leaves the destination as it was.
    QVERIFY(!CopyFileOverwrite(dir.filePath(QStringLiteral("missing")), target));
    QCOMPARE(QFileInfo(target).size(), bytes.size());
}

void TestStore::createStartingDatabaseRefusesBadFolder()
{
    QString error;
    QVERIFY(!CreateStartingDatabase(QStringLiteral("/proc/no-such-folder/QMCalendar.mdb"), &error));
    QVERIFY(!error.isEmpty());
}

VERDALY_TEST(TestStore)
#include "tst_store.moc"
