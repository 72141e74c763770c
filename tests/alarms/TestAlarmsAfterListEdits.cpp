// The next alarm follows the entries changed in the list window while it is still open.
#include "alarms/AlarmEngine.h"
#include "mainwindow/FrmMain.h"
#include "support/TestKit.h"
#include "views/FrmList.h"
#include "views/ListGridModel.h"

#include <QAction>
#include <QMenu>
#include <QTableView>
#include <QtTest>

class TestAlarmsAfterListEdits final : public QObject
{
    Q_OBJECT

private slots:
    void rearmedWhileTheListIsOpen_data();
    void rearmedWhileTheListIsOpen();
};

void TestAlarmsAfterListEdits::rearmedWhileTheListIsOpen_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QTime>("armedFor");
    QTest::newRow("the armed entry deleted") << "delete" << QStringList{} << QTime(15, 0);
    QTest::newRow("the armed entry moved earlier") << "edit" << QStringList{"CmbStartTime=10:00"} << QTime(10, 0);
    QTest::newRow("the armed entry's alarm cleared") << "edit" << QStringList{"ChkAraamu=0"} << QTime(15, 0);
    QTest::newRow("a new entry before it")
        << "new" << QStringList{"TxtYouken=電話", "CmbStartTime=10:30", "ChkAraamu=1"} << QTime(10, 30);
}

void TestAlarmsAfterListEdits::rearmedWhileTheListIsOpen()
{
    QFETCH(QString, command);
    QFETCH(QStringList, typed);
    QFETCH(QTime, armedFor);
    TestEnvironment env;
    const QDate today = env.clock.today();
    StoreAlarmSettings(env.db(), 0);
    const QString day = today.toString("yyyyMMdd");
    StoreEntry(env.db(), WithAlarm(Entry(1, "A3", day, "11:00", day, QString(), "会議")));
    StoreEntry(env.db(), WithAlarm(Entry(2, "A3", day, "15:00", day, QString(), "来客")));
    env.clock.current = QDateTime(today, QTime(9, 0));
    env.services.connection.reset();
    FrmMain main(env.services);
    QVERIFY(main.Form_Load());
    QCOMPARE(main.alarms()->armedFor(), QDateTime(today, QTime(11, 0)));

    QDateTime armedWhileOpen;
    ModalAnswer listAnswer([&](QWidget* dialog) {
        auto* list = qobject_cast<FrmList*>(dialog);
        auto* grid = Control<QTableView>(list, "GrdGrid");
        grid->setCurrentIndex(list->model()->index(list->model()->rowOfId(1), 0));
        ModalAnswer editorAnswer([&typed](QWidget* editor) {
            TypeAll(editor, typed);
            Click(editor, "ComOK");
        });
        if (command == "delete")
            QTest::keyClick(grid, Qt::Key_Delete);
        else if (command == "edit")
            QTest::keyClick(grid, Qt::Key_Return);
        else
            list->actionMenu()->findChild<QAction*>("MnuSchedule")->trigger();
        QCOMPARE(editorAnswer.opened(), command != "delete");
        armedWhileOpen = main.alarms()->armedFor();
        list->reject();
    });
    main.OpenList(today, today.addMonths(1));
    QVERIFY(listAnswer.opened());
    QCOMPARE(armedWhileOpen, QDateTime(today, armedFor));
    main.Form_Unload();
}

VERDALY_TEST(TestAlarmsAfterListEdits)

#include "TestAlarmsAfterListEdits.moc"
