#include "masters/FrmDayOff.h"
#include "masters/FrmDayOffEdit.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

class TestFrmDayOff final : public QObject
{
    Q_OBJECT

private slots:
    void editDialogRules_data();
    void editDialogRules();
    void addsInCalendarOrder();
    void editMayLandOnATakenDate();
    void deleteAsksFirst_data();
    void deleteAsksFirst();
    void changesKeptByOk();
};

namespace {

// The day-offs as "month|day|remark" lines in calendar order.
QStringList DayOffs(DatabaseConnection& db)
{
    return Lines(db, QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 200 ORDER BY DATAN1, DATAN2, DATAS1"),
                 {"DATAN1", "DATAN2", "DATAS1"});
}

void StoreDayOff(DatabaseConnection& db, int month, int day, const QString& remark)
{
    StoreGeneral(db, 200, {{"DATAN1", month}, {"DATAN2", day}, {"DATAS1", remark}, {"DATAS2", QString()}});
}

// Picks a date and a remark in the edit dialog and presses OK.
void Choose(QWidget* dialog, int month, int day, const QString& remark)
{
    auto* months = Control<QComboBox>(dialog, "CmbMonth");
    auto* days = Control<QComboBox>(dialog, "CmbDay");
    months->setCurrentIndex(months->findData(month));
    days->setCurrentIndex(days->findData(day));
    Control<QLineEdit>(dialog, "TxtComment")->setText(remark);
    Click(dialog, "ComOK");
}

QListWidget* DayOffList(FrmDayOff& dialog)
{
    return Control<QListWidget>(&dialog, "LstDayOff");
}

} // namespace

void TestFrmDayOff::editDialogRules_data()
{
    QTest::addColumn<QString>("mode");
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("day");
    QTest::addColumn<QString>("message");
    // clang-format off
    QTest::newRow("30 February") << "INSERT" << 2028 << 2 << 30 << "日付が正しくありません";
    QTest::newRow("31 April") << "UPDATE" << 2026 << 4 << 31 << "日付が正しくありません";
    QTest::newRow("29 February in a leap year") << "INSERT" << 2028 << 2 << 29 << "";
    QTest::newRow("29 February in a common year") << "INSERT" << 2026 << 2 << 29 << "日付が正しくありません";
    QTest::newRow("new on a taken date") << "INSERT" << 2026 << 5 << 5 << "既に登録されている日付です";
    QTest::newRow("edited onto a taken date") << "UPDATE" << 2026 << 5 << 5 << "";
    // clang-format on
}

void TestFrmDayOff::editDialogRules()
{
    QFETCH(QString, mode);
    QFETCH(int, year);
    QFETCH(int, month);
    QFETCH(int, day);
    QFETCH(QString, message);
    TestEnvironment env;
    env.clock.current = QDateTime(QDate(year, 6, 15), QTime(12, 0));
    StoreDayOff(env.db(), 5, 5, QStringLiteral("こどもの日"));
    DayOffHandOver handOver;
    handOver.DayOffMode = mode;
    handOver.DayOffMonth = 6;
    handOver.DayOffDay = 15;
    FrmDayOffEdit dialog(env.services, handOver);
    dialog.show();
    Choose(&dialog, month, day, QStringLiteral("休み"));
    const bool accepted = message.isEmpty();
    QCOMPARE(env.prompter.texts(), accepted ? QStringList() : QStringList{message});
    QCOMPARE(dialog.isVisible(), !accepted);
    QCOMPARE(handOver.DayOffOK, accepted);
    if (accepted) {
        QCOMPARE(handOver.DayOffMonth, month);
        QCOMPARE(handOver.DayOffDay, day);
        QCOMPARE(handOver.DayOffRemark, QStringLiteral("休み"));
    } else {
        QCOMPARE(env.prompter.shown.front().icon, PromptIcon::Warning);
        // What the user picked and typed is still there to be put right.
        QCOMPARE(Control<QComboBox>(&dialog, "CmbDay")->currentData().toInt(), day);
        QCOMPARE(Control<QLineEdit>(&dialog, "TxtComment")->text(), QStringLiteral("休み"));
    }
    // The dialog itself writes nothing.
    QCOMPARE(DayOffs(env.db()), QStringList{"5|5|こどもの日"});
}

void TestFrmDayOff::addsInCalendarOrder()
{
    TestEnvironment env;
    FrmDayOff dialog(env.services);
    dialog.show();
    for (const auto& [month, day, remark] :
         {std::tuple{3, 3, QStringLiteral("ひな祭り")}, std::tuple{1, 1, QStringLiteral("New Year's Day")}}) {
        ModalAnswer answer([&, month = month, day = day, remark = remark](QWidget* edit) {
            // A new day-off starts on today's date.
            QCOMPARE(Control<QComboBox>(edit, "CmbMonth")->currentText(), QStringLiteral("11"));
            QCOMPARE(Control<QComboBox>(edit, "CmbDay")->currentText(), QStringLiteral("22"));
            Choose(edit, month, day, remark);
        });
        Click(&dialog, "ComADD");
        QCOMPARE(answer.title(), QStringLiteral("新規 - 休日設定"));
        QVERIFY(!answer.stayedOpen());
    }
    QCOMPARE(LineTexts(DayOffList(dialog)), QStringList({"01/01 New Year's Day", "03/03 ひな祭り"}));
    QCOMPARE(LineIds(DayOffList(dialog)), QList<qint64>({101, 303}));
    Click(&dialog, "ComOK");
    QCOMPARE(env.db().transactionDepth(), 0);
    QCOMPARE(DayOffs(env.db()), QStringList({"1|1|New Year's Day", "3|3|ひな祭り"}));
}

void TestFrmDayOff::editMayLandOnATakenDate()
{
    TestEnvironment env;
    StoreDayOff(env.db(), 5, 3, QStringLiteral("憲法記念日"));
    StoreDayOff(env.db(), 5, 6, QStringLiteral("振替休日"));
    FrmDayOff dialog(env.services);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowExposed(&dialog));
    DayOffList(dialog)->setCurrentRow(1);
    {
        ModalAnswer answer([](QWidget* edit) {
            QCOMPARE(Control<QComboBox>(edit, "CmbDay")->currentText(), QStringLiteral("6"));
            QCOMPARE(Control<QLineEdit>(edit, "TxtComment")->text(), QStringLiteral("振替休日"));
            Choose(edit, 5, 3, QStringLiteral("代休"));
        });
        const QPoint line = DayOffList(dialog)->visualItemRect(DayOffList(dialog)->item(1)).center();
        QTest::mouseClick(DayOffList(dialog)->viewport(), Qt::LeftButton, Qt::NoModifier, line);
        QTest::mouseDClick(DayOffList(dialog)->viewport(), Qt::LeftButton, Qt::NoModifier, line);
        QCOMPARE(answer.title(), QStringLiteral("編集 - 休日設定"));
        QVERIFY(!answer.stayedOpen());
    }
    QCOMPARE(LineIds(DayOffList(dialog)), QList<qint64>({503, 503}));
    // Either line stands for its date, and a delete takes every day-off on it.
    DayOffList(dialog)->setCurrentRow(0);
    Click(&dialog, "ComDel");
    QCOMPARE(DayOffList(dialog)->count(), 0);
    QCOMPARE(DayOffs(env.db()), QStringList());
}

void TestFrmDayOff::deleteAsksFirst_data()
{
    QTest::addColumn<bool>("confirm");
    QTest::addColumn<QStringList>("left");
    // clang-format off
    QTest::newRow("OK") << true << QStringList{"1|1|元日"};
    // clang-format on
}

void TestFrmDayOff::deleteAsksFirst()
{
    QFETCH(bool, confirm);
    QFETCH(QStringList, left);
    TestEnvironment env;
    StoreDayOff(env.db(), 12, 31, QStringLiteral("大晦日"));
    StoreDayOff(env.db(), 1, 1, QStringLiteral("元日"));
    FrmDayOff dialog(env.services);
    Click(&dialog, "ComDel"); // nothing selected: nothing asked
    QVERIFY(env.prompter.shown.isEmpty());
    DayOffList(dialog)->setCurrentRow(1);
    env.prompter.answers = {confirm ? PromptAnswer::Ok : PromptAnswer::Cancel};
    Click(&dialog, "ComDel");
    QCOMPARE(env.prompter.texts(), QStringList{"選択された休日設定を削除します"});
    QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
    QCOMPARE(DayOffs(env.db()), left);
    QCOMPARE(DayOffList(dialog)->count(), left.size());
}

// Adding, editing and deleting in one sitting, then OK (the other ways out are in the
// dialog-transaction table).
void TestFrmDayOff::changesKeptByOk()
{
    TestEnvironment env;
    StoreDayOff(env.db(), 2, 11, QStringLiteral("建国記念の日"));
    StoreDayOff(env.db(), 5, 5, QStringLiteral("こどもの日"));
    FrmDayOff dialog(env.services);
    dialog.show();
    {
        ModalAnswer answer([](QWidget* edit) { Choose(edit, 8, 13, QStringLiteral("お盆")); });
        Click(&dialog, "ComADD");
    }
    DayOffList(dialog)->setCurrentRow(2);
    {
        ModalAnswer answer([](QWidget* edit) { Choose(edit, 8, 13, QStringLiteral("it's お盆")); });
        Click(&dialog, "ComUpd");
    }
    DayOffList(dialog)->setCurrentRow(1);
    Click(&dialog, "ComDel");
    QCOMPARE(LineTexts(DayOffList(dialog)), QStringList({"02/11 建国記念の日", "08/13 it's お盆"}));
    Click(&dialog, "ComOK");
    QCOMPARE(env.db().transactionDepth(), 0);
    QCOMPARE(DayOffs(env.db()), QStringList({"2|11|建国記念の日", "8|13|it's お盆"}));
}

VERDALY_TEST(TestFrmDayOff)
#include "TestFrmDayOff.moc"
