#include "masters/FrmClass.h"
#include "masters/FrmDayOff.h"
#include "masters/FrmPriority.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QListWidget>
#include <QtTest>

// The transaction each master dialog holds while it is open: begun on opening, committed
// by OK, rolled back by every other way out, nested inside a transaction already open,
// and kept open, with the dialog, when a statement fails.
namespace {

// Picks a date and a remark in the day-off edit dialog and presses OK.
void Choose(QWidget* dialog, int month, int day, const QString& remark)
{
    auto* months = Control<QComboBox>(dialog, "CmbMonth");
    auto* days = Control<QComboBox>(dialog, "CmbDay");
    months->setCurrentIndex(months->findData(month));
    days->setCurrentIndex(days->findData(day));
    Type(dialog, QStringLiteral("TxtComment"), remark);
    Click(dialog, "ComOK");
}

// The day-offs as "month|day|remark" lines in calendar order.
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
    QStringList listed() const
    {
        return LineTexts(Control<QListWidget>(dialog.get(), isClass ? "LstClass" : "LstPriority"));
    }

    bool isClass;
    bool isDayOff;
    std::unique_ptr<QDialog> dialog;
};

bool ChangeStored(TestEnvironment& env)
{
    return env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = '内側'")) +
               env.count(
                   QStringLiteral("TRNGENERAL"),
                   QStringLiteral("(CODE = 100 AND DATAS1 = '内側') OR (CODE = 200 AND DATAN1 = 8 AND DATAN2 = 13)")) ==
           1;
}

} // namespace

class TestMasterTransactions final : public QObject
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
            row("close box") << "close" << false << false;
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
            else if (how == QLatin1String("close"))
                m.dialog->close();
            else if (how == QLatin1String("fail")) {
                // The class dialog's in-use check for a delete finds no entries table; the priority
                // dialog's OK finds no table to write to. The dialog stays open with its transaction,
                // so that Cancel still undoes its work, and the fault with it.
                const QStringList listed = m.listed();
                env.db().ExecuteSql(m.isClass ? QStringLiteral("DROP TABLE TRNSCHTSK")
                                              : QStringLiteral("ALTER TABLE TRNGENERAL RENAME TO GONE"));
                if (m.isClass)
                    Control<QListWidget>(m.dialog.get(), "LstClass")->setCurrentRow(0);
                Click(m.dialog.get(), m.isClass ? "ComDelete" : "ComOK");
                QCOMPARE(env.prompter.shown.size(), m.isClass ? 2 : 1); // the class dialog asks first
                QCOMPARE(env.prompter.shown.last().icon, PromptIcon::Critical);
                QVERIFY(env.prompter.shown.last().text.contains(QLatin1String(m.isClass ? "TRNSCHTSK" : "TRNGENERAL")));
                QVERIFY(m.dialog->isVisible());
                QCOMPARE(env.db().transactionDepth(), 1);
                QCOMPARE(m.listed(), listed);
                Click(m.dialog.get(), "ComCancel");
                QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 0);
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
};

VERDALY_TEST(TestMasterTransactions)
#include "TestMasterTransactions.moc"
