#include "mainwindow/FrmMain.h"
#include "notes/FrmPost.h"
#include "notes/StickyNotes.h"
#include "support/TestKit.h"

#include <QPlainTextEdit>
#include <QtTest>

namespace {

// Longer than any save delay, so a check after it sees whatever the autosave would write.
constexpr int SaveWaitMs = StickyNotes::SaveDelayMs * 3;

void Type(FrmPost* note, const QString& text)
{
    Control<QPlainTextEdit>(note, "TxtPost")->setPlainText(text);
}

Row NoteRow(TestEnvironment& env, int slot)
{
    return env.db()
        .ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAN1 = %1").arg(slot))
        .front();
}

QString Memo(TestEnvironment& env, int slot)
{
    return NoteRow(env, slot).text(QStringLiteral("MEMO1"));
}

} // namespace

class TestNoteSaving final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void textStoredIntact_data();
    void textStoredIntact();
    void exitMarksOpenRowsOnly();
    void closedNoteKeepsItsPlace();
    void autosaveWaitsForDialogTransaction();
    void nothingWrittenAfterRestore();
    void exitDuringDialogStillSavesNotes();
};

void TestNoteSaving::cleanup()
{
    CloseStickyNoteWindows();
}

void TestNoteSaving::textStoredIntact_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("atExit");
    const QString apostrophes = QStringLiteral("it's Tom's ''quoted'' note'");
    QString longText;
    for (int i = 0; longText.size() < 10000; ++i)
        longText += QStringLiteral("%1行目の予定、it's fine;\n").arg(i);
    longText.truncate(10000);
    // clang-format off
    QTest::newRow("apostrophes, autosaved") << apostrophes << false;
    QTest::newRow("apostrophes, at exit") << apostrophes << true;
    QTest::newRow("10,000 characters, autosaved") << longText << false;
    QTest::newRow("10,000 characters, at exit") << longText << true;
    QTest::newRow("statement-like text") << QStringLiteral("x'; DELETE FROM TRNGENERAL; --") << false;
    // clang-format on
}

void TestNoteSaving::textStoredIntact()
{
    QFETCH(QString, text);
    QFETCH(bool, atExit);
    TestEnvironment env;
    StickyNotes notes(env.services);
    Type(OpenStickyNote(notes, QString(), 4), text);
    if (atExit)
        notes.SaveAtExit();
    else
        QTRY_VERIFY_WITH_TIMEOUT(!notes.hasPendingChanges(), SaveWaitMs);
    QCOMPARE(Memo(env, 1), text);
    QCOMPARE(NoteRow(env, 1).text(QStringLiteral("DATAS3")), QStringLiteral("1"));
    QCOMPARE(env.count(QStringLiteral("TRNGENERAL"), QStringLiteral("CODE = 501")), 30);
}

void TestNoteSaving::exitMarksOpenRowsOnly()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    QList<FrmPost*> open;
    for (int i = 1; i <= 5; ++i)
        open << OpenStickyNote(notes, QStringLiteral("note %1").arg(i), i);
    for (int peeled : {1, 3, 4})
        open[peeled - 1]->MnuClose_Click();
    notes.SaveAtExit();
    QTest::qWait(0);

    const Rows rows = env.db().ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501"));
    QCOMPARE(rows.size(), size_t(30));
    for (const Row& row : rows) {
        const qint64 slot = row.number(QStringLiteral("DATAN1"));
        const bool kept = slot == 2 || slot == 5;
        QCOMPARE(row.text(QStringLiteral("DATAS3")), kept ? QStringLiteral("1") : QStringLiteral("0"));
        QCOMPARE(row.text(QStringLiteral("MEMO1")), kept ? QStringLiteral("note %1").arg(slot) : QString());
        QCOMPARE(row.text(QStringLiteral("DATAS2")), kept ? QString::number(slot) : QString());
    }
    // Every window is gone, and a late change report writes nothing any more.
    QVERIFY(!env.services.state.StickyNotes[2].window);
    notes.noteChanged(2);
    QVERIFY(!notes.hasPendingChanges());
}

void TestNoteSaving::closedNoteKeepsItsPlace()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QStringLiteral("to be peeled"), 5);
    note->move(240, 120);
    QTRY_VERIFY_WITH_TIMEOUT(!notes.hasPendingChanges(), SaveWaitMs);
    QCOMPARE(NoteRow(env, 1).number(QStringLiteral("DATAN2")), 240 * 15);

    note->MnuClose_Click();
    // Peeling is saved like any change: a crash now must not bring the note back.
    QTRY_VERIFY_WITH_TIMEOUT(!notes.hasPendingChanges(), SaveWaitMs);
    Row row = NoteRow(env, 1);
    QCOMPARE(row.text(QStringLiteral("DATAS3")), QStringLiteral("0"));
    QCOMPARE(row.text(QStringLiteral("MEMO1")), QString());
    QCOMPARE(row.number(QStringLiteral("DATAN2")), 240 * 15);
    QCOMPARE(row.number(QStringLiteral("DATAN3")), 120 * 15);

    notes.SaveAtExit();
    row = NoteRow(env, 1);
    QCOMPARE(row.text(QStringLiteral("DATAS3")), QStringLiteral("0"));
    QCOMPARE(row.number(QStringLiteral("DATAN2")), 240 * 15);
    QCOMPARE(row.number(QStringLiteral("DATAN3")), 120 * 15);
}

void TestNoteSaving::autosaveWaitsForDialogTransaction()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QString(), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!notes.hasPendingChanges(), SaveWaitMs);

    // A dialog holds its transaction while the user types into the note.
    env.db().BeginTrans();
    env.db().ExecuteSql(QStringLiteral("UPDATE MSTCLASS SET CLASS = 'dialog work'"));
    Type(note, QStringLiteral("typed while the dialog was up"));
    QTest::qWait(SaveWaitMs);
    QVERIFY(notes.hasPendingChanges());
    QCOMPARE(env.db().transactionDepth(), 1);

    // The dialog is cancelled: its work goes, the note's text is written afterwards.
    env.db().RollbackTrans();
    QTRY_VERIFY_WITH_TIMEOUT(!notes.hasPendingChanges(), SaveWaitMs);
    QCOMPARE(Memo(env, 1), QStringLiteral("typed while the dialog was up"));
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = 'dialog work'")), 0);
}

void TestNoteSaving::nothingWrittenAfterRestore()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QStringLiteral("before"), 1);
    QTRY_VERIFY_WITH_TIMEOUT(!notes.hasPendingChanges(), SaveWaitMs);
    // The restored file says something else about slot 1; this run must leave it so.
    env.db().ExecuteSql(
        QStringLiteral("UPDATE TRNGENERAL SET MEMO1 = 'restored', DATAS3 = '1' WHERE CODE = 501 AND DATAN1 = 1"));
    env.services.state.RestoreDone = true;
    Type(note, QStringLiteral("after"));
    QTest::qWait(SaveWaitMs);
    notes.SaveAtExit();
    QCOMPARE(Memo(env, 1), QStringLiteral("restored"));
}

void TestNoteSaving::exitDuringDialogStillSavesNotes()
{
    TestEnvironment env;
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    FrmPost* note = OpenStickyNote(*main.stickyNotes(), QStringLiteral("ログアウト直前のメモ"), 6);
    QVERIFY(note);
    // The session ends while a dialog still holds its transaction.
    env.db().BeginTrans();
    env.db().ExecuteSql(QStringLiteral("UPDATE MSTCLASS SET CLASS = 'dialog work'"));
    main.Form_Unload();

    env.open();
    const Row row = NoteRow(env, 1);
    QCOMPARE(row.text(QStringLiteral("DATAS3")), QStringLiteral("1"));
    QCOMPARE(row.text(QStringLiteral("MEMO1")), QStringLiteral("ログアウト直前のメモ"));
    QCOMPARE(env.count(QStringLiteral("MSTCLASS"), QStringLiteral("CLASS = 'dialog work'")), 0);
}

VERDALY_TEST(TestNoteSaving)
#include "TestNoteSaving.moc"
