
#include "masters/FrmClass.h"
#include "support/TestKit.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

class TestFrmClass final : public QObject
{
    Q_OBJECT

private slots:
    void newClassId_data();
    void newClassId();
    void rename_data();
    void rename();
    void move_data();
    void move();
    void deleteClass_data();
    void deleteClass();
    void nothingSelectedChangesNothing_data();
    void nothingSelectedChangesNothing();
    void loadFailureLeavesOnlyCancel();
};

namespace {
// Class rows by ID order, as "ID|NAME|SORTKEY".
QStringList classRows(DatabaseConnection& db)
{
    return Lines(db, QStringLiteral("SELECT * FROM MSTCLASS ORDER BY ID"), {"ID", "CLASS", "SORTKEY"});
}

// An entry of kind data ('1' schedule, '2' task) filed under classId.
void addEntry(DatabaseConnection& db, int id, const QString& data, int classId)
{
    StoredEntry e = Entry(id, data == QLatin1String("1") ? QStringLiteral("A1") : QStringLiteral("T1"),
                          QStringLiteral("20261122"), QString(), QStringLiteral("20261122"));
    e.classId = classId;
    StoreEntry(db, e);
}

QListWidget* classList(FrmClass& dialog)
{
    return Control<QListWidget>(&dialog, "LstClass");
}

// Three classes whose ID order differs from their display order.
void addThree(DatabaseConnection& db)
{
    StoreClass(db, 1, QStringLiteral("仕事"), 2);
    StoreClass(db, 2, QStringLiteral("家庭"), 3);
    StoreClass(db, 5, QStringLiteral("趣味"), 1);
}

// Opens the name editor from button, types name into it and presses OK.
std::unique_ptr<EditAnswer> typeInEditor(FrmClass& dialog, const char* buttonName, const QString& name)
{
    auto script = std::make_unique<EditAnswer>(name);
    Control<QPushButton>(&dialog, buttonName)->click();
    return script;
}
} // namespace

void TestFrmClass::newClassId_data()
{
    QTest::addColumn<bool>("withClasses");
    QTest::addColumn<bool>("deleteLargestFirst");
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("expectedId");
    // clang-format off
    QTest::newRow("empty table") << false << false << "会議" << qint64(1);
    QTest::newRow("after 1, 2, 5") << true << false << "出張" << qint64(6);
    QTest::newRow("5 deleted first") << true << true << "it's ours" << qint64(3);
    QTest::newRow("apostrophes only") << false << false << "''" << qint64(1);
    // clang-format on
}

void TestFrmClass::newClassId()
{
    QFETCH(bool, withClasses);
    QFETCH(bool, deleteLargestFirst);
    QFETCH(QString, name);
    QFETCH(qint64, expectedId);
    TestEnvironment env;
    if (withClasses)
        addThree(env.db());
    FrmClass dialog(env.services);
    dialog.show();
    if (deleteLargestFirst) {
        classList(dialog)->setCurrentRow(0); // 趣味, ID 5
        Click(&dialog, "ComDelete");
        QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("ID = 5")), 0);
    }
    const auto script = typeInEditor(dialog, "ComInsert", name);
    QVERIFY(script->opened());
    QCOMPARE(script->title(), QStringLiteral("分類 - 新規"));
    QVERIFY(script->initialText().isEmpty());

    // Written at once with SORTKEY 0, inside the dialog's transaction, and last in the list.
    QCOMPARE(env.db().transactionDepth(), 1);
    const QString row = QStringLiteral("SELECT * FROM MSTCLASS WHERE ID = %1").arg(expectedId);
    QCOMPARE(Lines(env.db(), row, {"CLASS", "SORTKEY"}), QStringList{name + "|0"});
    QCOMPARE(LineIds(classList(dialog)).last(), expectedId);
    Click(&dialog, "ComOk");
    QCOMPARE(env.db().transactionDepth(), 0);
    QCOMPARE(Lines(env.db(), row, {"CLASS", "SORTKEY"}),
             QStringList{name + "|" + QString::number(classList(dialog)->count())});
}

void TestFrmClass::rename_data()
{
    QTest::addColumn<QString>("newName");
    // clang-format off
    QTest::newRow("apostrophe") << "Tom's";
    QTest::newRow("statement-like") << "x'); DELETE FROM MSTCLASS; --";
    // clang-format on
}

void TestFrmClass::rename()
{
    QFETCH(QString, newName);
    TestEnvironment env;
    addThree(env.db());
    FrmClass dialog(env.services);
    dialog.show();
    classList(dialog)->setCurrentRow(1); // 仕事, ID 1
    const auto script = typeInEditor(dialog, "ComUpdate", newName);
    QCOMPARE(script->title(), QStringLiteral("分類 - 編集"));
    QCOMPARE(script->initialText(), QStringLiteral("仕事"));
    QCOMPARE(classList(dialog)->item(1)->text(), newName);
    // Nothing is written before OK.
    QCOMPARE(env.scalar(QStringLiteral("SELECT COUNT(*) AS V FROM MSTCLASS WHERE CLASS = '仕事'")), 1);
    Click(&dialog, "ComOk");
    QCOMPARE(classRows(env.db()), QStringList({"1|" + newName + "|2", "2|家庭|3", "5|趣味|1"}));
}

void TestFrmClass::move_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("buttonName");
    QTest::addColumn<QStringList>("order");
    QTest::addColumn<int>("selectedAfter");
    // clang-format off
    QTest::newRow("third up") << 2 << "ComUp" << QStringList({"趣味", "家庭", "仕事"}) << 1;
    QTest::newRow("first down") << 0 << "ComDn" << QStringList({"仕事", "趣味", "家庭"}) << 1;
    QTest::newRow("first up stays") << 0 << "ComUp" << QStringList({"趣味", "仕事", "家庭"}) << 0;
    QTest::newRow("last down stays") << 2 << "ComDn" << QStringList({"趣味", "仕事", "家庭"}) << 2;
    // clang-format on
}

void TestFrmClass::move()
{
    QFETCH(int, row);
    QFETCH(QString, buttonName);
    QFETCH(QStringList, order);
    QFETCH(int, selectedAfter);
    TestEnvironment env;
    addThree(env.db());
    FrmClass dialog(env.services);
    dialog.show();
    classList(dialog)->setCurrentRow(row);
    const QString moved = classList(dialog)->item(row)->text();
    Control<QPushButton>(&dialog, qPrintable(buttonName))->click();
    QCOMPARE(LineTexts(classList(dialog)), order);
    QCOMPARE(classList(dialog)->currentRow(), selectedAfter);
    QCOMPARE(classList(dialog)->currentItem()->text(), moved);
    QVERIFY(env.prompter.shown.isEmpty());

    Click(&dialog, "ComOk");
    QStringList stored;
    for (const Row& r : env.db().ReadRows(QStringLiteral("SELECT * FROM MSTCLASS ORDER BY SORTKEY")))
        stored << r.text(QStringLiteral("CLASS"));
    QCOMPARE(stored, order);
    QCOMPARE(env.scalar(QStringLiteral("SELECT MAX(SORTKEY) AS V FROM MSTCLASS")), 3);
    QCOMPARE(env.scalar(QStringLiteral("SELECT MIN(SORTKEY) AS V FROM MSTCLASS")), 1);
}

void TestFrmClass::deleteClass_data()
{
    QTest::addColumn<QString>("usedBy"); // DATA of an entry filed under the class, "" for none
    QTest::addColumn<bool>("confirm");
    QTest::addColumn<QStringList>("listed");
    QTest::addColumn<QStringList>("stored"); // after OK
    const QStringList all{"趣味", "仕事", "家庭"};
    const QStringList unchanged{"1|仕事|2", "2|家庭|3", "5|趣味|1"};
    // clang-format off
    QTest::newRow("unused") << "" << true << QStringList{"趣味", "家庭"} << QStringList{"2|家庭|2", "5|趣味|1"};
    QTest::newRow("answered cancel") << "" << false << all << unchanged;
    QTest::newRow("used by a schedule") << "1" << true << all << unchanged;
    QTest::newRow("used by a task") << "2" << true << all << unchanged;
    // clang-format on
}

void TestFrmClass::deleteClass()
{
    QFETCH(QString, usedBy);
    QFETCH(bool, confirm);
    QFETCH(QStringList, listed);
    QFETCH(QStringList, stored);
    TestEnvironment env;
    addThree(env.db());
    addEntry(env.db(), 1, usedBy.isEmpty() ? QStringLiteral("1") : usedBy, usedBy.isEmpty() ? 5 : 1);
    FrmClass dialog(env.services);
    dialog.show();
    classList(dialog)->setCurrentRow(1); // 仕事, ID 1
    env.prompter.answers.push_back(confirm ? PromptAnswer::Ok : PromptAnswer::Cancel);
    Click(&dialog, "ComDelete");
    QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
    QCOMPARE(env.prompter.texts().mid(1),
             usedBy.isEmpty() ? QStringList() : QStringList{QStringLiteral("使用されているため削除できません")});
    QCOMPARE(LineTexts(classList(dialog)), listed);
    QVERIFY(dialog.isVisible());
    Click(&dialog, "ComOk");
    QCOMPARE(classRows(env.db()), stored);
}

void TestFrmClass::nothingSelectedChangesNothing_data()
{
    QTest::addColumn<QString>("buttonName");
    // clang-format off
    QTest::newRow("edit") << "ComUpdate";
    QTest::newRow("delete") << "ComDelete";
    QTest::newRow("up") << "ComUp";
    QTest::newRow("down") << "ComDn";
    // clang-format on
}

void TestFrmClass::nothingSelectedChangesNothing()
{
    QFETCH(QString, buttonName);
    TestEnvironment env;
    addThree(env.db());
    WriteLog log(env.db(), QStringLiteral("MSTCLASS"), QStringLiteral("ID"));
    FrmClass dialog(env.services);
    dialog.show();
    auto script = std::make_unique<EditAnswer>(QStringLiteral("変更"));
    Control<QPushButton>(&dialog, qPrintable(buttonName))->click();
    QVERIFY(!script->opened());
    QVERIFY(env.prompter.shown.isEmpty());
    QVERIFY(log.lines().isEmpty());
    QCOMPARE(LineTexts(classList(dialog)), QStringList({"趣味", "仕事", "家庭"}));
    QVERIFY(classList(dialog)->selectedItems().isEmpty());
}

void TestFrmClass::loadFailureLeavesOnlyCancel()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("DROP TABLE MSTCLASS"));
    FrmClass dialog(env.services);
    dialog.show();
    QCOMPARE(env.prompter.shown.size(), 1);
    QVERIFY(env.prompter.shown.front().text.contains(QStringLiteral("MSTCLASS")));
    QCOMPARE(env.db().transactionDepth(), 0);
    for (const char* name : {"ComInsert", "ComUpdate", "ComDelete", "ComUp", "ComDn", "ComOk"})
        QVERIFY2(!Control<QPushButton>(&dialog, name)->isEnabled(), name);
    Click(&dialog, "ComCancel");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(env.db().transactionDepth(), 0);
}

VERDALY_TEST(TestFrmClass)
#include "TestFrmClass.moc"
