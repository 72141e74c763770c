#include "entries/ClassCombo.h"
#include "entries/EntryKinds.h"
#include "entries/EntryQueries.h"
#include "entries/FrmSchedule.h"
#include "entries/FrmTask.h"
#include "entries/LinkLabels.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QComboBox>
#include <QEnterEvent>
#include <QLabel>
#include <QListWidget>
#include <QtTest>

// The schedule and the task editor through one set of tables; then what an entry's span makes
// of it: its kind, its line's text on a day, the days it marks, the queries that find it.
namespace {

// Either editor on its hand-over: new ones start on 2006/05/01 (schedule) or 2006/05/10 (task).
struct Editor
{
    Editor(TestEnvironment& env, const QString& editor, int id = 0) : task(editor == "task")
    {
        th.TaskEditMode = sh.ScheduleEditMode = id ? "UPD" : "ADD";
        th.TaskEditId = sh.ScheduleEditId = id;
        th.TaskDate = QDate(2006, 5, 10);
        sh.ScheduleDate = QDate(2006, 5, 1);
        dialog = task ? std::unique_ptr<EntryEditorDialog>(std::make_unique<FrmTask>(env.services, th))
                      : std::make_unique<FrmSchedule>(env.services, sh);
    }
    QWidget* w() const { return dialog.get(); }
    bool saved() const { return task ? th.TaskSaved : sh.ScheduleSaved; }
    bool& postRequested() { return task ? th.TaskPostRequested : sh.PostRequested; }

    bool task;
    ScheduleHandOver sh;
    TaskHandOver th;
    std::unique_ptr<EntryEditorDialog> dialog;
};

// Classes 営業 (3) and 病院 (7), sorted against their IDs; schedules 5 and 6 (its class gone);
// tasks 8 (open, no deadline) and 10 (done). Columns an editor does not own hold odd values it must keep.
void Seed(DatabaseConnection& db)
{
    StoreClass(db, 3, "営業", 2);
    StoreClass(db, 7, "病院", 1);
    StoreGeneral(db, 401, {{"DATAS1", "23:45"}, {"DATAN1", 1425}}); // one more time choice
    // ID, DATA, BUSINESS, STARTDT, STARTTM, ENDDT, ENDTM, ENDLESS, CLASS, ALARM, PRIORITY, COMPLETION, COMPDT,
    // FROMTOKBN, COMMENT
    // clang-format off
    for (const StoredEntry& entry : {
             StoredEntry{5, "1", "歯医者", "20060503", "14:30", "20060503", "15:00", "x", 7, "1", 9, "y", "z", "A4", "保険証を持参\n二行目"},
             StoredEntry{6, "1", "歯医者", "20060503", "14:30", "", "15:00", "", 99, "0", 0, "", "", "D4", ""},
             StoredEntry{8, "2", "見積書", "s", "t", "20060512", "17:00", "1", 3, "q", 3, "0", "", "T2", "A社向け"},
             StoredEntry{10, "2", "見積書", "s", "t", "20060512", "17:00", "0", 3, "q", 3, "1", "20060511", "T2", "A社向け"}})
        StoreEntry(db, entry);
    // clang-format on
}

const QString Now = QStringLiteral("UPDTIME=2026/11/22 09:30:00");

// Either editor on an entry (ID 0: a new one, which gets ID 11): what it shows, what is typed,
// the warning ("" = saved), the columns then stored, the sticky note asked for (random draw,
// colour, text).
struct SaveRow
{
    QString editor;
    int id;
    QStringList shown, typed;
    QString message;
    QStringList columns, note;
};

} // namespace
Q_DECLARE_METATYPE(SaveRow)

class TestEntries final : public QObject
{
    Q_OBJECT

private slots:
    void saves_data()
    {
        QTest::addColumn<SaveRow>("row");
        // clang-format off
        QTest::newRow("schedule new") << SaveRow{"schedule", 0,
            {"TxtYouken=", "TxtStartDate=2006/05/01", "CmbStartTime=", "TxtEndDate=", "CmbEndTime=", "CmbBunrui=", "ChkAraamu=0"},
            {"TxtYouken=打ち合わせ 'A社'", "CmbStartTime=09:00", "TxtEndDate=2006/05/03", "CmbEndTime=18:00", "CmbBunrui=病院", "ChkAraamu=1", "TxtSyousai=会議室B\n資料'20部'"},
            "", {"DATA=1", "BUSINESS=打ち合わせ 'A社'", "STARTDT=20060501", "STARTTM=09:00", "ENDDT=20060503", "ENDTM=18:00", "ENDLESS=", "CLASS=7", "ALARM=1", "PRIORITY=0", "COMPLETION=", "COMPDT=", "FROMTOKBN=C4", "COMMENT=会議室B\n資料'20部'", Now}, {}};
        QTest::newRow("schedule change") << SaveRow{"schedule", 5,
            {"TxtYouken=歯医者", "TxtStartDate=2006/05/03", "CmbStartTime=14:30", "TxtEndDate=2006/05/03", "CmbEndTime=15:00", "CmbBunrui=病院", "ChkAraamu=1", "TxtSyousai=保険証を持参\n二行目"},
            {"TxtYouken=歯医者（再診）", "TxtStartDate=2006/05/04", "CmbStartTime=10:00", "TxtEndDate=", "CmbEndTime=", "CmbBunrui=", "ChkAraamu=0", "TxtSyousai=it's done"},
            "", {"BUSINESS=歯医者（再診）", "STARTDT=20060504", "STARTTM=10:00", "ENDDT=", "ENDTM=", "CLASS=0", "ALARM=0", "FROMTOKBN=D3", "COMMENT=it's done", Now, "DATA=1", "ENDLESS=x", "PRIORITY=9", "COMPLETION=y", "COMPDT=z"}, {}};
        QTest::newRow("schedule whose class is gone") << SaveRow{"schedule", 6, {"CmbBunrui=", "TxtEndDate=", "ChkAraamu=0"}, {}, "", {"CLASS=0", "FROMTOKBN=D4"}, {}};
        QTest::newRow("blank subject") << SaveRow{"schedule", 0, {}, {"TxtYouken=   "}, "予定を入力してください", {}, {}};
        QTest::newRow("start that is no date") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "TxtStartDate=あした"}, "開始日付を入力してください", {}, {}};
        QTest::newRow("end before start") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "TxtEndDate=2006/04/30"}, "日時の開始と終了日付が正しくありません", {}, {}};
        QTest::newRow("same day written differently, times backwards") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "CmbStartTime=10:00", "TxtEndDate=2006/5/1", "CmbEndTime=09:00"}, "日時の開始と終了時間が正しくありません", {}, {}};
        QTest::newRow("no end date, times backwards") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "CmbStartTime=11:00", "CmbEndTime=10:00"}, "日時の開始と終了時間が正しくありません", {}, {}};
        QTest::newRow("equal times") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "CmbStartTime=10:00", "TxtEndDate=2006/05/01", "CmbEndTime=10:00"}, "", {"FROMTOKBN=A5"}, {}};
        QTest::newRow("over midnight") << SaveRow{"schedule", 0, {}, {"TxtYouken=夜勤", "CmbStartTime=23:00", "TxtEndDate=2006/05/02", "CmbEndTime=01:00"}, "", {"FROMTOKBN=B4"}, {}};
        QTest::newRow("typed forms are tidied") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "TxtStartDate=2006/5/1", "CmbStartTime=9:5", "CmbEndTime=10:0"}, "", {"STARTDT=20060501", "STARTTM=09:05", "ENDTM=10:00", "FROMTOKBN=D4"}, {}};
        QTest::newRow("task new") << SaveRow{"task", 0,
            {"TxtEndDate=2006/05/10", "CmbEndTime=", "ChkEndNon=0", "CmbYusen=中", "ChkEnd=0", "TxtEnd=2006/05/10"},
            {"TxtYouken=請求書の送付", "CmbEndTime=15:00", "CmbYusen=高", "CmbBunrui=営業", "TxtSyousai=経理へ\n控えを保管"},
            "", {"DATA=2", "BUSINESS=請求書の送付", "STARTDT=", "STARTTM=", "ENDDT=20060510", "ENDTM=15:00", "ENDLESS=0", "CLASS=3", "ALARM=", "PRIORITY=1", "COMPLETION=0", "COMPDT=20060510", "FROMTOKBN=T2", "COMMENT=経理へ\n控えを保管", Now}, {}};
        QTest::newRow("task change") << SaveRow{"task", 8,
            {"TxtYouken=見積書", "TxtEndDate=2006/05/12", "CmbEndTime=17:00", "ChkEndNon=1", "CmbYusen=低", "CmbBunrui=営業", "TxtSyousai=A社向け", "ChkEnd=0", "TxtEnd=0100/01/01"},
            {"TxtYouken=見積書 'v2'", "ChkEndNon=0", "TxtEndDate=2006/05/20", "CmbEndTime=", "CmbYusen=高", "CmbBunrui=", "TxtSyousai=it's urgent"},
            "", {"BUSINESS=見積書 'v2'", "ENDDT=20060520", "ENDTM=", "ENDLESS=0", "CLASS=0", "PRIORITY=1", "FROMTOKBN=T1", "COMMENT=it's urgent", Now, "DATA=2", "STARTDT=s", "STARTTM=t", "ALARM=q", "COMPLETION=0", "COMPDT=01000101"}, {}};
        QTest::newRow("task done") << SaveRow{"task", 8, {}, {"ChkEnd=1", "TxtEnd=2006/5/9"}, "", {"COMPLETION=1", "COMPDT=20060509"}, {}};
        QTest::newRow("task done, no date") << SaveRow{"task", 10, {}, {"ChkEnd=1", "TxtEnd=昨日"}, "", {"COMPLETION=1", "COMPDT="}, {}};
        QTest::newRow("task undone keeps the date") << SaveRow{"task", 10, {"ChkEnd=1", "TxtEnd=2006/05/11"}, {"ChkEnd=0"}, "", {"COMPLETION=0", "COMPDT=20060511"}, {}};
        QTest::newRow("task without deadline") << SaveRow{"task", 0, {}, {"TxtYouken=いつか読む本", "ChkEndNon=1"}, "", {"ENDLESS=1", "ENDDT=20060510", "FROMTOKBN=T1"}, {}};
        QTest::newRow("task blank name") << SaveRow{"task", 0, {}, {"TxtYouken=  "}, "タスク名を入力してください", {}, {}};
        QTest::newRow("task no deadline, marked so") << SaveRow{"task", 0, {}, {"TxtYouken=報告書", "TxtEndDate=", "ChkEndNon=1"}, "期限を入力してください", {}, {}};
        QTest::newRow("task deadline that is no date") << SaveRow{"task", 0, {}, {"TxtYouken=報告書", "TxtEndDate=来週"}, "期限を入力してください", {}, {}};
        QTest::newRow("note, start only") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "TxtSyousai=3F", "CmbStartTime=09:00"}, "", {"FROMTOKBN=D3"}, {"0.0", "0", "05/01 09:00\r\n会議\r\n3F"}};
        QTest::newRow("note, end time") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "TxtSyousai=3F", "CmbStartTime=09:00", "CmbEndTime=10:30"}, "", {"FROMTOKBN=D4"}, {"0.5", "3", "05/01 09:00 - 10:30\r\n会議\r\n3F"}};
        QTest::newRow("note, end date") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "TxtSyousai=3F", "TxtEndDate=2006/05/03"}, "", {"FROMTOKBN=C1"}, {"0.999", "6", "05/01  - 05/03 \r\n会議\r\n3F"}};
        QTest::newRow("note, task") << SaveRow{"task", 0, {}, {"TxtYouken=会議", "TxtSyousai=3F", "CmbEndTime=17:00"}, "", {"FROMTOKBN=T2"}, {"0.75", "5", "05/10 17:00  中\r\n会議\r\n3F"}};
        QTest::newRow("class typed with blanks around") << SaveRow{"schedule", 5, {"CmbBunrui=病院"}, {"CmbBunrui= 営業 "}, "", {"CLASS=3"}, {}};
        QTest::newRow("class of blanks") << SaveRow{"schedule", 0, {}, {"TxtYouken=会議", "CmbBunrui=   "}, "", {"CLASS=0"}, {}};
        // clang-format on
    }

    void saves()
    {
        QFETCH(SaveRow, row);
        const auto& [editor, id, shown, typed, message, columns, note] = row;
        TestEnvironment env;
        Seed(env.db());
        env.random.values.push_back(note.value(0).toDouble());
        Editor e(env, editor, id);
        QVERIFY(!e.dialog->closedOnLoad());
        QCOMPARE(ShownAll(e.w(), shown), shown);
        QCOMPARE(Control<QComboBox>(e.w(), "CmbEndTime")->itemText(48), "23:45");
        e.postRequested() = note.isEmpty(); // left over from an earlier showing
        TypeAll(e.w(), typed + QStringList{note.isEmpty() ? "ChkPost=0" : "ChkPost=1"});
        Click(e.w(), "ComOK");
        QCOMPARE(env.prompter.texts(), message.isEmpty() ? QStringList() : QStringList{message});
        QCOMPARE(e.saved(), message.isEmpty());
        QCOMPARE(env.count("TRNSCHTSK"), id || !message.isEmpty() ? 4 : 5);
        if (!message.isEmpty()) {
            QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);
            QCOMPARE(Shown(e.w(), "TxtYouken"), typed.front().section('=', 1));
            return;
        }
        QCOMPARE(e.dialog->result(), int(QDialog::Accepted));
        QCOMPARE(e.task ? e.th.TaskEditId : e.sh.ScheduleEditId, id ? id : 11);
        QCOMPARE(EntryColumns(env.db(), id ? id : 11, columns), columns);
        QCOMPARE(e.postRequested(), !note.isEmpty());
        QCOMPARE(e.task ? e.th.TaskPostColorIndex : e.sh.PostColorIndex, note.value(1).toInt());
        QCOMPARE(e.task ? e.th.TaskPostText : e.sh.PostText, note.value(2));
    }

    // A screen reader hears each input by its label (a combo box with a value through the
    // "labelled by" relation). A row deleted meanwhile closes the editor without a word; one
    // written meanwhile by someone else is left alone; Cancel writes nothing; a refused statement
    // keeps the editor open with what was typed, until OK goes through under one new class.
    void controlsAndTroubles_data()
    {
        QTest::addColumn<QString>("editor");
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QStringList>("refill"); // a link, the list and OK of its dialog, the combo
        QTest::addColumn<QStringList>("before"); // in sort order
        QTest::addColumn<QStringList>("after");  // classes come back in the table's own order
        // clang-format off
        QTest::newRow("schedule") << "schedule" << QStringList{"TxtYouken=予定", "TxtStartDate=開始日", "CmbStartTime=開始時刻", "TxtEndDate=終了日", "CmbEndTime=終了時刻", "CmbBunrui=分類", "TxtSyousai=詳細", "ChkAraamu=アラーム"} << QStringList{"LabClass", "LstClass", "ComOk", "CmbBunrui"} << QStringList{"病院", "営業"} << QStringList{"営業", "改名"};
        QTest::newRow("task") << "task" << QStringList{"TxtYouken=タスク名", "TxtEndDate=期限", "CmbEndTime=期限の時刻", "CmbYusen=優先度", "TxtEnd=完了日", "CmbBunrui=分類"} << QStringList{"LabPriority", "LstPriority", "ComOK", "CmbYusen"} << QStringList{"高", "中", "低"} << QStringList{"改名", "中", "低"};
        // clang-format on
    }
    void controlsAndTroubles()
    {
        QFETCH(QString, editor);
        QFETCH(QStringList, names);
        QFETCH(QStringList, refill);
        QFETCH(QStringList, before);
        QFETCH(QStringList, after);
        const int id = editor == "task" ? 8 : 5;
        TestEnvironment env;
        Seed(env.db());
        Editor gone(env, editor, 42);
        QVERIFY(gone.dialog->closedOnLoad());
        QCOMPARE(gone.dialog->exec(), int(QDialog::Rejected));
        QVERIFY(!gone.saved());
        {
            Editor e(env, editor, id);
            env.db().ExecuteSql(
                QString("UPDATE TRNSCHTSK SET BUSINESS = 'other', UPDTIME = '2006/05/02 08:00:00' WHERE ID = %1")
                    .arg(id));
            Type(e.w(), "TxtYouken", "mine");
            Click(e.w(), "ComOK");
            QVERIFY(e.saved());
            QCOMPARE(Column(env.db(), id, "BUSINESS"), "other");
        }
        {
            Editor e(env, editor);
            e.dialog->show();
            for (const QString& pair : names) {
                QAccessibleInterface* access =
                    QAccessible::queryAccessibleInterface(Control(e.w(), qPrintable(pair.section('=', 0, 0))));
                QStringList heard{access->text(QAccessible::Name)};
                for (const auto& [label, relation] : access->relations(QAccessible::Label))
                    heard << label->text(QAccessible::Name);
                QVERIFY2(heard.contains(pair.section('=', 1)), qPrintable(heard.join('|')));
            }
            const auto enabled = [&](const char* name) { return Control(e.w(), name)->isEnabled(); };
            for (const bool on : e.task ? QList<bool>{true, false} : QList<bool>{}) {
                Type(e.w(), "ChkEnd", on ? "1" : "0");
                QCOMPARE(enabled("TxtEnd"), on);
                Type(e.w(), "ChkEndNon", on ? "1" : "0");
                QCOMPARE(QList<bool>({enabled("TxtEndDate"), enabled("LabEndDate"), enabled("CmbEndTime")}),
                         QList<bool>(3, !on));
                QCOMPARE(Shown(e.w(), "TxtEndDate"), "2006/05/10");
            }
            // A list changed through its link is read again, the choice kept.
            auto* box = Control<QComboBox>(e.w(), qPrintable(refill.at(3)));
            const auto items = [box] {
                QStringList texts;
                for (int i = 0; i < box->count(); ++i)
                    texts << box->itemText(i);
                return texts;
            };
            box->setCurrentIndex(1);
            QCOMPARE(items(), before);
            ModalAnswer rename([&](QWidget* dialog) {
                Control<QListWidget>(dialog, qPrintable(refill.at(1)))->item(0)->setText("改名");
                Click(dialog, qPrintable(refill.at(2)));
            });
            QTest::mouseClick(Control<QLabel>(e.w(), qPrintable(refill.at(0))), Qt::LeftButton);
            QCOMPARE(items(), after);
            QCOMPARE(box->currentText(), before.at(1));
            TypeAll(e.w(), {"TxtYouken=会議", "CmbBunrui=新分類"});
            Click(e.w(), "ComCancel");
            QVERIFY(!e.dialog->isVisible());
        }
        QVERIFY(env.prompter.shown.isEmpty());
        QCOMPARE(env.count("TRNSCHTSK"), 4);
        QCOMPARE(env.count("MSTCLASS"), 2);

        Editor e(env, editor);
        e.dialog->show();
        env.db().ExecuteSql(
            "CREATE TRIGGER refuse BEFORE INSERT ON TRNSCHTSK BEGIN SELECT RAISE(ABORT, 'disk is full'); END");
        const QStringList typed{"TxtYouken=学会", "CmbBunrui=出張", "TxtSyousai=朝食抜き", "CmbEndTime=09:00"};
        TypeAll(e.w(), typed);
        // Typed over the first class, as a person types into the box: the typed name counts.
        auto* classes = Control<QComboBox>(e.w(), "CmbBunrui");
        classes->setCurrentIndex(0);
        classes->setEditText("出張");
        Click(e.w(), "ComOK");
        QCOMPARE(env.prompter.shown.size(), 1);
        QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Critical);
        QVERIFY(env.prompter.texts().front().contains("disk is full"));
        QVERIFY(e.dialog->isVisible());
        QVERIFY(!e.saved());
        QCOMPARE(ShownAll(e.w(), typed), typed);
        // A schedule's new class goes back with its entry; a task's is kept.
        QCOMPARE(env.count("MSTCLASS"), e.task ? 3 : 2);
        QCOMPARE(env.db().transactionDepth(), 0);
        env.db().ExecuteSql("DROP TRIGGER refuse");
        Click(e.w(), "ComOK");
        QVERIFY(e.saved());
        QCOMPARE(Column(env.db(), 11, "CLASS"), "8");
        QCOMPARE(Lines(env.db(), "SELECT * FROM MSTCLASS WHERE ID > 7", {"ID", "CLASS"}), QStringList{"8|出張"});
    }

    // What a box shows once it was typed into and left (or entered), or once its link's date
    // picker answered. Either way no message, and a picker only where one was asked for.
    void boxes_data()
    {
        QTest::addColumn<QString>("editor");
        QTest::addColumn<QStringList>("typed");
        QTest::addColumn<QString>("action"); // the first typed box left ("out") or entered ("in"), or a link clicked
        QTest::addColumn<QDate>("answer");   // invalid: the pick is cancelled
        QTest::addColumn<QDate>("opensOn");  // invalid: the picker must not open
        QTest::addColumn<QString>("shown");
        const QDate today(2026, 11, 22);
        // clang-format off
        QTest::newRow("9:5") << "schedule" << QStringList{"CmbStartTime=9:5"} << "out" << QDate() << QDate() << "09:05";
        QTest::newRow("seconds dropped") << "schedule" << QStringList{"CmbStartTime=10:15:45"} << "out" << QDate() << QDate() << "10:15";
        QTest::newRow("full-width time") << "schedule" << QStringList{"CmbStartTime=１０：３０"} << "out" << QDate() << QDate() << "10:30";
        QTest::newRow("hour 24") << "schedule" << QStringList{"CmbStartTime=24:00"} << "out" << QDate() << QDate() << "";
        QTest::newRow("hour only") << "schedule" << QStringList{"CmbStartTime=9"} << "out" << QDate() << QDate() << "";
        QTest::newRow("month and day, this year") << "schedule" << QStringList{"TxtStartDate=5/3"} << "out" << QDate() << QDate() << "2026/05/03";
        QTest::newRow("hyphens") << "schedule" << QStringList{"TxtStartDate=2006-5-3"} << "out" << QDate() << QDate() << "2006/05/03";
        QTest::newRow("eight digits") << "schedule" << QStringList{"TxtStartDate=20060503"} << "out" << QDate() << QDate() << "2006/05/03";
        QTest::newRow("full-width date") << "schedule" << QStringList{"TxtStartDate=２００６／０５／０３"} << "out" << QDate() << QDate() << "2006/05/03";
        QTest::newRow("leap day") << "schedule" << QStringList{"TxtStartDate=2008/2/29"} << "out" << QDate() << QDate() << "2008/02/29";
        QTest::newRow("no leap day") << "schedule" << QStringList{"TxtStartDate=2006/2/29"} << "out" << QDate() << QDate() << "";
        QTest::newRow("two-digit year") << "schedule" << QStringList{"TxtStartDate=06/05/03"} << "out" << QDate() << QDate() << "";
        QTest::newRow("trailing junk") << "schedule" << QStringList{"TxtStartDate=2006/05/03x"} << "out" << QDate() << QDate() << "";
        QTest::newRow("end date is left as typed") << "schedule" << QStringList{"TxtEndDate=2006/5/3"} << "out" << QDate() << QDate() << "2006/5/3";
        QTest::newRow("empty end offers the start") << "schedule" << QStringList{"TxtEndDate="} << "in" << QDate() << QDate() << "2006/05/01";
        QTest::newRow("end already given stays") << "schedule" << QStringList{"TxtEndDate=2006/05/09"} << "in" << QDate() << QDate() << "2006/05/09";
        QTest::newRow("task deadline") << "task" << QStringList{"TxtEndDate=2006/6/1"} << "out" << QDate() << QDate() << "2006/06/01";
        QTest::newRow("task time") << "task" << QStringList{"CmbEndTime=9:5"} << "out" << QDate() << QDate() << "09:05";
        QTest::newRow("start") << "schedule" << QStringList{} << "LabStartDate" << QDate(2006, 6, 15) << QDate(2006, 5, 1) << "2006/06/15";
        QTest::newRow("empty end opens on today, cancelled") << "schedule" << QStringList{} << "LabEndDate" << QDate() << today << "";
        QTest::newRow("deadline") << "task" << QStringList{} << "LabEndDate" << QDate(2006, 5, 31) << QDate(2006, 5, 10) << "2006/05/31";
        QTest::newRow("completion of an open task") << "task" << QStringList{} << "LabEnd" << QDate(2006, 5, 9) << QDate() << "2006/05/10";
        QTest::newRow("completion of a done task") << "task" << QStringList{"ChkEnd=1", "TxtEnd="} << "LabEnd" << QDate(2006, 5, 9) << today << "2006/05/09";
        // clang-format on
    }

    void boxes()
    {
        QFETCH(QString, editor);
        QFETCH(QStringList, typed);
        QFETCH(QString, action);
        QFETCH(QDate, answer);
        QFETCH(QDate, opensOn);
        QFETCH(QString, shown);
        // Each link names the box it fills.
        const QString box = action.startsWith("Lab") ? "Txt" + action.mid(3) : typed.front().section('=', 0, 0);
        TestEnvironment env;
        Editor e(env, editor);
        e.dialog->move(120, 80);
        e.dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(e.w()));
        TypeAll(e.w(), typed);
        env.datePicker.answers.push_back(answer);
        if (action == "in" || action == "out")
            (action == "in" ? FocusIn : FocusOut)(Control(e.w(), qPrintable(box)));
        else
            QTest::mouseClick(Control<QLabel>(e.w(), qPrintable(action)), Qt::LeftButton);
        QCOMPARE(Shown(e.w(), box), shown);
        QVERIFY(env.prompter.shown.isEmpty());
        QCOMPARE(env.datePicker.requests.size(), opensOn.isValid() ? 1 : 0);
        if (!opensOn.isValid())
            return;
        const DatePickHandOver asked = env.datePicker.requests.front();
        // Just below the box, in twips of a 96 dpi screen.
        const QPoint at = Control(e.w(), qPrintable(box))->mapTo(e.w(), QPoint(0, 0));
        QCOMPARE(asked.PickedDate, opensOn);
        QCOMPARE(asked.PickerTop, (e.dialog->y() + at.y()) * 15 + 700);
        QCOMPARE(asked.PickerLeft, (e.dialog->x() + at.x()) * 15 + (e.task ? 100 : 50));
    }

    // The kinds the editors write (A5, B4, C4, D3, D4, T1, T2) are in their own table; these are
    // the rest and the edges. A span is start date, start time, end date, end time.
    void kindCode_data()
    {
        QTest::addColumn<QStringList>("span");
        QTest::addColumn<QString>("kind");
        // clang-format off
        QTest::newRow("A2") << QStringList{"20060501", "", "20060501", "17:00"} << "A2";
        QTest::newRow("A3") << QStringList{"20060501", "09:00", "20060501", ""} << "A3";
        QTest::newRow("A4") << QStringList{"20060501", "09:00", "20060501", "10:00"} << "A4";
        QTest::newRow("A4 end before start") << QStringList{"20060501", "10:00", "20060501", "09:00"} << "A4";
        QTest::newRow("no dates at all") << QStringList{"", "", "", ""} << "A1";
        QTest::newRow("T ignores a start time") << QStringList{"", "09:00", "20060501", ""} << "T1";
        QTest::newRow("D1") << QStringList{"20060501", "", "", ""} << "D1";
        QTest::newRow("B over a year end") << QStringList{"20061231", "", "20070101", ""} << "B1";
        QTest::newRow("C1") << QStringList{"20060501", "", "20060503", ""} << "C1";
        QTest::newRow("C backwards span") << QStringList{"20060501", "", "20060430", ""} << "C1";
        QTest::newRow("unreadable end date") << QStringList{"20060501", "", "2006050", ""} << "";
        QTest::newRow("impossible start date") << QStringList{"20060230", "", "20060301", ""} << "";
        // clang-format on
    }
    void kindCode()
    {
        QFETCH(QStringList, span);
        QFETCH(QString, kind);
        QCOMPARE(KindCode(span.at(0), span.at(1), span.at(2), span.at(3)), kind);
    }

    // A stored date (one argument) or a day-off's year, month and day (three).
    void dates_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QDate>("date");
        // clang-format off
        QTest::newRow("empty is the no-date value") << QStringList{""} << QDate(100, 1, 1);
        QTest::newRow("plain") << QStringList{"20060501"} << QDate(2006, 5, 1);
        QTest::newRow("no leap day") << QStringList{"20060229"} << QDate();
        QTest::newRow("a sign inside") << QStringList{"2006+501"} << QDate();
        QTest::newRow("day-off 2/29 in a leap year") << QStringList{"2008", "2", "29"} << QDate(2008, 2, 29);
        QTest::newRow("day-off 2/29 in a plain year") << QStringList{"2006", "2", "29"} << QDate();
        QTest::newRow("day-off huge month") << QStringList{"2006", "4294967297", "1"} << QDate();
        QTest::newRow("day-off negative day") << QStringList{"2006", "5", "-3"} << QDate();
        // clang-format on
    }
    void dates()
    {
        QFETCH(QStringList, args);
        QFETCH(QDate, date);
        QCOMPARE(args.size() == 1 ? StoredDateToDate(args[0])
                                  : DayOffDate(args[0].toInt(), args[1].toLongLong(), args[2].toLongLong()),
                 date);
    }

    // Entries on their days and others; an entry is its span, kind and completion. The panel's
    // own table shows A3, A4, T1 and T2 on their day.
    void entryLineText_data()
    {
        QTest::addColumn<QDate>("day");
        QTest::addColumn<QStringList>("entry");
        QTest::addColumn<QString>("text");
        // clang-format off
        QTest::newRow("A1") << QDate(2006, 5, 1) << QStringList{"20060501", "", "20060501", "", "A1", ""} << "";
        QTest::newRow("A2") << QDate(2006, 5, 1) << QStringList{"20060501", "", "20060501", "17:00", "A2", ""} << "      - 17:00";
        QTest::newRow("A5") << QDate(2006, 5, 1) << QStringList{"20060501", "10:00", "20060501", "10:00", "A5", ""} << "10:00";
        QTest::newRow("A4 midnight") << QDate(2006, 5, 1) << QStringList{"20060501", "00:00", "20060501", "00:30", "A4", ""} << " 0:00 -  0:30";
        QTest::newRow("D4") << QDate(2006, 5, 1) << QStringList{"20060501", "10:00", "", "11:00", "D4", ""} << "10:00 - 11:00";
        QTest::newRow("A4 next day") << QDate(2006, 5, 2) << QStringList{"20060501", "09:00", "20060501", "10:30", "A4", ""} << "";
        QTest::newRow("D3 day before") << QDate(2006, 4, 30) << QStringList{"20060501", "21:00", "", "", "D3", ""} << "";
        QTest::newRow("B1 end") << QDate(2006, 5, 2) << QStringList{"20060501", "", "20060502", "", "B1", ""} << " 5/ 1 -> 5/ 2";
        QTest::newRow("B2 end") << QDate(2006, 5, 2) << QStringList{"20060501", "", "20060502", "17:00", "B2", ""} << " 5/ 1 ->17:00";
        QTest::newRow("B3 start") << QDate(2006, 5, 1) << QStringList{"20060501", "23:00", "20060502", "", "B3", ""} << "23:00 -  5/ 2";
        QTest::newRow("B4 end") << QDate(2006, 5, 2) << QStringList{"20060501", "23:00", "20060502", "01:00", "B4", ""} << " 5/ 1 -> 1:00";
        QTest::newRow("B4 day after") << QDate(2006, 5, 3) << QStringList{"20060501", "23:00", "20060502", "01:00", "B4", ""} << "";
        QTest::newRow("C3 start") << QDate(2006, 5, 1) << QStringList{"20060501", "09:30", "20060503", "", "C3", ""} << " 9:30 -  5/ 3";
        QTest::newRow("C4 end") << QDate(2006, 5, 3) << QStringList{"20060501", "09:30", "20060503", "08:00", "C4", ""} << " 5/ 1 -> 8:00";
        QTest::newRow("C1 over a year end") << QDate(2007, 1, 1) << QStringList{"20061228", "", "20070103", "", "C1", ""} << "12/28 -> 1/ 3";
        QTest::newRow("backwards span, start day") << QDate(2006, 5, 1) << QStringList{"20060501", "", "20060430", "", "C1", ""} << " 5/ 1 -  4/30";
        QTest::newRow("backwards span, end day") << QDate(2006, 4, 30) << QStringList{"20060501", "", "20060430", "", "C1", ""} << "";
        QTest::newRow("T2 done") << QDate(2006, 5, 1) << QStringList{"", "", "20060501", "09:00", "T2", "1"} << "      -> 9:00";
        QTest::newRow("T1 other day") << QDate(2006, 5, 2) << QStringList{"", "", "20060501", "", "T1", "0"} << "";
        QTest::newRow("unknown kind") << QDate(2006, 5, 1) << QStringList{"20060501", "09:00", "20060501", "", "Z3", ""} << "";
        QTest::newRow("invalid day, no start") << QDate() << QStringList{"", "09:00", "", "", "A3", ""} << "";
        // clang-format on
    }
    void entryLineText()
    {
        QFETCH(QDate, day);
        QFETCH(QStringList, entry);
        QFETCH(QString, text);
        QCOMPARE(EntryLineText(day, entry[0], entry[1], entry[2], entry[3], entry[4], entry[5]), text);
    }

    // The window throughout: the grid of May 2006, 2006/04/30 to 2006/06/10.
    void markDates_data()
    {
        QTest::addColumn<QStringList>("entry"); // kind, start date, end date
        QTest::addColumn<QStringList>("marks");
        // clang-format off
        QTest::newRow("A on its start") << QStringList{"A3", "20060515", "20060515"} << QStringList{"20060515"};
        QTest::newRow("T on its deadline") << QStringList{"T1", "", "20060608"} << QStringList{"20060608"};
        QTest::newRow("T after the grid") << QStringList{"T2", "", "20060611"} << QStringList{};
        QTest::newRow("B entering the grid") << QStringList{"B4", "20060429", "20060430"} << QStringList{"20060430"};
        QTest::newRow("C from the previous month") << QStringList{"C1", "20060425", "20060503"} << QStringList{"20060430", "20060501", "20060502", "20060503"};
        QTest::newRow("C leaving the grid") << QStringList{"C2", "20060609", "20060620"} << QStringList{"20060609", "20060610"};
        QTest::newRow("C backwards") << QStringList{"C1", "20060510", "20060505"} << QStringList{};
        QTest::newRow("C unreadable start") << QStringList{"C1", "2006051x", "20060510"} << QStringList{};
        QTest::newRow("unknown kind") << QStringList{"X1", "20060510", "20060510"} << QStringList{};
        // clang-format on
    }
    void markDates()
    {
        QFETCH(QStringList, entry);
        QFETCH(QStringList, marks);
        QStringList got;
        for (const QDate& d :
             EntryMarkDates(entry.at(0), entry.at(1), entry.at(2), QDate(2006, 4, 30), QDate(2006, 6, 10)))
            got << DateToStored(d);
        QCOMPARE(got, marks);
        // A corrupt span over millennia marks the window only, and at once.
        QElapsedTimer timer;
        timer.start();
        const QVector<QDate> dates =
            EntryMarkDates("C1", "00010101", "99991231", QDate(2006, 4, 30), QDate(2006, 6, 10));
        QCOMPARE(dates.size(), 42);
        QCOMPARE(dates.front(), QDate(2006, 4, 30));
        QCOMPARE(dates.back(), QDate(2006, 6, 10));
        QVERIFY(timer.elapsed() < 1000);
    }

    void queries()
    {
        TestEnvironment env;
        DatabaseConnection& db = env.db();
        const auto insert = [&db](int id, const char* kind, const char* start, const char* startTime, const char* end,
                                  const char* endTime, int priority = 0, const char* completion = "") {
            StoredEntry e = Entry(id, kind, start, startTime, end, endTime);
            e.priority = priority;
            e.completion = completion;
            StoreEntry(db, e);
        };
        insert(1, "C1", "20060420", "", "20060503", "");            // from the previous month
        insert(3, "A1", "20060615", "", "20060615", "");            // after the grid
        insert(4, "B1", "20060429", "", "20060430", "");            // ends on the first shown day
        insert(5, "C1", "20060301", "", "20060320", "");            // long before
        insert(6, "D3", "20060610", "09:00", "", "");               // on the last shown day
        insert(7, "T2", "", "", "20060429", "17:00");               // the day before the grid
        insert(8, "A3", "20060430", "08:00", "20060430", "");       // the first shown day
        insert(9, "T1", "", "", "20060515", "", 2, "1");            // finished tasks count
        insert(10, "C4", "20060401", "10:00", "20061231", "12:00"); // over the whole grid
        insert(11, "D1", "20060611", "", "", "");                   // the day after the grid
        insert(12, "T2", "", "", "20060601", "17:00");              // a task with a time
        QCOMPARE(Lines(db, "SELECT ID FROM (" + MonthQuerySql({2006, 4, 30}, {2006, 6, 10}) + ") ORDER BY ID", {"ID"}),
                 QStringList({"1", "4", "6", "8", "9", "10", "12"}));

        // A day's lines: tasks by priority, then spans, then the day's own entries by time.
        db.ExecuteSql("DELETE FROM TRNSCHTSK");
        insert(1, "A3", "20060510", "10:00", "20060510", "");
        insert(2, "T1", "", "", "20060510", "", 3);
        insert(3, "T1", "", "", "20060510", "", 1);
        insert(4, "A4", "20060510", "09:00", "20060510", "11:00", 2); // the time goes before the priority
        insert(5, "C1", "20060508", "", "20060512", "");
        insert(6, "D1", "20060510", "", "", "");
        insert(7, "A1", "20060511", "", "20060511", "");
        insert(8, "B2", "20060509", "", "20060510", "08:00");
        insert(9, "T2", "", "", "20060509", "08:00");
        QCOMPARE(Lines(db, DayQuerySql({2006, 5, 10}), {"ID"}), QStringList({"3", "2", "5", "8", "6", "4", "1"}));
    }

    void linkLabelHoverAndClick()
    {
        QWidget window;
        auto* first = new QLabel("カレンダー", &window);
        auto* second = new QLabel("分類の編集", &window);
        second->move(0, 40);
        int firstClicks = 0;
        auto* links = new LinkLabelGroup(&window);
        links->add(first, [&] { ++firstClicks; });
        links->add(second, nullptr);
        const auto looks = [](QLabel* l) {
            return qMakePair(l->palette().color(QPalette::WindowText), l->font().underline());
        };
        const auto atRest = qMakePair(LinkLabelGroup::restColor(), false);
        // At rest before the pointer ever came near (showing may put the pointer over one).
        QCOMPARE(looks(first), atRest);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto lit = qMakePair(first->palette().color(QPalette::Active, QPalette::Highlight), true);
        QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), QPointF(2, 2));
        QApplication::sendEvent(first, &enter);
        QCOMPARE(looks(first), lit);
        QApplication::sendEvent(second, &enter);
        QCOMPARE(looks(first), atRest);
        QCOMPARE(looks(second), lit);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(second, &leave);
        QCOMPARE(looks(second), atRest);

        QTest::mouseClick(first, Qt::RightButton);
        QTest::mouseClick(second, Qt::LeftButton); // a link without an action is harmless
        QCOMPARE(firstClicks, 0);
        first->setEnabled(false);
        // A link that cannot be used looks disabled, not like one at rest.
        QVERIFY(first->palette().color(QPalette::Disabled, QPalette::WindowText) != LinkLabelGroup::restColor());
    }
};

VERDALY_TEST(TestEntries)
#include "TestEntries.moc"
