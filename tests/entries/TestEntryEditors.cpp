#include "entries/FrmSchedule.h"
#include "entries/FrmTask.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

// The schedule and the task editor, driven through one set of tables: what they load, what
// they write, and what they do when something goes wrong.
class TestEntryEditors final : public QObject
{
    Q_OBJECT

private slots:
    void saves_data();
    void saves();
    void failureKeepsWhatWasTyped_data();
    void failureKeepsWhatWasTyped();
    void vanishedRowAndCancelWriteNothing_data();
    void vanishedRowAndCancelWriteNothing();
    void rowChangedMeanwhileIsLeftAlone_data();
    void rowChangedMeanwhileIsLeftAlone();
    void stickyNoteHandOver_data();
    void stickyNoteHandOver();
    void focusNormalisation_data();
    void focusNormalisation();
    void datePicker_data();
    void datePicker();
    void listLinkRefills_data();
    void listLinkRefills();
    void taskCheckBoxesEnableTheirControls();
};

namespace {

// Either editor on its hand-over: new ones start on 2006/05/01 (schedule) or 2006/05/10 (task).
struct Editor
{
    Editor(TestEnvironment& env, const QString& editor, int id = 0) : task(editor == QLatin1String("task"))
    {
        const QString mode = id ? QStringLiteral("UPD") : QStringLiteral("ADD");
        if (task) {
            th.TaskEditMode = mode;
            th.TaskEditId = id;
            th.TaskDate = QDate(2006, 5, 10);
            dialog = std::make_unique<FrmTask>(env.services, th);
        } else {
            sh.ScheduleEditMode = mode;
            sh.ScheduleEditId = id;
            sh.ScheduleDate = QDate(2006, 5, 1);
            dialog = std::make_unique<FrmSchedule>(env.services, sh);
        }
    }
    QWidget* w() const { return dialog.get(); }
    bool saved() const { return task ? th.TaskSaved : sh.ScheduleSaved; }
    int id() const { return task ? th.TaskEditId : sh.ScheduleEditId; }
    bool& postRequested() { return task ? th.TaskPostRequested : sh.PostRequested; }
    QString postText() const { return task ? th.TaskPostText : sh.PostText; }
    int postColor() const { return task ? th.TaskPostColorIndex : sh.PostColorIndex; }

    bool task;
    ScheduleHandOver sh;
    TaskHandOver th;
    std::unique_ptr<EntryEditorDialog> dialog;
};

// Classes 営業 (3) and 病院 (7); schedules 5 and 6 (its class gone); tasks 8 (open, no
// deadline) and 10 (done). Columns an editor does not own hold odd values it must keep.
void Seed(DatabaseConnection& db)
{
    StoreClass(db, 3, QStringLiteral("営業"), 1);
    StoreClass(db, 7, QStringLiteral("病院"), 2);
    StoreGeneral(db, 401, {{"DATAS1", "23:45"}, {"DATAN1", 1425}}); // one more time choice
    StoredEntry s = Entry(5, "A4", "20060503", "14:30", "20060503", "15:00", QStringLiteral("歯医者"));
    s.classId = 7;
    s.alarm = "1";
    s.comment = QStringLiteral("保険証を持参\n二行目");
    s.endless = "x";
    s.priority = 9;
    s.completion = "y";
    s.compDt = "z";
    StoreEntry(db, s);
    s = Entry(6, "D4", "20060503", "14:30", "", "15:00", QStringLiteral("歯医者"));
    s.classId = 99;
    StoreEntry(db, s);
    StoredEntry t = Entry(8, "T2", "s", "t", "20060512", "17:00", QStringLiteral("見積書"));
    t.endless = "1";
    t.classId = 3;
    t.alarm = "q";
    t.priority = 3;
    t.completion = "0";
    t.comment = QStringLiteral("A社向け");
    StoreEntry(db, t);
    t.id = 10;
    t.completion = "1";
    t.compDt = "20060511";
    t.endless = "0";
    StoreEntry(db, t);
}

const QString NoSubject = QStringLiteral("予定を入力してください");
const QString NoStart = QStringLiteral("開始日付を入力してください");
const QString BadDates = QStringLiteral("日時の開始と終了日付が正しくありません");
const QString BadTimes = QStringLiteral("日時の開始と終了時間が正しくありません");
const QString NoName = QStringLiteral("タスク名を入力してください");
const QString NoDeadline = QStringLiteral("期限を入力してください");
const QString Now = QStringLiteral("UPDTIME=2026/11/22 09:30:00");

} // namespace

void TestEntryEditors::saves_data()
{
    QTest::addColumn<QString>("editor");
    QTest::addColumn<int>("id"); // 0: a new entry, which gets ID 11
    QTest::addColumn<QStringList>("shown");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("message"); // "" = saved
    QTest::addColumn<QStringList>("columns");
    using L = QStringList;
    // clang-format off
    QTest::newRow("schedule new") << "schedule" << 0
        << L{"TxtYouken=", "TxtStartDate=2006/05/01", "CmbStartTime=", "TxtEndDate=", "CmbEndTime=", "CmbBunrui=", "ChkAraamu=0"}
        << L{"TxtYouken=打ち合わせ 'A社'", "CmbStartTime=09:00", "TxtEndDate=2006/05/03", "CmbEndTime=18:00", "CmbBunrui=病院", "ChkAraamu=1", "TxtSyousai=会議室B\n資料'20部'"}
        << "" << L{"DATA=1", "BUSINESS=打ち合わせ 'A社'", "STARTDT=20060501", "STARTTM=09:00", "ENDDT=20060503", "ENDTM=18:00", "ENDLESS=", "CLASS=7", "ALARM=1", "PRIORITY=0", "COMPLETION=", "COMPDT=", "FROMTOKBN=C4", "COMMENT=会議室B\n資料'20部'", Now};
    QTest::newRow("schedule change") << "schedule" << 5
        << L{"TxtYouken=歯医者", "TxtStartDate=2006/05/03", "CmbStartTime=14:30", "TxtEndDate=2006/05/03", "CmbEndTime=15:00", "CmbBunrui=病院", "ChkAraamu=1", "TxtSyousai=保険証を持参\n二行目"}
        << L{"TxtYouken=歯医者（再診）", "TxtStartDate=2006/05/04", "CmbStartTime=10:00", "TxtEndDate=", "CmbEndTime=", "CmbBunrui=", "ChkAraamu=0", "TxtSyousai=it's done"}
        << "" << L{"BUSINESS=歯医者（再診）", "STARTDT=20060504", "STARTTM=10:00", "ENDDT=", "ENDTM=", "CLASS=0", "ALARM=0", "FROMTOKBN=D3", "COMMENT=it's done", Now, "DATA=1", "ENDLESS=x", "PRIORITY=9", "COMPLETION=y", "COMPDT=z"};
    QTest::newRow("schedule whose class is gone") << "schedule" << 6 << L{"CmbBunrui=", "TxtEndDate=", "ChkAraamu=0"} << L{} << "" << L{"CLASS=0", "FROMTOKBN=D4"};
    QTest::newRow("blank subject") << "schedule" << 0 << L{} << L{"TxtYouken=   "} << NoSubject << L{};
    QTest::newRow("start that is no date") << "schedule" << 0 << L{} << L{"TxtYouken=会議", "TxtStartDate=あした"} << NoStart << L{};
    QTest::newRow("end before start") << "schedule" << 0 << L{} << L{"TxtYouken=会議", "TxtEndDate=2006/04/30"} << BadDates << L{};
    QTest::newRow("same day written differently, times backwards") << "schedule" << 0 << L{} << L{"TxtYouken=会議", "CmbStartTime=10:00", "TxtEndDate=2006/5/1", "CmbEndTime=09:00"} << BadTimes << L{};
    QTest::newRow("no end date, times backwards") << "schedule" << 0 << L{} << L{"TxtYouken=会議", "CmbStartTime=11:00", "CmbEndTime=10:00"} << BadTimes << L{};
    QTest::newRow("equal times") << "schedule" << 0 << L{} << L{"TxtYouken=会議", "CmbStartTime=10:00", "TxtEndDate=2006/05/01", "CmbEndTime=10:00"} << "" << L{"FROMTOKBN=A5"};
    QTest::newRow("over midnight") << "schedule" << 0 << L{} << L{"TxtYouken=夜勤", "CmbStartTime=23:00", "TxtEndDate=2006/05/02", "CmbEndTime=01:00"} << "" << L{"FROMTOKBN=B4"};
    QTest::newRow("typed forms are tidied") << "schedule" << 0 << L{} << L{"TxtYouken=会議", "TxtStartDate=2006/5/1", "CmbStartTime=9:5", "CmbEndTime=10:0"} << "" << L{"STARTDT=20060501", "STARTTM=09:05", "ENDTM=10:00", "FROMTOKBN=D4"};
    QTest::newRow("task new") << "task" << 0
        << L{"TxtEndDate=2006/05/10", "CmbEndTime=", "ChkEndNon=0", "CmbYusen=中", "ChkEnd=0", "TxtEnd=2006/05/10"}
        << L{"TxtYouken=請求書の送付", "CmbEndTime=15:00", "CmbYusen=高", "CmbBunrui=営業", "TxtSyousai=経理へ\n控えを保管"}
        << "" << L{"DATA=2", "BUSINESS=請求書の送付", "STARTDT=", "STARTTM=", "ENDDT=20060510", "ENDTM=15:00", "ENDLESS=0", "CLASS=3", "ALARM=", "PRIORITY=1", "COMPLETION=0", "COMPDT=20060510", "FROMTOKBN=T2", "COMMENT=経理へ\n控えを保管", Now};
    QTest::newRow("task change") << "task" << 8
        << L{"TxtYouken=見積書", "TxtEndDate=2006/05/12", "CmbEndTime=17:00", "ChkEndNon=1", "CmbYusen=低", "CmbBunrui=営業", "TxtSyousai=A社向け", "ChkEnd=0", "TxtEnd=0100/01/01"}
        << L{"TxtYouken=見積書 'v2'", "ChkEndNon=0", "TxtEndDate=2006/05/20", "CmbEndTime=", "CmbYusen=高", "CmbBunrui=", "TxtSyousai=it's urgent"}
        << "" << L{"BUSINESS=見積書 'v2'", "ENDDT=20060520", "ENDTM=", "ENDLESS=0", "CLASS=0", "PRIORITY=1", "FROMTOKBN=T1", "COMMENT=it's urgent", Now, "DATA=2", "STARTDT=s", "STARTTM=t", "ALARM=q", "COMPLETION=0", "COMPDT=01000101"};
    QTest::newRow("task done") << "task" << 8 << L{} << L{"ChkEnd=1", "TxtEnd=2006/5/9"} << "" << L{"COMPLETION=1", "COMPDT=20060509"};
    QTest::newRow("task done, no date") << "task" << 10 << L{} << L{"ChkEnd=1", "TxtEnd=昨日"} << "" << L{"COMPLETION=1", "COMPDT="};
    QTest::newRow("task undone keeps the date") << "task" << 10 << L{"ChkEnd=1", "TxtEnd=2006/05/11"} << L{"ChkEnd=0"} << "" << L{"COMPLETION=0", "COMPDT=20060511"};
    QTest::newRow("task without deadline") << "task" << 0 << L{} << L{"TxtYouken=いつか読む本", "ChkEndNon=1"} << "" << L{"ENDLESS=1", "ENDDT=20060510", "FROMTOKBN=T1"};
    QTest::newRow("task blank name") << "task" << 0 << L{} << L{"TxtYouken=  "} << NoName << L{};
    QTest::newRow("task no deadline") << "task" << 0 << L{} << L{"TxtYouken=報告書", "TxtEndDate="} << NoDeadline << L{};
    QTest::newRow("task no deadline, marked so") << "task" << 0 << L{} << L{"TxtYouken=報告書", "TxtEndDate=", "ChkEndNon=1"} << NoDeadline << L{};
    QTest::newRow("task deadline that is no date") << "task" << 0 << L{} << L{"TxtYouken=報告書", "TxtEndDate=来週"} << NoDeadline << L{};
    // clang-format on
}

void TestEntryEditors::saves()
{
    QFETCH(QString, editor);
    QFETCH(int, id);
    QFETCH(QStringList, shown);
    QFETCH(QStringList, typed);
    QFETCH(QString, message);
    QFETCH(QStringList, columns);
    TestEnvironment env;
    Seed(env.db());
    const int rowsBefore = env.count(QStringLiteral("TRNSCHTSK"));
    Editor e(env, editor, id);
    QVERIFY(!e.dialog->closedOnLoad());
    QCOMPARE(ShownAll(e.w(), shown), shown);
    QCOMPARE(Control<QComboBox>(e.w(), "CmbEndTime")->itemText(48), QStringLiteral("23:45"));
    TypeAll(e.w(), typed);
    Click(e.w(), "ComOK");
    if (!message.isEmpty()) {
        QCOMPARE(env.prompter.texts(), QStringList{message});
        QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);
        QVERIFY(!e.saved());
        QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), rowsBefore);
        QCOMPARE(Shown(e.w(), "TxtYouken"), typed.front().section(QLatin1Char('='), 1));
        return;
    }
    QVERIFY2(env.prompter.shown.isEmpty(), qPrintable(env.prompter.texts().join(QLatin1Char('|'))));
    QVERIFY(e.saved());
    QCOMPARE(e.dialog->result(), int(QDialog::Accepted));
    QCOMPARE(e.id(), id ? id : 11);
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), rowsBefore + (id ? 0 : 1));
    QCOMPARE(EntryColumns(env.db(), e.id(), columns), columns);
}

void TestEntryEditors::failureKeepsWhatWasTyped_data()
{
    QTest::addColumn<QString>("editor");
    QTest::addColumn<QString>("breakIt");
    QTest::addColumn<QString>("error");
    QTest::addColumn<int>("classesAfterFailure"); // a schedule's class goes with its entry; a task's stays
    const QString refuse = QStringLiteral(
        "CREATE TRIGGER refuse BEFORE INSERT ON TRNSCHTSK BEGIN SELECT RAISE(ABORT, 'disk is full'); END");
    const QString drop = QStringLiteral("DROP TABLE TRNSCHTSK");
    QTest::newRow("schedule refused") << "schedule" << refuse << "disk is full" << 2;
    QTest::newRow("task, no table") << "task" << drop << "no such table" << 3;
}

void TestEntryEditors::failureKeepsWhatWasTyped()
{
    QFETCH(QString, editor);
    QFETCH(QString, breakIt);
    QFETCH(QString, error);
    QFETCH(int, classesAfterFailure);
    TestEnvironment env;
    Seed(env.db());
    Editor e(env, editor);
    e.dialog->show();
    env.db().ExecuteSql(breakIt);
    const QStringList typed{"TxtYouken=学会", "CmbBunrui=出張", "TxtSyousai=朝食抜き", "CmbEndTime=09:00"};
    TypeAll(e.w(), typed);
    Click(e.w(), "ComOK");
    QCOMPARE(env.prompter.shown.size(), 1);
    QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Critical);
    QVERIFY(env.prompter.texts().front().contains(error));
    QVERIFY(e.dialog->isVisible());
    QVERIFY(!e.saved());
    QCOMPARE(ShownAll(e.w(), typed), typed);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), classesAfterFailure);
    QCOMPARE(env.db().transactionDepth(), 0);
    if (!breakIt.startsWith(QLatin1String("CREATE")))
        return;
    // Once the fault is gone, OK saves the entry under one new class.
    env.db().ExecuteSql(QStringLiteral("DROP TRIGGER refuse"));
    Click(e.w(), "ComOK");
    QVERIFY(e.saved());
    QCOMPARE(env.count(QStringLiteral("MSTCLASS")), 3);
    QCOMPARE(Column(env.db(), 11, "CLASS"), QStringLiteral("8"));
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("ID = 8 AND CLASS = '出張'")), 1);
}

void TestEntryEditors::vanishedRowAndCancelWriteNothing_data()
{
    QTest::addColumn<QString>("editor");
    QTest::newRow("schedule") << "schedule";
    QTest::newRow("task") << "task";
}

void TestEntryEditors::vanishedRowAndCancelWriteNothing()
{
    QFETCH(QString, editor);
    TestEnvironment env;
    Editor gone(env, editor, 42); // a row deleted meanwhile closes the editor without a word
    QVERIFY(gone.dialog->closedOnLoad());
    QCOMPARE(gone.dialog->exec(), int(QDialog::Rejected));
    Editor e(env, editor);
    e.dialog->show();
    TypeAll(e.w(), {"TxtYouken=会議", "CmbBunrui=新分類"});
    Click(e.w(), "ComCancel");
    QVERIFY(!e.dialog->isVisible());
    QVERIFY(!gone.saved() && !e.saved());
    QVERIFY(env.prompter.shown.isEmpty());
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")) + env.count(QStringLiteral("MSTCLASS")), 0);
}

void TestEntryEditors::rowChangedMeanwhileIsLeftAlone_data()
{
    QTest::addColumn<QString>("editor");
    QTest::addColumn<int>("id");
    QTest::newRow("schedule") << "schedule" << 5;
    QTest::newRow("task") << "task" << 8;
}

void TestEntryEditors::rowChangedMeanwhileIsLeftAlone()
{
    QFETCH(QString, editor);
    QFETCH(int, id);
    TestEnvironment env;
    Seed(env.db());
    Editor e(env, editor, id);
    // Someone else (the alarm, the list) writes the row while the editor is open.
    env.db().ExecuteSql(
        QStringLiteral("UPDATE TRNSCHTSK SET BUSINESS = 'other', UPDTIME = '2006/05/02 08:00:00' WHERE ID = %1")
            .arg(id));
    Type(e.w(), QStringLiteral("TxtYouken"), QStringLiteral("mine"));
    Click(e.w(), "ComOK");
    QVERIFY(env.prompter.shown.isEmpty());
    QVERIFY(e.saved());
    QCOMPARE(Column(env.db(), id, "BUSINESS"), QStringLiteral("other"));
}

void TestEntryEditors::stickyNoteHandOver_data()
{
    QTest::addColumn<QString>("editor");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<double>("random");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("color");
    using L = QStringList;
    // clang-format off
    QTest::newRow("start only") << "schedule" << L{"CmbStartTime=09:00"} << 0.0 << "05/01 09:00\r\n会議\r\n3F" << 0;
    QTest::newRow("end time") << "schedule" << L{"CmbStartTime=09:00", "CmbEndTime=10:30"} << 0.5 << "05/01 09:00 - 10:30\r\n会議\r\n3F" << 3;
    QTest::newRow("end date") << "schedule" << L{"TxtEndDate=2006/05/03"} << 0.999 << "05/01  - 05/03 \r\n会議\r\n3F" << 6;
    QTest::newRow("both ends") << "schedule" << L{"CmbStartTime=23:00", "TxtEndDate=2006/05/02", "CmbEndTime=01:00"} << 0.2 << "05/01 23:00 - 05/02 01:00\r\n会議\r\n3F" << 1;
    QTest::newRow("task") << "task" << L{"CmbEndTime=17:00"} << 0.75 << "05/10 17:00  中\r\n会議\r\n3F" << 5;
    // clang-format on
}

void TestEntryEditors::stickyNoteHandOver()
{
    QFETCH(QString, editor);
    QFETCH(QStringList, typed);
    QFETCH(double, random);
    QFETCH(QString, text);
    QFETCH(int, color);
    for (const bool post : {true, false}) {
        TestEnvironment env;
        env.random.values.push_back(random);
        Editor e(env, editor);
        e.postRequested() = !post; // left over from an earlier showing
        TypeAll(e.w(), typed + QStringList{"TxtYouken=会議", "TxtSyousai=3F", post ? "ChkPost=1" : "ChkPost=0"});
        Click(e.w(), "ComOK");
        QVERIFY(e.saved());
        QCOMPARE(e.postRequested(), post);
        if (post) {
            QCOMPARE(e.postText(), text);
            QCOMPARE(e.postColor(), color);
        }
    }
}

void TestEntryEditors::focusNormalisation_data()
{
    QTest::addColumn<QString>("editor");
    QTest::addColumn<QString>("control");
    QTest::addColumn<bool>("in"); // focus comes in (else it leaves)
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    // clang-format off
    QTest::newRow("9:5") << "schedule" << "CmbStartTime" << false << "9:5" << "09:05";
    QTest::newRow("no time") << "schedule" << "CmbStartTime" << false << "朝" << "";
    QTest::newRow("month and day, this year") << "schedule" << "TxtStartDate" << false << "5/3" << "2026/05/03";
    QTest::newRow("no date") << "schedule" << "TxtStartDate" << false << "2006/02/30" << "";
    QTest::newRow("end date is left as typed") << "schedule" << "TxtEndDate" << false << "2006/5/3" << "2006/5/3";
    QTest::newRow("empty end offers the start") << "schedule" << "TxtEndDate" << true << "" << "2006/05/01";
    QTest::newRow("end already given stays") << "schedule" << "TxtEndDate" << true << "2006/05/09" << "2006/05/09";
    QTest::newRow("task deadline") << "task" << "TxtEndDate" << false << "2006/6/1" << "2006/06/01";
    QTest::newRow("task time") << "task" << "CmbEndTime" << false << "9:5" << "09:05";
    // clang-format on
}

void TestEntryEditors::focusNormalisation()
{
    QFETCH(QString, editor);
    QFETCH(QString, control);
    QFETCH(bool, in);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    TestEnvironment env;
    Editor e(env, editor);
    Type(e.w(), control, typed);
    QWidget* widget = Control(e.w(), qPrintable(control));
    in ? FocusIn(widget) : FocusOut(widget);
    QCOMPARE(Shown(e.w(), control), shown);
    QVERIFY(env.prompter.shown.isEmpty());
}

void TestEntryEditors::datePicker_data()
{
    QTest::addColumn<QString>("editor");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QDate>("answer");  // invalid: the pick is cancelled
    QTest::addColumn<QDate>("opensOn"); // invalid: the picker must not open
    QTest::addColumn<int>("leftOffset");
    QTest::addColumn<QString>("shown");
    const QDate today(2026, 11, 22);
    // clang-format off
    QTest::newRow("start") << "schedule" << QStringList{} << "LabStartDate" << "TxtStartDate" << QDate(2006, 6, 15) << QDate(2006, 5, 1) << 50 << "2006/06/15";
    QTest::newRow("empty end opens on today, cancelled") << "schedule" << QStringList{} << "LabEndDate" << "TxtEndDate" << QDate() << today << 50 << "";
    QTest::newRow("deadline") << "task" << QStringList{} << "LabEndDate" << "TxtEndDate" << QDate(2006, 5, 31) << QDate(2006, 5, 10) << 100 << "2006/05/31";
    QTest::newRow("completion of an open task") << "task" << QStringList{} << "LabEnd" << "TxtEnd" << QDate(2006, 5, 9) << QDate() << 100 << "2006/05/10";
    QTest::newRow("completion of a done task") << "task" << QStringList{"ChkEnd=1", "TxtEnd="} << "LabEnd" << "TxtEnd" << QDate(2006, 5, 9) << today << 100 << "2006/05/09";
    // clang-format on
}

void TestEntryEditors::datePicker()
{
    QFETCH(QString, editor);
    QFETCH(QStringList, typed);
    QFETCH(QString, link);
    QFETCH(QString, box);
    QFETCH(QDate, answer);
    QFETCH(QDate, opensOn);
    QFETCH(int, leftOffset);
    QFETCH(QString, shown);
    TestEnvironment env;
    Editor e(env, editor);
    e.dialog->move(120, 80);
    e.dialog->show();
    QVERIFY(QTest::qWaitForWindowExposed(e.w()));
    TypeAll(e.w(), typed);
    env.datePicker.answers.push_back(answer);
    QTest::mouseClick(Control<QLabel>(e.w(), qPrintable(link)), Qt::LeftButton);
    QCOMPARE(Shown(e.w(), box), shown);
    if (!opensOn.isValid()) {
        QVERIFY(env.datePicker.requests.isEmpty());
        return;
    }
    QCOMPARE(env.datePicker.requests.size(), 1);
    const DatePickHandOver asked = env.datePicker.requests.front();
    // Just below the box, in twips of a 96 dpi screen.
    const QPoint at = Control(e.w(), qPrintable(box))->mapTo(e.w(), QPoint(0, 0));
    QCOMPARE(asked.PickedDate, opensOn);
    QCOMPARE(asked.PickerTop, (e.dialog->y() + at.y()) * 15 + 700);
    QCOMPARE(asked.PickerLeft, (e.dialog->x() + at.x()) * 15 + leftOffset);
}

void TestEntryEditors::listLinkRefills_data()
{
    QTest::addColumn<QString>("editor");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("ok");
    QTest::addColumn<QString>("combo");
    QTest::addColumn<QStringList>("before"); // in sort order
    QTest::addColumn<QStringList>("after");  // classes come back in the table's own order
    // clang-format off
    QTest::newRow("classes") << "schedule" << "LabClass" << "LstClass" << "ComOk" << "CmbBunrui" << QStringList{"私用", "仕事"} << QStringList{"仕事", "改名"};
    QTest::newRow("priorities") << "task" << "LabPriority" << "LstPriority" << "ComOK" << "CmbYusen" << QStringList{"高", "中", "低"} << QStringList{"改名", "中", "低"};
    // clang-format on
}

void TestEntryEditors::listLinkRefills()
{
    QFETCH(QString, editor);
    QFETCH(QString, link);
    QFETCH(QString, list);
    QFETCH(QString, ok);
    QFETCH(QString, combo);
    QFETCH(QStringList, before);
    QFETCH(QStringList, after);
    TestEnvironment env;
    StoreClass(env.db(), 1, QStringLiteral("仕事"), 2);
    StoreClass(env.db(), 2, QStringLiteral("私用"), 1);
    Editor e(env, editor);
    e.dialog->show();
    auto* box = Control<QComboBox>(e.w(), qPrintable(combo));
    const auto items = [box] {
        QStringList texts;
        for (int i = 0; i < box->count(); ++i)
            texts << box->itemText(i);
        return texts;
    };
    box->setCurrentIndex(1);
    const QString chosen = box->currentText();
    const QVariant chosenId = box->currentData();
    QCOMPARE(items(), before);
    // Confirmed: the list is read again, the choice kept.
    ModalAnswer rename([&](QWidget* dialog) {
        Control<QListWidget>(dialog, qPrintable(list))->item(0)->setText(QStringLiteral("改名"));
        Click(dialog, qPrintable(ok));
    });
    QTest::mouseClick(Control<QLabel>(e.w(), qPrintable(link)), Qt::LeftButton);
    QVERIFY(rename.opened());
    QCOMPARE(items(), after);
    QCOMPARE(box->currentText(), chosen);
    QCOMPARE(box->currentData(), chosenId);
}

void TestEntryEditors::taskCheckBoxesEnableTheirControls()
{
    TestEnvironment env;
    Editor e(env, QStringLiteral("task"));
    const auto enabled = [&](const char* name) { return Control(e.w(), name)->isEnabled(); };
    for (const bool on : {true, false}) {
        Type(e.w(), QStringLiteral("ChkEnd"), on ? "1" : "0");
        QCOMPARE(enabled("TxtEnd"), on);
        QCOMPARE(enabled("LabEnd"), on);
        Type(e.w(), QStringLiteral("ChkEndNon"), on ? "1" : "0");
        QCOMPARE(enabled("TxtEndDate"), !on);
        QCOMPARE(enabled("LabEndDate"), !on);
        QCOMPARE(enabled("CmbEndTime"), !on);
        QCOMPARE(Shown(e.w(), "TxtEndDate"), QStringLiteral("2006/05/10"));
    }
}

VERDALY_TEST(TestEntryEditors)
#include "TestEntryEditors.moc"
