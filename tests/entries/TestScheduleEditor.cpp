
#include "common/AppInfo.h"
#include "common/Units.h"
#include "entries/FrmSchedule.h"
#include "support/TestKit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QtTest>

class TestScheduleEditor final : public QObject
{
    Q_OBJECT

private slots:
    void loadForNewSchedule();
    void loadForChange();
    void vanishedRowClosesSilently();
    void validation_data();
    void validation();
    void insertWritesEveryColumn();
    void newIdFollowsTheLargest();
    void updateTouchesOnlyItsColumns();
    void rowChangedMeanwhileIsLeftAlone();
    void typedClassIsPartOfTheSave();
    void typedExistingClassIsNotInsertedAgain();
    void databaseFailureKeepsTheDialog();
    void cancelWritesNothing();
    void focusNormalisation_data();
    void focusNormalisation();
    void endDateOffersTheStartDate();
    void datePickerLinks();
    void stickyNoteHandOver_data();
    void stickyNoteHandOver();
    void classLinkRefillsInTableOrder();
};

namespace {

// The controls of an open schedule editor.
struct Editor
{
    explicit Editor(TestEnvironment& env, const QString& mode = QStringLiteral("ADD"), int id = 0,
                    QDate day = QDate(2006, 5, 1))
    {
        handOver.ScheduleEditMode = mode;
        handOver.ScheduleEditId = id;
        handOver.ScheduleDate = day;
        dialog = std::make_unique<FrmSchedule>(env.services, handOver);
        subject = Control<QLineEdit>(dialog.get(), "TxtYouken");
        startDate = Control<QLineEdit>(dialog.get(), "TxtStartDate");
        endDate = Control<QLineEdit>(dialog.get(), "TxtEndDate");
        startTime = Control<QComboBox>(dialog.get(), "CmbStartTime");
        endTime = Control<QComboBox>(dialog.get(), "CmbEndTime");
        classes = Control<QComboBox>(dialog.get(), "CmbBunrui");
        alarm = Control<QCheckBox>(dialog.get(), "ChkAraamu");
        details = Control<QPlainTextEdit>(dialog.get(), "TxtSyousai");
        post = Control<QCheckBox>(dialog.get(), "ChkPost");
        ok = Control<QPushButton>(dialog.get(), "ComOK");
        cancel = Control<QPushButton>(dialog.get(), "ComCancel");
    }
    void fill(const QString& s, const QString& sd, const QString& st, const QString& ed, const QString& et)
    {
        subject->setText(s);
        startDate->setText(sd);
        startTime->setEditText(st);
        endDate->setText(ed);
        endTime->setEditText(et);
    }

    ScheduleHandOver handOver;
    std::unique_ptr<FrmSchedule> dialog;
    QLineEdit* subject;
    QLineEdit* startDate;
    QLineEdit* endDate;
    QComboBox* startTime;
    QComboBox* endTime;
    QComboBox* classes;
    QCheckBox* alarm;
    QPlainTextEdit* details;
    QCheckBox* post;
    QPushButton* ok;
    QPushButton* cancel;
};

StoredEntry SampleRow()
{
    StoredEntry e;
    e.id = 5;
    e.business = QStringLiteral("歯医者");
    e.startDt = QStringLiteral("20060503");
    e.startTm = QStringLiteral("14:30");
    e.endDt = QStringLiteral("20060503");
    e.endTm = QStringLiteral("15:00");
    e.classId = 7;
    e.alarm = QStringLiteral("1");
    e.kind = QStringLiteral("A4");
    e.comment = QStringLiteral("保険証を持参\n二行目");
    // Columns the schedule editor must leave alone.
    e.endless = QStringLiteral("x");
    e.priority = 9;
    e.completion = QStringLiteral("y");
    e.compDt = QStringLiteral("z");
    return e;
}

} // namespace

void TestScheduleEditor::loadForNewSchedule()
{
    TestEnvironment env;
    StoreClass(env.db(), 1, QStringLiteral("仕事"), 3);
    StoreClass(env.db(), 2, QStringLiteral("私用"), 1);
    StoreClass(env.db(), 3, QStringLiteral("家族"), 2);
    Editor e(env);
    QVERIFY(!e.dialog->closedOnLoad());
    QCOMPARE(e.startDate->text(), QStringLiteral("2006/05/01"));
    QVERIFY(e.subject->text().isEmpty());
    QVERIFY(e.endDate->text().isEmpty());
    QVERIFY(e.startTime->currentText().isEmpty());
    QVERIFY(e.endTime->currentText().isEmpty());
    QVERIFY(!e.alarm->isChecked());
    // The time choices come from the table, not from the form.
    QCOMPARE(e.startTime->count(), 48);
    QCOMPARE(e.endTime->count(), 48);
    QCOMPARE(e.startTime->itemText(0), QStringLiteral("00:00"));
    QCOMPARE(e.startTime->itemText(47), QStringLiteral("23:30"));
    QCOMPARE(e.endTime->itemData(19).toInt(), 570);
    // Classes in their sort order, with their IDs, none chosen.
    QCOMPARE(e.classes->count(), 3);
    QCOMPARE(e.classes->itemText(0), QStringLiteral("私用"));
    QCOMPARE(e.classes->itemText(1), QStringLiteral("家族"));
    QCOMPARE(e.classes->itemData(2).toInt(), 1);
    QVERIFY(e.classes->currentText().isEmpty());
    QCOMPARE(Control<QCheckBox>(e.dialog.get(), "ChkAraamu")->text(), QStringLiteral("アラーム"));
    QCOMPARE(Control<QCheckBox>(e.dialog.get(), "ChkPost")->text(), QStringLiteral("付箋紙へ転送"));
    QCOMPARE(e.cancel->text(), QStringLiteral("キャンセル"));
    for (const char* name : {"LabStartDate", "LabEndDate", "LabClass", "Label1", "Label2", "Label3", "Label4", "Label5",
                             "Label6", "Label7"})
        Control<QLabel>(e.dialog.get(), name);
}

void TestScheduleEditor::loadForChange()
{
    TestEnvironment env;
    StoreClass(env.db(), 4, QStringLiteral("仕事"), 1);
    StoreClass(env.db(), 7, QStringLiteral("病院"), 2);
    StoreEntry(env.db(), SampleRow());
    Editor e(env, QStringLiteral("UPD"), 5);
    QVERIFY(!e.dialog->closedOnLoad());
    QCOMPARE(e.subject->text(), QStringLiteral("歯医者"));
    QCOMPARE(e.startDate->text(), QStringLiteral("2006/05/03"));
    QCOMPARE(e.startTime->currentText(), QStringLiteral("14:30"));
    QCOMPARE(e.endDate->text(), QStringLiteral("2006/05/03"));
    QCOMPARE(e.endTime->currentText(), QStringLiteral("15:00"));
    QVERIFY(e.alarm->isChecked());
    QCOMPARE(e.classes->currentText(), QStringLiteral("病院"));
    QCOMPARE(e.details->toPlainText(), QStringLiteral("保険証を持参\n二行目"));

    // A class that no longer exists and no end date.
    StoredEntry other = SampleRow();
    other.id = 6;
    other.classId = 99;
    other.endDt.clear();
    other.alarm = QStringLiteral("0");
    StoreEntry(env.db(), other);
    Editor f(env, QStringLiteral("UPD"), 6);
    QCOMPARE(f.classes->currentIndex(), -1);
    QVERIFY(f.classes->currentText().isEmpty());
    QVERIFY(f.endDate->text().isEmpty());
    QVERIFY(!f.alarm->isChecked());
}

void TestScheduleEditor::vanishedRowClosesSilently()
{
    TestEnvironment env;
    Editor e(env, QStringLiteral("UPD"), 42);
    QVERIFY(e.dialog->closedOnLoad());
    QCOMPARE(e.dialog->exec(), int(QDialog::Rejected));
    QVERIFY(env.prompter.shown.isEmpty());
    QVERIFY(!e.handOver.ScheduleSaved);
}

void TestScheduleEditor::validation_data()
{
    QTest::addColumn<QString>("subject");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("startTime");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("endTime");
    QTest::addColumn<QString>("message"); // "" = saved
    QTest::addColumn<QString>("kind");

    const QString noSubject = QStringLiteral("予定を入力してください");
    const QString noStart = QStringLiteral("開始日付を入力してください");
    const QString badDates = QStringLiteral("日時の開始と終了日付が正しくありません");
    const QString badTimes = QStringLiteral("日時の開始と終了時間が正しくありません");
    // clang-format off
    QTest::newRow("subject and start both empty") << "" << "" << "" << "" << "" << noSubject << "";
    QTest::newRow("blank subject") << "   " << "2006/05/01" << "" << "" << "" << noSubject << "";
    QTest::newRow("no start date") << "会議" << "" << "10:00" << "" << "" << noStart << "";
    QTest::newRow("start date that is no date") << "会議" << "あした" << "" << "" << "" << noStart << "";
    QTest::newRow("end before start") << "会議" << "2006/05/01" << "" << "2006/04/30" << "" << badDates << "";
    QTest::newRow("end that is no date") << "会議" << "2006/05/01" << "" << "5月2日" << "" << badDates << "";
    QTest::newRow("same day, times backwards") << "会議" << "2006/05/01" << "10:00" << "2006/05/01" << "09:00" << badTimes << "";
    QTest::newRow("same day written differently") << "会議" << "2006/05/01" << "10:00" << "2006/5/1" << "09:00" << badTimes << "";
    QTest::newRow("no end date, times backwards") << "会議" << "2006/05/01" << "11:00" << "" << "10:00" << badTimes << "";
    QTest::newRow("equal times A5") << "会議" << "2006/05/01" << "10:00" << "2006/05/01" << "10:00" << "" << "A5";
    QTest::newRow("over midnight B4") << "夜勤" << "2006/05/01" << "23:00" << "2006/05/02" << "01:00" << "" << "B4";
    QTest::newRow("no end date D4") << "会議" << "2006/05/01" << "10:00" << "" << "11:00" << "" << "D4";
    QTest::newRow("A1") << "休暇" << "2006/05/01" << "" << "2006/05/01" << "" << "" << "A1";
    QTest::newRow("A2") << "締切" << "2006/05/01" << "" << "2006/05/01" << "17:00" << "" << "A2";
    QTest::newRow("A3") << "朝礼" << "2006/05/01" << "08:30" << "2006/05/01" << "" << "" << "A3";
    QTest::newRow("A4") << "会議" << "2006/05/01" << "09:00" << "2006/05/01" << "10:30" << "" << "A4";
    QTest::newRow("D1") << "旅行" << "2006/05/01" << "" << "" << "" << "" << "D1";
    QTest::newRow("B1") << "出張" << "2006/05/01" << "" << "2006/05/02" << "" << "" << "B1";
    QTest::newRow("C1") << "連休" << "2006/05/01" << "" << "2006/05/05" << "" << "" << "C1";
    QTest::newRow("C4 times backwards on other days") << "研修" << "2006/05/01" << "18:00" << "2006/05/03" << "09:00" << "" << "C4";
    QTest::newRow("apostrophe") << "Bob's party" << "2006/05/01" << "" << "" << "" << "" << "D1";
    QTest::newRow("typed forms are tidied") << "会議" << "2006/5/1" << "9:5" << "" << "10:0" << "" << "D4";
    // clang-format on
}

void TestScheduleEditor::validation()
{
    QFETCH(QString, subject);
    QFETCH(QString, start);
    QFETCH(QString, startTime);
    QFETCH(QString, end);
    QFETCH(QString, endTime);
    QFETCH(QString, message);
    QFETCH(QString, kind);

    TestEnvironment env;
    Editor e(env);
    e.fill(subject, start, startTime, end, endTime);
    e.ok->click();
    if (!message.isEmpty()) {
        QCOMPARE(env.prompter.texts(), QStringList{message});
        QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);
        QCOMPARE(env.prompter.shown.front().title, AppInfo::productTitle());
        QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 0);
        QVERIFY(!e.handOver.ScheduleSaved);
        QCOMPARE(e.dialog->result(), 0);
        QCOMPARE(e.subject->text(), subject);
        return;
    }
    QVERIFY2(env.prompter.shown.isEmpty(), qPrintable(env.prompter.texts().join(QLatin1Char('|'))));
    QVERIFY(e.handOver.ScheduleSaved);
    QCOMPARE(e.dialog->result(), int(QDialog::Accepted));
    QCOMPARE(e.handOver.ScheduleEditId, 1); // the first entry of an empty table
    QCOMPARE(Column(env.db(), 1, "FROMTOKBN"), kind);
    QCOMPARE(Column(env.db(), 1, "BUSINESS"), subject);
    QCOMPARE(Column(env.db(), 1, "STARTDT"), QStringLiteral("20060501"));
}

void TestScheduleEditor::insertWritesEveryColumn()
{
    TestEnvironment env;
    StoreClass(env.db(), 4, QStringLiteral("仕事"), 1);
    Editor e(env);
    e.fill(QStringLiteral("打ち合わせ 'A社'"), QStringLiteral("2006/05/01"), QStringLiteral("09:00"),
           QStringLiteral("2006/05/03"), QStringLiteral("18:00"));
    e.classes->setCurrentIndex(0);
    e.alarm->setChecked(true);
    e.details->setPlainText(QStringLiteral("会議室B\n資料'20部'"));
    e.ok->click();
    QVERIFY(env.prompter.shown.isEmpty());
    DatabaseConnection& db = env.db();
    QCOMPARE(Column(db, 1, "DATA"), QStringLiteral("1"));
    QCOMPARE(Column(db, 1, "BUSINESS"), QStringLiteral("打ち合わせ 'A社'"));
    QCOMPARE(Column(db, 1, "STARTDT"), QStringLiteral("20060501"));
    QCOMPARE(Column(db, 1, "STARTTM"), QStringLiteral("09:00"));
    QCOMPARE(Column(db, 1, "ENDDT"), QStringLiteral("20060503"));
    QCOMPARE(Column(db, 1, "ENDTM"), QStringLiteral("18:00"));
    QCOMPARE(Column(db, 1, "ENDLESS"), QString());
    QCOMPARE(Column(db, 1, "CLASS"), QStringLiteral("4"));
    QCOMPARE(Column(db, 1, "ALARM"), QStringLiteral("1"));
    QCOMPARE(Column(db, 1, "PRIORITY"), QStringLiteral("0"));
    QCOMPARE(Column(db, 1, "COMPLETION"), QString());
    QCOMPARE(Column(db, 1, "COMPDT"), QString());
    QCOMPARE(Column(db, 1, "FROMTOKBN"), QStringLiteral("C4"));
    QCOMPARE(Column(db, 1, "COMMENT"), QStringLiteral("会議室B\n資料'20部'"));
    QCOMPARE(Column(db, 1, "UPDTIME"), QStringLiteral("2026/11/22 09:30:00"));
    QCOMPARE(db.transactionDepth(), 0);
}

void TestScheduleEditor::newIdFollowsTheLargest()
{
    TestEnvironment env;
    StoredEntry existing = SampleRow();
    existing.id = 41;
    StoreEntry(env.db(), existing);
    Editor e(env);
    e.fill(QStringLiteral("会議"), QStringLiteral("2006/05/01"), QString(), QString(), QString());
    e.ok->click();
    QCOMPARE(e.handOver.ScheduleEditId, 42);
    QCOMPARE(Column(env.db(), 42, "BUSINESS"), QStringLiteral("会議"));
    QCOMPARE(Column(env.db(), 42, "ALARM"), QStringLiteral("0"));
    QCOMPARE(Column(env.db(), 42, "CLASS"), QStringLiteral("0"));
}

void TestScheduleEditor::updateTouchesOnlyItsColumns()
{
    TestEnvironment env;
    StoreClass(env.db(), 7, QStringLiteral("病院"), 1);
    StoreEntry(env.db(), SampleRow());
    Editor e(env, QStringLiteral("UPD"), 5);
    e.fill(QStringLiteral("歯医者（再診）"), QStringLiteral("2006/05/04"), QStringLiteral("10:00"), QString(),
           QString());
    e.alarm->setChecked(false);
    e.classes->setCurrentIndex(-1);
    e.details->setPlainText(QStringLiteral("it's done"));
    e.ok->click();
    QVERIFY(env.prompter.shown.isEmpty());
    QVERIFY(e.handOver.ScheduleSaved);
    QCOMPARE(e.handOver.ScheduleEditId, 5);
    DatabaseConnection& db = env.db();
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 1);
    QCOMPARE(Column(db, 5, "BUSINESS"), QStringLiteral("歯医者（再診）"));
    QCOMPARE(Column(db, 5, "STARTDT"), QStringLiteral("20060504"));
    QCOMPARE(Column(db, 5, "STARTTM"), QStringLiteral("10:00"));
    QCOMPARE(Column(db, 5, "ENDDT"), QString());
    QCOMPARE(Column(db, 5, "ENDTM"), QString());
    QCOMPARE(Column(db, 5, "CLASS"), QStringLiteral("0"));
    QCOMPARE(Column(db, 5, "ALARM"), QStringLiteral("0"));
    QCOMPARE(Column(db, 5, "FROMTOKBN"), QStringLiteral("D3"));
    QCOMPARE(Column(db, 5, "COMMENT"), QStringLiteral("it's done"));
    QCOMPARE(Column(db, 5, "UPDTIME"), QStringLiteral("2026/11/22 09:30:00"));
    QCOMPARE(Column(db, 5, "DATA"), QStringLiteral("1"));
    QCOMPARE(Column(db, 5, "ENDLESS"), QStringLiteral("x"));
    QCOMPARE(Column(db, 5, "PRIORITY"), QStringLiteral("9"));
    QCOMPARE(Column(db, 5, "COMPLETION"), QStringLiteral("y"));
    QCOMPARE(Column(db, 5, "COMPDT"), QStringLiteral("z"));
}

void TestScheduleEditor::rowChangedMeanwhileIsLeftAlone()
{
    TestEnvironment env;
    StoreEntry(env.db(), SampleRow());
    Editor e(env, QStringLiteral("UPD"), 5);
    // Someone else (the alarm, the list) writes the row while the editor is open.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = '他の変更', UPDTIME = '2006/05/02 08:00:00' "
                                       "WHERE ID = 5"));
    e.subject->setText(QStringLiteral("私の変更"));
    e.ok->click();
    QVERIFY(env.prompter.shown.isEmpty());
    QVERIFY(e.handOver.ScheduleSaved);
    QCOMPARE(e.dialog->result(), int(QDialog::Accepted));
    QCOMPARE(Column(env.db(), 5, "BUSINESS"), QStringLiteral("他の変更"));
    QCOMPARE(Column(env.db(), 5, "UPDTIME"), QStringLiteral("2006/05/02 08:00:00"));
}

void TestScheduleEditor::typedClassIsPartOfTheSave()
{
    TestEnvironment env;
    StoreClass(env.db(), 3, QStringLiteral("仕事"), 1);
    env.db().ExecuteSql(QStringLiteral(
        "CREATE TRIGGER refuse_entry BEFORE INSERT ON TRNSCHTSK BEGIN SELECT RAISE(ABORT, 'disk is full'); END"));
    Editor e(env);
    e.dialog->show();
    e.fill(QStringLiteral("学会"), QStringLiteral("2006/05/01"), QString(), QString(), QString());
    e.classes->setEditText(QStringLiteral("出張"));
    e.ok->click();

    // The entry failed, so the class made for it is gone too, from the table and the list.
    QCOMPARE(env.prompter.texts().size(), 1);
    QVERIFY(env.prompter.texts().front().contains(QStringLiteral("disk is full")));
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 1);
    QCOMPARE(e.classes->count(), 1);
    QCOMPARE(e.classes->currentText(), QStringLiteral("出張"));
    QCOMPARE(e.subject->text(), QStringLiteral("学会"));
    QVERIFY(e.dialog->isVisible());
    QVERIFY(!e.handOver.ScheduleSaved);
    QCOMPARE(env.db().transactionDepth(), 0);

    env.db().ExecuteSql(QStringLiteral("DROP TRIGGER refuse_entry"));
    e.ok->click();
    QVERIFY(e.handOver.ScheduleSaved);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = '出張'")), 1);
    QCOMPARE(env.scalar(QStringLiteral("SELECT ID AS V FROM MSTCLASS WHERE CLASS = '出張'")), qint64(4));
    QCOMPARE(env.scalar(QStringLiteral("SELECT SORTKEY AS V FROM MSTCLASS WHERE CLASS = '出張'")), qint64(0));
    QCOMPARE(Column(env.db(), 1, "CLASS"), QStringLiteral("4"));
}

void TestScheduleEditor::typedExistingClassIsNotInsertedAgain()
{
    TestEnvironment env;
    StoreClass(env.db(), 3, QStringLiteral("仕事"), 1);
    Editor e(env);
    e.fill(QStringLiteral("会議"), QStringLiteral("2006/05/01"), QString(), QString(), QString());
    e.classes->setEditText(QStringLiteral(" 仕事 "));
    e.ok->click();
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 1);
    QCOMPARE(Column(env.db(), 1, "CLASS"), QStringLiteral("3"));
}

void TestScheduleEditor::databaseFailureKeepsTheDialog()
{
    TestEnvironment env;
    Editor e(env);
    e.dialog->show();
    env.db().ExecuteSql(QStringLiteral("DROP TABLE TRNSCHTSK"));
    e.fill(QStringLiteral("健康診断"), QStringLiteral("2006/05/01"), QStringLiteral("09:00"), QString(), QString());
    e.details->setPlainText(QStringLiteral("朝食抜き"));
    e.classes->setEditText(QStringLiteral("健康"));
    e.ok->click();
    QCOMPARE(env.prompter.shown.size(), 1);
    QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Critical);
    QVERIFY(env.prompter.texts().front().contains(QStringLiteral("no such table")));
    QVERIFY(e.dialog->isVisible());
    QVERIFY(!e.handOver.ScheduleSaved);
    QCOMPARE(e.subject->text(), QStringLiteral("健康診断"));
    QCOMPARE(e.startTime->currentText(), QStringLiteral("09:00"));
    QCOMPARE(e.details->toPlainText(), QStringLiteral("朝食抜き"));
    QCOMPARE(e.classes->currentText(), QStringLiteral("健康"));
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 0);
    QCOMPARE(env.db().transactionDepth(), 0);
}

void TestScheduleEditor::cancelWritesNothing()
{
    TestEnvironment env;
    Editor e(env);
    e.dialog->show();
    e.fill(QStringLiteral("会議"), QStringLiteral("2006/05/01"), QString(), QString(), QString());
    e.classes->setEditText(QStringLiteral("新分類"));
    e.cancel->click();
    QVERIFY(!e.dialog->isVisible());
    QVERIFY(!e.handOver.ScheduleSaved);
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 0);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 0);
}

void TestScheduleEditor::focusNormalisation_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    // clang-format off
    QTest::newRow("9:5") << "CmbStartTime" << "9:5" << "09:05";
    QTest::newRow("7:3") << "CmbEndTime" << "7:3" << "07:03";
    QTest::newRow("full-width time") << "CmbEndTime" << "１８：００" << "18:00";
    QTest::newRow("no time") << "CmbStartTime" << "朝" << "";
    QTest::newRow("25:00") << "CmbEndTime" << "25:00" << "";
    QTest::newRow("short date") << "TxtStartDate" << "2006/5/3" << "2006/05/03";
    QTest::newRow("month and day") << "TxtStartDate" << "5/3" << "2026/05/03";
    QTest::newRow("no date") << "TxtStartDate" << "2006/02/30" << "";
    QTest::newRow("end date is left as typed") << "TxtEndDate" << "2006/5/3" << "2006/5/3";
    // clang-format on
}

void TestScheduleEditor::focusNormalisation()
{
    QFETCH(QString, control);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    TestEnvironment env;
    Editor e(env);
    QWidget* widget = Control<QWidget>(e.dialog.get(), qPrintable(control));
    if (auto* box = qobject_cast<QLineEdit*>(widget))
        box->setText(typed);
    else
        qobject_cast<QComboBox*>(widget)->setEditText(typed);
    FocusOut(widget);
    if (auto* box = qobject_cast<QLineEdit*>(widget))
        QCOMPARE(box->text(), shown);
    else
        QCOMPARE(qobject_cast<QComboBox*>(widget)->currentText(), shown);
    QVERIFY(env.prompter.shown.isEmpty());
}

void TestScheduleEditor::endDateOffersTheStartDate()
{
    TestEnvironment env;
    Editor e(env);
    FocusIn(e.endDate);
    QCOMPARE(e.endDate->text(), QStringLiteral("2006/05/01"));
    // What is already there stays.
    e.endDate->setText(QStringLiteral("2006/05/09"));
    FocusIn(e.endDate);
    QCOMPARE(e.endDate->text(), QStringLiteral("2006/05/09"));
    // Nothing to offer when the start is no date.
    e.endDate->clear();
    e.startDate->setText(QStringLiteral("未定"));
    FocusIn(e.endDate);
    QVERIFY(e.endDate->text().isEmpty());
}

void TestScheduleEditor::datePickerLinks()
{
    TestEnvironment env;
    Editor e(env);
    e.dialog->move(120, 80);
    e.dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(e.dialog.get()));
    QCOMPARE(Units::LogicalDpi(e.dialog.get()), 96.0);

    env.datePicker.answers.push_back(QDate(2006, 6, 15));
    QTest::mouseClick(Control<QLabel>(e.dialog.get(), "LabStartDate"), Qt::LeftButton);
    QCOMPARE(env.datePicker.requests.size(), 1);
    const DatePickHandOver asked = env.datePicker.requests.front();
    const QPoint box = e.startDate->mapTo(e.dialog.get(), QPoint(0, 0));
    QCOMPARE(asked.PickedDate, QDate(2006, 5, 1));
    QCOMPARE(asked.PickerTop, (e.dialog->y() + box.y()) * 15 + 700);
    QCOMPARE(asked.PickerLeft, (e.dialog->x() + box.x()) * 15 + 50);
    QCOMPARE(e.startDate->text(), QStringLiteral("2006/06/15"));

    // An empty end box opens on today; a cancelled pick leaves the box alone.
    env.datePicker.answers.push_back(QDate());
    QTest::mouseClick(Control<QLabel>(e.dialog.get(), "LabEndDate"), Qt::LeftButton);
    QCOMPARE(env.datePicker.requests.size(), 2);
    const DatePickHandOver second = env.datePicker.requests.at(1);
    const QPoint endBox = e.endDate->mapTo(e.dialog.get(), QPoint(0, 0));
    QCOMPARE(second.PickedDate, QDate(2026, 11, 22));
    QCOMPARE(second.PickerTop, (e.dialog->y() + endBox.y()) * 15 + 700);
    QVERIFY(second.PickerTop > asked.PickerTop);
    QVERIFY(e.endDate->text().isEmpty());

    env.datePicker.answers.push_back(QDate(2006, 6, 20));
    QTest::mouseClick(Control<QLabel>(e.dialog.get(), "LabEndDate"), Qt::LeftButton);
    QCOMPARE(e.endDate->text(), QStringLiteral("2006/06/20"));
}

void TestScheduleEditor::stickyNoteHandOver_data()
{
    QTest::addColumn<QString>("startTime");
    QTest::addColumn<QString>("end");
    QTest::addColumn<QString>("endTime");
    QTest::addColumn<double>("random");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("color");
    // clang-format off
    QTest::newRow("start only") << "09:00" << "" << "" << 0.0 << "05/01 09:00\r\n会議\r\n3F 会議室" << 0;
    QTest::newRow("end time") << "09:00" << "" << "10:30" << 0.5 << "05/01 09:00 - 10:30\r\n会議\r\n3F 会議室" << 3;
    QTest::newRow("end date") << "" << "2006/05/03" << "" << 0.999 << "05/01  - 05/03 \r\n会議\r\n3F 会議室" << 6;
    QTest::newRow("both ends") << "23:00" << "2006/05/02" << "01:00" << 0.2 << "05/01 23:00 - 05/02 01:00\r\n会議\r\n3F 会議室" << 1;
    // clang-format on
}

void TestScheduleEditor::stickyNoteHandOver()
{
    QFETCH(QString, startTime);
    QFETCH(QString, end);
    QFETCH(QString, endTime);
    QFETCH(double, random);
    QFETCH(QString, text);
    QFETCH(int, color);
    TestEnvironment env;
    env.random.values.push_back(random);
    Editor e(env);
    e.fill(QStringLiteral("会議"), QStringLiteral("2006/05/01"), startTime, end, endTime);
    e.details->setPlainText(QStringLiteral("3F 会議室"));
    e.post->setChecked(true);
    e.ok->click();
    QVERIFY(e.handOver.ScheduleSaved);
    QVERIFY(e.handOver.PostRequested);
    QCOMPARE(e.handOver.PostText, text);
    QCOMPARE(e.handOver.PostColorIndex, color);

    TestEnvironment plain;
    Editor f(plain);
    f.handOver.PostRequested = true; // left over from an earlier showing
    f.fill(QStringLiteral("会議"), QStringLiteral("2006/05/01"), startTime, end, endTime);
    f.ok->click();
    QVERIFY(f.handOver.ScheduleSaved);
    QVERIFY(!f.handOver.PostRequested);
}

void TestScheduleEditor::classLinkRefillsInTableOrder()
{
    TestEnvironment env;
    StoreClass(env.db(), 1, QStringLiteral("仕事"), 2);
    StoreClass(env.db(), 2, QStringLiteral("私用"), 1);
    Editor e(env);
    e.dialog->show();
    e.classes->setCurrentIndex(1); // 仕事
    QCOMPARE(e.classes->itemText(0), QStringLiteral("私用"));

    // Cancelled: the list stays as it was.
    ModalAnswer answer1([](QWidget* editor) { Click(editor, "ComCancel"); });
    QTest::mouseClick(Control<QLabel>(e.dialog.get(), "LabClass"), Qt::LeftButton);
    QVERIFY(answer1.opened());
    QCOMPARE(e.classes->itemText(0), QStringLiteral("私用"));

    // Confirmed: the list is read again, in the table's own order, the choice kept.
    ModalAnswer answer2([](QWidget* editor) {
        auto* list = Control<QListWidget>(editor, "LstClass");
        list->item(0)->setText(QStringLiteral("個人"));
        Click(editor, "ComOk");
    });
    QTest::mouseClick(Control<QLabel>(e.dialog.get(), "LabClass"), Qt::LeftButton);
    QVERIFY(answer2.opened());
    QCOMPARE(e.classes->count(), 2);
    QCOMPARE(e.classes->itemData(0).toInt(), 1);
    QCOMPARE(e.classes->itemData(1).toInt(), 2);
    QCOMPARE(e.classes->itemText(1), QStringLiteral("個人"));
    QCOMPARE(e.classes->currentText(), QStringLiteral("仕事"));
    QCOMPARE(e.classes->currentData().toInt(), 1);
}

VERDALY_TEST(TestScheduleEditor)
#include "TestScheduleEditor.moc"
