#include "entries/EntryKinds.h"
#include "support/TestKit.h"
#include "views/FrmList.h"
#include "views/ListGridModel.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QTimer>
#include <QtTest>

class TestFrmList final : public QObject
{
    Q_OBJECT

private slots:
    void listsWhatTheChoiceAndRangeTake_data();
    void listsWhatTheChoiceAndRangeTake();
    void rowsShowTheirNames();
    void rangeBoxes_data();
    void rangeBoxes();
    void pickerLinkSetsTheBoxAndRefills();
    void deleteKeyAsksFirst_data();
    void deleteKeyAsksFirst();
    void editRefreshesTheGrid_data();
    void editRefreshesTheGrid();
    void newScheduleHandsOverItsStickyNote();
    void rightClickSelectsTheRowAndPopsTheMenu();
};

namespace {

StoredEntry Schedule(int id, const QString& start, const QString& startTm, const QString& end,
                     const QString& subject = QStringLiteral("予定"))
{
    return Entry(id, KindCode(start, startTm, end, QString()), start, startTm, end, QString(), subject);
}

StoredEntry Task(int id, const QString& deadline, const char* completion, int priority,
                 const QString& subject = QStringLiteral("仕事"))
{
    StoredEntry task = Entry(id, QStringLiteral("T1"), QString(), QString(), deadline, QString(), subject);
    task.completion = QLatin1String(completion);
    task.priority = priority;
    return task;
}

// Spans that start before May 2006, end in it, lie wholly outside it, and tasks open and
// done inside and outside it.
void StoreMayFixture(DatabaseConnection& db)
{
    for (const StoredEntry& entry : {
             Schedule(1, "20060503", "", "20060503"),                    // one day in May
             Schedule(2, "20060601", "", "20060601"),                    // one day in June
             Schedule(3, "20060430", "", ""),                            // open-ended from 30 April
             Schedule(4, "20060510", "09:00", ""),                       // open-ended from 10 May
             Schedule(5, "20060430", "22:00", "20060501"),               // overnight into May
             Schedule(6, "20060420", "", "20060502"),                    // a span into May
             Schedule(7, "20060401", "", "20060420"),                    // a span in April
             Task(8, "20060515", "0", 1), Task(9, "20060520", "1", 1),   // open and done in May
             Task(10, "20070101", "1", 2), Task(11, "20060601", "0", 2), // done later, open in June
         })
        StoreEntry(db, entry);
}

QList<qint64> ListedIds(FrmList& list)
{
    QList<qint64> ids;
    const ListGridModel* model = list.model();
    for (int row = 0; row < model->rowCount(); ++row)
        ids << model->index(row, ListGridModel::Subject).data(ListGridModel::IdRole).toLongLong();
    return ids;
}

QTableView* Grid(FrmList& list)
{
    return Control<QTableView>(&list, "GrdGrid");
}

void SetRange(FrmList& list, const QString& from, const QString& to)
{
    for (const auto& [name, text] : {std::pair{"TxtFrom", from}, std::pair{"TxtTo", to}}) {
        auto* box = Control<QLineEdit>(&list, name);
        FocusIn(box);
        box->setText(text);
        FocusOut(box);
    }
}

struct ListFixture
{
    TestEnvironment env;
    ListHandOver handOver;
    int changes = 0;
    QStringList notes;

    ListFixture(const QDate& from, const QDate& to)
    {
        StoreMayFixture(env.db());
        handOver.ListFromDate = from;
        handOver.ListToDate = to;
        handOver.EntriesChanged = [this] { ++changes; };
        handOver.NewStickyNote = [this](const QString& text, int color) {
            notes << QStringLiteral("%1:%2").arg(text).arg(color);
        };
    }
};

} // namespace

void TestFrmList::listsWhatTheChoiceAndRangeTake_data()
{
    QTest::addColumn<int>("choice");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QList<qint64>>("ids");
    // clang-format off
    QTest::newRow("both kinds in May") << 0 << "2006/05/01" << "2006/05/31" << QList<qint64>{8, 6, 5, 1, 4};
    QTest::newRow("schedules in May") << 1 << "2006/05/01" << "2006/05/31" << QList<qint64>{6, 5, 1, 4};
    QTest::newRow("open tasks in May") << 2 << "2006/05/01" << "2006/05/31" << QList<qint64>{8};
    QTest::newRow("done tasks ignore the range") << 3 << "2006/05/01" << "2006/05/31" << QList<qint64>{9, 10};
    QTest::newRow("from May on") << 0 << "2006/05/01" << "" << QList<qint64>{8, 11, 6, 5, 1, 4, 2};
    QTest::newRow("up to 30 April") << 1 << "" << "2006/04/30" << QList<qint64>{7, 6, 3, 5};
    QTest::newRow("both boxes empty") << 0 << "" << "" << QList<qint64>{8, 11, 7, 6, 3, 5, 1, 4, 2};
    QTest::newRow("a range that is backwards") << 0 << "2006/05/31" << "2006/05/01" << QList<qint64>{};
    // clang-format on
}

void TestFrmList::listsWhatTheChoiceAndRangeTake()
{
    QFETCH(int, choice);
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QList<qint64>, ids);
    ListFixture fixture(QDate(2006, 5, 1), QDate(2006, 5, 31));
    FrmList list(fixture.env.services, fixture.handOver);
    SetRange(list, from, to);
    Control<QComboBox>(&list, "CmbSelect")->setCurrentIndex(choice);
    QCOMPARE(ListedIds(list), ids);
    // Only the done tasks ignore the range, and then its boxes cannot be used.
    QCOMPARE(Control<QLineEdit>(&list, "TxtFrom")->isEnabled(), choice != 3);
    QCOMPARE(Control<QWidget>(&list, "LabEndDate")->isEnabled(), choice != 3);
    QVERIFY(fixture.env.prompter.shown.isEmpty());
}

void TestFrmList::rowsShowTheirNames()
{
    ListFixture fixture(QDate(2006, 5, 1), QDate(2006, 5, 31));
    StoreClass(fixture.env.db(), 4, QStringLiteral("会社"));
    fixture.env.db().ExecuteSql(QStringLiteral("UPDATE TRNSCHTSK SET CLASS = 4 WHERE ID IN (5, 8)"));
    FrmList list(fixture.env.services, fixture.handOver);
    const ListGridModel* model = list.model();
    const auto cells = [model](int row) {
        QStringList texts;
        for (int column = 0; column < model->columnCount(); ++column)
            texts << model->index(row, column).data().toString();
        return texts;
    };
    // The task: no start, its deadline, its priority's name; the schedule no priority.
    QCOMPARE(cells(0), QStringList({"", "", "2006/05/15", "", "高", "仕事", "会社"}));
    QCOMPARE(cells(2), QStringList({"2006/04/30", "22:00", "2006/05/01", "", "", "予定", "会社"}));
    QCOMPARE(cells(4), QStringList({"2006/05/10", "09:00", "", "", "", "予定", ""}));
}

void TestFrmList::rangeBoxes_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<int>("rows");
    // clang-format off
    QTest::newRow("short form") << "2006/5/10" << "2006/05/10" << QStringList() << 2;
    QTest::newRow("emptied") << "" << "" << QStringList() << 7;
    QTest::newRow("no such day keeps the grid") << "2006/02/30" << "2006/02/30" << QStringList{"日付を正しく入力してください"} << 5;
    // clang-format on
}

void TestFrmList::rangeBoxes()
{
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    QFETCH(QStringList, messages);
    QFETCH(int, rows);
    ListFixture fixture(QDate(2006, 5, 1), QDate(2006, 5, 31));
    FrmList list(fixture.env.services, fixture.handOver);
    QCOMPARE(list.model()->rowCount(), 5);
    auto* from = Control<QLineEdit>(&list, "TxtFrom");
    FocusIn(from);
    from->setText(typed);
    FocusOut(from);
    QCOMPARE(from->text(), shown);
    QCOMPARE(fixture.env.prompter.texts(), messages);
    QCOMPARE(list.model()->rowCount(), rows);
}

void TestFrmList::pickerLinkSetsTheBoxAndRefills()
{
    ListFixture fixture(QDate(2006, 5, 1), QDate(2006, 5, 31));
    FrmList list(fixture.env.services, fixture.handOver);
    list.show();
    fixture.env.datePicker.answers = {QDate(2006, 5, 4)};
    QTest::mouseClick(Control<QWidget>(&list, "LabEndDate"), Qt::LeftButton);
    QCOMPARE(fixture.env.datePicker.requests.size(), 1);
    QCOMPARE(fixture.env.datePicker.requests.front().PickedDate, QDate(2006, 5, 31));
    QCOMPARE(Control<QLineEdit>(&list, "TxtTo")->text(), QStringLiteral("2006/05/04"));
    QCOMPARE(ListedIds(list), QList<qint64>({6, 5, 1}));
}

void TestFrmList::deleteKeyAsksFirst_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("confirm");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QList<qint64>>("left");
    // clang-format off
    QTest::newRow("task, OK") << 0 << true << "タスク : 仕事 を削除してよろしいですか？" << QList<qint64>{6, 5, 1, 4};
    QTest::newRow("schedule, OK") << 3 << true << "スケジュール : 予定 を削除してよろしいですか？" << QList<qint64>{8, 6, 5, 4};
    QTest::newRow("cancel") << 3 << false << "スケジュール : 予定 を削除してよろしいですか？" << QList<qint64>{8, 6, 5, 1, 4};
    // clang-format on
}

void TestFrmList::deleteKeyAsksFirst()
{
    QFETCH(int, row);
    QFETCH(bool, confirm);
    QFETCH(QString, question);
    QFETCH(QList<qint64>, left);
    ListFixture fixture(QDate(2006, 5, 1), QDate(2006, 5, 31));
    FrmList list(fixture.env.services, fixture.handOver);
    const qint64 id = ListedIds(list).at(row);
    Grid(list)->setCurrentIndex(list.model()->index(row, 0));
    fixture.env.prompter.answers = {confirm ? PromptAnswer::Ok : PromptAnswer::Cancel};
    QTest::keyClick(Grid(list), Qt::Key_Delete);
    QCOMPARE(fixture.env.prompter.texts(), QStringList{question});
    QCOMPARE(fixture.env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
    QCOMPARE(ListedIds(list), left);
    QCOMPARE(Column(fixture.env.db(), static_cast<int>(id), "ID") == QLatin1String("<no row>"), confirm);
    QCOMPARE(fixture.changes, confirm ? 1 : 0);
    QCOMPARE(fixture.env.db().transactionDepth(), 0);
    // The next row down is ready for the next delete.
    QCOMPARE(Grid(list)->currentIndex().row(), row);
}

void TestFrmList::editRefreshesTheGrid_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<bool>("save");
    QTest::addColumn<QString>("editor");
    QTest::addColumn<QString>("stored");
    // clang-format off
    QTest::newRow("schedule saved") << 3 << true << "スケジュール" << "打ち合わせ";
    QTest::newRow("task saved") << 0 << true << "タスク" << "打ち合わせ";
    QTest::newRow("schedule cancelled") << 3 << false << "スケジュール" << "予定";
    // clang-format on
}

void TestFrmList::editRefreshesTheGrid()
{
    QFETCH(int, row);
    QFETCH(bool, save);
    QFETCH(QString, editor);
    QFETCH(QString, stored);
    ListFixture fixture(QDate(2006, 5, 1), QDate(2006, 5, 31));
    FrmList list(fixture.env.services, fixture.handOver);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    const QModelIndex index = list.model()->index(row, ListGridModel::Subject);
    const qint64 id = index.data(ListGridModel::IdRole).toLongLong();
    {
        ModalAnswer answer([save](QWidget* dialog) {
            Control<QLineEdit>(dialog, "TxtYouken")->setText(QStringLiteral("打ち合わせ"));
            Click(dialog, save ? "ComOK" : "ComCancel");
        });
        const QRect cell = Grid(list)->visualRect(index);
        QTest::mouseClick(Grid(list)->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        QTest::mouseDClick(Grid(list)->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
        QCOMPARE(answer.title(), editor);
        QVERIFY(!answer.stayedOpen());
    }
    QCOMPARE(Column(fixture.env.db(), static_cast<int>(id), "BUSINESS"), stored);
    // What the grid shows is read anew, and the edited entry stays selected.
    const int shownRow = list.model()->rowOfId(id);
    QCOMPARE(list.model()->index(shownRow, ListGridModel::Subject).data().toString(), stored);
    QCOMPARE(Grid(list)->currentIndex().row(), shownRow);
    QCOMPARE(fixture.changes, save ? 1 : 0);
}

void TestFrmList::newScheduleHandsOverItsStickyNote()
{
    ListFixture fixture(QDate(2026, 11, 1), QDate(2026, 11, 30));
    FrmList list(fixture.env.services, fixture.handOver);
    list.show();
    QCOMPARE(list.model()->rowCount(), 0);
    fixture.env.random.values = {0.5};
    {
        ModalAnswer answer([](QWidget* dialog) {
            Control<QLineEdit>(dialog, "TxtYouken")->setText(QStringLiteral("歯医者"));
            Control<QCheckBox>(dialog, "ChkPost")->setChecked(true);
            Click(dialog, "ComOK");
        });
        list.actionMenu()->findChild<QAction*>(QStringLiteral("MnuSchedule"))->trigger();
        QVERIFY(answer.opened());
    }
    // A new schedule starts today, inside the range shown, so it is listed at once.
    QCOMPARE(list.model()->rowCount(), 1);
    QCOMPARE(list.model()->cellText(0, ListGridModel::StartDate), QStringLiteral("2026/11/22"));
    QCOMPARE(fixture.notes.size(), 1);
    QVERIFY2(fixture.notes.front().contains(QStringLiteral("歯医者")), qPrintable(fixture.notes.front()));
    QCOMPARE(fixture.changes, 1);
}

void TestFrmList::rightClickSelectsTheRowAndPopsTheMenu()
{
    ListFixture fixture(QDate(2006, 5, 1), QDate(2006, 5, 31));
    FrmList list(fixture.env.services, fixture.handOver);
    list.show();
    QVERIFY(QTest::qWaitForWindowExposed(&list));
    QTableView* grid = Grid(list);
    for (const auto& [point, row, editable] :
         {std::tuple{grid->visualRect(list.model()->index(2, 5)).center(), 2, true},
          std::tuple{QPoint(10, grid->viewport()->height() - 5), 2, false}}) {
        QString popped;
        bool canEdit = false;
        QTimer::singleShot(50, &list, [&] {
            if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                popped = menu->objectName();
                canEdit = menu->findChild<QAction*>(QStringLiteral("MnuUpdate"))->isEnabled();
                menu->close();
            }
        });
        QTest::mouseClick(grid->viewport(), Qt::RightButton, Qt::NoModifier, point);
        QCOMPARE(popped, QStringLiteral("MnuAction"));
        QCOMPARE(grid->currentIndex().row(), row);
        QCOMPARE(canEdit, editable);
    }
}

VERDALY_TEST(TestFrmList)
#include "TestFrmList.moc"
