// Sticky notes: slot, colour and place, and the row following each note a second after a change
// (never inside a dialog's transaction), all rows at exit, none after a restore.
#include "mainwindow/FrmMain.h"
#include "notes/FrmPost.h"
#include "notes/StickyNotes.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QtTest>
#include <QtWidgets>

namespace {

// Longer than any save delay: a check after it sees whatever the autosave would write.
constexpr int SaveWaitMs = StickyNotes::SaveDelayMs * 3;
const QStringList NoteColumns{"DATAN1", "DATAS3", "DATAS2", "DATAN2", "DATAN3", "MEMO1"};
const QString OpenRows = "SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAS3 = '1' ORDER BY DATAN1";

const QList<QPair<const char*, QColor>> Colours{{"MnuBlack", QColor(0, 0, 0)},      {"MnuBlue", QColor(0, 0, 192)},
                                                {"MnuGray", QColor(192, 192, 192)}, {"MnuGreen", QColor(0, 128, 0)},
                                                {"MnuOrange", QColor(255, 128, 0)}, {"MnuRed", QColor(192, 0, 0)},
                                                {"MnuYellow", QColor(192, 192, 0)}};

QString NoteRow(TestEnvironment& env, int slot)
{
    return Lines(env.db(), "SELECT * FROM TRNGENERAL WHERE CODE = 501 ORDER BY DATAN1", NoteColumns).value(slot - 1);
}

} // namespace

class TestNotes final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { CloseStickyNoteWindows(); }

    void autosaveFollowsEachNote()
    {
        TestEnvironment env;
        StickyNotes notes(env.services);
        const QString text = "it's Tom's ''quoted'' note' x'; DELETE FROM TRNGENERAL; --\n" + QString(9941, u'予');
        QList<FrmPost*> open{OpenStickyNote(notes, text, 4, 1500, 750)};
        QTRY_VERIFY_WITH_TIMEOUT(!notes.hasPendingChanges(), SaveWaitMs);
        QCOMPARE(NoteRow(env, 1), "1|1|4|1500|750|" + text);

        // Twips in, pixels at 96 dpi out; 0, 0 leaves the note where the desktop puts it, and a
        // place off every screen comes back onto it.
        const QList<QPoint> at{{0, 0}, {1500, 0}, {0, 3000}, {150000, 150000}};
        for (int i = 2; i <= 30; ++i)
            open << OpenStickyNote(notes, QString("note %1").arg(i), i - 3, at.value(i - 2).x(), at.value(i - 2).y());
        QVERIFY(!open[1]->testAttribute(Qt::WA_Moved));
        QCOMPARE(QList<QPoint>({open[2]->pos(), open[3]->pos()}), QList<QPoint>({{100, 0}, {0, 200}}));
        QVERIFY(open[4]->screen()->availableGeometry().contains(open[4]->frameGeometry()));
        // Notes 2 to 10 have colours -1 to 7 (outside 0 to 6: black), dark text on light paper;
        // each menu entry then recolours one of them.
        for (int index = -1; index <= 7; ++index) {
            const auto& [entry, colour] = Colours.value(index < 0 || index > 6 ? 0 : index);
            FrmPost* note = open[index + 2];
            QCOMPARE(Control<NoteShape>(note, "ShpColor")->color(), colour);
            QVERIFY(Control<QAction>(note->menu(), entry)->isChecked());
            const QColor ink = Control<QPlainTextEdit>(note, "TxtPost")->palette().color(QPalette::Text);
            QVERIFY(note->palette().color(QPalette::Window).lightness() - ink.lightness() > 120);
            const int chosen = (index + 8) % 7;
            Control<QAction>(Control<QMenu>(note->menu(), "MnuColor"), Colours[chosen].first)->trigger();
            QCOMPARE(Control<NoteShape>(note, "ShpColor")->color(), Colours[chosen].second);
            QCOMPARE(env.services.state.StickyNotes[static_cast<size_t>(note->slot())].colorIndex, chosen);
        }
        QCOMPARE(OpenStickyNote(notes, "one too many", 2), nullptr);
        QCOMPARE(env.prompter.texts(), QStringList{"これ以上付箋を表示することはできません。"});
        QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);
        // Peeling is saved like any change: a crash now must not bring the note back.
        open[6]->move(240, 120);
        open[6]->MnuClose_Click();
        QTRY_COMPARE_WITH_TIMEOUT(NoteRow(env, 7), "7|0||3600|1800|", SaveWaitMs);
        FrmPost* again = OpenStickyNote(notes, "in the gap", 3);
        QVERIFY(again && again->slot() == 7);

        // A note waits out a dialog's transaction: it must neither commit nor lose the dialog's work.
        env.db().BeginTrans();
        Type(open[0], "TxtPost", "typed while the dialog was up");
        QTest::qWait(SaveWaitMs);
        QVERIFY(notes.hasPendingChanges());
        env.db().RollbackTrans();
        const QString typed = "1|1|4|1500|750|typed while the dialog was up";
        QTRY_COMPARE_WITH_TIMEOUT(NoteRow(env, 1), typed, SaveWaitMs);

        // The file under the notes is a restored backup now: nothing of this run may touch it.
        env.services.state.RestoreDone = true;
        Type(open[0], "TxtPost", "after");
        QTest::qWait(SaveWaitMs);
        notes.SaveAtExit();
        QCOMPARE(NoteRow(env, 1), typed);
    }

    void exitAndNextStart()
    {
        TestEnvironment env;
        StoreClass(env.db(), 1, "仕事");
        {
            const std::unique_ptr<FrmMain> main = StartMainWindow(env);
            QList<FrmPost*> open;
            for (int i = 1; i <= 5; ++i)
                open << OpenStickyNote(*main->stickyNotes(), QString("メモ %1").arg(i), i, 1500 * i, 750 * i);
            for (int peeled : {1, 3, 4})
                open[peeled - 1]->MnuClose_Click();
            // In the very corner: a place that must not read back as "no place given".
            open[4]->move(0, 0);
            // The session ends while a dialog still holds its transaction.
            env.db().BeginTrans();
            env.db().ExecuteSql("UPDATE MSTCLASS SET CLASS = 'dialog work'");
            main->Form_Unload();
        }
        env.open();
        QCOMPARE(Lines(env.db(), OpenRows, NoteColumns), QStringList({"2|1|2|3000|1500|メモ 2", "5|1|5|1|0|メモ 5"}));
        QCOMPARE(NoteRow(env, 3), "3|0||4500|2250|");
        QCOMPARE(env.count("TRNGENERAL", "CODE = 501 AND DATAS3 = '0'"), 28);
        QCOMPARE(env.count("MSTCLASS", "CLASS = 'dialog work'"), 0);

        // Next start: the two notes take slots 1 and 2, their rows at once (a crash brings back two).
        env.services.state = AppState{};
        const std::unique_ptr<FrmMain> main = StartMainWindow(env);
        for (const auto& [slot, text, place] :
             {std::tuple{1, "メモ 2", QPoint(200, 100)}, {2, "メモ 5", QPoint(0, 0)}}) {
            auto* note = qobject_cast<FrmPost*>(env.services.state.StickyNotes[slot].window.data());
            QVERIFY(note && note->testAttribute(Qt::WA_Moved));
            QCOMPARE(Shown(note, "TxtPost"), text);
            QCOMPARE(note->pos(), place);
        }
        QCOMPARE(Lines(env.db(), OpenRows, NoteColumns), QStringList({"1|1|2|3000|1500|メモ 2", "2|1|5|1|0|メモ 5"}));

        // The editors hand a new entry to a note (in a colour drawn at random) only when asked.
        env.random.values = {0.5, 0.5, 0.5};
        for (const auto& [task, post, slot] : {std::tuple{false, true, 3}, {true, true, 4}, {false, false, 5}}) {
            ModalAnswer answer([post = post](QWidget* editor) {
                TypeAll(editor, {"TxtYouken=会議 it's on", post ? "ChkPost=1" : "ChkPost=0"});
                Click(editor, "ComOK");
            });
            task ? main->NewTask(QDate(2026, 11, 24)) : main->NewSchedule(QDate(2026, 11, 24));
            QVERIFY(answer.opened() && !answer.stayedOpen());
            auto* handed = qobject_cast<FrmPost*>(env.services.state.StickyNotes[slot].window.data());
            QVERIFY(post ? handed && Shown(handed, "TxtPost").contains("\n会議 it's on") && handed->colorIndex() == 3
                         : !handed);
        }
    }
};

VERDALY_TEST(TestNotes)
#include "TestNotes.moc"
