// How notes reach their rows: each change about a second later, never inside another
// action's transaction, all of them at exit, none after a restore; and back at the start.
#include "mainwindow/FrmMain.h"
#include "notes/FrmPost.h"
#include "notes/StickyNotes.h"
#include "support/TestKit.h"

#include <QPlainTextEdit>
#include <QtTest>

namespace {

// Longer than any save delay: a check after it sees whatever the autosave would write.
constexpr int SaveWaitMs = StickyNotes::SaveDelayMs * 3;
const QStringList NoteColumns{QStringLiteral("DATAN1"), QStringLiteral("DATAS3"), QStringLiteral("DATAS2"),
                              QStringLiteral("DATAN2"), QStringLiteral("DATAN3"), QStringLiteral("MEMO1")};

QString NoteRow(TestEnvironment& env, int slot)
{
    return Lines(env.db(), QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAN1 = %1").arg(slot),
                 NoteColumns)
        .value(0);
}

void Type(FrmPost* note, const QString& text)
{
    Control<QPlainTextEdit>(note, "TxtPost")->setPlainText(text);
}

} // namespace

class TestNoteSaving final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { CloseStickyNoteWindows(); }
    void textStoredIntact_data();
    void textStoredIntact();
    void closedNoteKeepsItsPlace();
    void autosaveWaitsForDialogTransaction();
    void nothingWrittenAfterRestore();
    void exitDuringDialogStillSavesNotes();
    void openNotesReopenOnLowestSlots();
};

void TestNoteSaving::textStoredIntact_data()
{
    QTest::addColumn<QString>("text");
    QString longText;
    while (longText.size() < 10000)
        longText += QStringLiteral("%1行目の予定、it's fine;\n").arg(longText.size());
    longText.truncate(10000);
    // clang-format off
    QTest::newRow("apostrophes") << QStringLiteral("it's Tom's ''quoted'' note'");
    QTest::newRow("10,000 characters") << longText;
    QTest::newRow("statement-like") << QStringLiteral("x'; DELETE FROM TRNGENERAL; --");
    // clang-format on
}

void TestNoteSaving::textStoredIntact()
{
    QFETCH(QString, text);
    TestEnvironment env;
    StickyNotes notes(env.services);
    Type(OpenStickyNote(notes, QString(), 4, 1500, 750), text);
    QTRY_VERIFY_WITH_TIMEOUT(!notes.hasPendingChanges(), SaveWaitMs);
    QCOMPARE(NoteRow(env, 1), QStringLiteral("1|1|4|1500|750|") + text);
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("CODE = 501")), 30);
}

void TestNoteSaving::closedNoteKeepsItsPlace()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QStringLiteral("to be peeled"), 5);
    note->move(240, 120);
    note->MnuClose_Click();
    // Peeling is saved like any change: a crash now must not bring the note back.
    QTRY_COMPARE_WITH_TIMEOUT(NoteRow(env, 1), QStringLiteral("1|0||3600|1800|"), SaveWaitMs);
    notes.SaveAtExit();
    QCOMPARE(NoteRow(env, 1), QStringLiteral("1|0||3600|1800|"));
}

void TestNoteSaving::autosaveWaitsForDialogTransaction()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QString(), 1, 1500, 1500);
    // A dialog holds its transaction while the user types into the note.
    env.db().BeginTrans();
    env.db().ExecuteSql(QStringLiteral("UPDATE MSTCLASS SET CLASS = 'dialog work'"));
    Type(note, QStringLiteral("typed while the dialog was up"));
    QTest::qWait(SaveWaitMs);
    QVERIFY(notes.hasPendingChanges());
    QCOMPARE(env.db().transactionDepth(), 1);

    // The dialog is cancelled: its work goes, the note's text is written afterwards.
    env.db().RollbackTrans();
    QTRY_COMPARE_WITH_TIMEOUT(NoteRow(env, 1), QStringLiteral("1|1|1|1500|1500|typed while the dialog was up"),
                              SaveWaitMs);
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = 'dialog work'")), 0);
}

void TestNoteSaving::nothingWrittenAfterRestore()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QStringLiteral("before"), 1);
    // The restored file says something else about slot 1; this run must leave it so.
    const QString restored = NoteRow(env, 1);
    env.services.state.RestoreDone = true;
    Type(note, QStringLiteral("after"));
    QTest::qWait(SaveWaitMs);
    notes.SaveAtExit();
    QCOMPARE(NoteRow(env, 1), restored);
}

void TestNoteSaving::exitDuringDialogStillSavesNotes()
{
    TestEnvironment env;
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    OpenStickyNote(*main.stickyNotes(), QStringLiteral("ログアウト直前のメモ"), 6, 300, 300);
    // The session ends while a dialog still holds its transaction.
    env.db().BeginTrans();
    env.db().ExecuteSql(QStringLiteral("UPDATE MSTCLASS SET CLASS = 'dialog work'"));
    main.Form_Unload();
    env.open();
    QCOMPARE(NoteRow(env, 1), QStringLiteral("1|1|6|300|300|ログアウト直前のメモ"));
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = 'dialog work'")), 0);
}

void TestNoteSaving::openNotesReopenOnLowestSlots()
{
    TestEnvironment env;
    env.services.connection.reset();
    const QString openRows =
        QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAS3 = '1' ORDER BY DATAN1");
    {
        FrmMain main(env.services);
        QVERIFY(main.Form_Load());
        QList<FrmPost*> open;
        for (int i = 1; i <= 5; ++i)
            open << OpenStickyNote(*main.stickyNotes(), QStringLiteral("note %1").arg(i), i, 1500 * i, 750 * i);
        for (int peeled : {1, 3, 4})
            open[peeled - 1]->MnuClose_Click();
        // In the very corner: a place that must not read back as "no place given".
        open[4]->move(0, 0);
        main.Form_Unload();
    }
    env.open();
    QCOMPARE(Lines(env.db(), openRows, NoteColumns),
             QStringList({QStringLiteral("2|1|2|3000|1500|note 2"), QStringLiteral("5|1|5|1|0|note 5")}));
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("CODE = 501 AND DATAS3 = '0'")), 28);

    // The next start: the two notes take slots 1 and 2, and the rows follow them at once,
    // so that a crash now brings back two notes, not four.
    env.services.connection.reset();
    env.services.state = AppState{};
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    auto* first = qobject_cast<FrmPost*>(env.services.state.StickyNotes[1].window.data());
    QVERIFY(first);
    QCOMPARE(Control<QPlainTextEdit>(first, "TxtPost")->toPlainText(), QStringLiteral("note 2"));
    QCOMPARE(first->pos(), QPoint(200, 100));
    auto* corner = qobject_cast<FrmPost*>(env.services.state.StickyNotes[2].window.data());
    QVERIFY(corner && corner->testAttribute(Qt::WA_Moved));
    QCOMPARE(corner->pos(), QPoint(0, 0));
    QCOMPARE(Lines(env.db(), openRows, NoteColumns),
             QStringList({QStringLiteral("1|1|2|3000|1500|note 2"), QStringLiteral("2|1|5|1|0|note 5")}));
    main.Form_Unload();
}

VERDALY_TEST(TestNoteSaving)
#include "TestNoteSaving.moc"
