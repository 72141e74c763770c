#include "masters/FrmClass.h"
#include "masters/FrmDayOff.h"
#include "masters/FrmEdit.h"
#include "masters/FrmPriority.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

// The class, priority and day-off lists, the one-line name editor the first two open, and
// the transaction each list holds while it is open: begun on opening, committed by OK,
// rolled back by every other way out, nested inside a transaction already open, and kept
// open, with the dialog, when a statement fails.
namespace {

void Choose(QWidget* dialog, int month, int day, const QString& remark)
{
    auto* months = Control<QComboBox>(dialog, "CmbMonth");
    auto* days = Control<QComboBox>(dialog, "CmbDay");
    months->setCurrentIndex(months->findData(month));
    days->setCurrentIndex(days->findData(day));
    Type(dialog, QStringLiteral("TxtComment"), remark);
    Click(dialog, "ComOK");
}

QStringList DayOffs(DatabaseConnection& db)
{
    return Lines(db, QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 200 ORDER BY DATAN1, DATAN2, DATAS1"),
                 {"DATAN1", "DATAN2", "DATAS1"});
}

// One master dialog and the one change the tables make in it: a new class "内側", the
// first priority renamed to "内側", or a new day-off 8/13 "内側".
struct Master
{
    Master(TestEnvironment& env, const QString& which)
        : isClass(which == QLatin1String("class")), isDayOff(which == QLatin1String("dayoff"))
    {
        if (isClass)
            dialog = std::make_unique<FrmClass>(env.services);
        else if (isDayOff)
            dialog = std::make_unique<FrmDayOff>(env.services);
        else
            dialog = std::make_unique<FrmPriority>(env.services);
        dialog->show();
    }
    void change()
    {
        if (isDayOff) {
            ModalAnswer answer([](QWidget* edit) { Choose(edit, 8, 13, QStringLiteral("内側")); });
            Click(dialog.get(), "ComADD");
            QVERIFY(answer.opened());
            return;
        }
        if (!isClass)
            Control<QListWidget>(dialog.get(), "LstPriority")->setCurrentRow(0);
        EditAnswer answer(QStringLiteral("内側"));
        Click(dialog.get(), isClass ? "ComInsert" : "ComUpdate");
        QVERIFY(answer.opened());
    }

    bool isClass;
    bool isDayOff;
    std::unique_ptr<QDialog> dialog;
};

bool ChangeStored(TestEnvironment& env)
{
    return env.scalar(QStringLiteral(
               "SELECT (SELECT COUNT(*) FROM MSTCLASS WHERE CLASS = '内側') + (SELECT COUNT(*) FROM TRNGENERAL WHERE "
               "(CODE = 100 AND DATAS1 = '内側') OR (CODE = 200 AND DATAN1 = 8 AND DATAN2 = 13)) AS V")) == 1;
}

} // namespace

class TestMasters final : public QObject
{
    Q_OBJECT

private slots:
    void closing_data()
    {
        QTest::addColumn<QString>("dialog");
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("outer"); // another dialog's transaction is open already
        QTest::addColumn<bool>("kept");
        for (const char* dialog : {"class", "priority", "dayoff"}) {
            const auto row = [dialog](const char* name) -> QTestData& {
                return QTest::addRow("%s %s", dialog, name) << dialog;
            };
            row("ok") << "ok" << false << true;
            row("cancel") << "cancel" << false << false;
            row("destroyed open") << "destroy" << false << false;
            row("ok inside another") << "ok" << true << true;
            row("cancel inside another") << "cancel" << true << false;
            if (qstrcmp(dialog, "dayoff") != 0)
                row("statement fails") << "fail" << false << false;
        }
    }

    void closing()
    {
        QFETCH(QString, dialog);
        QFETCH(QString, how);
        QFETCH(bool, outer);
        QFETCH(bool, kept);
        TestEnvironment env;
        DatabaseConnection& db = env.db();
        if (outer) {
            db.BeginTrans();
            StoreClass(db, 1, QStringLiteral("外側"));
        }
        const int depth = outer ? 1 : 0;
        {
            Master m(env, dialog);
            QCOMPARE(db.transactionDepth(), depth + 1);
            m.change();
            if (how == QLatin1String("ok"))
                Click(m.dialog.get(), m.isClass ? "ComOk" : "ComOK");
            else if (how == QLatin1String("cancel"))
                Click(m.dialog.get(), "ComCancel");
            else if (how == QLatin1String("fail")) {
                // The class dialog's in-use check for a delete finds no entries table; the priority
                // dialog's OK finds no table to write to. The dialog stays open with its transaction,
                // so that Cancel still undoes its work, and the fault with it.
                auto* list = Control<QListWidget>(m.dialog.get(), m.isClass ? "LstClass" : "LstPriority");
                const QStringList listed = LineTexts(list);
                env.db().ExecuteSql(m.isClass ? QStringLiteral("DROP TABLE TRNSCHTSK")
                                              : QStringLiteral("ALTER TABLE TRNGENERAL RENAME TO GONE"));
                list->setCurrentRow(0);
                Click(m.dialog.get(), m.isClass ? "ComDelete" : "ComOK");
                QCOMPARE(env.prompter.shown.size(), m.isClass ? 2 : 1); // the class dialog asks first
                QCOMPARE(env.prompter.shown.last().icon, PromptIcon::Critical);
                QVERIFY(env.prompter.shown.last().text.contains(QLatin1String(m.isClass ? "TRNSCHTSK" : "TRNGENERAL")));
                QVERIFY(m.dialog->isVisible());
                QCOMPARE(env.db().transactionDepth(), 1);
                QCOMPARE(LineTexts(list), listed);
                Click(m.dialog.get(), "ComCancel");
            }
            if (QTest::currentTestFailed())
                return;
            if (how != QLatin1String("destroy")) {
                QVERIFY(!m.dialog->isVisible());
                QCOMPARE(m.dialog->result(), int(kept ? QDialog::Accepted : QDialog::Rejected));
                QCOMPARE(db.transactionDepth(), depth);
            }
        }
        QCOMPARE(db.transactionDepth(), depth);
        QCOMPARE(ChangeStored(env), kept);
        if (!outer)
            return;
        // The outer level is untouched, and still decides about everything inside it.
        QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = '外側'")), 1);
        db.RollbackTrans();
        QVERIFY(!ChangeStored(env));
        QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 0);
    }

    // One sitting: adds land in calendar order, an edit may land on a taken date, and a delete,
    // asked first, takes every day-off of its date; each change is written at once, kept by OK.
    void dayOffDialog()
    {
        TestEnvironment env;
        StoreDayOff(env.db(), 2, 11, QStringLiteral("建国記念の日"));
        StoreDayOff(env.db(), 5, 5, QStringLiteral("こどもの日"));
        FrmDayOff dialog(env.services);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog));
        auto* list = Control<QListWidget>(&dialog, "LstDayOff");
        Click(&dialog, "ComDel"); // nothing selected: nothing asked
        QVERIFY(env.prompter.shown.isEmpty());
        // A new day-off starts on today's date; an impossible or taken date is refused with
        // what was picked and typed still there to be put right.
        const QString badDate = QStringLiteral("日付が正しくありません");
        for (const auto& [year, refused, month, day, remark] :
             {std::tuple{2026, QList<int>{229, 431, 505}, 3, 3, QStringLiteral("ひな祭り")},
              std::tuple{2028, QList<int>{230}, 2, 29, QStringLiteral("New Year's Eve")}}) {
            env.clock.current.setDate(QDate(year, 11, 22));
            env.prompter.shown.clear();
            ModalAnswer answer([&, refused = refused, month = month, day = day, remark = remark](QWidget* edit) {
                QCOMPARE(ShownAll(edit, {"CmbMonth=11", "CmbDay=22"}), QStringList({"CmbMonth=11", "CmbDay=22"}));
                for (const int date : refused) {
                    Choose(edit, date / 100, date % 100, QStringLiteral("休み"));
                    QCOMPARE(ShownAll(edit, {"CmbDay=" + QString::number(date % 100), "TxtComment=休み"}),
                             QStringList({"CmbDay=" + QString::number(date % 100), "TxtComment=休み"}));
                }
                Choose(edit, month, day, remark);
            });
            Click(&dialog, "ComADD");
            QCOMPARE(answer.title(), QStringLiteral("新規 - 休日設定"));
            QCOMPARE(env.prompter.texts(), year == 2026 ? QStringList({badDate, badDate, "既に登録されている日付です"})
                                                        : QStringList{badDate});
            QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);
        }
        env.prompter.shown.clear();
        QCOMPARE(LineIds(list), QList<qint64>({211, 229, 303, 505}));
        list->setCurrentRow(3);
        {
            ModalAnswer answer([](QWidget* edit) { Choose(edit, 8, 13, QStringLiteral("it's お盆")); });
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
            ModalAnswer answer([](QWidget* edit) {
                QCOMPARE(Shown(edit, QStringLiteral("CmbDay")), QStringLiteral("13"));
                QCOMPARE(Shown(edit, QStringLiteral("TxtComment")), QStringLiteral("it's お盆"));
                Choose(edit, 3, 3, QStringLiteral("代休"));
            });
            const QPoint line = list->visualItemRect(list->item(2)).center();
            QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, line);
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, line);
            QCOMPARE(answer.title(), QStringLiteral("編集 - 休日設定"));
        }
        QCOMPARE(LineIds(list), QList<qint64>({229, 303, 303}));
        list->setCurrentRow(2);
        Click(&dialog, "ComDel");
        QCOMPARE(LineTexts(list), QStringList{"02/29 New Year's Eve"});
        Click(&dialog, "ComOK");
        QCOMPARE(env.db().transactionDepth(), 0);
        QCOMPARE(DayOffs(env.db()), QStringList{"2|29|New Year's Eve"});
    }

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
        for (const char* button : {"ComUpdate", "ComDelete", "ComUp", "ComDn"}) {
            EditAnswer answer(QStringLiteral("変更"));
            Click(&dialog, button);
            QVERIFY2(!answer.opened(), button);
        }
        QVERIFY(env.prompter.shown.isEmpty());
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
        QTest::addColumn<bool>("check"); // handed in
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<bool>("ok");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("checkBack");
        using L = QStringList;
        // clang-format off
        QTest::newRow("class leaves the check alone") << "Class" << true << L{"TxtEdit=打ち合わせ", "ChkCheck=0"} << true << "打ち合わせ" << true;
        QTest::newRow("blanks around kept") << "Class" << false << L{"TxtEdit= 会議 "} << true << " 会議 " << false;
        QTest::newRow("priority takes the box") << "Priority" << false << L{"TxtEdit=最優先", "ChkCheck=1"} << true << "最優先" << true;
        QTest::newRow("priority box cleared") << "Priority" << true << L{"TxtEdit=低", "ChkCheck=0"} << true << "低" << false;
        QTest::newRow("cancel button") << "Priority" << false << L{"TxtEdit=変更", "ChkCheck=1"} << false << "高い" << false;
        // clang-format on
    }
    void editHandsBack()
    {
        QFETCH(QString, kind);
        QFETCH(bool, check);
        QFETCH(QStringList, typed);
        QFETCH(bool, ok);
        QFETCH(QString, text);
        QFETCH(bool, checkBack);
        TestEnvironment env;
        EditHandOver handOver{kind, QStringLiteral("優先度 - 編集"), QStringLiteral("高い"), check, false};
        FrmEdit dialog(env.services, handOver);
        dialog.show();
        QVERIFY(!Control(&dialog, "ChkCheck")->isVisible());
        // Only "Priority" takes the check box over.
        QCOMPARE(Shown(&dialog, "ChkCheck"), kind == "Priority" && check ? QStringLiteral("1") : QStringLiteral("0"));
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
        const QString blanks = QStringLiteral(" 　 "); // plain and full-width
        Type(&dialog, QStringLiteral("TxtEdit"), blanks);
        Click(&dialog, "ComOK");
        QVERIFY(dialog.isVisible());
        QVERIFY(!handOver.EditOK);
        QCOMPARE(handOver.EditText, QStringLiteral("旧名"));
        QCOMPARE(Shown(&dialog, "TxtEdit"), blanks);
        QCOMPARE(env.prompter.texts(), QStringList{"入力されていません"});
        QCOMPARE(env.prompter.shown.last().buttons, PromptButtons::Ok);
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

VERDALY_TEST(TestMasters)
#include "TestMasters.moc"
