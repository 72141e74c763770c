
#include "common/AppInfo.h"
#include "entries/FrmTask.h"
#include "support/TestKit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

class TestTaskEditor final : public QObject
{
    Q_OBJECT

private slots:
    void loadForNewTask();
    void loadForChange();
    void vanishedRowClosesSilently();
    void checkBoxesEnableTheirControls();
    void validation_data();
    void validation();
    void insertWritesEveryColumn();
    void noDeadlineKeepsTheDate();
    void completionDate_data();
    void completionDate();
    void updateTouchesOnlyItsColumns();
    void rowChangedMeanwhileIsLeftAlone();
    void typedClassStandsOnItsOwn();
    void databaseFailureKeepsTheDialog();
    void focusNormalisation();
    void datePickerLinks();
    void stickyNoteHandOver();
    void priorityLinkRefills();
};

namespace {

struct Editor
{
    explicit Editor(TestEnvironment& env, const QString& mode = QStringLiteral("ADD"), int id = 0,
                    QDate day = QDate(2006, 5, 10))
    {
        handOver.TaskEditMode = mode;
        handOver.TaskEditId = id;
        handOver.TaskDate = day;
        dialog = std::make_unique<FrmTask>(env.services, handOver);
        name = Control<QLineEdit>(dialog.get(), "TxtYouken");
        deadline = Control<QLineEdit>(dialog.get(), "TxtEndDate");
        deadlineTime = Control<QComboBox>(dialog.get(), "CmbEndTime");
        noDeadline = Control<QCheckBox>(dialog.get(), "ChkEndNon");
        priority = Control<QComboBox>(dialog.get(), "CmbYusen");
        classes = Control<QComboBox>(dialog.get(), "CmbBunrui");
        done = Control<QCheckBox>(dialog.get(), "ChkEnd");
        doneDate = Control<QLineEdit>(dialog.get(), "TxtEnd");
        details = Control<QPlainTextEdit>(dialog.get(), "TxtSyousai");
        post = Control<QCheckBox>(dialog.get(), "ChkPost");
        ok = Control<QPushButton>(dialog.get(), "ComOK");
        cancel = Control<QPushButton>(dialog.get(), "ComCancel");
    }

    TaskHandOver handOver;
    std::unique_ptr<FrmTask> dialog;
    QLineEdit* name;
    QLineEdit* deadline;
    QComboBox* deadlineTime;
    QCheckBox* noDeadline;
    QComboBox* priority;
    QComboBox* classes;
    QCheckBox* done;
    QLineEdit* doneDate;
    QPlainTextEdit* details;
    QCheckBox* post;
    QPushButton* ok;
    QPushButton* cancel;
};

StoredEntry SampleTask()
{
    StoredEntry e;
    e.id = 8;
    e.data = QStringLiteral("2");
    e.business = QStringLiteral("見積書");
    e.endDt = QStringLiteral("20060512");
    e.endTm = QStringLiteral("17:00");
    e.endless = QStringLiteral("1");
    e.classId = 3;
    e.alarm = QStringLiteral("q"); // the task editor leaves ALARM alone
    e.priority = 3;
    e.completion = QStringLiteral("0");
    e.compDt = QString();
    e.kind = QStringLiteral("T2");
    e.comment = QStringLiteral("A社向け");
    // Columns the task editor must leave alone.
    e.startDt = QStringLiteral("s");
    e.startTm = QStringLiteral("t");
    return e;
}

} // namespace

void TestTaskEditor::loadForNewTask()
{
    TestEnvironment env;
    Editor e(env);
    QVERIFY(!e.dialog->closedOnLoad());
    QCOMPARE(e.deadline->text(), QStringLiteral("2006/05/10"));
    QCOMPARE(e.doneDate->text(), QStringLiteral("2006/05/10"));
    QVERIFY(!e.done->isChecked());
    QVERIFY(!e.doneDate->isEnabled());
    QVERIFY(!Control<QLabel>(e.dialog.get(), "LabEnd")->isEnabled());
    QVERIFY(e.deadline->isEnabled());
    QCOMPARE(e.deadlineTime->count(), 48);
    QVERIFY(e.deadlineTime->currentText().isEmpty());
    // The priorities in their order, the marked one chosen.
    QCOMPARE(e.priority->count(), 3);
    QCOMPARE(e.priority->itemText(0), QStringLiteral("高"));
    QCOMPARE(e.priority->currentText(), QStringLiteral("中"));
    QCOMPARE(e.priority->currentData().toInt(), 2);
    QCOMPARE(e.noDeadline->text(), QStringLiteral("期限無し"));
    QCOMPARE(e.post->text(), QStringLiteral("付箋紙へ転送"));
    for (const char* name : {"LabClass", "LabPriority", "LabEnd", "LabEndDate", "Label1", "Label2", "Label3", "Label4",
                             "Label5", "Label6", "Label7"})
        Control<QLabel>(e.dialog.get(), name);
}

void TestTaskEditor::loadForChange()
{
    TestEnvironment env;
    StoreClass(env.db(), 3, QStringLiteral("営業"), 1);
    StoreEntry(env.db(), SampleTask());
    Editor e(env, QStringLiteral("UPD"), 8);
    QCOMPARE(e.name->text(), QStringLiteral("見積書"));
    QCOMPARE(e.deadline->text(), QStringLiteral("2006/05/12"));
    QCOMPARE(e.deadlineTime->currentText(), QStringLiteral("17:00"));
    QVERIFY(e.noDeadline->isChecked());
    QVERIFY(!e.deadline->isEnabled());
    QVERIFY(!e.deadlineTime->isEnabled());
    QVERIFY(!Control<QLabel>(e.dialog.get(), "LabEndDate")->isEnabled());
    QCOMPARE(e.priority->currentText(), QStringLiteral("低"));
    QCOMPARE(e.classes->currentText(), QStringLiteral("営業"));
    QCOMPARE(e.details->toPlainText(), QStringLiteral("A社向け"));
    QVERIFY(!e.done->isChecked());
    // No completion date yet: the (disabled) box shows the no-date value.
    QCOMPARE(e.doneDate->text(), QStringLiteral("0100/01/01"));
    QVERIFY(!e.doneDate->isEnabled());

    StoredEntry finished = SampleTask();
    finished.id = 9;
    finished.completion = QStringLiteral("1");
    finished.compDt = QStringLiteral("20060511");
    finished.endless = QStringLiteral("0");
    StoreEntry(env.db(), finished);
    Editor f(env, QStringLiteral("UPD"), 9);
    QVERIFY(f.done->isChecked());
    QCOMPARE(f.doneDate->text(), QStringLiteral("2006/05/11"));
    QVERIFY(f.doneDate->isEnabled());
    QVERIFY(f.deadline->isEnabled());
}

void TestTaskEditor::vanishedRowClosesSilently()
{
    TestEnvironment env;
    Editor e(env, QStringLiteral("UPD"), 77);
    QVERIFY(e.dialog->closedOnLoad());
    QCOMPARE(e.dialog->exec(), int(QDialog::Rejected));
    QVERIFY(env.prompter.shown.isEmpty());
    QVERIFY(!e.handOver.TaskSaved);
}

void TestTaskEditor::checkBoxesEnableTheirControls()
{
    TestEnvironment env;
    Editor e(env);
    auto* labEnd = Control<QLabel>(e.dialog.get(), "LabEnd");
    auto* labEndDate = Control<QLabel>(e.dialog.get(), "LabEndDate");
    e.done->setChecked(true);
    QVERIFY(e.doneDate->isEnabled());
    QVERIFY(labEnd->isEnabled());
    e.done->setChecked(false);
    QVERIFY(!e.doneDate->isEnabled());
    QVERIFY(!labEnd->isEnabled());
    QCOMPARE(e.doneDate->text(), QStringLiteral("2006/05/10"));

    e.noDeadline->setChecked(true);
    QVERIFY(!e.deadline->isEnabled());
    QVERIFY(!labEndDate->isEnabled());
    QVERIFY(!e.deadlineTime->isEnabled());
    QCOMPARE(e.deadline->text(), QStringLiteral("2006/05/10"));
    e.noDeadline->setChecked(false);
    QVERIFY(e.deadline->isEnabled());
    QVERIFY(labEndDate->isEnabled());
    QVERIFY(e.deadlineTime->isEnabled());
}

void TestTaskEditor::validation_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("deadline");
    QTest::addColumn<QString>("time");
    QTest::addColumn<bool>("noDeadline");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("kind");
    const QString noName = QStringLiteral("タスク名を入力してください");
    const QString noDeadline = QStringLiteral("期限を入力してください");
    // clang-format off
    QTest::newRow("nothing") << "" << "" << "" << false << noName << "";
    QTest::newRow("blank name") << "  " << "2006/05/10" << "" << false << noName << "";
    QTest::newRow("no deadline") << "報告書" << "" << "" << false << noDeadline << "";
    QTest::newRow("no deadline, marked so") << "報告書" << "" << "" << true << noDeadline << "";
    QTest::newRow("deadline that is no date") << "報告書" << "来週" << "" << false << noDeadline << "";
    QTest::newRow("T1") << "報告書" << "2006/05/10" << "" << false << "" << "T1";
    QTest::newRow("T2") << "報告書" << "2006/05/10" << "17:00" << false << "" << "T2";
    QTest::newRow("time tidied") << "報告書" << "2006/5/10" << "9:5" << false << "" << "T2";
    QTest::newRow("apostrophe") << "Ann's report" << "2006/05/10" << "" << false << "" << "T1";
    // clang-format on
}

void TestTaskEditor::validation()
{
    QFETCH(QString, name);
    QFETCH(QString, deadline);
    QFETCH(QString, time);
    QFETCH(bool, noDeadline);
    QFETCH(QString, message);
    QFETCH(QString, kind);
    TestEnvironment env;
    Editor e(env);
    e.name->setText(name);
    e.deadline->setText(deadline);
    e.deadlineTime->setEditText(time);
    e.noDeadline->setChecked(noDeadline);
    e.ok->click();
    if (!message.isEmpty()) {
        QCOMPARE(env.prompter.texts(), QStringList{message});
        QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);
        QCOMPARE(env.prompter.shown.front().title, AppInfo::productTitle());
        QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 0);
        QVERIFY(!e.handOver.TaskSaved);
        QCOMPARE(e.name->text(), name);
        return;
    }
    QVERIFY2(env.prompter.shown.isEmpty(), qPrintable(env.prompter.texts().join(QLatin1Char('|'))));
    QVERIFY(e.handOver.TaskSaved);
    QCOMPARE(e.dialog->result(), int(QDialog::Accepted));
    QCOMPARE(e.handOver.TaskEditId, 1);
    QCOMPARE(Column(env.db(), 1, "FROMTOKBN"), kind);
    QCOMPARE(Column(env.db(), 1, "BUSINESS"), name);
    QCOMPARE(Column(env.db(), 1, "ENDDT"), QStringLiteral("20060510"));
}

void TestTaskEditor::insertWritesEveryColumn()
{
    TestEnvironment env;
    StoreClass(env.db(), 3, QStringLiteral("営業"), 1);
    StoredEntry existing = SampleTask();
    existing.id = 30;
    StoreEntry(env.db(), existing);
    Editor e(env);
    e.name->setText(QStringLiteral("請求書の送付"));
    e.deadlineTime->setEditText(QStringLiteral("15:00"));
    e.priority->setCurrentIndex(0);
    e.classes->setCurrentIndex(0);
    e.details->setPlainText(QStringLiteral("経理へ\n控えを保管"));
    e.ok->click();
    QVERIFY(env.prompter.shown.isEmpty());
    QCOMPARE(e.handOver.TaskEditId, 31);
    DatabaseConnection& db = env.db();
    QCOMPARE(Column(db, 31, "DATA"), QStringLiteral("2"));
    QCOMPARE(Column(db, 31, "BUSINESS"), QStringLiteral("請求書の送付"));
    QCOMPARE(Column(db, 31, "STARTDT"), QString());
    QCOMPARE(Column(db, 31, "STARTTM"), QString());
    QCOMPARE(Column(db, 31, "ENDDT"), QStringLiteral("20060510"));
    QCOMPARE(Column(db, 31, "ENDTM"), QStringLiteral("15:00"));
    QCOMPARE(Column(db, 31, "ENDLESS"), QStringLiteral("0"));
    QCOMPARE(Column(db, 31, "CLASS"), QStringLiteral("3"));
    QCOMPARE(Column(db, 31, "ALARM"), QString());
    QCOMPARE(Column(db, 31, "PRIORITY"), QStringLiteral("1"));
    QCOMPARE(Column(db, 31, "COMPLETION"), QStringLiteral("0"));
    // A new open task carries its due day as completion date.
    QCOMPARE(Column(db, 31, "COMPDT"), QStringLiteral("20060510"));
    QCOMPARE(Column(db, 31, "FROMTOKBN"), QStringLiteral("T2"));
    QCOMPARE(Column(db, 31, "COMMENT"), QStringLiteral("経理へ\n控えを保管"));
    QCOMPARE(Column(db, 31, "UPDTIME"), QStringLiteral("2026/11/22 09:30:00"));
}

void TestTaskEditor::noDeadlineKeepsTheDate()
{
    TestEnvironment env;
    Editor e(env);
    e.name->setText(QStringLiteral("いつか読む本"));
    e.noDeadline->setChecked(true);
    e.ok->click();
    QVERIFY(e.handOver.TaskSaved);
    QCOMPARE(Column(env.db(), 1, "ENDLESS"), QStringLiteral("1"));
    QCOMPARE(Column(env.db(), 1, "ENDDT"), QStringLiteral("20060510"));
    QCOMPARE(Column(env.db(), 1, "FROMTOKBN"), QStringLiteral("T1"));
}

void TestTaskEditor::completionDate_data()
{
    QTest::addColumn<QString>("storedCompletion");
    QTest::addColumn<QString>("storedDate");
    QTest::addColumn<bool>("check");
    QTest::addColumn<QString>("typed"); // "-" = leave the box as loaded
    QTest::addColumn<QString>("completion");
    QTest::addColumn<QString>("compDt");
    // clang-format off
    QTest::newRow("done today") << "0" << "" << true << "2006/05/11" << "1" << "20060511";
    QTest::newRow("done, typed loosely") << "0" << "" << true << "2006/5/9" << "1" << "20060509";
    QTest::newRow("done, box emptied") << "0" << "" << true << "" << "1" << "";
    QTest::newRow("done, box not a date") << "0" << "" << true << "昨日" << "1" << "";
    QTest::newRow("undone keeps the date") << "1" << "20060511" << false << "-" << "0" << "20060511";
    QTest::newRow("never done writes the no-date value") << "0" << "" << false << "-" << "0" << "01000101";
    // clang-format on
}

void TestTaskEditor::completionDate()
{
    QFETCH(QString, storedCompletion);
    QFETCH(QString, storedDate);
    QFETCH(bool, check);
    QFETCH(QString, typed);
    QFETCH(QString, completion);
    QFETCH(QString, compDt);
    TestEnvironment env;
    StoredEntry task = SampleTask();
    task.completion = storedCompletion;
    task.compDt = storedDate;
    StoreEntry(env.db(), task);
    Editor e(env, QStringLiteral("UPD"), 8);
    e.done->setChecked(check);
    if (typed != QLatin1String("-"))
        e.doneDate->setText(typed);
    e.ok->click();
    QVERIFY(e.handOver.TaskSaved);
    QCOMPARE(Column(env.db(), 8, "COMPLETION"), completion);
    QCOMPARE(Column(env.db(), 8, "COMPDT"), compDt);
}

void TestTaskEditor::updateTouchesOnlyItsColumns()
{
    TestEnvironment env;
    StoreClass(env.db(), 3, QStringLiteral("営業"), 1);
    StoreEntry(env.db(), SampleTask());
    Editor e(env, QStringLiteral("UPD"), 8);
    e.name->setText(QStringLiteral("見積書 'v2'"));
    e.noDeadline->setChecked(false);
    e.deadline->setText(QStringLiteral("2006/05/20"));
    e.deadlineTime->setEditText(QString());
    e.priority->setCurrentIndex(0);
    e.classes->setCurrentIndex(-1);
    e.details->setPlainText(QStringLiteral("it's urgent"));
    e.ok->click();
    QVERIFY(env.prompter.shown.isEmpty());
    QVERIFY(e.handOver.TaskSaved);
    QCOMPARE(e.handOver.TaskEditId, 8);
    DatabaseConnection& db = env.db();
    QCOMPARE(Column(db, 8, "BUSINESS"), QStringLiteral("見積書 'v2'"));
    QCOMPARE(Column(db, 8, "ENDDT"), QStringLiteral("20060520"));
    QCOMPARE(Column(db, 8, "ENDTM"), QString());
    QCOMPARE(Column(db, 8, "ENDLESS"), QStringLiteral("0"));
    QCOMPARE(Column(db, 8, "CLASS"), QStringLiteral("0"));
    QCOMPARE(Column(db, 8, "PRIORITY"), QStringLiteral("1"));
    QCOMPARE(Column(db, 8, "FROMTOKBN"), QStringLiteral("T1"));
    QCOMPARE(Column(db, 8, "COMMENT"), QStringLiteral("it's urgent"));
    QCOMPARE(Column(db, 8, "UPDTIME"), QStringLiteral("2026/11/22 09:30:00"));
    QCOMPARE(Column(db, 8, "DATA"), QStringLiteral("2"));
    QCOMPARE(Column(db, 8, "STARTDT"), QStringLiteral("s"));
    QCOMPARE(Column(db, 8, "STARTTM"), QStringLiteral("t"));
    QCOMPARE(Column(db, 8, "ALARM"), QStringLiteral("q"));
}

void TestTaskEditor::rowChangedMeanwhileIsLeftAlone()
{
    TestEnvironment env;
    StoreEntry(env.db(), SampleTask());
    Editor e(env, QStringLiteral("UPD"), 8);
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET COMPLETION = '1', UPDTIME = '2006/05/11 10:00:00' "
                                       "WHERE ID = 8"));
    e.name->setText(QStringLiteral("見積書（改）"));
    e.ok->click();
    QVERIFY(env.prompter.shown.isEmpty());
    QVERIFY(e.handOver.TaskSaved);
    QCOMPARE(Column(env.db(), 8, "BUSINESS"), QStringLiteral("見積書"));
    QCOMPARE(Column(env.db(), 8, "COMPLETION"), QStringLiteral("1"));
}

void TestTaskEditor::typedClassStandsOnItsOwn()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral(
        "CREATE TRIGGER refuse_entry BEFORE INSERT ON TRNSCHTSK BEGIN SELECT RAISE(ABORT, 'disk is full'); END"));
    Editor e(env);
    e.dialog->show();
    e.name->setText(QStringLiteral("申請書"));
    e.classes->setEditText(QStringLiteral("総務"));
    e.ok->click();
    QVERIFY(env.prompter.texts().front().contains(QStringLiteral("disk is full")));
    QVERIFY(e.dialog->isVisible());
    QVERIFY(!e.handOver.TaskSaved);
    // The task's statements stand alone: the class was written before the entry failed,
    // and the list knows it, so trying again does not make a second one.
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = '総務'")), 1);
    QCOMPARE(e.classes->currentText(), QStringLiteral("総務"));
    env.db().ExecuteSql(QStringLiteral("DROP TRIGGER refuse_entry"));
    e.ok->click();
    QVERIFY(e.handOver.TaskSaved);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = '総務'")), 1);
    QCOMPARE(Column(env.db(), 1, "CLASS"),
             QString::number(env.scalar(QStringLiteral("SELECT ID AS V FROM MSTCLASS WHERE CLASS = '総務'"))));
}

void TestTaskEditor::databaseFailureKeepsTheDialog()
{
    TestEnvironment env;
    Editor e(env);
    e.dialog->show();
    env.db().ExecuteSql(QStringLiteral("DROP TABLE TRNSCHTSK"));
    e.name->setText(QStringLiteral("年賀状"));
    e.details->setPlainText(QStringLiteral("50枚"));
    e.ok->click();
    QCOMPARE(env.prompter.shown.size(), 1);
    QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Critical);
    QVERIFY(env.prompter.texts().front().contains(QStringLiteral("no such table")));
    QVERIFY(e.dialog->isVisible());
    QVERIFY(!e.handOver.TaskSaved);
    QCOMPARE(e.name->text(), QStringLiteral("年賀状"));
    QCOMPARE(e.details->toPlainText(), QStringLiteral("50枚"));
}

void TestTaskEditor::focusNormalisation()
{
    TestEnvironment env;
    Editor e(env);
    e.deadline->setText(QStringLiteral("2006/6/1"));
    FocusOut(e.deadline);
    QCOMPARE(e.deadline->text(), QStringLiteral("2006/06/01"));
    e.deadline->setText(QStringLiteral("6月1日"));
    FocusOut(e.deadline);
    QVERIFY(e.deadline->text().isEmpty());
    e.deadlineTime->setEditText(QStringLiteral("9:5"));
    FocusOut(e.deadlineTime);
    QCOMPARE(e.deadlineTime->currentText(), QStringLiteral("09:05"));
    e.deadlineTime->setEditText(QStringLiteral("夕方"));
    FocusOut(e.deadlineTime);
    QVERIFY(e.deadlineTime->currentText().isEmpty());
}

void TestTaskEditor::datePickerLinks()
{
    TestEnvironment env;
    Editor e(env);
    e.dialog->move(200, 150);
    e.dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(e.dialog.get()));

    env.datePicker.answers.push_back(QDate(2006, 5, 31));
    QTest::mouseClick(Control<QLabel>(e.dialog.get(), "LabEndDate"), Qt::LeftButton);
    QCOMPARE(env.datePicker.requests.size(), 1);
    const QPoint box = e.deadline->mapTo(e.dialog.get(), QPoint(0, 0));
    QCOMPARE(env.datePicker.requests.front().PickedDate, QDate(2006, 5, 10));
    QCOMPARE(env.datePicker.requests.front().PickerTop, (e.dialog->y() + box.y()) * 15 + 700);
    QCOMPARE(env.datePicker.requests.front().PickerLeft, (e.dialog->x() + box.x()) * 15 + 100);
    QCOMPARE(e.deadline->text(), QStringLiteral("2006/05/31"));

    // The completion link works only while the task is marked done.
    auto* labEnd = Control<QLabel>(e.dialog.get(), "LabEnd");
    QTest::mouseClick(labEnd, Qt::LeftButton);
    QCOMPARE(env.datePicker.requests.size(), 1);
    e.done->setChecked(true);
    e.doneDate->clear();
    env.datePicker.answers.push_back(QDate(2006, 5, 9));
    QTest::mouseClick(labEnd, Qt::LeftButton);
    QCOMPARE(env.datePicker.requests.size(), 2);
    const QPoint doneBox = e.doneDate->mapTo(e.dialog.get(), QPoint(0, 0));
    QCOMPARE(env.datePicker.requests.at(1).PickedDate, QDate(2026, 11, 22));
    QCOMPARE(env.datePicker.requests.at(1).PickerLeft, (e.dialog->x() + doneBox.x()) * 15 + 100);
    QCOMPARE(e.doneDate->text(), QStringLiteral("2006/05/09"));
}

void TestTaskEditor::stickyNoteHandOver()
{
    TestEnvironment env;
    env.random.values.push_back(0.75);
    Editor e(env);
    e.name->setText(QStringLiteral("報告書"));
    e.deadlineTime->setEditText(QStringLiteral("17:00"));
    e.details->setPlainText(QStringLiteral("部長へ"));
    e.post->setChecked(true);
    e.ok->click();
    QVERIFY(e.handOver.TaskSaved);
    QVERIFY(e.handOver.TaskPostRequested);
    QCOMPARE(e.handOver.TaskPostText, QStringLiteral("05/10 17:00  中\r\n報告書\r\n部長へ"));
    QCOMPARE(e.handOver.TaskPostColorIndex, 5);

    TestEnvironment plain;
    Editor f(plain);
    f.handOver.TaskPostRequested = true;
    f.name->setText(QStringLiteral("報告書"));
    f.ok->click();
    QVERIFY(f.handOver.TaskSaved);
    QVERIFY(!f.handOver.TaskPostRequested);
}

void TestTaskEditor::priorityLinkRefills()
{
    TestEnvironment env;
    Editor e(env);
    e.dialog->show();
    e.priority->setCurrentIndex(2); // 低

    ModalAnswer answer1([](QWidget* editor) { Click(editor, "ComCancel"); });
    QTest::mouseClick(Control<QLabel>(e.dialog.get(), "LabPriority"), Qt::LeftButton);
    QVERIFY(answer1.opened());
    QCOMPARE(e.priority->itemText(2), QStringLiteral("低"));

    ModalAnswer answer2([](QWidget* editor) {
        Control<QListWidget>(editor, "LstPriority")->item(2)->setText(QStringLiteral("いつでも"));
        Click(editor, "ComOK");
    });
    QTest::mouseClick(Control<QLabel>(e.dialog.get(), "LabPriority"), Qt::LeftButton);
    QVERIFY(answer2.opened());
    QCOMPARE(e.priority->count(), 3);
    QCOMPARE(e.priority->itemText(2), QStringLiteral("いつでも"));
    QCOMPARE(e.priority->currentData().toInt(), 3);

    e.name->setText(QStringLiteral("片付け"));
    e.ok->click();
    QCOMPARE(Column(env.db(), 1, "PRIORITY"), QStringLiteral("3"));
}

VERDALY_TEST(TestTaskEditor)
#include "TestTaskEditor.moc"
