// The hot keys and the settings as the running program uses them: which rows are taken from
// the desktop, what a press does and when it is dropped, the keys released while the dialog
// is up, and the calendar showing the new settings at once.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "platform/HotKeyBackendFactory.h"
#include "settings/GlobalHotKeys.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QLineEdit>
#include <QtTest>

class TestSettingHotKeys final : public QObject
{
    Q_OBJECT

private slots:
    void pressRunsItsAction()
    {
        TestEnvironment env;
        // A, K, C and D with Ctrl+Alt, the list Shift+Ctrl+F1 (registered as Ctrl+Shift).
        const QList<QPair<int, int>> bindings = {{65, 6}, {75, 6}, {67, 6}, {68, 6}, {112, 3}};
        for (int i = 0; i < bindings.size(); ++i) {
            env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1, DATAN2 = %2 WHERE CODE = %3")
                                    .arg(bindings[i].first)
                                    .arg(bindings[i].second)
                                    .arg(82010 + 10 * i));
        }
        // A sixth row has no action: its combination is not taken from anyone.
        StoreGeneral(env.db(), 82060, {{"DATAS1", "extra"}, {"DATAN1", 90}, {"DATAN2", 6}});
        QList<int> ran;
        GlobalHotKeys::Actions actions;
        for (int i = 0; i < HotKeyActionCount; ++i)
            actions[static_cast<size_t>(i)] = [&ran, i] { ran.append(i); };
        GlobalHotKeys hotKeys(env.services, actions);
        hotKeys.RegisterHotKeys();
        // Identifiers: registration modifiers x 256 OR the key; Ctrl+Alt is 3, Shift+Ctrl 6.
        QCOMPARE(env.hotKeys.registered.value(843), FakeHotKeyBackend::Combination(75, 3));
        QCOMPARE(env.hotKeys.registered.value(6 * 256 + 112), FakeHotKeyBackend::Combination(112, 6));
        QCOMPARE(env.hotKeys.registered.size(), 5);
        QCOMPARE(hotKeys.statuses().at(3), HotKeyStatus::Registered);
        env.services.state.MainWindowIdle = true;
        for (const auto& [key, modifiers] :
             QList<QPair<int, int>>{{65, 3}, {75, 3}, {67, 3}, {68, 3}, {112, 6}, {65, 2}})
            env.hotKeys.press(key, modifiers);
        QCOMPARE(ran, QList<int>({0, 1, 2, 3, 4}));
        // A press while a dialog is up is dropped.
        env.services.state.MainWindowIdle = false;
        env.hotKeys.press(75, 3);
        QCOMPARE(ran.size(), 5);
        hotKeys.UnregisterHotKeys();
        QVERIFY(env.hotKeys.registered.isEmpty());

        // Ctrl+Alt+D belongs to another program: the others are still taken.
        env.services.state.MainWindowIdle = true;
        env.hotKeys.heldElsewhere.insert({68, 3});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("D for 付箋新規作成.*another program")));
        hotKeys.RegisterHotKeys();
        QCOMPARE(env.hotKeys.registered.size(), 4);
        QCOMPARE(hotKeys.statuses().at(3), HotKeyStatus::Taken);
        env.hotKeys.press(68, 3);
        QCOMPARE(ran.size(), 5);
    }

    void headlessDesktopHasNoHotKeys()
    {
        // The tests run on the offscreen platform: no X server to take keys from.
        const std::unique_ptr<HotKeyBackend> backend = CreateHotKeyBackend();
        QVERIFY(!backend->isAvailable());
        QCOMPARE(backend->registerHotKey(843, 75, 3), HotKeyStatus::Unavailable);
        QCOMPARE(backend->probe(75, 3), HotKeyStatus::Unavailable);
    }

    void fromTheMainWindow()
    {
        TestEnvironment env;
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 76, DATAN2 = 6 WHERE CODE = 82010"));
        FrmMain main(env.services);
        main.setTrayAvailabilityForTesting(0);
        QVERIFY(main.Form_Load());
        QCOMPARE(env.hotKeys.registered.values(), QList<FakeHotKeyBackend::Combination>({{76, 3}}));
        HalvernCalendar& calendar = *main.calendar();
        calendar.setCurrentDate(QDate(2027, 3, 9));
        const auto choose = [](QWidget* dialog, const char* name, int data) {
            auto* list = Control<QComboBox>(dialog, name);
            list->setCurrentIndex(list->findData(data));
        };
        // A cancelled dialog changes nothing the calendar shows.
        ModalAnswer cancelled([&](QWidget* dialog) {
            choose(dialog, "CmbTitle", 80606);
            Click(dialog, "ComCancel");
        });
        main.OpenSettings();
        QVERIFY(cancelled.opened() && !cancelled.stayedOpen());
        QCOMPARE(calendar.titleText(), QStringLiteral("2027年3月"));
        QCOMPARE(calendar.weekdayHeaders().value(0), QStringLiteral("日"));
        QVERIFY(!calendar.holidayName(QDate(2027, 3, 21)).isEmpty());

        // The keys are released while the dialog is up, and the new ones taken after OK.
        bool releasedWhileOpen = false;
        ModalAnswer answer([&](QWidget* dialog) {
            releasedWhileOpen = env.hotKeys.registered.isEmpty();
            auto* field = Control<QLineEdit>(dialog, "TxtHotKey");
            for (int action : {1, 2}) {
                Control<QComboBox>(dialog, "CmbHotKey")->setCurrentIndex(action);
                field->setFocus();
                QTest::keyClick(field, action == 1 ? Qt::Key_K : Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
            }
            choose(dialog, "CmbTitle", 80602);
            choose(dialog, "CmbWeekFormat", 80805);
            choose(dialog, "CmbFirstWeek", 7);
            Type(dialog, QStringLiteral("ChkHoliday"), QStringLiteral("0"));
            Click(dialog, "ComOK");
        });
        main.OpenSettings();
        QCOMPARE(answer.title(), QStringLiteral("設定"));
        QVERIFY(releasedWhileOpen);
        QVERIFY(env.services.state.MainWindowIdle);
        QList<FakeHotKeyBackend::Combination> held = env.hotKeys.registered.values();
        std::sort(held.begin(), held.end());
        QCOMPARE(held, QList<FakeHotKeyBackend::Combination>({{67, 3}, {75, 3}, {76, 3}}));
        // The calendar shows the new settings at once; its grid starts on the chosen weekday.
        QCOMPARE(calendar.titleText(), QStringLiteral("2027年03月"));
        QCOMPARE(calendar.weekdayHeaders().value(0), QStringLiteral("Sat"));
        QCOMPARE(calendar.FirstShownDate().dayOfWeek(), 6);
        QVERIFY(!calendar.holidaysShown());
        QVERIFY(calendar.holidayName(QDate(2027, 3, 21)).isEmpty());

        // A press means today, though another day is selected.
        const struct
        {
            int key;
            QString title;
            const char* dateField;
        } presses[] = {{75, QStringLiteral("スケジュール"), "TxtStartDate"},
                       {67, QStringLiteral("タスク"), "TxtEndDate"}};
        for (const auto& press : presses) {
            QString shownDate;
            bool idleWhileOpen = true;
            ModalAnswer editor([&](QWidget* dialog) {
                shownDate = Control<QLineEdit>(dialog, press.dateField)->text();
                idleWhileOpen = env.services.state.MainWindowIdle;
                Click(dialog, "ComCancel");
            });
            env.hotKeys.press(press.key, 3);
            QTRY_VERIFY(editor.opened());
            QCOMPARE(editor.title(), press.title);
            QCOMPARE(shownDate, QStringLiteral("2026/11/22"));
            QVERIFY(!idleWhileOpen);
            QVERIFY(env.services.state.MainWindowIdle);
        }
        main.Form_Unload();
        QVERIFY(env.hotKeys.registered.isEmpty());
    }
};

VERDALY_TEST(TestSettingHotKeys)
#include "TestSettingHotKeys.moc"
