#include "masters/FrmClass.h"
#include "masters/FrmDayOff.h"
#include "masters/FrmPriority.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

// The transaction each master dialog holds while it is open: begun on opening, committed
// by OK, rolled back by every other way out, nested inside a transaction already open,
// and kept open, with the dialog, when a statement fails.
class TestMasterTransactions final : public QObject
{
    Q_OBJECT

private slots:
    void closing_data();
    void closing();
    void failureKeepsDialogOpen_data();
    void failureKeepsDialogOpen();
};

namespace {

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
            ModalAnswer answer([](QWidget* edit) {
                auto* months = Control<QComboBox>(edit, "CmbMonth");
                auto* days = Control<QComboBox>(edit, "CmbDay");
                months->setCurrentIndex(months->findData(8));
                days->setCurrentIndex(days->findData(13));
                Type(edit, QStringLiteral("TxtComment"), QStringLiteral("内側"));
                Click(edit, "ComOK");
            });
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
    const char* ok() const { return isClass ? "ComOk" : "ComOK"; }

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

void TestMasterTransactions::closing_data()
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
        row("escape") << "escape" << false << false;
        row("destroyed open") << "destroy" << false << false;
        row("ok inside another") << "ok" << true << true;
        row("cancel inside another") << "cancel" << true << false;
    }
}

void TestMasterTransactions::closing()
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
            Click(m.dialog.get(), m.ok());
        else if (how == QLatin1String("cancel"))
            Click(m.dialog.get(), "ComCancel");
        else if (how == QLatin1String("close"))
            m.dialog->close();
        else if (how == QLatin1String("escape"))
            QTest::keyClick(m.dialog.get(), Qt::Key_Escape);
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

void TestMasterTransactions::failureKeepsDialogOpen_data()
{
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("breakIt");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("error");
    // The class dialog's in-use check for a delete finds no entries table; the priority
    // dialog's OK finds no table to write to.
    // clang-format off
    QTest::newRow("class delete") << "class" << "DROP TABLE TRNSCHTSK" << "ComDelete" << "TRNSCHTSK";
    QTest::newRow("priority ok") << "priority" << "ALTER TABLE TRNGENERAL RENAME TO GONE" << "ComOK" << "TRNGENERAL";
    // clang-format on
}

void TestMasterTransactions::failureKeepsDialogOpen()
{
    QFETCH(QString, dialog);
    QFETCH(QString, breakIt);
    QFETCH(QString, button);
    QFETCH(QString, error);
    TestEnvironment env;
    StoreClass(env.db(), 1, QStringLiteral("仕事"));
    Master m(env, dialog);
    m.change();
    const QStringList listed = m.listed();
    env.db().ExecuteSql(breakIt);
    if (m.isClass)
        Control<QListWidget>(m.dialog.get(), "LstClass")->setCurrentRow(0);
    Click(m.dialog.get(), qPrintable(button));
    QCOMPARE(env.prompter.shown.size(), m.isClass ? 2 : 1); // the class dialog asks first
    QCOMPARE(env.prompter.shown.last().icon, PromptIcon::Critical);
    QVERIFY2(env.prompter.shown.last().text.contains(error), qPrintable(env.prompter.shown.last().text));
    QVERIFY(m.dialog->isVisible());
    QCOMPARE(env.db().transactionDepth(), 1);
    QCOMPARE(m.listed(), listed);
    // The dialog's own work so far is still undoable, and the fault with it.
    Click(m.dialog.get(), "ComCancel");
    QCOMPARE(env.db().transactionDepth(), 0);
    QVERIFY(!ChangeStored(env));
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 0);
}

VERDALY_TEST(TestMasterTransactions)
#include "TestMasterTransactions.moc"
