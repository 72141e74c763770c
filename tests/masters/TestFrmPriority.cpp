
#include "masters/FrmPriority.h"
#include "support/TestKit.h"

#include <QListWidget>
#include <QPushButton>
#include <QtTest>

class TestFrmPriority final : public QObject
{
    Q_OBJECT

private slots:
    void loadsInNumberOrder();
    void renameThenOk_data();
    void renameThenOk();
    void doubleClickEdits();
    void nothingSelectedChangesNothing();
};

namespace {
QStringList priorityNames(DatabaseConnection& db)
{
    return Lines(db, QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1"), {"DATAS1"});
}

QListWidget* priorityList(FrmPriority& dialog)
{
    return Control<QListWidget>(&dialog, "LstPriority");
}

std::unique_ptr<EditAnswer> renameLine(FrmPriority& dialog, int row, const QString& name, bool pressOk = true)
{
    priorityList(dialog)->setCurrentRow(row);
    auto script = std::make_unique<EditAnswer>(name, pressOk);
    Click(&dialog, "ComUpdate");
    return script;
}

const QStringList StartingNames = {"高", "中", "低"};
} // namespace

void TestFrmPriority::loadsInNumberOrder()
{
    TestEnvironment env;
    // Stored out of order on purpose: the list follows DATAN1.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 9 WHERE CODE = 100 AND DATAN1 = 1"));
    FrmPriority dialog(env.services);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("優先度"));
    QCOMPARE(LineTexts(priorityList(dialog)), QStringList({"中", "低", "高"}));
    QCOMPARE(LineIds(priorityList(dialog)), QList<qint64>({2, 3, 9}));
    QCOMPARE(env.db().transactionDepth(), 1);
    QVERIFY(!dialog.PriorityChanged());
}

void TestFrmPriority::renameThenOk_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("pressOk"); // in the name editor
    QTest::addColumn<QStringList>("stored");
    // clang-format off
    QTest::newRow("apostrophe") << 0 << "don't care" << true << QStringList({"don't care", "中", "低"});
    QTest::newRow("statement-like") << 2 << "x' WHERE 1=1; --" << true << QStringList({"高", "中", "x' WHERE 1=1; --"});
    QTest::newRow("name editor cancelled") << 1 << "捨てる" << false << StartingNames;
    // clang-format on
}

void TestFrmPriority::renameThenOk()
{
    QFETCH(int, row);
    QFETCH(QString, name);
    QFETCH(bool, pressOk);
    QFETCH(QStringList, stored);
    TestEnvironment env;
    FrmPriority dialog(env.services);
    dialog.show();
    const auto script = renameLine(dialog, row, name, pressOk);
    QVERIFY(script->opened());
    QCOMPARE(script->title(), QStringLiteral("優先度 - 編集"));
    QCOMPARE(script->initialText(), StartingNames.at(row));
    QCOMPARE(priorityNames(env.db()), StartingNames); // not written before OK
    QCOMPARE(LineTexts(priorityList(dialog)), stored);
    Click(&dialog, "ComOK");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QVERIFY(dialog.PriorityChanged());
    QCOMPARE(env.db().transactionDepth(), 0);
    QCOMPARE(priorityNames(env.db()), stored);
    // The default mark and the numbers are not the dialog's to change.
    QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 100 AND DATAN2 = 1")), 2);
}

void TestFrmPriority::doubleClickEdits()
{
    TestEnvironment env;
    FrmPriority dialog(env.services);
    dialog.show();
    QListWidget* list = priorityList(dialog);
    list->setCurrentRow(2);
    auto script = std::make_unique<EditAnswer>(QStringLiteral("後回し"));
    emit list->itemDoubleClicked(list->item(2));
    QVERIFY(script->opened());
    QCOMPARE(list->item(2)->text(), QStringLiteral("後回し"));
}

void TestFrmPriority::nothingSelectedChangesNothing()
{
    TestEnvironment env;
    FrmPriority dialog(env.services);
    dialog.show();
    auto script = std::make_unique<EditAnswer>(QStringLiteral("変更"));
    Click(&dialog, "ComUpdate");
    QVERIFY(!script->opened());
    QVERIFY(env.prompter.shown.isEmpty());
    QCOMPARE(LineTexts(priorityList(dialog)), StartingNames);
}

VERDALY_TEST(TestFrmPriority)
#include "TestFrmPriority.moc"
