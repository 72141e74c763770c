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
    void emptyLabelOffersNothing();
    void deleteClosesTheGap_data();
    void deleteClosesTheGap();
};

void TestPanelEntryLabels::opensTheEntryInItsEditor_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("throughMenu");
    QTest::addColumn<QString>("dialog");
    QTest::newRow("task, click") << 0 << false << "FrmTask";
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
    QCOMPARE(Column(env.db(), row + 1, "BUSINESS"), QStringLiteral("変更後"));
    QVERIFY(PanelSubjects(*main).contains(QStringLiteral("変更後")));
    QVERIFY(env.services.state.MainWindowIdle);
}

void TestPanelEntryLabels::emptyLabelOffersNothing()
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

    // A screen reader is offered the menu of a filled label only.
    QAccessibleInterface* filled = QAccessible::queryAccessibleInterface(main->findChild<QLabel*>("LabYotei(0)"));
    QAccessibleInterface* empty = QAccessible::queryAccessibleInterface(main->findChild<QLabel*>("LabYotei(1)"));
    QCOMPARE(filled->text(QAccessible::Name), QStringLiteral("A"));
    QVERIFY(empty->actionInterface()->actionNames().isEmpty());
    MenuAnswer byReader{QString()};
    filled->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
    QTRY_VERIFY(byReader.opened());
    QCOMPARE(byReader.menu(), QStringLiteral("MnuScheduleEditMenu"));
}

void TestPanelEntryLabels::deleteClosesTheGap_data()
{
    QTest::addColumn<int>("entries");
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("confirmed"); // the question "delete?" answered OK
    QTest::addColumn<QStringList>("panelAfter");
    QTest::addColumn<bool>("moreAfter");
    // clang-format off
    QTest::newRow("four, the second goes") << 4 << 1 << true << QStringList{"A", "C", "D"} << false;
    QTest::newRow("five, the first goes")  << 5 << 0 << true << QStringList{"B", "C", "D"} << true;
    QTest::newRow("the only one")          << 1 << 0 << true << QStringList{"", "", ""}    << false;
    QTest::newRow("a task goes like a schedule") << 2 << 0 << true << QStringList{"B", "", ""} << false;
    QTest::newRow("cancel keeps it")       << 4 << 1 << false << QStringList{"A", "B", "C"} << true;
    // clang-format on
}

void TestPanelEntryLabels::deleteClosesTheGap()
{
    QFETCH(int, entries);
    QFETCH(int, row);
    QFETCH(bool, confirmed);
    QFETCH(QStringList, panelAfter);
    QFETCH(bool, moreAfter);
    TestEnvironment env;
    StoreDay(env.db(), entries, entries == 2 ? 0 : -1);
    auto main = StartMainWindow(env);
    env.prompter.answers.push_back(confirmed ? PromptAnswer::Ok : PromptAnswer::Cancel);

    MenuAnswer menu(QStringLiteral("MnuScheduleDel"));
    ClickControl(*main, QStringLiteral("LabYotei(%1)").arg(row), Qt::RightButton);

    // Asked first, with Cancel as the answer to a hasty Enter.
    QCOMPARE(env.prompter.shown.size(), 1);
    QCOMPARE(env.prompter.shown.front().buttons, PromptButtons::OkCancel);
    QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
    QCOMPARE(Column(env.db(), row + 1, "ID") == QLatin1String("<no row>"), confirmed);
    QCOMPARE(env.count(QStringLiteral("TRNSCHTSK")), confirmed ? entries - 1 : entries);
    QCOMPARE(PanelSubjects(*main), panelAfter);
    QCOMPARE(Control<QLabel>(main.get(), "LabMore")->isVisible(), moreAfter);
    QCOMPARE(main->calendar()->isEntryDay(QDate(2026, 11, 22)), !panelAfter.front().isEmpty());
    // The rows now stand for the entries they show.
    for (int i = 0; i < PanelRows; ++i) {
        const QString subject = panelAfter.at(i);
        const int expectedId = subject.isEmpty() ? 0 : subject.at(0).unicode() - u'A' + 1;
        QCOMPARE(main->PanelEntryId(i), expectedId);
    }
    QVERIFY(env.db().transactionDepth() == 0);
}

VERDALY_TEST(TestPanelEntryLabels)
#include "TestPanelEntryLabels.moc"
