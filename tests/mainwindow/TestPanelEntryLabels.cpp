// The selected day's entry labels: a click opens the entry in its editor, the right button
// offers edit and delete, and a delete asks first and closes the panel's gap after.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

const QString Day = QStringLiteral("20261122"); // the test clock's today

// Entries on the test's today, one an hour from 08:00, subjects A, B, C, ...; the entry
// at index `task` (if any) is a task due at its hour. Tasks have no start day, so the
// panel lists a task first: make only the first entry a task to keep A, B, C in order.
void StoreDay(DatabaseConnection& db, int count, int task = -1)
{
    for (int i = 0; i < count; ++i) {
        const QString time = QStringLiteral("%1:00").arg(8 + i, 2, 10, QLatin1Char('0'));
        const QString subject(QChar(u'A' + i));
        if (i == task)
            StoreEntry(db, Entry(i + 1, QStringLiteral("T2"), QString(), QString(), Day, time, subject));
        else
            StoreEntry(db, Entry(i + 1, QStringLiteral("D3"), Day, time, QString(), QString(), subject));
    }
}

QStringList PanelSubjects(FrmMain& main)
{
    QStringList subjects;
    for (int i = 0; i < PanelRows; ++i)
        subjects << Control<QLabel>(&main, QStringLiteral("LabYotei(%1)").arg(i).toLatin1().constData())->text();
    return subjects;
}

} // namespace

class TestPanelEntryLabels : public QObject
{
    Q_OBJECT

private slots:
    void opensTheEntryInItsEditor_data();
    void opensTheEntryInItsEditor();
    void emptyLabelDoesNothing();
    void cancelKeepsTheEntry();
    void deleteClosesTheGap_data();
    void deleteClosesTheGap();
    void screenReaderOffersTheMenu();
};

void TestPanelEntryLabels::opensTheEntryInItsEditor_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("throughMenu");
    QTest::addColumn<QString>("dialog");
    QTest::newRow("task, click") << 0 << false << "FrmTask";
    QTest::newRow("schedule, click") << 1 << false << "FrmSchedule";
    QTest::newRow("task, edit item") << 0 << true << "FrmTask";
    QTest::newRow("schedule, edit item") << 1 << true << "FrmSchedule";
}

void TestPanelEntryLabels::opensTheEntryInItsEditor()
{
    QFETCH(int, row);
    QFETCH(bool, throughMenu);
    QFETCH(QString, dialog);
    TestEnvironment env;
    StoreDay(env.db(), 2, 0);
    auto main = StartMainWindow(env);
    const QString label = QStringLiteral("LabYotei(%1)").arg(row);
    const int id = row + 1;

    QString opened;
    QString loadedSubject;
    ModalAnswer editor([&](QWidget* window) {
        opened = window->objectName();
        loadedSubject = Control<QLineEdit>(window, "TxtYouken")->text();
        Control<QLineEdit>(window, "TxtYouken")->setText(QStringLiteral("変更後"));
        Click(window, "ComOK");
    });
    if (throughMenu) {
        MenuAnswer menu(QStringLiteral("MnuScheduleEdit"));
        ClickControl(*main, label, Qt::RightButton);
        QCOMPARE(menu.menu(), QStringLiteral("MnuScheduleEditMenu"));
    } else {
        ClickControl(*main, label);
    }

    QCOMPARE(opened, dialog);
    QCOMPARE(loadedSubject, QString(QChar(u'A' + row)));
    QCOMPARE(Column(env.db(), id, "BUSINESS"), QStringLiteral("変更後"));
    QVERIFY(PanelSubjects(*main).contains(QStringLiteral("変更後")));
    QVERIFY(env.services.state.MainWindowIdle);
}

void TestPanelEntryLabels::emptyLabelDoesNothing()
{
    TestEnvironment env;
    StoreDay(env.db(), 1);
    auto main = StartMainWindow(env);

    ModalAnswer editor([](QWidget* window) { static_cast<QDialog*>(window)->reject(); });
    ClickControl(*main, QStringLiteral("LabYotei(1)"));
    QTest::qWait(100);
    QVERIFY(!editor.opened());

    MenuAnswer menu(QStringLiteral("MnuScheduleDel"));
    ClickControl(*main, QStringLiteral("LabYotei(1)"), Qt::RightButton);
    QVERIFY(menu.opened());
    QVERIFY(env.prompter.shown.isEmpty());
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 1);
}

void TestPanelEntryLabels::cancelKeepsTheEntry()
{
    TestEnvironment env;
    StoreDay(env.db(), 2);
    auto main = StartMainWindow(env);
    env.prompter.answers.push_back(PromptAnswer::Cancel);

    MenuAnswer menu(QStringLiteral("MnuScheduleDel"));
    ClickControl(*main, QStringLiteral("LabYotei(0)"), Qt::RightButton);

    QCOMPARE(env.prompter.shown.size(), 1);
    const Prompt& question = env.prompter.shown.front();
    QCOMPARE(question.text, QStringLiteral("削除してよろしいですか？"));
    QCOMPARE(question.icon, PromptIcon::Question);
    QCOMPARE(question.buttons, PromptButtons::OkCancel);
    QCOMPARE(question.defaultAnswer, PromptAnswer::Cancel);
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), 2);
    QCOMPARE(PanelSubjects(*main), (QStringList{"A", "B", ""}));
}

void TestPanelEntryLabels::deleteClosesTheGap_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("row");
    QTest::addColumn<QStringList>("panelAfter");
    QTest::addColumn<bool>("moreAfter");
    QTest::addColumn<bool>("markedAfter");
    // clang-format off
    QTest::newRow("four, the second goes") << 4 << 1 << QStringList{"A", "C", "D"} << false << true;
    QTest::newRow("five, the first goes")  << 5 << 0 << QStringList{"B", "C", "D"} << true  << true;
    QTest::newRow("four, the third goes")  << 4 << 2 << QStringList{"A", "B", "D"} << false << true;
    QTest::newRow("the only one")          << 1 << 0 << QStringList{"", "", ""}    << false << false;
    QTest::newRow("a task goes like a schedule") << 2 << 0 << QStringList{"B", "", ""} << false << true;
    // clang-format on
}

void TestPanelEntryLabels::deleteClosesTheGap()
{
    QFETCH(int, entries);
    QFETCH(int, row);
    QFETCH(QStringList, panelAfter);
    QFETCH(bool, moreAfter);
    QFETCH(bool, markedAfter);
    TestEnvironment env;
    StoreDay(env.db(), entries, entries == 2 ? 0 : -1);
    auto main = StartMainWindow(env);
    const QString gone(QChar(u'A' + row));

    MenuAnswer menu(QStringLiteral("MnuScheduleDel"));
    ClickControl(*main, QStringLiteral("LabYotei(%1)").arg(row), Qt::RightButton);

    QCOMPARE(env.prompter.shown.size(), 1);
    QCOMPARE(Lines(env.db(),
                   QStringLiteral("SELECT * FROM TRNSCHTSK WHERE BUSINESS = ") + QLatin1Char('\'') + gone +
                       QLatin1Char('\''),
                   {"ID"}),
             QStringList());
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), entries - 1);
    QCOMPARE(PanelSubjects(*main), panelAfter);
    QCOMPARE(Control<QLabel>(main.get(), "LabMore")->isVisible(), moreAfter);
    QCOMPARE(main->calendar()->isEntryDay(QDate(2026, 11, 22)), markedAfter);
    // The rows now stand for the entries they show.
    for (int i = 0; i < PanelRows; ++i) {
        const QString subject = panelAfter.at(i);
        const int expectedId = subject.isEmpty() ? 0 : subject.at(0).unicode() - u'A' + 1;
        QCOMPARE(main->PanelEntryId(i), expectedId);
    }
    QVERIFY(env.db().transactionDepth() == 0);
}

void TestPanelEntryLabels::screenReaderOffersTheMenu()
{
    TestEnvironment env;
    StoreDay(env.db(), 1);
    auto main = StartMainWindow(env);

    QAccessibleInterface* filled = QAccessible::queryAccessibleInterface(main->findChild<QLabel*>("LabYotei(0)"));
    QAccessibleInterface* empty = QAccessible::queryAccessibleInterface(main->findChild<QLabel*>("LabYotei(1)"));
    QCOMPARE(filled->text(QAccessible::Name), QStringLiteral("A"));
    QVERIFY(empty->actionInterface()->actionNames().isEmpty());

    MenuAnswer menu{QString()};
    filled->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QTRY_VERIFY(menu.opened());
    QCOMPARE(menu.menu(), QStringLiteral("MnuScheduleEditMenu"));
}

VERDALY_TEST(TestPanelEntryLabels)
#include "TestPanelEntryLabels.moc"
