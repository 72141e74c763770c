#include "entries/EntryQueries.h"
#include "store/DatabaseError.h"
#include "store/DatabaseVersion.h"
#include "store/JetDialect.h"
#include "store/SqlText.h"
#include "store/StartingDatabase.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QLineEdit>
#include <QtTest>

class TestStore final : public QObject
{
    Q_OBJECT

private slots:
    void jetRewrite_data()
    {
        QTest::addColumn<QString>("sql");
        QTest::addColumn<QString>("expected");
        // clang-format off
        QTest::newRow("two literals") << "A = #2006/05/01 09:05:03# AND B = #2007/01/02 00:00:00#" << "A = '2006/05/01 09:05:03' AND B = '2007/01/02 00:00:00'";
        QTest::newRow("delete star") << "DELETE * FROM TRNSCHTSK WHERE ID = 3" << "DELETE FROM TRNSCHTSK WHERE ID = 3";
        QTest::newRow("delete star lower case") << "delete  *  from X" << "DELETE FROM X";
        QTest::newRow("delete star inside text untouched") << "SET X = 'DELETE * FROM Y'" << "SET X = 'DELETE * FROM Y'";
        QTest::newRow("doubled quote keeps the string open") << "SET X = 'it''s #2006/05/01 09:05:03#', Y = #2006/05/01 09:05:03#" << "SET X = 'it''s #2006/05/01 09:05:03#', Y = '2006/05/01 09:05:03'";
        QTest::newRow("count star untouched") << "SELECT COUNT(*) AS RECCNT FROM T" << "SELECT COUNT(*) AS RECCNT FROM T";
        QTest::newRow("unterminated quote left alone") << "SET X = 'DELETE * FROM" << "SET X = 'DELETE * FROM";
        // clang-format on
    }
    void jetRewrite()
    {
        QFETCH(QString, sql);
        QFETCH(QString, expected);
        QCOMPARE(RewriteJetSql(sql), expected);
    }

    void scriptSplitting()
    {
        QCOMPARE(
            SplitSqlScript("-- a comment; with a semicolon\nCREATE TABLE A (X TEXT);\nINSERT INTO A VALUES ('a;b');\n\n"
                           "INSERT INTO A VALUES ('multi\nline; text');\n"),
            QStringList({"CREATE TABLE A (X TEXT)", "INSERT INTO A VALUES ('a;b')",
                         "INSERT INTO A VALUES ('multi\nline; text')"}));
    }

    // Each case: steps (B begin, I insert the next id, C commit, R rollback, a digit: roll back
    // to that depth) and the ids that survive a reopen, i.e. were really committed.
    void nestedTransactions_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("survivors");
        // clang-format off
        QTest::newRow("inner rollback, outer commit") << "BIBIRC" << "1";
        QTest::newRow("inner commit, outer rollback") << "BIBICR" << "";
        QTest::newRow("three levels, middle rolled back") << "BIBIBICRC" << "1";
        QTest::newRow("inner rollback then more work") << "BIBIRIC" << "1 3";
        QTest::newRow("no transaction autocommits") << "II" << "1 2";
        QTest::newRow("rollback to depth 1") << "BIBIBI1C" << "1";
        // clang-format on
    }
    void nestedTransactions()
    {
        QFETCH(QString, steps);
        QFETCH(QString, survivors);
        TestEnvironment env;
        DatabaseConnection& db = env.db();
        int next = 1;
        int depth = 0;
        for (const QChar step : steps) {
            if (step.isDigit())
                db.RollbackTo(step.digitValue());
            else if (step == 'B')
                db.BeginTrans();
            else if (step == 'C')
                db.CommitTrans();
            else if (step == 'R')
                db.RollbackTrans();
            else
                StoreClass(db, next++, "c");
            depth = step.isDigit() ? step.digitValue() : depth + (step == 'B') - (step == 'C' || step == 'R');
            QCOMPARE(db.transactionDepth(), depth);
        }
        env.services.connection.reset();
        env.open();
        QCOMPARE(Lines(env.db(), "SELECT ID FROM MSTCLASS ORDER BY ID", {"ID"}).join(' '), survivors);
    }

    void startingDatabaseAndConnection()
    {
        TestEnvironment env;
        DatabaseConnection& db = env.db();
        const auto count = [&](const QString& where) { return env.count("TRNGENERAL", where); };
        QCOMPARE(count("CODE = 10 AND DATAN1 = 12"), 1);
        // Sticky-note slots 1..30, closed; five hot keys, none set.
        QCOMPARE(count("CODE = 501 AND DATAS3 = '0' AND DATAN1 BETWEEN 1 AND 30"), 30);
        QCOMPARE(count("82000 <= CODE AND CODE < 82999 AND DATAN1 = 0"), 5);
        // Each single-row option once; the list options name a row of their list.
        for (int code : {301, 302, 303, 304, 311, 312, 313, 314, 315, 316})
            QCOMPARE(count(QString("CODE = %1").arg(code)), 1);
        for (const auto& [option, list] :
             {std::pair{301, "CODE / 100 = 806 AND CODE"}, std::pair{313, "CODE = 411 AND DATAN1"},
              std::pair{303, "CODE / 100 = 808 AND CODE"}, std::pair{302, "CODE / 100 = 807 AND DATAN1"},
              std::pair{304, "CODE / 100 = 809 AND DATAN1"}})
            QCOMPARE(count(QString("%1 = (SELECT DATAN1 FROM TRNGENERAL WHERE CODE = %2)").arg(list).arg(option)), 1);
        // Design spots with their defaults also in the D columns, in installed fonts.
        const QString defaults = "BACKCOLOR = DBACKCOLOR AND FORECOLOR = DFORECOLOR AND FSIZE = DFSIZE AND FSIZE > 0";
        QCOMPARE(Lines(db, "SELECT * FROM TRNCOLOR WHERE SETNUM = 0 AND " + defaults + " ORDER BY CODE", {"CODE"}),
                 QString("10 20 30 40 50 60 70 80 90 100 110 120 130 135 140").split(' '));
        for (const QString& font : Lines(db, "SELECT DISTINCT FOREFONT FROM TRNCOLOR", {"FOREFONT"}))
            QVERIFY2(QFontDatabase::families().contains(font, Qt::CaseInsensitive), qPrintable(font + " is missing"));
        // The month query is served by the partial indexes, never a scan of the entries.
        const QString plan =
            Lines(db, "EXPLAIN QUERY PLAN " + MonthQuerySql({2026, 11, 1}, {2026, 12, 12}), {"detail"}).join('\n');
        QVERIFY2(!plan.contains("SCAN TRNSCHTSK"), qPrintable(plan));
        for (const char* index : {"A", "B", "C", "D", "T"})
            QVERIFY2(plan.contains(QString("IX_TRNSCHTSK_") + index), qPrintable(plan));

        // Rows read are a copy, and a NULL reads as nothing.
        const Rows before = db.ReadRows("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1");
        db.ExecuteSql("DELETE * FROM TRNGENERAL WHERE CODE = 100");
        QCOMPARE(before.at(1).text("DATAS1"), QStringLiteral("中"));
        const Row row = db.ReadRows("SELECT NULL AS MEMO1, NULL AS DATAN1").front();
        QCOMPARE(row.text("MEMO1"), QString());
        QVERIFY(row.isNull("memo1"));
        QCOMPARE(row.number("DATAN1"), 0);
    }

    // An old release's database is brought up to date; any other is left exactly as it is.
    void versionCheck_data()
    {
        QTest::addColumn<int>("version"); // 0: left at the current version
        QTest::addColumn<QString>("prepare");
        QTest::newRow("from 10") << 10 << QString();
        QTest::newRow("from 11") << 11 << QString();
        QTest::newRow("version 12") << 0 << QString();
        QTest::newRow("no version row") << 0 << QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 10");
        QTest::newRow("unknown version") << 0 << QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 9 WHERE CODE = 10");
    }
    void versionCheck()
    {
        QFETCH(int, version);
        QFETCH(QString, prepare);
        TestEnvironment env;
        if (version)
            DowngradeDatabase(env.db(), version);
        if (!prepare.isEmpty())
            env.db().ExecuteSql(prepare);
        const auto snapshot = [&] {
            return Lines(env.db(), "SELECT * FROM TRNGENERAL ORDER BY 1, 2, 3", {"CODE", "UPDTIME", "DATAS1"}) +
                   Lines(env.db(), "SELECT * FROM TRNCOLOR ORDER BY 1, 2, 3", {"CODE", "UPDTIME", "SPOT"});
        };
        const QStringList before = snapshot();
        const int generalBefore = env.count("TRNGENERAL");
        env.clock.current = QDateTime(QDate(2026, 11, 22), QTime(8, 0, 1));
        CheckDatabaseVersion(env.db(), env.clock);
        if (!version) {
            QCOMPARE(snapshot(), before);
            return;
        }
        QCOMPARE(env.scalar("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10"), 12);
        QCOMPARE(env.count("TRNGENERAL"), generalBefore + (version == 10 ? 5 + 4 : 4));
        QCOMPARE(env.count("TRNGENERAL", "82000 <= CODE AND CODE < 82999"), 5);
        QCOMPARE(env.count("TRNGENERAL", "CODE = 82030 AND DATAS1 = 'タスク入力' AND DATAN1 = 0 AND DATAN2 = 0"), 1);
        QCOMPARE(Lines(env.db(), "SELECT * FROM TRNGENERAL WHERE CODE IN (314, 315, 316, 80907) ORDER BY CODE",
                       {"CODE", "DATAN1", "DATAS1", "MEMO1", "UPDTIME"}),
                 QStringList({"314|0|||2026/11/22 08:00:01", "315|0|||2026/11/22 08:00:01",
                              "316|0|||2026/11/22 08:00:01", "80907|0|０分前||2026/11/22 08:00:01"}));
        // From version 10 the holiday spot starts as a copy of the day-off spot.
        QCOMPARE(Lines(env.db(), "SELECT * FROM TRNCOLOR WHERE CODE IN (130, 135) ORDER BY CODE", {"SPOT"}),
                 QStringList({"休日", "祝日"}));
        if (version == 10)
            QCOMPARE(env.scalar("SELECT COUNT(*) AS V FROM (SELECT DISTINCT BACKCOLOR, FORECOLOR, FOREFONT, FSIZE, "
                                "DBACKCOLOR, SETBCOLOR FROM TRNCOLOR WHERE CODE IN (130, 135))"),
                     1);
    }

    // The small helpers around the store: files, combo boxes and line edits.
    void helpers()
    {
        QVERIFY(OpenDatabaseConnection(QString(), QString()) == nullptr);
        QTemporaryDir dir;
        const QString missing = dir.filePath("none.mdb");
        const auto unopened = OpenDatabaseConnection(missing, QString());
        QVERIFY(unopened && !unopened->isOpen());
        QVERIFY_THROWS_EXCEPTION(DatabaseError, unopened->ReadRows("SELECT 1"));
        QVERIFY(!QFile::exists(missing));
        QString error;
        QVERIFY(!CreateStartingDatabase("/proc/no-such-folder/QMCalendar.mdb", &error));
        QVERIFY(!error.isEmpty());

        const QString source = dir.filePath("a.mdb");
        const QString target = dir.filePath("b.bdc");
        // Over 3 MB, in a pattern that does not repeat at any power of two.
        const QByteArray bytes = QByteArray("0123456789abcdef-").repeated(200000);
        QVERIFY(WriteFile(source, bytes));
        QVERIFY(WriteFile(target, "old and longer content that must disappear entirely"));
        QVERIFY(CopyFileOverwrite(source, target));
        QCOMPARE(FileBytes(target), bytes);
        // A missing source leaves the destination as it was.
        QVERIFY(!CopyFileOverwrite(missing, target));
        QCOMPARE(QFileInfo(target).size(), bytes.size());

        QComboBox combo;
        combo.addItems({"a", "b", "c", "no data"});
        for (const int i : {0, 1, 2})
            combo.setItemData(i, i ? 7 : 5);
        for (const auto& [data, index] : {std::pair{7, 1}, std::pair{5, 0}, std::pair{0, -1}, std::pair{99, -1}}) {
            SelectComboByItemData(&combo, data);
            QCOMPARE(combo.currentIndex(), index);
        }
        QLineEdit box("2026/11/22");
        box.setCursorPosition(4);
        SelectAllText(&box);
        QCOMPARE(box.selectedText(), box.text());
    }
};

VERDALY_TEST(TestStore)
#include "tst_store.moc"
