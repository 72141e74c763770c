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

class TestStore final : public QObject
{
    Q_OBJECT

private slots:
    void comboAndBoxHelpers()
    {
        QComboBox combo;
        combo.addItem(QStringLiteral("a"), 5);
        combo.addItem(QStringLiteral("b"), 7);
        combo.addItem(QStringLiteral("c"), 7);
        combo.addItem(QStringLiteral("no data"));
        for (const auto& [data, index] : {std::pair{7, 1}, std::pair{5, 0}, std::pair{0, -1}, std::pair{99, -1}}) {
            SelectComboByItemData(&combo, data);
            QCOMPARE(combo.currentIndex(), index);
        }
        QLineEdit box(QStringLiteral("2026/11/22"));
        box.setCursorPosition(4);
        SelectAllText(&box);
        QCOMPARE(box.selectedText(), QStringLiteral("2026/11/22"));
    }

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
        const QStringList parts = SplitSqlScript(
            QStringLiteral("-- a comment; with a semicolon\nCREATE TABLE A (X TEXT);\nINSERT INTO A VALUES ('a;b');\n\n"
                           "INSERT INTO A VALUES ('multi\nline; text');\n"));
        QCOMPARE(parts.size(), 3);
        QCOMPARE(parts.at(1), QStringLiteral("INSERT INTO A VALUES ('a;b')"));
        QCOMPARE(parts.at(2), QStringLiteral("INSERT INTO A VALUES ('multi\nline; text')"));
    }

    // Each case: steps (B begin, I insert the next id, C commit, R rollback, a digit: roll back
    // to that depth) and the ids that survive a reopen, i.e. were really committed.
    void nestedTransactions_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QList<int>>("survivors");
        // clang-format off
        QTest::newRow("inner rollback, outer commit") << "BIBIRC" << QList<int>{1};
        QTest::newRow("inner commit, outer rollback") << "BIBICR" << QList<int>{};
        QTest::newRow("three levels, middle rolled back") << "BIBIBICRC" << QList<int>{1};
        QTest::newRow("inner rollback then more work") << "BIBIRIC" << QList<int>{1, 3};
        QTest::newRow("no transaction autocommits") << "II" << QList<int>{1, 2};
        QTest::newRow("rollback to depth 1") << "BIBIBI1C" << QList<int>{1};
        // clang-format on
    }
    void nestedTransactions()
    {
        QFETCH(QString, steps);
        QFETCH(QList<int>, survivors);
        TestEnvironment env;
        DatabaseConnection& db = env.db();
        int next = 1;
        int depth = 0;
        for (const QChar step : steps) {
            if (step.isDigit()) {
                depth = step.digitValue();
                db.RollbackTo(depth);
            } else if (step == QLatin1Char('B')) {
                db.BeginTrans();
                ++depth;
            } else if (step == QLatin1Char('C')) {
                db.CommitTrans();
                --depth;
            } else if (step == QLatin1Char('R')) {
                db.RollbackTrans();
                --depth;
            } else {
                StoreClass(db, next++, QStringLiteral("c"));
            }
            QCOMPARE(db.transactionDepth(), depth);
        }
        env.services.connection.reset();
        env.open();
        QStringList ids;
        for (const int id : survivors)
            ids << QString::number(id);
        QCOMPARE(Lines(env.db(), QStringLiteral("SELECT ID FROM MSTCLASS ORDER BY ID"), {"ID"}), ids);
    }

    // Failures raise with the engine's word and the statement; rows read are a copy.
    void connectionErrorsAndRows()
    {
        QVERIFY(OpenDatabaseConnection(QString(), QString()) == nullptr);
        QTemporaryDir dir;
        const QString missing = dir.filePath(QStringLiteral("none.mdb"));
        const auto unopened = OpenDatabaseConnection(missing, QString());
        QVERIFY(unopened && !unopened->isOpen());
        QVERIFY_THROWS_EXCEPTION(DatabaseError, unopened->ReadRows(QStringLiteral("SELECT 1")));
        QVERIFY(!QFile::exists(missing));

        TestEnvironment env;
        DatabaseConnection& db = env.db();
        QVERIFY_THROWS_EXCEPTION(DatabaseError, db.ExecuteSql(QStringLiteral("UPDATE NOSUCHTABLE SET X = 1")));
        QVERIFY_THROWS_EXCEPTION(DatabaseError, db.ReadRows(QStringLiteral("SELECT * FROM NOSUCHTABLE")));
        StoreClass(db, 1, QStringLiteral("a"));
        try {
            StoreClass(db, 1, QStringLiteral("b"));
            QFAIL("a duplicate key must fail");
        } catch (const DatabaseError& error) {
            QVERIFY(error.engineMessage().contains(QStringLiteral("UNIQUE"), Qt::CaseInsensitive));
            QVERIFY(error.sql().contains(QStringLiteral("'b'")));
        }

        const Rows before = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1"));
        db.ExecuteSql(QStringLiteral("DELETE * FROM TRNGENERAL WHERE CODE = 100"));
        QCOMPARE(before.size(), size_t(3));
        QCOMPARE(before.at(1).text(QStringLiteral("DATAS1")), QStringLiteral("中"));
        StoreGeneral(db, 999);
        db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET MEMO1 = NULL, DATAN1 = NULL WHERE CODE = 999"));
        const Row row = db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 999")).front();
        QCOMPARE(row.text(QStringLiteral("MEMO1")), QString());
        QVERIFY(row.isNull(QStringLiteral("memo1")));
        QCOMPARE(row.number(QStringLiteral("DATAN1")), 0);
    }

    void startingDatabase()
    {
        TestEnvironment env;
        const auto count = [&](const QString& where) { return env.count(QStringLiteral("TRNGENERAL"), where); };
        QCOMPARE(count(QStringLiteral("CODE = 10 AND DATAN1 = 12")), 1);
        // Sticky-note slots 1..30, closed; five hot keys, none set.
        QCOMPARE(count(QStringLiteral("CODE = 501 AND DATAS3 = '0' AND DATAN1 BETWEEN 1 AND 30")), 30);
        QCOMPARE(count(QStringLiteral("82000 <= CODE AND CODE < 82999 AND DATAN1 = 0")), 5);
        // Each single-row option once; the list options name a row of their list.
        for (int code : {301, 302, 303, 304, 311, 312, 313, 314, 315, 316})
            QCOMPARE(count(QStringLiteral("CODE = %1").arg(code)), 1);
        for (const auto& [option, list] :
             {std::pair{301, "CODE BETWEEN 80600 AND 80699 AND CODE"},
              std::pair{303, "CODE BETWEEN 80800 AND 80899 AND CODE"},
              std::pair{302, "CODE BETWEEN 80700 AND 80799 AND DATAN1"}, std::pair{313, "CODE = 411 AND DATAN1"},
              std::pair{304, "CODE BETWEEN 80900 AND 80999 AND DATAN1"}}) {
            const qint64 value =
                env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = %1").arg(option));
            QCOMPARE(count(QString::fromLatin1(list) + QStringLiteral(" = %1").arg(value)), 1);
        }
        // Design spots with their defaults also in the D columns, in installed fonts.
        QCOMPARE(Lines(env.db(),
                       QStringLiteral("SELECT * FROM TRNCOLOR WHERE SETNUM = 0 AND BACKCOLOR = DBACKCOLOR AND "
                                      "FORECOLOR = DFORECOLOR AND FSIZE = DFSIZE AND FSIZE > 0 ORDER BY CODE"),
                       {"CODE"})
                     .join(QLatin1Char(' ')),
                 QStringLiteral("10 20 30 40 50 60 70 80 90 100 110 120 130 135 140"));
        const QStringList families = QFontDatabase::families();
        for (const QString& font :
             Lines(env.db(), QStringLiteral("SELECT DISTINCT FOREFONT FROM TRNCOLOR"), {"FOREFONT"}))
            QVERIFY2(families.contains(font, Qt::CaseInsensitive), qPrintable(font + " is not installed"));
        // The month query is served by the partial indexes, never a scan of the entries.
        const QString plan =
            Lines(env.db(),
                  QStringLiteral("EXPLAIN QUERY PLAN ") + MonthQuerySql(QDate(2026, 11, 1), QDate(2026, 12, 12)),
                  {"detail"})
                .join(QLatin1Char('\n'));
        QVERIFY2(!plan.contains(QStringLiteral("SCAN TRNSCHTSK")), qPrintable(plan));
        for (const char* index :
             {"IX_TRNSCHTSK_A", "IX_TRNSCHTSK_B", "IX_TRNSCHTSK_C", "IX_TRNSCHTSK_D", "IX_TRNSCHTSK_T"})
            QVERIFY2(plan.contains(QLatin1String(index)), qPrintable(plan));
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
            return Lines(env.db(), QStringLiteral("SELECT * FROM TRNGENERAL ORDER BY 1, 2, 3"),
                         {"CODE", "UPDTIME", "DATAS1"}) +
                   Lines(env.db(), QStringLiteral("SELECT * FROM TRNCOLOR ORDER BY 1, 2, 3"),
                         {"CODE", "UPDTIME", "SPOT"});
        };
        const QStringList before = snapshot();
        const int generalBefore = env.count(QStringLiteral("TRNGENERAL"));
        env.clock.current = QDateTime(QDate(2026, 11, 22), QTime(8, 0, 1));
        CheckDatabaseVersion(env.db(), env.clock);
        if (!version) {
            QCOMPARE(snapshot(), before);
            return;
        }
        QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10")), 12);
        QCOMPARE(env.count(QStringLiteral("TRNGENERAL")), generalBefore + (version == 10 ? 5 + 4 : 4));
        QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("82000 <= CODE AND CODE < 82999")), 5);
        QCOMPARE(env.count(QStringLiteral("TRNGENERAL"),
                           QStringLiteral("CODE = 82030 AND DATAS1 = 'タスク入力' AND DATAN1 = 0 AND DATAN2 = 0")),
                 1);
        QCOMPARE(Lines(env.db(),
                       QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE IN (314, 315, 316, 80907) ORDER BY CODE"),
                       {"CODE", "DATAN1", "DATAS1", "MEMO1", "UPDTIME"}),
                 QStringList({"314|0|||2026/11/22 08:00:01", "315|0|||2026/11/22 08:00:01",
                              "316|0|||2026/11/22 08:00:01", "80907|0|０分前||2026/11/22 08:00:01"}));
        // From version 10 the holiday spot starts as a copy of the day-off spot.
        const QStringList spots =
            Lines(env.db(), QStringLiteral("SELECT * FROM TRNCOLOR WHERE CODE IN (130, 135) ORDER BY CODE"),
                  {"SPOT", "BACKCOLOR", "FORECOLOR", "FOREFONT", "FSIZE", "DBACKCOLOR", "SETBCOLOR"});
        QCOMPARE(spots.size(), 2);
        QVERIFY(spots.at(0).startsWith(QStringLiteral("休日|")));
        QVERIFY(spots.at(1).startsWith(QStringLiteral("祝日|")));
        if (version == 10)
            QCOMPARE(spots.at(1).section(QLatin1Char('|'), 1), spots.at(0).section(QLatin1Char('|'), 1));
    }

    void files()
    {
        QTemporaryDir dir;
        const QString source = dir.filePath(QStringLiteral("a.mdb"));
        const QString target = dir.filePath(QStringLiteral("b.bdc"));
        QByteArray bytes(3 * 1024 * 1024 + 17, '\0');
        for (int i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<char>(i * 31);
        QVERIFY(WriteFile(source, bytes));
        QVERIFY(WriteFile(target, "old and longer content that must disappear entirely"));
        QVERIFY(CopyFileOverwrite(source, target));
        QCOMPARE(FileBytes(target), bytes);
        // A missing source leaves the destination as it was.
        QVERIFY(!CopyFileOverwrite(dir.filePath(QStringLiteral("missing")), target));
        QCOMPARE(QFileInfo(target).size(), bytes.size());

        QString error;
        QVERIFY(!CreateStartingDatabase(QStringLiteral("/proc/no-such-folder/QMCalendar.mdb"), &error));
        QVERIFY(!error.isEmpty());
    }
};

VERDALY_TEST(TestStore)
#include "tst_store.moc"
