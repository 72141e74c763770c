// The note window and the slot table: which slot a note takes, its colour, its place.
#include "mainwindow/FrmMain.h"
#include "notes/FrmPost.h"
#include "notes/StickyNotes.h"
#include "support/TestKit.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QtTest>

class TestStickyNotes final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { CloseStickyNoteWindows(); }
    void thirtyFirstNoteRefusedAndFreedSlotReused();
    void colourShown_data();
    void colourShown();
    void handOverPlace_data();
    void handOverPlace();
    void editorHandsEntryToNote_data();
    void editorHandsEntryToNote();
};

void TestStickyNotes::thirtyFirstNoteRefusedAndFreedSlotReused()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    QList<FrmPost*> open;
    for (int i = 1; i <= 30; ++i)
        open << OpenStickyNote(notes, QStringLiteral("note %1").arg(i), 1);
    QCOMPARE(open.back()->slot(), 30);
    QVERIFY(env.prompter.shown.isEmpty());

    QCOMPARE(OpenStickyNote(notes, QStringLiteral("one too many"), 2), nullptr);
    QCOMPARE(env.prompter.texts(), QStringList{QStringLiteral("これ以上付箋を表示することはできません。")});
    QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);

    open[6]->MnuClose_Click();
    FrmPost* again = OpenStickyNote(notes, QStringLiteral("in the gap"), 3);
    QVERIFY(again);
    QCOMPARE(again->slot(), 7);
    QCOMPARE(env.services.state.StickyNotes[7].text, QStringLiteral("in the gap"));
}

void TestStickyNotes::colourShown_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QColor>("shown");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("entryIndex");
    // clang-format off
    QTest::newRow("0 black") << 0 << QColor(0, 0, 0) << "MnuBlack" << 0;
    QTest::newRow("1 blue") << 1 << QColor(0, 0, 192) << "MnuBlue" << 1;
    QTest::newRow("2 grey") << 2 << QColor(192, 192, 192) << "MnuGray" << 2;
    QTest::newRow("3 green") << 3 << QColor(0, 128, 0) << "MnuGreen" << 3;
    QTest::newRow("4 orange") << 4 << QColor(255, 128, 0) << "MnuOrange" << 4;
    QTest::newRow("5 red") << 5 << QColor(192, 0, 0) << "MnuRed" << 5;
    QTest::newRow("6 yellow") << 6 << QColor(192, 192, 0) << "MnuYellow" << 6;
    QTest::newRow("7 black") << 7 << QColor(0, 0, 0) << "MnuBlack" << 0;
    QTest::newRow("-1 black") << -1 << QColor(0, 0, 0) << "MnuBlack" << 0;
    // clang-format on
}

void TestStickyNotes::colourShown()
{
    QFETCH(int, index);
    QFETCH(QColor, shown);
    QFETCH(QString, entry);
    QFETCH(int, entryIndex);
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QString(), index);
    QCOMPARE(Control<NoteShape>(note, "ShpColor")->color(), shown);
    auto* action = Control<QAction>(note->menu(), entry.toLatin1().constData());
    QVERIFY(action->isChecked());
    // Whatever the colour, the text stays dark on a light paper.
    const int paper = note->palette().color(QPalette::Window).lightness();
    QVERIFY2(paper - Control<QPlainTextEdit>(note, "TxtPost")->palette().color(QPalette::Text).lightness() > 120,
             qPrintable(QString::number(paper)));

    // The same entry chosen from the menu of a note in another colour gives the same.
    FrmPost* other = OpenStickyNote(notes, QString(), index == 3 ? 4 : 3);
    Control<QAction>(Control<QMenu>(other->menu(), "MnuColor"), entry.toLatin1().constData())->trigger();
    QCOMPARE(Control<NoteShape>(other, "ShpColor")->color(), shown);
    QCOMPARE(env.services.state.StickyNotes[2].colorIndex, entryIndex);
}

void TestStickyNotes::handOverPlace_data()
{
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("top");
    // Pixels at 96 dpi; (-1, -1): the desktop's own place; (-2, -2): anywhere wholly on screen.
    QTest::addColumn<QPoint>("place");
    // clang-format off
    QTest::newRow("0, 0 keeps the default place") << 0 << 0 << QPoint(-1, -1);
    QTest::newRow("left alone moves") << 1500 << 0 << QPoint(100, 0);
    QTest::newRow("top alone moves") << 0 << 3000 << QPoint(0, 200);
    QTest::newRow("both") << 4500 << 1500 << QPoint(300, 100);
    QTest::newRow("off every screen") << 150000 << 150000 << QPoint(-2, -2);
    // clang-format on
}

void TestStickyNotes::handOverPlace()
{
    QFETCH(int, left);
    QFETCH(int, top);
    QFETCH(QPoint, place);
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QStringLiteral("場所"), 2, left, top);
    QCOMPARE(note->testAttribute(Qt::WA_Moved), place != QPoint(-1, -1));
    if (place == QPoint(-2, -2))
        QVERIFY(note->screen()->availableGeometry().contains(note->frameGeometry()));
    else if (place != QPoint(-1, -1))
        QCOMPARE(note->pos(), place);
}

void TestStickyNotes::editorHandsEntryToNote_data()
{
    QTest::addColumn<bool>("task");
    QTest::addColumn<bool>("post");
    // clang-format off
    QTest::newRow("schedule, asked") << false << true;
    QTest::newRow("task, asked") << true << true;
    QTest::newRow("schedule, not asked") << false << false;
    // clang-format on
}

void TestStickyNotes::editorHandsEntryToNote()
{
    QFETCH(bool, task);
    QFETCH(bool, post);
    TestEnvironment env;
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    env.random.values = {0.5, 0.5};
    ModalAnswer answer([post](QWidget* editor) {
        Control<QLineEdit>(editor, "TxtYouken")->setText(QStringLiteral("会議 it's on"));
        Control<QCheckBox>(editor, "ChkPost")->setChecked(post);
        Click(editor, "ComOK");
    });
    if (task)
        main.NewTask(QDate(2026, 11, 24));
    else
        main.NewSchedule(QDate(2026, 11, 24));
    QVERIFY(answer.opened() && !answer.stayedOpen());
    const StickyNoteSlot& slot = env.services.state.StickyNotes[1];
    QCOMPARE(slot.inUse, post);
    QCOMPARE(slot.text.contains(QStringLiteral("\n会議 it's on")), post);
    if (post)
        QCOMPARE(qobject_cast<FrmPost*>(slot.window.data())->colorIndex(), 3);
    main.Form_Unload();
}

VERDALY_TEST(TestStickyNotes)
#include "TestStickyNotes.moc"
