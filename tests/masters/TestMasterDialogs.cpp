#include "masters/FrmClass.h"
#include "masters/FrmEdit.h"
#include "masters/FrmPriority.h"
#include "support/TestKit.h"

#include <QListWidget>
#include <QPushButton>
#include <QtTest>

// The class and priority lists and the one-line name editor both of them open.
class TestMasterDialogs final : public QObject
{
    Q_OBJECT

    struct Move
    {
        int row;
        const char* button;
        QStringList order;
        int selectedAfter;
    };

private slots:
    // One sitting: nothing selected does nothing, classes in use stay, lines move, a rename
    // waits for OK, a new class is written at once under the next ID, a delete at once too.
    void classDialog()
    {
        TestEnvironment env;
        StoreClass(env.db(), 1, QStringLiteral("仕事"), 2);
        StoreClass(env.db(), 2, QStringLiteral("家庭"), 3);
        StoreClass(env.db(), 5, QStringLiteral("趣味"), 1);
        StoredEntry schedule = Entry(1, QStringLiteral("A1"), QStringLiteral("20261122"));
        schedule.classId = 1;
        StoreEntry(env.db(), schedule);
        StoredEntry task = Entry(2, QStringLiteral("T1"), QString(), QString(), QStringLiteral("20261122"));
        task.classId = 2;
        StoreEntry(env.db(), task);
        FrmClass dialog(env.services);
        dialog.show();
        auto* list = Control<QListWidget>(&dialog, "LstClass");
        const QStringList loaded{"趣味", "仕事", "家庭"};
        {
            WriteLog log(env.db(), QStringLiteral("MSTCLASS"), QStringLiteral("ID"));
            for (const char* button : {"ComUpdate", "ComDelete", "ComUp", "ComDn"}) {
                EditAnswer answer(QStringLiteral("変更"));
                Click(&dialog, button);
                QVERIFY2(!answer.opened(), button);
            }
            QVERIFY(env.prompter.shown.isEmpty());
            QVERIFY(log.lines().isEmpty());
            QVERIFY(list->selectedItems().isEmpty());
        }
        // Asked first with Cancel as the default; a class filed under by a schedule or a task stays.
        const QStringList inUse{"使用されているため削除できません"};
        for (const auto& [row, answer, said] :
             {std::tuple{0, PromptAnswer::Cancel, QStringList()}, std::tuple{1, PromptAnswer::Ok, inUse},
              std::tuple{2, PromptAnswer::Ok, inUse}}) {
            env.prompter.shown.clear();
            env.prompter.answers = {answer};
            list->setCurrentRow(row);
            Click(&dialog, "ComDelete");
            QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
            QCOMPARE(env.prompter.texts().mid(1), said);
        }
        QCOMPARE(LineTexts(list), loaded);
        QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 3);
        // A line swaps with its neighbour and stays selected; at either end nothing moves.
        for (const Move& move : QList<Move>{{2, "ComUp", {"趣味", "家庭", "仕事"}, 1},
                                            {0, "ComUp", {"趣味", "家庭", "仕事"}, 0},
                                            {0, "ComDn", {"家庭", "趣味", "仕事"}, 1},
                                            {2, "ComDn", {"家庭", "趣味", "仕事"}, 2}}) {
            list->setCurrentRow(move.row);
            Click(&dialog, move.button);
            QCOMPARE(LineTexts(list), move.order);
            QCOMPARE(list->currentRow(), move.selectedAfter);
        }
        {
            EditAnswer rename(QStringLiteral("Tom's"));
            Click(&dialog, "ComUpdate");
            QCOMPARE(rename.title(), QStringLiteral("分類 - 編集"));
            QCOMPARE(rename.initialText(), QStringLiteral("仕事"));
        }
        QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = '仕事'")), 1);
        {
            EditAnswer insert(QStringLiteral("it's ours"));
            Click(&dialog, "ComInsert");
            QCOMPARE(insert.title(), QStringLiteral("分類 - 新規"));
            QVERIFY(insert.initialText().isEmpty());
        }
        QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM MSTCLASS WHERE ID = 6"), {"CLASS", "SORTKEY"}),
                 QStringList{"it's ours|0"});
        list->setCurrentRow(1); // 趣味, ID 5, unused
        Click(&dialog, "ComDelete");
        QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("ID = 5")), 0);
        QCOMPARE(LineTexts(list), QStringList({"家庭", "Tom's", "it's ours"}));
        QCOMPARE(env.db().transactionDepth(), 1);
        Click(&dialog, "ComOk");
        QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM MSTCLASS ORDER BY ID"), {"ID", "CLASS", "SORTKEY"}),
                 QStringList({"1|Tom's|2", "2|家庭|1", "6|it's ours|3"}));
    }

    void classLoadFailureLeavesOnlyCancel()
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

    // Lines follow the priority numbers; renames, by button or double click, wait for OK;
    // the default mark and the numbers are not the dialog's to change.
    void priorityDialog()
    {
        TestEnvironment env;
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 9 WHERE CODE = 100 AND DATAN1 = 1"));
        const auto stored = [&] {
            return Lines(env.db(), QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1"),
                         {"DATAS1"});
        };
        const QStringList loaded{"中", "低", "高"};
        FrmPriority dialog(env.services);
        dialog.show();
        auto* list = Control<QListWidget>(&dialog, "LstPriority");
        QCOMPARE(LineTexts(list), loaded);
        QVERIFY(!dialog.PriorityChanged());
        {
            EditAnswer untouched(QStringLiteral("変更"));
            Click(&dialog, "ComUpdate");
            QVERIFY(!untouched.opened());
        }
        list->setCurrentRow(1);
        {
            EditAnswer cancelled(QStringLiteral("捨てる"), false);
            Click(&dialog, "ComUpdate");
            QCOMPARE(cancelled.title(), QStringLiteral("優先度 - 編集"));
            QCOMPARE(cancelled.initialText(), QStringLiteral("低"));
        }
        list->setCurrentRow(0);
        {
            EditAnswer rename(QStringLiteral("don't care"));
            Click(&dialog, "ComUpdate");
        }
        list->setCurrentRow(2);
        {
            EditAnswer rename(QStringLiteral("x' WHERE 1=1; --"));
            emit list->itemDoubleClicked(list->item(2));
            QCOMPARE(rename.initialText(), QStringLiteral("高"));
        }
        const QStringList renamed{"don't care", "低", "x' WHERE 1=1; --"};
        QCOMPARE(LineTexts(list), renamed);
        QCOMPARE(stored(), loaded);
        QVERIFY(env.prompter.shown.isEmpty());
        Click(&dialog, "ComOK");
        QVERIFY(!dialog.isVisible());
        QVERIFY(dialog.PriorityChanged());
        QCOMPARE(stored(), renamed);
        QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 100 AND DATAN2 = 1")), 2);
    }

    void editHandsBack_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("check");      // handed in
        QTest::addColumn<bool>("checkShown"); // only "Priority" takes the check box over
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("checkBack");
        using L = QStringList;
        // clang-format off
        QTest::newRow("class leaves the check alone") << "Class" << true << false << L{"TxtEdit=打ち合わせ", "ChkCheck=0"} << true << "打ち合わせ" << true;
        QTest::newRow("blanks around kept") << "Class" << false << false << L{"TxtEdit= 会議 "} << true << " 会議 " << false;
        QTest::newRow("priority takes the box") << "Priority" << false << false << L{"TxtEdit=最優先", "ChkCheck=1"} << true << "最優先" << true;
        QTest::newRow("priority box cleared") << "Priority" << true << true << L{"TxtEdit=低", "ChkCheck=0"} << true << "低" << false;
        QTest::newRow("cancel button") << "Priority" << false << false << L{"TxtEdit=変更", "ChkCheck=1"} << false << "高い" << false;
        // clang-format on
    }
    void editHandsBack()
    {
        QFETCH(QString, kind);
        QFETCH(bool, check);
        QFETCH(bool, checkShown);
        QFETCH(QStringList, typed);
        QFETCH(bool, ok);
        QFETCH(QString, text);
        QFETCH(bool, checkBack);
        TestEnvironment env;
        EditHandOver handOver{kind, QStringLiteral("優先度 - 編集"), QStringLiteral("高い"), check, false};
        FrmEdit dialog(env.services, handOver);
        dialog.show();
        QCOMPARE(Shown(&dialog, "TxtEdit"), QStringLiteral("高い"));
        QVERIFY(!Control(&dialog, "ChkCheck")->isVisible());
        QCOMPARE(Shown(&dialog, "ChkCheck"), checkShown ? QStringLiteral("1") : QStringLiteral("0"));
        TypeAll(&dialog, typed);
        Click(&dialog, ok ? "ComOK" : "ComCancel");
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(ok ? QDialog::Accepted : QDialog::Rejected));
        QCOMPARE(handOver.EditOK, ok);
        QCOMPARE(handOver.EditText, text);
        QCOMPARE(handOver.EditCheck, checkBack);
        QVERIFY(env.prompter.shown.isEmpty());
    }

    // Nothing but blanks is refused and the dialog stays usable; an OK left over from an
    // earlier showing does not count when the editor is cancelled.
    void editRefusesEmptyText()
    {
        TestEnvironment env;
        EditHandOver handOver{QStringLiteral("Class"), QStringLiteral("分類 - 編集"), QStringLiteral("旧名"), false,
                              false};
        FrmEdit dialog(env.services, handOver);
        dialog.show();
        for (const QString& typed : {QStringLiteral("   "), QStringLiteral("　")}) {
            Type(&dialog, QStringLiteral("TxtEdit"), typed);
            Click(&dialog, "ComOK");
            QVERIFY(dialog.isVisible());
            QVERIFY(!handOver.EditOK);
            QCOMPARE(handOver.EditText, QStringLiteral("旧名"));
            QCOMPARE(Shown(&dialog, "TxtEdit"), typed);
            QCOMPARE(env.prompter.texts().last(), QStringLiteral("入力されていません"));
            QCOMPARE(env.prompter.shown.last().buttons, PromptButtons::Ok);
        }
        QCOMPARE(env.prompter.shown.size(), 2);
        Type(&dialog, QStringLiteral("TxtEdit"), QStringLiteral("新名"));
        Click(&dialog, "ComOK");
        QVERIFY(handOver.EditOK);
        QCOMPARE(handOver.EditText, QStringLiteral("新名"));

        EditHandOver stale{QStringLiteral("Class"), QStringLiteral("分類 - 新規"), QString(), false, true};
        EditAnswer answer(QStringLiteral("無視される"), false);
        QVERIFY(!RunEditDialog(env.services, stale, nullptr));
        QCOMPARE(answer.title(), QStringLiteral("分類 - 新規"));
        QVERIFY(!stale.EditOK);
        QVERIFY(stale.EditText.isEmpty());
    }
};

VERDALY_TEST(TestMasterDialogs)
#include "TestMasterDialogs.moc"
