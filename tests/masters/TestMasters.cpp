#include "masters/FrmClass.h"
#include "masters/FrmDayOff.h"
#include "masters/FrmEdit.h"
#include "masters/FrmPriority.h"
#include "support/TestKit.h"

#include <QListWidget>
#include <QtTest>

// The class, priority and day-off lists, the name editor, and the transaction each list holds
// while it is open: committed by OK only, nested in one already open, kept through a failure.
namespace {

// Picks the day-off's date, month * 100 + day, in the boxes as they show it, types the remark, OK.
void Choose(QWidget* dialog, int date, const QString& remark)
{
    TypeAll(dialog,
            {QString("CmbMonth=%1").arg(date / 100, 2), QString("CmbDay=%1").arg(date % 100), "TxtComment=" + remark});
    Click(dialog, "ComOK");
}

QStringList DayOffs(DatabaseConnection& db)
{
    return Lines(db, "SELECT * FROM TRNGENERAL WHERE CODE = 200 ORDER BY DATAN1, DATAN2, DATAS1",
                 {"DATAN1", "DATAN2", "DATAS1"});
}

// A name editor's run: the hand-over's kind and the text handed back, what is typed, the check
// handed in, OK (else Cancel), and the check handed back.
struct EditRow
{
    QString kind, text;
    QStringList typed;
    bool check, ok, checkBack;
};

} // namespace
Q_DECLARE_METATYPE(EditRow)

class TestMasters final : public QObject
{
    Q_OBJECT

private slots:
    // A class added, the first priority renamed or a day-off 8/13 added, each "内側", then the
    // dialog closed one way or another; only OK keeps the change.
    void closing_data()
    {
        QTest::addColumn<QString>("dialog");
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("outer"); // another dialog's transaction is open already
        for (const char* dialog : {"class", "priority", "dayoff"}) {
            const auto row = [dialog](const char* name) -> QTestData& {
                return QTest::addRow("%s %s", dialog, name) << dialog;
            };
            row("ok") << "ok" << false;
            row("cancel") << "cancel" << false;
            row("destroyed open") << "destroy" << false;
            row("ok inside another") << "ok" << true;
            row("cancel inside another") << "cancel" << true;
            if (qstrcmp(dialog, "dayoff") != 0)
                row("statement fails") << "fail" << false;
        }
    }

    void closing()
    {
        QFETCH(QString, dialog);
        QFETCH(QString, how);
        QFETCH(bool, outer);
        const bool kept = how == "ok";
        const bool isClass = dialog == "class";
        TestEnvironment env;
        DatabaseConnection& db = env.db();
        if (outer) {
            db.BeginTrans();
            StoreClass(db, 1, "外側");
        }
        const int depth = outer ? 1 : 0;
        std::unique_ptr<QDialog> m(isClass              ? static_cast<QDialog*>(new FrmClass(env.services))
                                   : dialog == "dayoff" ? static_cast<QDialog*>(new FrmDayOff(env.services))
                                                        : new FrmPriority(env.services));
        m->show();
        if (dialog == "dayoff") {
            ModalAnswer answer([](QWidget* edit) { Choose(edit, 813, "内側"); });
            Click(m.get(), "ComADD");
        } else {
            if (!isClass)
                Control<QListWidget>(m.get(), "LstPriority")->setCurrentRow(0);
            EditAnswer answer("内側");
            Click(m.get(), isClass ? "ComInsert" : "ComUpdate");
        }
        if (how == "ok")
            Click(m.get(), isClass ? "ComOk" : "ComOK");
        else if (how == "cancel")
            Click(m.get(), "ComCancel");
        else if (how == "fail") {
            // The class dialog's in-use check finds no entries table, the priority dialog's OK no table
            // to write to. The dialog stays open with its transaction, for Cancel to undo its work.
            auto* list = Control<QListWidget>(m.get(), isClass ? "LstClass" : "LstPriority");
            const QStringList listed = LineTexts(list);
            db.ExecuteSql(isClass ? "DROP TABLE TRNSCHTSK" : "ALTER TABLE TRNGENERAL RENAME TO GONE");
            list->setCurrentRow(0);
            Click(m.get(), isClass ? "ComDelete" : "ComOK");
            QCOMPARE(env.prompter.shown.size(), isClass ? 2 : 1); // the class dialog asks first
            QCOMPARE(env.prompter.shown.last().icon, PromptIcon::Critical);
            QVERIFY(env.prompter.shown.last().text.contains(isClass ? "TRNSCHTSK" : "TRNGENERAL"));
            QVERIFY(m->isVisible());
            QCOMPARE(db.transactionDepth(), 1);
            QCOMPARE(LineTexts(list), listed);
            Click(m.get(), "ComCancel");
        }
        if (how != "destroy") {
            QVERIFY(!m->isVisible());
            QCOMPARE(m->result(), int(kept ? QDialog::Accepted : QDialog::Rejected));
            QCOMPARE(db.transactionDepth(), depth);
        }
        m.reset(); // the destroyed-open rows close it only here
        QCOMPARE(db.transactionDepth(), depth);
        QCOMPARE(env.scalar("SELECT (SELECT COUNT(*) FROM MSTCLASS WHERE CLASS = '内側') + (SELECT COUNT(*) FROM "
                            "TRNGENERAL WHERE (CODE = 100 AND DATAS1 = '内側') OR (CODE = 200 AND DATAN1 = 8 AND "
                            "DATAN2 = 13)) AS V"),
                 int(kept));
        // A new class takes the ID after the highest, 1 in an empty table.
        QCOMPARE(env.count("MSTCLASS", QString("CLASS = '内側' AND ID = %1").arg(depth + 1)), int(isClass && kept));
        if (!outer)
            return;
        // The outer level is untouched, and still decides about everything inside it.
        QCOMPARE(env.count("MSTCLASS", "CLASS = '外側'"), 1);
        db.RollbackTrans();
        QCOMPARE(env.count("MSTCLASS"), 0);
    }

    // One sitting: adds land in calendar order, an edit may land on a taken date, and a delete,
    // asked first, takes every day-off of its date; each change is written at once, kept by OK.
    void dayOffDialog()
    {
        TestEnvironment env;
        StoreDayOff(env.db(), 2, 11, "建国記念の日");
        StoreDayOff(env.db(), 5, 5, "こどもの日");
        FrmDayOff dialog(env.services);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        auto* list = Control<QListWidget>(&dialog, "LstDayOff");
        Click(&dialog, "ComDel"); // nothing selected: nothing asked
        QVERIFY(env.prompter.shown.isEmpty());
        // A new day-off starts on today's date; an impossible or taken date is refused with
        // what was picked and typed still there to be put right.
        const auto shows = [](QWidget* edit, const QStringList& pairs) { QCOMPARE(ShownAll(edit, pairs), pairs); };
        const QString bad = "日付が正しくありません";
        for (const auto& [year, refused, said, date, remark] :
             {std::tuple{2026, QList<int>{229, 431, 505}, QStringList{bad, bad, "既に登録されている日付です"}, 303,
                         "ひな祭り"},
              std::tuple{2028, QList<int>{230}, QStringList{bad}, 229, "New Year's Eve"}}) {
            env.clock.current.setDate(QDate(year, 11, 22));
            env.prompter.shown.clear();
            ModalAnswer answer([&, refused = refused, date = date, remark = remark](QWidget* edit) {
                shows(edit, {"CmbMonth=11", "CmbDay=22"});
                for (const int tried : refused) {
                    Choose(edit, tried, "休み");
                    shows(edit, {"CmbDay=" + QString::number(tried % 100), "TxtComment=休み"});
                }
                Choose(edit, date, remark);
            });
            Click(&dialog, "ComADD");
            QCOMPARE(answer.title(), "新規 - 休日設定");
            QCOMPARE(env.prompter.texts(), said);
            QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);
        }
        env.prompter.shown.clear();
        list->setCurrentRow(3);
        {
            ModalAnswer answer([](QWidget* edit) { Choose(edit, 813, "it's お盆"); });
            Click(&dialog, "ComUpd");
        }
        QCOMPARE(DayOffs(env.db()),
                 QStringList({"2|11|建国記念の日", "2|29|New Year's Eve", "3|3|ひな祭り", "8|13|it's お盆"}));
        env.prompter.answers = {PromptAnswer::Ok};
        list->setCurrentRow(0);
        Click(&dialog, "ComDel");
        QCOMPARE(env.prompter.texts(), QStringList{"選択された休日設定を削除します"});
        QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
        QCOMPARE(DayOffs(env.db()), QStringList({"2|29|New Year's Eve", "3|3|ひな祭り", "8|13|it's お盆"}));
        {
            ModalAnswer answer([&](QWidget* edit) {
                shows(edit, {"CmbDay=13", "TxtComment=it's お盆"});
                Choose(edit, 303, "代休");
            });
            const QPoint line = list->visualItemRect(list->item(2)).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, line);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, line);
            QCOMPARE(answer.title(), "編集 - 休日設定");
        }
        list->setCurrentRow(2);
        Click(&dialog, "ComDel");
        QCOMPARE(LineTexts(list), QStringList{"02/29 New Year's Eve"});
        Click(&dialog, "ComOK");
        QCOMPARE(DayOffs(env.db()), QStringList{"2|29|New Year's Eve"});
    }

    // One sitting: nothing selected does nothing, classes in use stay, lines move, a rename
    // waits for OK, a new class is written at once under the next ID, a delete at once too.
    void classDialog()
    {
        TestEnvironment env;
        StoreClass(env.db(), 1, "仕事", 2);
        StoreClass(env.db(), 2, "家庭", 3);
        StoreClass(env.db(), 5, "趣味", 1);
        // A schedule filed under 仕事, a task under 家庭.
        const auto filed = [](StoredEntry entry, int classId) {
            entry.classId = classId;
            return entry;
        };
        StoreEntry(env.db(), filed(Entry(1, "A1", "20261122"), 1));
        StoreEntry(env.db(), filed(Entry(2, "T1", "", "", "20261122"), 2));
        FrmClass dialog(env.services);
        dialog.show();
        auto* list = Control<QListWidget>(&dialog, "LstClass");
        for (const char* button : {"ComUpdate", "ComDelete", "ComUp", "ComDn"}) {
            EditAnswer answer("変更");
            Click(&dialog, button);
            QVERIFY2(!answer.opened(), button);
        }
        // Asked first with Cancel as the default; a class filed under by a schedule or a task stays.
        env.prompter.answers = {PromptAnswer::Cancel, PromptAnswer::Ok, PromptAnswer::Ok};
        for (const int row : {0, 1, 2}) {
            list->setCurrentRow(row);
            Click(&dialog, "ComDelete");
        }
        const QString ask = "削除してよろしいですか？";
        const QString inUse = "使用されているため削除できません";
        QCOMPARE(env.prompter.texts(), QStringList({ask, ask, inUse, ask, inUse}));
        QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
        QCOMPARE(LineTexts(list), QStringList({"趣味", "仕事", "家庭"}));
        // A line swaps with its neighbour and stays selected; at either end nothing moves.
        for (const auto& [row, button, order, selectedAfter] :
             {std::tuple{2, "ComUp", QStringList{"趣味", "家庭", "仕事"}, 1},
              std::tuple{0, "ComUp", QStringList{"趣味", "家庭", "仕事"}, 0},
              std::tuple{0, "ComDn", QStringList{"家庭", "趣味", "仕事"}, 1},
              std::tuple{2, "ComDn", QStringList{"家庭", "趣味", "仕事"}, 2}}) {
            list->setCurrentRow(row);
            Click(&dialog, button);
            QCOMPARE(LineTexts(list), order);
            QCOMPARE(list->currentRow(), selectedAfter);
        }
        for (const auto& [button, typed, title, shown] : {std::tuple{"ComUpdate", "Tom's", "分類 - 編集", "仕事"},
                                                          std::tuple{"ComInsert", "it's ours", "分類 - 新規", ""}}) {
            EditAnswer answer(typed);
            Click(&dialog, button);
            QCOMPARE(answer.title(), title);
            QCOMPARE(answer.initialText(), shown);
        }
        QCOMPARE(env.count("MSTCLASS", "CLASS = '仕事'"), 1);
        QCOMPARE(Lines(env.db(), "SELECT * FROM MSTCLASS WHERE ID = 6", {"CLASS", "SORTKEY"}),
                 QStringList{"it's ours|0"});
        list->setCurrentRow(1); // 趣味, ID 5, unused
        Click(&dialog, "ComDelete");
        QCOMPARE(LineTexts(list), QStringList({"家庭", "Tom's", "it's ours"}));
        Click(&dialog, "ComOk");
        QCOMPARE(Lines(env.db(), "SELECT * FROM MSTCLASS ORDER BY ID", {"ID", "CLASS", "SORTKEY"}),
                 QStringList({"1|Tom's|2", "2|家庭|1", "6|it's ours|3"}));

        // Without its table the list says why and leaves only the way out.
        env.prompter.shown.clear();
        env.db().ExecuteSql("DROP TABLE MSTCLASS");
        FrmClass failed(env.services);
        failed.show();
        QCOMPARE(env.prompter.shown.size(), 1);
        QVERIFY(env.prompter.shown.front().text.contains("MSTCLASS"));
        QCOMPARE(env.db().transactionDepth(), 0);
        for (const char* name : {"ComInsert", "ComUpdate", "ComDelete", "ComUp", "ComDn", "ComOk"})
            QVERIFY2(!Control(&failed, name)->isEnabled(), name);
        Click(&failed, "ComCancel");
        QVERIFY(!failed.isVisible());
    }

    // Lines follow the priority numbers; renames, by button or double click, wait for OK;
    // the default mark and the numbers are not the dialog's to change.
    void priorityDialog()
    {
        TestEnvironment env;
        env.db().ExecuteSql("UPDATE TRNGENERAL SET DATAN1 = 9 WHERE CODE = 100 AND DATAN1 = 1");
        const auto stored = [&] {
            return Lines(env.db(), "SELECT * FROM TRNGENERAL WHERE CODE = 100 ORDER BY DATAN1", {"DATAS1"});
        };
        FrmPriority dialog(env.services);
        dialog.show();
        auto* list = Control<QListWidget>(&dialog, "LstPriority");
        QVERIFY(!dialog.PriorityChanged());
        for (const auto& [row, typed, ok, shown] :
             {std::tuple{-1, "変更", true, ""}, std::tuple{1, "捨てる", false, "低"},
              std::tuple{0, "don't care", true, "中"}, std::tuple{2, "x' WHERE 1=1; --", true, "高"}}) {
            list->setCurrentRow(row);
            EditAnswer rename(typed, ok);
            if (row == 2)
                emit list->itemDoubleClicked(list->item(2));
            else
                Click(&dialog, "ComUpdate");
            QCOMPARE(rename.opened(), row >= 0); // nothing selected: nothing to rename
            QCOMPARE(rename.title(), row >= 0 ? "優先度 - 編集" : "");
            QCOMPARE(rename.initialText(), shown);
        }
        const QStringList renamed{"don't care", "低", "x' WHERE 1=1; --"};
        QCOMPARE(LineTexts(list), renamed);
        QCOMPARE(stored(), QStringList({"中", "低", "高"}));
        QVERIFY(env.prompter.shown.isEmpty());
        Click(&dialog, "ComOK");
        QVERIFY(!dialog.isVisible());
        QVERIFY(dialog.PriorityChanged());
        QCOMPARE(stored(), renamed);
        QCOMPARE(env.scalar("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 100 AND DATAN2 = 1"), 2);
    }

    // Run as its callers run it, after an OK of an earlier showing: nothing but blanks is
    // refused and the editor stays usable; only "Priority" takes the check box over.
    void editHandsBack_data()
    {
        QTest::addColumn<EditRow>("row");
        // clang-format off
        QTest::newRow("class leaves the check alone") << EditRow{"Class", "打ち合わせ", {"TxtEdit=打ち合わせ", "ChkCheck=0"}, true, true, true};
        QTest::newRow("blanks around kept") << EditRow{"Class", " 会議 ", {"TxtEdit= 会議 "}, false, true, false};
        QTest::newRow("priority takes the box") << EditRow{"Priority", "最優先", {"TxtEdit=最優先", "ChkCheck=1"}, false, true, true};
        QTest::newRow("priority box cleared") << EditRow{"Priority", "低", {"TxtEdit=低", "ChkCheck=0"}, true, true, false};
        QTest::newRow("cancel button") << EditRow{"Priority", "高い", {"TxtEdit=変更", "ChkCheck=1"}, false, false, false};
        // clang-format on
    }
    void editHandsBack()
    {
        QFETCH(EditRow, row);
        TestEnvironment env;
        EditHandOver handOver{row.kind, "優先度 - 編集", "高い", row.check, true};
        ModalAnswer answer([&](QWidget* dialog) {
            QVERIFY(!Control(dialog, "ChkCheck")->isVisible());
            QCOMPARE(Shown(dialog, "ChkCheck"), row.kind == "Priority" && row.check ? "1" : "0");
            const QString blanks = " 　 "; // plain and full-width
            Type(dialog, "TxtEdit", blanks);
            Click(dialog, "ComOK");
            QVERIFY(dialog->isVisible());
            QCOMPARE(Shown(dialog, "TxtEdit"), blanks);
            TypeAll(dialog, row.typed);
            Click(dialog, row.ok ? "ComOK" : "ComCancel");
        });
        QCOMPARE(RunEditDialog(env.services, handOver, nullptr), row.ok);
        QCOMPARE(answer.title(), QStringLiteral("優先度 - 編集"));
        QVERIFY(!answer.stayedOpen());
        QCOMPARE(handOver.EditText, row.text);
        QCOMPARE(handOver.EditCheck, row.checkBack);
        QCOMPARE(env.prompter.texts(), QStringList{"入力されていません"});
        QCOMPARE(env.prompter.shown.last().buttons, PromptButtons::Ok);
    }
};

VERDALY_TEST(TestMasters)
#include "TestMasters.moc"
