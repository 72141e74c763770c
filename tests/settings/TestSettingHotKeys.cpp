// The hot keys: the settings field driven from the keyboard, which rows are taken from the
// desktop, what a press does and when it is dropped, the keys released while the dialog is up;
// and the calendar showing the new settings at once.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "platform/HotKeyBackendFactory.h"
#include "settings/FrmSetting.h"
#include "settings/GlobalHotKeys.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

class TestSettingHotKeys final : public QObject
{
    Q_OBJECT

private slots:
    void hotKeyCapture_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("shown");   // "-": unchanged from the stored Shift+Ctrl+K
        QTest::addColumn<QString>("stored");  // DATAN1|DATAN2 after OK
        QTest::addColumn<QString>("note");    // what the note beside the field says; empty: hidden
        QTest::addColumn<QString>("desktop"); // "held": another program has Ctrl+Alt+K; "none": no hot keys
        const int ctrl = Qt::ControlModifier, alt = Qt::AltModifier, shift = Qt::ShiftModifier,
                  pad = Qt::KeypadModifier;
        const QString ca = QStringLiteral("[Ctrl] + [Alt] + ");
        // The list action holds Ctrl+Alt+Del.
        // clang-format off
        QTest::newRow("ctrl+alt+K") << int(Qt::Key_K) << (ctrl | alt) << ca + "K" << "75|6" << "" << "";
        QTest::newRow("held by another program") << int(Qt::Key_K) << (ctrl | alt) << ca + "K" << "75|6" << "他のプログラム" << "held";
        QTest::newRow("no hot keys on this desktop") << int(Qt::Key_K) << (ctrl | alt) << ca + "K" << "75|6" << "使用できません" << "none";
        QTest::newRow("ctrl+K gains alt") << int(Qt::Key_K) << ctrl << ca + "K" << "75|6" << "" << "";
        QTest::newRow("shift+K loses shift") << int(Qt::Key_K) << shift << ca + "K" << "75|6" << "" << "";
        QTest::newRow("shift+ctrl+K kept") << int(Qt::Key_K) << (shift | ctrl) << "[Shift] + [Ctrl] + K" << "75|3" << "" << "";
        QTest::newRow("all three+Del") << int(Qt::Key_Delete) << (shift | ctrl | alt) << "[Shift] + [Ctrl] + [Alt] + Del" << "46|7" << "" << "";
        QTest::newRow("same as another action") << int(Qt::Key_Delete) << shift << ca + "Del" << "46|6" << "「スケジュール一覧」" << "";
        QTest::newRow("keypad 0") << int(Qt::Key_0) << (ctrl | alt | pad) << ca + "Num0" << "96|6" << "" << "";
        QTest::newRow("F16") << int(Qt::Key_F16) << (ctrl | alt) << ca + "F16" << "127|6" << "" << "";
        QTest::newRow("F17 has no name") << int(Qt::Key_F17) << (ctrl | alt) << ca << "128|6" << "" << "";
        QTest::newRow("arrow") << int(Qt::Key_Left) << (ctrl | alt) << ca + "←" << "37|6" << "" << "";
        // Keys the dialog would otherwise act on belong to the field while it has the focus.
        QTest::newRow("Esc does not cancel") << int(Qt::Key_Escape) << 0 << ca + "Esc" << "27|6" << "" << "";
        QTest::newRow("Return does not press OK") << int(Qt::Key_Return) << 0 << ca + "Enter" << "13|6" << "" << "";
        QTest::newRow("ctrl alone") << int(Qt::Key_Control) << ctrl << "-" << "75|3" << "" << "";
        QTest::newRow("Delete clears") << int(Qt::Key_Delete) << 0 << "" << "0|0" << "" << "";
        QTest::newRow("Backspace clears") << int(Qt::Key_Backspace) << 0 << "" << "0|0" << "" << "";
        // clang-format on
    }
    void hotKeyCapture()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, shown);
        QFETCH(QString, stored);
        QFETCH(QString, note);
        QFETCH(QString, desktop);
        TestEnvironment env;
        env.hotKeys.available = desktop != QLatin1String("none");
        if (desktop == QLatin1String("held"))
            env.hotKeys.heldElsewhere.insert({75, 3});
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 75, DATAN2 = 3 WHERE CODE = 82020"));
        // A mask without a key is no binding: OK leaves such a row as it is.
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 0, DATAN2 = 6 WHERE CODE = 82030"));
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = 46, DATAN2 = 6 WHERE CODE = 82050"));
        const QString bindings = QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE IN (82010, 82020) ORDER BY CODE");
        FrmSetting dialog(env.services);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        auto* actions = Control<QComboBox>(&dialog, "CmbHotKey");
        auto* field = Control<QLineEdit>(&dialog, "TxtHotKey");
        actions->setCurrentIndex(1);
        field->setFocus();
        QTest::keyClick(field, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        const QString expected = shown == QLatin1String("-") ? QStringLiteral("[Shift] + [Ctrl] + K") : shown;
        QCOMPARE(field->text(), expected);
        QVERIFY(dialog.isVisible());
        auto* noteLabel = Control<QLabel>(&dialog, "LabHotKeyNote");
        QCOMPARE(noteLabel->isHidden(), note.isEmpty());
        QVERIFY2(noteLabel->text().contains(note), qPrintable(noteLabel->text()));
        QCOMPARE(Lines(env.db(), bindings, {"DATAN1", "DATAN2"}), QStringList({"0|0", "75|3"})); // nothing before OK

        // Another action and back: the captured binding stays with its own action.
        actions->setCurrentIndex(0);
        QCOMPARE(field->text(), QString());
        actions->setCurrentIndex(1);
        QCOMPARE(field->text(), expected);
        WriteLog log(env.db(), QStringLiteral("TRNGENERAL"), QStringLiteral("CODE"));
        Click(&dialog, "ComOK");
        QVERIFY(dialog.SettingCommitted());
        // The row is stored whatever the note says.
        QCOMPARE(Lines(env.db(), bindings, {"DATAN1", "DATAN2"}), QStringList({"0|0", stored}));
        QCOMPARE(log.lines().filter(QStringLiteral("UPDATE 820")),
                 QStringList({"UPDATE 82010", "UPDATE 82020", "UPDATE 82040", "UPDATE 82050"}));
    }

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
