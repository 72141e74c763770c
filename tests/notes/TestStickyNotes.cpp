#include "mainwindow/FrmMain.h"
#include "notes/FrmPost.h"
#include "notes/StickyNotes.h"
#include "support/TestKit.h"

#include <QMenu>
#include <QPlainTextEdit>
#include <QtTest>

namespace {

QAction* MenuEntry(FrmPost* note, const char* name)
{
    return Control<QAction>(note->menu(), name);
}

} // namespace

class TestStickyNotes final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void thirtyFirstNoteRefusedAndFreedSlotReused();
    void colourIndexShown_data();
    void colourIndexShown();
    void menuColourEntrySetsSlot_data();
    void menuColourEntrySetsSlot();
    void handOverPlace_data();
    void handOverPlace();
    void dragMovesNoteWithoutSelecting();
    void mainWindowEmptyNote_data();
    void mainWindowEmptyNote();
};

void TestStickyNotes::cleanup()
{
    CloseStickyNoteWindows();
}

void TestStickyNotes::thirtyFirstNoteRefusedAndFreedSlotReused()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    QList<FrmPost*> open;
    for (int i = 1; i <= 30; ++i) {
        FrmPost* note = OpenStickyNote(notes, QStringLiteral("note %1").arg(i), 1);
        QVERIFY(note);
        QCOMPARE(note->slot(), i);
        open << note;
    }
    QVERIFY(env.prompter.shown.isEmpty());

    QCOMPARE(OpenStickyNote(notes, QStringLiteral("one too many"), 2), nullptr);
    QCOMPARE(env.prompter.texts(), QStringList{QStringLiteral("これ以上付箋を表示することはできません。")});
    QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);

    open[6]->MnuClose_Click();
    QTest::qWait(0);
    QVERIFY(!env.services.state.StickyNotes[7].inUse);
    FrmPost* again = OpenStickyNote(notes, QStringLiteral("in the gap"), 3);
    QVERIFY(again);
    QCOMPARE(again->slot(), 7);
    QCOMPARE(env.services.state.StickyNotes[7].text, QStringLiteral("in the gap"));
    QCOMPARE(env.prompter.shown.size(), 1);
}

void TestStickyNotes::colourIndexShown_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QColor>("shown");
    QTest::addColumn<QString>("checkedEntry");
    // clang-format off
    QTest::newRow("0 black") << 0 << QColor(0, 0, 0) << "MnuBlack";
    QTest::newRow("1 blue") << 1 << QColor(0, 0, 192) << "MnuBlue";
    QTest::newRow("2 grey") << 2 << QColor(192, 192, 192) << "MnuGray";
    QTest::newRow("3 green") << 3 << QColor(0, 128, 0) << "MnuGreen";
    QTest::newRow("4 orange") << 4 << QColor(255, 128, 0) << "MnuOrange";
    QTest::newRow("5 red") << 5 << QColor(192, 0, 0) << "MnuRed";
    QTest::newRow("6 yellow") << 6 << QColor(192, 192, 0) << "MnuYellow";
    QTest::newRow("7 black") << 7 << QColor(0, 0, 0) << "MnuBlack";
    QTest::newRow("-1 black") << -1 << QColor(0, 0, 0) << "MnuBlack";
    // clang-format on
}

void TestStickyNotes::colourIndexShown()
{
    QFETCH(int, index);
    QFETCH(QColor, shown);
    QFETCH(QString, checkedEntry);
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QString(), index);
    QCOMPARE(Control<NoteShape>(note, "ShpColor")->color(), shown);
    QVERIFY(MenuEntry(note, checkedEntry.toLatin1().constData())->isChecked());
    // Whatever the colour, the text stays dark on a light paper.
    const QColor paper = note->palette().color(QPalette::Window);
    const QColor ink = Control<QPlainTextEdit>(note, "TxtPost")->palette().color(QPalette::Text);
    QVERIFY2(paper.lightness() - ink.lightness() > 120, qPrintable(paper.name() + QLatin1Char('/') + ink.name()));
}

void TestStickyNotes::menuColourEntrySetsSlot_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("index");
    // clang-format off
    QTest::newRow("red") << "MnuRed" << 5;
    QTest::newRow("blue") << "MnuBlue" << 1;
    QTest::newRow("yellow") << "MnuYellow" << 6;
    QTest::newRow("green") << "MnuGreen" << 3;
    QTest::newRow("orange") << "MnuOrange" << 4;
    QTest::newRow("grey") << "MnuGray" << 2;
    QTest::newRow("black") << "MnuBlack" << 0;
    // clang-format on
}

void TestStickyNotes::menuColourEntrySetsSlot()
{
    QFETCH(QString, entry);
    QFETCH(int, index);
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QString(), index == 4 ? 1 : 4);
    QMenu* colours = Control<QMenu>(note->menu(), "MnuColor");
    QCOMPARE(colours->title(), QStringLiteral("色変更"));
    QAction* action = MenuEntry(note, entry.toLatin1().constData());
    QVERIFY(colours->actions().contains(action));
    action->trigger();
    QCOMPARE(env.services.state.StickyNotes[1].colorIndex, index);
    QCOMPARE(note->colorIndex(), index);
}

void TestStickyNotes::handOverPlace_data()
{
    QTest::addColumn<int>("left");
    QTest::addColumn<int>("top");
    QTest::addColumn<bool>("moved");
    QTest::addColumn<QPoint>("place");
    // clang-format off
    QTest::newRow("0, 0 keeps the default place") << 0 << 0 << false << QPoint();
    QTest::newRow("left alone moves") << 1500 << 0 << true << QPoint(100, 0);
    QTest::newRow("top alone moves") << 0 << 3000 << true << QPoint(0, 200);
    QTest::newRow("both") << 4500 << 1500 << true << QPoint(300, 100);
    // clang-format on
}

void TestStickyNotes::handOverPlace()
{
    QFETCH(int, left);
    QFETCH(int, top);
    QFETCH(bool, moved);
    QFETCH(QPoint, place);
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QStringLiteral("場所"), 2, left, top);
    QCOMPARE(note->testAttribute(Qt::WA_Moved), moved);
    if (moved) {
        QCOMPARE(note->pos(), place);
        QCOMPARE(env.services.state.StickyNotes[1].left, left);
        QCOMPARE(env.services.state.StickyNotes[1].top, top);
    }
}

void TestStickyNotes::dragMovesNoteWithoutSelecting()
{
    TestEnvironment env;
    StickyNotes notes(env.services);
    FrmPost* note = OpenStickyNote(notes, QStringLiteral("drag me by the text"), 6, 1500, 1500);
    QVERIFY(QTest::qWaitForWindowExposed(note));
    auto* text = Control<QPlainTextEdit>(note, "TxtPost");
    QWidget* viewport = text->viewport();
    const QPoint start(20, 10);
    // The pointer's path on the screen; the note under it moves along.
    const QPoint globalStart = viewport->mapToGlobal(start);
    QTest::mousePress(viewport, Qt::LeftButton, {}, start);
    for (int step = 1; step <= 4; ++step) {
        QMouseEvent move(QEvent::MouseMove, QPointF(start + QPoint(15 * step, 10 * step)),
                         QPointF(globalStart + QPoint(15 * step, 10 * step)), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(viewport, &move);
    }
    QTest::mouseRelease(viewport, Qt::LeftButton, {}, start + QPoint(60, 40));
    QCOMPARE(note->pos(), QPoint(160, 140));
    QVERIFY(!text->textCursor().hasSelection());
    QCOMPARE(env.services.state.StickyNotes[1].left, 160 * 15);
    QCOMPARE(env.services.state.StickyNotes[1].top, 140 * 15);
}

void TestStickyNotes::mainWindowEmptyNote_data()
{
    QTest::addColumn<double>("draw");
    QTest::addColumn<int>("colour");
    // clang-format off
    QTest::newRow("0.0 black") << 0.0 << 0;
    QTest::newRow("0.5 green") << 0.5 << 3;
    QTest::newRow("0.999 yellow") << 0.999 << 6;
    // clang-format on
}

void TestStickyNotes::mainWindowEmptyNote()
{
    QFETCH(double, draw);
    QFETCH(int, colour);
    TestEnvironment env;
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    // Left over from a note handed over earlier: a new empty note must not take it.
    env.services.state.StickyNotes[0].text = QStringLiteral("earlier entry");
    env.random.values = {draw};
    main.NewEmptyStickyNote();
    const StickyNoteSlot& slot = env.services.state.StickyNotes[1];
    QVERIFY(slot.inUse);
    auto* note = qobject_cast<FrmPost*>(slot.window.data());
    QVERIFY(note);
    QCOMPARE(note->colorIndex(), colour);
    QCOMPARE(Control<QPlainTextEdit>(note, "TxtPost")->toPlainText(), QString());
    main.Form_Unload();
}

VERDALY_TEST(TestStickyNotes)
#include "TestStickyNotes.moc"
