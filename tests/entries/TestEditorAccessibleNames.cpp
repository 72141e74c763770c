// Every input of the entry editors is named by the label in front of it, so a screen
// reader says what a field is for and an end-to-end run can find it by that name. A combo
// box that holds a value is named by the value on this desktop, and its label reaches
// the reader as the box's "labelled by" relation.
#include "entries/FrmSchedule.h"
#include "entries/FrmTask.h"
#include "support/TestKit.h"

#include <QAccessible>
#include <QtTest>

class TestEditorAccessibleNames : public QObject
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
};

void TestEditorAccessibleNames::names_data()
{
    QTest::addColumn<bool>("task");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("name");
    // clang-format off
    QTest::newRow("schedule subject")    << false << "TxtYouken"    << "予定";
    QTest::newRow("schedule start date") << false << "TxtStartDate" << "開始日";
    QTest::newRow("schedule start time") << false << "CmbStartTime" << "開始時刻";
    QTest::newRow("schedule end date")   << false << "TxtEndDate"   << "終了日";
    QTest::newRow("schedule end time")   << false << "CmbEndTime"   << "終了時刻";
    QTest::newRow("schedule class")      << false << "CmbBunrui"    << "分類";
    QTest::newRow("schedule details")    << false << "TxtSyousai"   << "詳細";
    QTest::newRow("schedule alarm")      << false << "ChkAraamu"    << "アラーム";
    QTest::newRow("task subject")        << true  << "TxtYouken"    << "タスク名";
    QTest::newRow("task deadline")       << true  << "TxtEndDate"   << "期限";
    QTest::newRow("task deadline time")  << true  << "CmbEndTime"   << "期限の時刻";
    QTest::newRow("task priority")       << true  << "CmbYusen"     << "優先度";
    QTest::newRow("task done date")      << true  << "TxtEnd"       << "完了日";
    QTest::newRow("task class")          << true  << "CmbBunrui"    << "分類";
    // clang-format on
}

void TestEditorAccessibleNames::names()
{
    QFETCH(bool, task);
    QFETCH(QString, control);
    QFETCH(QString, name);
    TestEnvironment env;
    ScheduleHandOver scheduleHandOver{QStringLiteral("ADD"), 0, QDate(2026, 11, 22), false, false, QString(), 0};
    TaskHandOver taskHandOver{QStringLiteral("ADD"), 0, QDate(2026, 11, 22), false, false, QString(), 0};
    const std::unique_ptr<QDialog> dialog(task ? static_cast<QDialog*>(new FrmTask(env.services, taskHandOver))
                                               : new FrmSchedule(env.services, scheduleHandOver));
    QAccessibleInterface* access =
        QAccessible::queryAccessibleInterface(Control<QWidget>(dialog.get(), control.toLatin1().constData()));
    QStringList heard{access->text(QAccessible::Name)};
    for (const auto& [label, relation] : access->relations(QAccessible::Label))
        heard << label->text(QAccessible::Name);
    QVERIFY2(heard.contains(name), qPrintable(heard.join(QLatin1Char('|'))));
}

VERDALY_TEST(TestEditorAccessibleNames)
#include "TestEditorAccessibleNames.moc"
