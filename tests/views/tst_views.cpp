// The date picker and the list window as the user works them.
#include "calendarcontrol/HalvernCalendar.h"
#include "entries/EntryKinds.h"
#include "support/TestKit.h"
#include "views/FrmDate.h"
#include "views/FrmDatePicker.h"
#include "views/FrmList.h"
#include "views/ListGridModel.h"

#include <QtTest>
#include <QtWidgets>

namespace {

StoredEntry Schedule(int id, const QString& start, const QString& startTm, const QString& end)
{
    return Entry(id, KindCode(start, startTm, end, {}), start, startTm, end, {}, "予定");
}

StoredEntry Task(int id, const QString& deadline, const char* completion, int priority)
{
    StoredEntry task = Entry(id, "T1", {}, {}, deadline, {}, "仕事");
    task.completion = completion;
    task.priority = priority;
    return task;
}

QList<qint64> ListedIds(FrmList& list)
{
    QList<qint64> ids;
    for (int row = 0; row < list.model()->rowCount(); ++row)
        ids << list.model()->index(row, ListGridModel::Subject).data(ListGridModel::IdRole).toLongLong();
    return ids;
}

void SetRange(FrmList& list, const QString& from, const QString& to)
{
    for (const auto& [name, text] : {std::pair{"TxtTo", to}, std::pair{"TxtFrom", from}}) {
        Control<QLineEdit>(&list, name)->setText(text);
        FocusOut(Control(&list, name));
    }
}

// The box's date (none opens on today), the title, the choice made once the picker is browsed
// to 2027/01, and then DatePicked and the date handed back.
using PickRow = std::tuple<QDate, QString, QString, bool, QDate>;

} // namespace

class TestViews final : public QObject
{
    Q_OBJECT

private slots:
    void datePicker_data()
    {
        QTest::addColumn<PickRow>("row");
        // clang-format off
        QTest::newRow("a day of the next month") << PickRow{QDate(2026, 12, 10), "2026/12/10 (木)", "click", true, QDate(2027, 1, 2)};
        QTest::newRow("today link, empty box") << PickRow{QDate(), "2026/11/22 (日)", "today", true, QDate(2026, 11, 22)};
        QTest::newRow("cancel") << PickRow{QDate(2027, 2, 14), "2027/2/14 (日)", "cancel", false, QDate(2027, 2, 14)};
        QTest::newRow("escape") << PickRow{QDate(2026, 12, 10), "2026/12/10 (木)", "escape", false, QDate(2026, 12, 10)};
        // clang-format on
    }
    void datePicker()
    {
        QFETCH(PickRow, row);
        const auto& [given, title, how, picked, date] = row;
        TestEnvironment env;
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = %1 WHERE CODE = 80").arg(0x00336699));
        // DatePicked stale from an earlier use, to be reset; top 3000 and left 1500 twips.
        DatePickHandOver handOver{given, true, 3000, 1500};
        FrmDate picker(env.services, handOver);
        HalvernCalendar* calendar = picker.calendar();
        QCOMPARE(picker.pos(), QPoint(100, 200)); // twips at 96 dpi
        QCOMPARE(calendar->CurrentDate(), given.isValid() ? given : QDate(2026, 11, 22));
        QVERIFY(!handOver.DatePicked);
        QCOMPARE(picker.windowTitle(), title);
        QCOMPARE(Shown(&picker, "LabToday"), "Today : 2026/11/22 (日)");
        // The stored calendar design, here the selected day's colour.
        QCOMPARE(calendar->spotDesign(80).back, QColor(0x99, 0x66, 0x33));
        picker.show();
        QVERIFY(QTest::qWaitForWindowExposed(&picker));
        calendar->setCurrentDate(QDate(2027, 1, 20));
        if (how == "click")
            QTest::mouseClick(calendar, Qt::LeftButton, Qt::NoModifier, calendar->dayRect(date).center());
        else if (how == "today")
            QTest::mouseClick(Control(&picker, "LabToday"), Qt::LeftButton, Qt::NoModifier, QPoint(5, 5));
        else if (how == "cancel")
            Click(&picker, "ComCancel");
        else
            QTest::keyClick(&picker, Qt::Key_Escape);
        QCOMPARE(handOver.DatePicked, picked);
        QCOMPARE(handOver.PickedDate, date);
        QVERIFY(!picker.isVisible());
    }

    // One list window over May 2006 worked through in turn: what each choice and range lists,
    // reading rows, the context menu, editing, deleting, the date link and a new entry.
    void workingTheList()
    {
        TestEnvironment env;
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
            StoreEntry(env.db(), entry);
        StoreClass(env.db(), 4, "会社");
        env.db().ExecuteSql("UPDATE TRNSCHTSK SET CLASS = 4 WHERE ID IN (5, 8)");
        int changes = 0;
        QStringList notes;
        ListHandOver handOver;
        handOver.ListFromDate = QDate(2006, 5, 1);
        handOver.ListToDate = QDate(2006, 5, 31);
        handOver.EntriesChanged = [&changes] { ++changes; };
        handOver.NewStickyNote = [&notes](const QString& text, int) { notes << text; };
        FrmList list(env.services, handOver);
        list.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list));
        auto* grid = Control<QTableView>(&list, "GrdGrid");

        // CmbSelect's index, the range typed, the IDs listed. A short date is written out in full, a
        // day that does not exist stays for mending; only done tasks ignore (and grey) the range.
        // clang-format off
        const QList<std::tuple<int, QString, QString, QList<qint64>>> choices = {
            {1, "2006/05/01", "2006/05/31", {6, 5, 1, 4}},
            {2, "2006/05/01", "2006/05/31", {8}},
            {3, "2006/05/01", "2006/05/31", {9, 10}},
            {0, "2006/05/01", "", {8, 11, 6, 5, 1, 4, 2}},
            {1, "", "2006/04/30", {7, 6, 3, 5}},
            {0, "2006/05/31", "2006/05/01", {}},
            {0, "2006/5/10", "2006/05/31", {8, 4}},
            {0, "2006/02/30", "2006/05/31", {8, 4}}};
        // clang-format on
        for (const auto& [choice, from, to, ids] : choices) {
            SetRange(list, from, to);
            Control<QComboBox>(&list, "CmbSelect")->setCurrentIndex(choice);
            QCOMPARE(ListedIds(list), ids);
            QCOMPARE(Shown(&list, "TxtFrom"), from == "2006/5/10" ? "2006/05/10" : from);
            QCOMPARE(Control<QLineEdit>(&list, "TxtFrom")->isEnabled(), choice != 3);
            QCOMPARE(Control<QWidget>(&list, "LabEndDate")->isEnabled(), choice != 3);
        }
        QCOMPARE(env.prompter.texts(), QStringList{"日付を正しく入力してください"});
        env.prompter.shown.clear();
        // Back to May, the mended day first so that leaving the other box does not warn again.
        Control<QLineEdit>(&list, "TxtFrom")->setText("2006/05/01");
        SetRange(list, "2006/05/01", "2006/05/31");
        const auto cells = [&list](int row) {
            QStringList texts;
            for (int column = 0; column < list.model()->columnCount(); ++column)
                texts << list.model()->index(row, column).data().toString();
            return texts;
        };
        // The task: no start, its deadline, its priority's name; the schedule no priority.
        QCOMPARE(cells(0), QStringList({"", "", "2006/05/15", "", "高", "仕事", "会社"}));
        QCOMPARE(cells(2), QStringList({"2006/04/30", "22:00", "2006/05/01", "", "", "予定", "会社"}));
        QCOMPARE(cells(4), QStringList({"2006/05/10", "09:00", "", "", "", "予定", ""}));

        // A right click selects the row under it; below the rows it keeps the selection and
        // offers no edit.
        for (const auto& [point, editable] : {std::pair{grid->visualRect(list.model()->index(2, 5)).center(), true},
                                              std::pair{QPoint(10, grid->viewport()->height() - 5), false}}) {
            QString popped;
            bool canEdit = !editable;
            QTimer::singleShot(50, &list, [&] {
                if (auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                    popped = menu->objectName();
                    canEdit = Control<QAction>(menu, "MnuUpdate")->isEnabled();
                    menu->close();
                }
            });
            QTest::mouseClick(grid->viewport(), Qt::RightButton, Qt::NoModifier, point);
            QCOMPARE(popped, "MnuAction");
            QCOMPARE(grid->currentIndex().row(), 2);
            QCOMPARE(canEdit, editable);
        }

        // A double click opens the row's editor; what the grid shows is read anew, and the
        // edited entry stays selected. The main window hears of each saved change.
        // clang-format off
        const QList<std::tuple<int, bool, QString, QString, int>> edits = {
            {3, false, "スケジュール", "予定", 0}, {3, true, "スケジュール", "打ち合わせ", 1}, {0, true, "タスク", "打ち合わせ", 2}};
        // clang-format on
        for (const auto& [row, save, editor, stored, changed] : edits) {
            const QModelIndex index = list.model()->index(row, ListGridModel::Subject);
            const qint64 id = list.model()->idAt(row);
            ModalAnswer answer([save = save](QWidget* dialog) {
                Type(dialog, "TxtYouken", "打ち合わせ");
                Click(dialog, save ? "ComOK" : "ComCancel");
            });
            const QRect cell = grid->visualRect(index);
            QTest::mouseClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
            QTest::mouseDClick(grid->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
            QCOMPARE(answer.title(), editor);
            QVERIFY(!answer.stayedOpen());
            QCOMPARE(list.model()->idAt(grid->currentIndex().row()), id);
            QCOMPARE(list.model()->cellText(grid->currentIndex().row(), ListGridModel::Subject), stored);
            QCOMPARE(changes, changed);
        }

        // The Delete key asks first, Cancel being the answer to a hasty Enter; the next row
        // down is then ready for the next delete.
        const QList<std::tuple<int, bool, QString, QList<qint64>, int>> deletes = {
            {3, false, "スケジュール : 打ち合わせ を削除してよろしいですか？", {8, 6, 5, 1, 4}, 2},
            {3, true, "スケジュール : 打ち合わせ を削除してよろしいですか？", {8, 6, 5, 4}, 3},
            {0, true, "タスク : 打ち合わせ を削除してよろしいですか？", {6, 5, 4}, 4}};
        for (const auto& [row, confirm, question, left, changed] : deletes) {
            env.prompter.shown.clear();
            grid->setCurrentIndex(list.model()->index(row, 0));
            env.prompter.answers = {confirm ? PromptAnswer::Ok : PromptAnswer::Cancel};
            QTest::keyClick(grid, Qt::Key_Delete);
            QCOMPARE(env.prompter.texts(), QStringList{question});
            QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
            QCOMPARE(ListedIds(list), left);
            QCOMPARE(changes, changed);
            QCOMPARE(env.db().transactionDepth(), 0);
            QCOMPARE(grid->currentIndex().row(), row);
        }

        // The date link opens the picker on the box's date (the day is clicked in May 2006) and
        // lists the picked range.
        FrmDatePicker picker(env.services);
        env.services.datePicker = &picker;
        ModalAnswer pick([](QWidget* dialog) {
            HalvernCalendar* calendar = static_cast<FrmDate*>(dialog)->calendar();
            QTest::mouseClick(calendar, Qt::LeftButton, Qt::NoModifier, calendar->dayRect(QDate(2006, 5, 4)).center());
        });
        QTest::mouseClick(Control<QWidget>(&list, "LabEndDate"), Qt::LeftButton);
        QCOMPARE(Shown(&list, "TxtTo"), "2006/05/04");
        QCOMPARE(ListedIds(list), QList<qint64>({6, 5}));

        // A new schedule starts today; inside the range shown it is listed at once, and its
        // sticky note is handed over.
        SetRange(list, "2026/11/01", "2026/11/30");
        ModalAnswer answer([](QWidget* dialog) {
            TypeAll(dialog, {"TxtYouken=歯医者", "ChkPost=1"});
            Click(dialog, "ComOK");
        });
        Control<QAction>(list.actionMenu(), "MnuSchedule")->trigger();
        QCOMPARE(list.model()->rowCount(), 1);
        QCOMPARE(list.model()->cellText(0, ListGridModel::StartDate), "2026/11/22");
        QCOMPARE(notes.size(), 1);
        QVERIFY2(notes.front().contains("歯医者"), qPrintable(notes.front()));
        QCOMPARE(changes, 5);
    }
};

VERDALY_TEST(TestViews)
#include "tst_views.moc"
