// The settings dialog and the hot keys as the main window uses them: released while the
// dialog is up, taken again after it, the calendar showing the new settings at once, and a
// press opening today's editor.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

class TestSettingsFromMainWindow final : public QObject
{
    Q_OBJECT

private slots:
    void keysReleasedWhileDialogIsUp();
    void choicesShowInCalendar_data();
    void choicesShowInCalendar();
    void hotKeyOpensTodaysEditor_data();
    void hotKeyOpensTodaysEditor();
};

void TestSettingsFromMainWindow::keysReleasedWhileDialogIsUp()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 76, DATAN2 = 6 WHERE CODE = 82010"));
    FrmMain main(env.services);
    main.setTrayAvailabilityForTesting(0);
    QVERIFY(main.Form_Load());
    QCOMPARE(env.hotKeys.registered.values(), QList<FakeHotKeyBackend::Combination>({{76, 3}}));

    bool releasedWhileOpen = false;
    ModalAnswer answer([&](QWidget* dialog) {
        releasedWhileOpen = env.hotKeys.registered.isEmpty();
        Control<QComboBox>(dialog, "CmbHotKey")->setCurrentIndex(1);
        auto* field = Control<QLineEdit>(dialog, "TxtHotKey");
        field->setFocus();
        QTest::keyClick(field, Qt::Key_K, Qt::ControlModifier | Qt::AltModifier);
        Click(dialog, "ComOK");
    });
    main.OpenSettings();
    QCOMPARE(answer.title(), QStringLiteral("設定"));
    QVERIFY(releasedWhileOpen);
    QVERIFY(env.services.state.MainWindowIdle);
    QList<FakeHotKeyBackend::Combination> held = env.hotKeys.registered.values();
    std::sort(held.begin(), held.end());
    QCOMPARE(held, QList<FakeHotKeyBackend::Combination>({{75, 3}, {76, 3}}));
    main.Form_Unload();
    QVERIFY(env.hotKeys.registered.isEmpty());
}

void TestSettingsFromMainWindow::choicesShowInCalendar_data()
{
    QTest::addColumn<QString>("combo");
    QTest::addColumn<int>("choice");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("firstHeader");
    // clang-format off
    QTest::newRow("year, two-digit month") << "CmbTitle" << 80602 << true << "2027年03月" << "日";
    QTest::newRow("cancelled") << "CmbTitle" << 80606 << false << "2027年3月" << "日";
    QTest::newRow("weekday in English") << "CmbWeekFormat" << 80805 << true << "2027年3月" << "Sun";
    QTest::newRow("week from Saturday") << "CmbFirstWeek" << 7 << true << "2027年3月" << "土";
    // clang-format on
}

void TestSettingsFromMainWindow::choicesShowInCalendar()
{
    QFETCH(QString, combo);
    QFETCH(int, choice);
    QFETCH(bool, ok);
    QFETCH(QString, title);
    QFETCH(QString, firstHeader);
    TestEnvironment env;
    FrmMain main(env.services);
    main.setTrayAvailabilityForTesting(0);
    QVERIFY(main.Form_Load());
    main.calendar()->setCurrentDate(QDate(2027, 3, 9));
    ModalAnswer answer([&](QWidget* dialog) {
        auto* list = Control<QComboBox>(dialog, combo.toLatin1().constData());
        list->setCurrentIndex(list->findData(choice));
        Click(dialog, ok ? "ComOK" : "ComCancel");
    });
    main.OpenSettings();
    QVERIFY(answer.opened() && !answer.stayedOpen());
    QCOMPARE(main.calendar()->titleText(), title);
    QCOMPARE(main.calendar()->weekdayHeaders().value(0), firstHeader);
    // The grid starts on the chosen weekday, its first cell no later than the 1st.
    QCOMPARE(main.calendar()->FirstShownDate().dayOfWeek() % 7 + 1, firstHeader == "土" ? 7 : 1);
    main.Form_Unload();
}

void TestSettingsFromMainWindow::hotKeyOpensTodaysEditor_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("dateField");
    // clang-format off
    QTest::newRow("schedule") << 82020 << "スケジュール" << "TxtStartDate";
    QTest::newRow("task") << 82030 << "タスク" << "TxtEndDate";
    // clang-format on
}

void TestSettingsFromMainWindow::hotKeyOpensTodaysEditor()
{
    QFETCH(int, code);
    QFETCH(QString, title);
    QFETCH(QString, dateField);
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 75, DATAN2 = 6 WHERE CODE = %1").arg(code));
    FrmMain main(env.services);
    main.setTrayAvailabilityForTesting(0);
    QVERIFY(main.Form_Load());
    // Another day is selected: the hot key still means today.
    main.calendar()->setCurrentDate(QDate(2026, 12, 24));
    QString shownDate;
    bool idleWhileOpen = true;
    ModalAnswer answer([&](QWidget* dialog) {
        shownDate = Control<QLineEdit>(dialog, dateField.toLatin1().constData())->text();
        idleWhileOpen = env.services.state.MainWindowIdle;
        Click(dialog, "ComCancel");
    });
    env.hotKeys.press(75, 3);
    QTRY_VERIFY(answer.opened());
    QCOMPARE(answer.title(), title);
    QCOMPARE(shownDate, QStringLiteral("2026/11/22"));
    QVERIFY(!idleWhileOpen);
    QVERIFY(env.services.state.MainWindowIdle);
    main.Form_Unload();
}

VERDALY_TEST(TestSettingsFromMainWindow)
#include "TestSettingsFromMainWindow.moc"
