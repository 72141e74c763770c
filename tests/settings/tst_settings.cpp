// The settings dialog, what it writes and what the calendar shows after OK; and the files it
// writes besides its rows, where nothing but a sound backup may ever replace the live data.
#include "calendarcontrol/HalvernCalendar.h"
#include "mainwindow/FrmMain.h"
#include "platform/HotKeyBackendFactory.h"
#include "settings/BackupRestore.h"
#include "settings/FrmSetting.h"
#include "settings/GlobalHotKeys.h"
#include "shell/AutoStart.h"
#include "store/DatabaseVersion.h"
#include "store/SqlText.h"
#include "support/MainWindowKit.h"
#include "support/TestKit.h"

#include <QtTest>
#include <QtWidgets>

namespace {

QString Option(DatabaseConnection& db, int code, const char* column = "DATAN1")
{
    return Lines(db, QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = %1").arg(code), {column}).value(0);
}

// "1" for each named control that can be used, "0" for one greyed; "|" is kept as a separator.
QString Enabled(QWidget* dialog, const QStringList& names)
{
    QString states;
    for (const QString& name : names)
        states += name == "|" ? "|" : Control(dialog, qPrintable(name))->isEnabled() ? "1" : "0";
    return states;
}

QStringList DesignRows(DatabaseConnection& db)
{
    return Lines(db, "SELECT * FROM TRNCOLOR ORDER BY CODE, SETNUM",
                 {"CODE", "SETNUM", "BACKCOLOR", "FOREFONT", "FSIZE", "FBOLD", "FITALIC", "FORECOLOR", "UPDTIME"});
}

void Choose(QWidget* dialog, const char* list, int data)
{
    auto* box = Control<QComboBox>(dialog, list);
    box->setCurrentIndex(box->findData(data));
}

// A maintenance button of a fresh dialog, the question and the picker answered; true if committed.
bool RunMaintenance(TestEnvironment& env, const char* button, const QString& path)
{
    env.prompter.answers = {PromptAnswer::Ok};
    env.filePicker.answers = {path};
    FrmSetting dialog(env.services);
    Click(&dialog, button);
    return dialog.SettingCommitted();
}

const QByteArray HandMade = "[Desktop Entry]\nType=Application\nName=mine\nExec=/opt/my/verdaly --autostart\n";
const QByteArray SessionOff = HandMade + "X-GNOME-Autostart-enabled=false\n";

// The SETBCOLOR SETFONT SETFCOLOR flags, FBOLD FITALIC, the controls usable, the font shown.
using SpotRow = std::tuple<QString, QString, QString, QString>;
// The control, the code, the value stored (loaded, then changed; -1: no row) and the one chosen.
using OptionRow = std::tuple<QString, int, int, int>;
// 314 (0 message box, anything else balloon), 316, and the sound controls usable.
using SoundRow = std::tuple<int, bool, QString>;
// Key, modifiers, field text, DATAN1|DATAN2 after OK, note ("": hidden), desktop ("held" K, "none").
using KeyRow = std::tuple<Qt::Key, int, QString, QString, QString, QString>;
// Entry before ("folder?": cannot be made), box shown, button, then "ours", "none", "=" or "refused".
using AutoStartRow = std::tuple<QByteArray, QString, QString, QString>;
// The button, the question's answer, the file picked ("": cancelled; a pattern; or made as named).
using FileRow = std::tuple<QString, bool, QString>;

} // namespace

class TestSettings final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("XDG_CONFIG_HOME"); }

    void spotOffersWhatItHas_data()
    {
        QTest::addColumn<SpotRow>("row");
        // The spot shown before (the title bar) has "IPAGothic", bold, size 14.
        QTest::newRow("everything, plain") << SpotRow{"111", "00", "11|11111|11", "Mincho"};
        QTest::newRow("italic") << SpotRow{"111", "01", "11|11111|11", "Mincho - 斜体"};
        QTest::newRow("bold italic") << SpotRow{"111", "11", "11|11111|11", "Mincho - 太字 斜体"};
        QTest::newRow("text colour only") << SpotRow{"001", "00", "00|00000|11", "IPAGothic - 太字"};
        QTest::newRow("background only") << SpotRow{"100", "11", "11|00000|00", "IPAGothic - 太字"};
        QTest::newRow("nothing, flags not 1") << SpotRow{"2 0", "00", "00|00000|00", "IPAGothic - 太字"};
    }
    void spotOffersWhatItHas()
    {
        QFETCH(SpotRow, row);
        const auto& [flags, style, states, font] = row;
        TestEnvironment env;
        env.db().ExecuteSql("UPDATE TRNCOLOR SET FOREFONT = 'IPAGothic', FSIZE = 14, FBOLD = 1 WHERE CODE = 10");
        env.db().ExecuteSql(
            QStringLiteral(
                "UPDATE TRNCOLOR SET SETBCOLOR = '%1', SETFONT = '%2', SETFCOLOR = '%3', FOREFONT = 'Mincho', "
                "FSIZE = 10.5, FBOLD = %4, FITALIC = %5 WHERE CODE = 90")
                .arg(flags.mid(0, 1), flags.mid(1, 1), flags.mid(2, 1), style.mid(0, 1), style.mid(1, 1)));
        FrmSetting dialog(env.services);
        Choose(&dialog, "CmbSpot", 10);
        Choose(&dialog, "CmbSpot", 90);
        QCOMPARE(Enabled(&dialog, {"LabBackColor", "ComBackColor", "|", "LabFont", "LabSize", "TxtFont", "TxtSize",
                                   "ComFont", "|", "LabForeColor", "ComForeColor"}),
                 states);
        // A spot without a font leaves the previous spot's font in view, greyed.
        QCOMPARE(Shown(&dialog, "TxtFont"), font);
        QCOMPARE(Shown(&dialog, "TxtSize"), flags.at(1) == '1' ? "10.5" : "14");
    }

    void writtenAtOnceUndoneWithoutOk_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("OK") << "ComOK";
        QTest::newRow("cancel button") << "ComCancel";
        QTest::newRow("escape key") << "escape";
        QTest::newRow("close box") << "close";
    }
    void writtenAtOnceUndoneWithoutOk()
    {
        QFETCH(QString, how);
        TestEnvironment env;
        // A design of the user's own in every spot, which the reset would undo.
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = 1, FOREFONT = 'x', FSIZE = 20, FBOLD = 1, "
                                           "FITALIC = 1, FORECOLOR = 2"));
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = 658188, FORECOLOR = 658188, FOREFONT = "
                                           "'IPAGothic', FSIZE = 9.5, FBOLD = 0, FITALIC = 1 WHERE CODE = 10"));
        const QString differing =
            QStringLiteral("SETNUM = 0 AND NOT (BACKCOLOR = DBACKCOLOR AND FOREFONT = DFOREFONT AND FSIZE = DFSIZE AND "
                           "FBOLD = DFBOLD AND FITALIC = DFITALIC AND FORECOLOR = DFORECOLOR)");
        const int spots = env.count("TRNCOLOR", differing);
        const QStringList before = DesignRows(env.db());
        FrmSetting dialog(env.services);
        dialog.show();
        Choose(&dialog, "CmbSpot", 10);
        WriteLog log(env.db(), "TRNCOLOR", "CODE");

        // Each picker starts from the spot's own; a cancelled one writes the colour it had.
        env.colorPicker.answers.push_back(QColor(0x12, 0x34, 0x56));
        Click(&dialog, "ComBackColor");
        Click(&dialog, "ComForeColor");
        const QColor start(0x0C, 0x0B, 0x0A);
        QCOMPARE(env.colorPicker.requests, QList<QColor>({start, start}));
        QCOMPARE(Control<QFrame>(&dialog, "ShaBackColor")->palette().color(QPalette::Window), QColor(0x12, 0x34, 0x56));
        QCOMPARE(Control<QFrame>(&dialog, "ShaForeColor")->palette().color(QPalette::Window), start);
        QCOMPARE(log.lines(), QStringList({"UPDATE 10", "UPDATE 10"}));
        // The font picker starts from the font without its style words; a cancel changes nothing.
        Click(&dialog, "ComFont");
        env.fontPicker.answers.push_back(FontChoice{"O'Brien Sans", 12.25, true, true});
        Click(&dialog, "ComFont");
        QCOMPARE(env.fontPicker.requests.size(), 2);
        const FontChoice asked = env.fontPicker.requests.at(1);
        QVERIFY2(asked.name == "IPAGothic" && asked.size == 9.5 && !asked.bold && asked.italic, qPrintable(asked.name));
        QCOMPARE(ShownAll(&dialog, {"TxtFont=", "TxtSize="}),
                 QStringList({"TxtFont=O'Brien Sans - 太字 斜体", "TxtSize=12.25"}));
        QCOMPARE(Lines(env.db(), "SELECT * FROM TRNCOLOR WHERE CODE = 10",
                       {"BACKCOLOR", "FORECOLOR", "FOREFONT", "FSIZE", "FBOLD", "FITALIC"}),
                 QStringList({"5649426|658188|O'Brien Sans|12.25|1|1"}));

        // The reset asks first, with Cancel as the default answer, and then touches every spot.
        env.prompter.answers = {PromptAnswer::Cancel, PromptAnswer::Ok};
        Click(&dialog, "ComDef");
        QCOMPARE(env.count("TRNCOLOR", differing), spots);
        Click(&dialog, "ComDef");
        QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
        QCOMPARE(env.count("TRNCOLOR", differing), 0);

        if (how.startsWith("Com"))
            Click(&dialog, qPrintable(how));
        else if (how == "escape")
            QTest::keyClick(Control(&dialog, "CmbSpot"), Qt::Key_Escape);
        else
            dialog.close();
        QCOMPARE(dialog.SettingCommitted(), how == "ComOK");
        QCOMPARE(env.db().transactionDepth(), 0);
        QCOMPARE(DesignRows(env.db()) == before, how != "ComOK");
    }

    void okWritesEachCode_data()
    {
        QTest::addColumn<OptionRow>("row");
        QTest::newRow("title format") << OptionRow{"CmbTitle", 301, 80603, 80604};
        QTest::newRow("first weekday") << OptionRow{"CmbFirstWeek", 302, 7, 2};
        QTest::newRow("weekday names") << OptionRow{"CmbWeekFormat", 303, 80802, 80805};
        QTest::newRow("alarm advance") << OptionRow{"CmbAlarm", 304, 0, 30};
        QTest::newRow("resident") << OptionRow{"ChkStay", 311, 1, 0};
        QTest::newRow("always on top") << OptionRow{"ChkAlwaysShow", 312, 0, 1};
        QTest::newRow("transparency") << OptionRow{"CmbClear", 313, 60, 20};
        QTest::newRow("balloon") << OptionRow{"OptBalloon", 314, 0, 1};
        QTest::newRow("message box") << OptionRow{"OptMsgbox", 314, 1, 0};
        QTest::newRow("holidays, no row reads as on") << OptionRow{"ChkHoliday", 317, -1, 0};
        QTest::newRow("holidays off") << OptionRow{"ChkHoliday", 317, 0, 1};
    }
    void okWritesEachCode()
    {
        QFETCH(OptionRow, row);
        const auto& [control, code, stored, chosen] = row;
        TestEnvironment env;
        if (stored < 0)
            env.db().ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = %1").arg(code));
        else
            SetGeneral(env.db(), code, {{"DATAN1", stored}});
        FrmSetting dialog(env.services);
        QWidget* widget = Control(&dialog, qPrintable(control));
        if (auto* combo = qobject_cast<QComboBox*>(widget)) {
            QCOMPARE(combo->currentData().toInt(), stored);
            combo->setCurrentIndex(combo->findData(chosen));
        } else {
            QCOMPARE(qobject_cast<QAbstractButton*>(widget)->isChecked(), (stored != 0) == (control != "OptMsgbox"));
            Click(&dialog, qPrintable(control));
        }
        Click(&dialog, "ComOK");
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(Option(env.db(), code), QString::number(chosen));
    }

    void alarmControlsAndSoundFile_data()
    {
        QTest::addColumn<SoundRow>("row");
        QTest::newRow("message box, sound on") << SoundRow{0, true, "000"};
        QTest::newRow("balloon, sound off") << SoundRow{1, false, "100"};
        QTest::newRow("any non-zero is balloon") << SoundRow{7, true, "111"};
    }
    void alarmControlsAndSoundFile()
    {
        QFETCH(SoundRow, row);
        const auto& [delivery, sound, states] = row;
        TestEnvironment env;
        SetGeneral(env.db(), 314, {{"DATAN1", delivery}});
        SetGeneral(env.db(), 316, {{"DATAN1", sound ? 1 : 0}});
        FrmSetting dialog(env.services);
        dialog.show();
        const auto soundStates = [&dialog] { return Enabled(&dialog, {"ChkSound", "TxtSoundPath", "ComSound"}); };
        QCOMPARE(soundStates(), states);
        // Switching delivery: the box follows the option, the path follows the box.
        Click(&dialog, "OptMsgbox");
        QCOMPARE(soundStates(), "000");
        Click(&dialog, "OptBalloon");
        QCOMPARE(soundStates(), sound ? "111" : "100");
        Click(&dialog, "ChkSound");
        QCOMPARE(soundStates(), sound ? "100" : "111");

        // A sound file that is not there keeps the dialog open and writes nothing.
        Type(&dialog, "ChkSound", "1");
        env.filePicker.answers.push_back("/no/such/ring.wav");
        Click(&dialog, "ComSound");
        Click(&dialog, "ComOK");
        QVERIFY(dialog.isVisible());
        QVERIFY(env.prompter.texts().size() == 1 && env.prompter.texts().front().contains("/no/such/ring.wav"));
        QCOMPARE(Option(env.db(), 316), QString::number(sound ? 1 : 0));
        const QString wav = env.dir.filePath("ding.wav");
        QVERIFY(WriteFile(wav, {}));
        Type(&dialog, "TxtSoundPath", wav);
        Click(&dialog, "ComOK");
        QCOMPARE(Option(env.db(), 316) + Option(env.db(), 315, "MEMO1"), "1" + wav);
    }

    void hotKeyCapture_data()
    {
        QTest::addColumn<KeyRow>("row");
        const int ctrl = Qt::ControlModifier, alt = Qt::AltModifier, shift = Qt::ShiftModifier, both = ctrl | alt;
        const QString ca = "[Ctrl] + [Alt] + ";
        // The list action holds Ctrl+Alt+Del.
        QTest::newRow("held elsewhere") << KeyRow{Qt::Key_K, both, ca + "K", "75|6", "他のプログラム", "held"};
        QTest::newRow("no hot keys here") << KeyRow{Qt::Key_K, both, ca + "K", "75|6", "使用できません", "none"};
        QTest::newRow("ctrl+K gains alt") << KeyRow{Qt::Key_K, ctrl, ca + "K", "75|6", "", ""};
        QTest::newRow("shift+ctrl+K kept") << KeyRow{Qt::Key_K, shift | ctrl, "[Shift] + [Ctrl] + K", "75|3", "", ""};
        QTest::newRow("all 3+Del") << KeyRow{Qt::Key_Delete, shift | both, "[Shift] + " + ca + "Del", "46|7", "", ""};
        QTest::newRow("other action's") << KeyRow{Qt::Key_Delete, shift, ca + "Del", "46|6", "スケジュール一覧", ""};
        QTest::newRow("keypad 0") << KeyRow{Qt::Key_0, both | Qt::KeypadModifier, ca + "Num0", "96|6", "", ""};
        QTest::newRow("F16") << KeyRow{Qt::Key_F16, both, ca + "F16", "127|6", "", ""};
        QTest::newRow("arrow") << KeyRow{Qt::Key_Left, both, ca + "←", "37|6", "", ""};
        QTest::newRow("F17 has no name") << KeyRow{Qt::Key_F17, both, ca, "128|6", "", ""};
        // Keys the dialog would otherwise act on belong to the field while it has the focus.
        QTest::newRow("Esc does not cancel") << KeyRow{Qt::Key_Escape, 0, ca + "Esc", "27|6", "", ""};
        QTest::newRow("Return does not press OK") << KeyRow{Qt::Key_Return, 0, ca + "Enter", "13|6", "", ""};
        QTest::newRow("ctrl alone keeps K") << KeyRow{Qt::Key_Control, ctrl, "[Shift] + [Ctrl] + K", "75|3", "", ""};
        QTest::newRow("Delete clears") << KeyRow{Qt::Key_Delete, 0, "", "0|0", "", ""};
        QTest::newRow("Backspace clears") << KeyRow{Qt::Key_Backspace, 0, "", "0|0", "", ""};
    }
    void hotKeyCapture()
    {
        QFETCH(KeyRow, row);
        const auto& [key, modifiers, shown, stored, note, desktop] = row;
        TestEnvironment env;
        env.hotKeys.available = desktop != "none";
        if (desktop == "held")
            env.hotKeys.heldElsewhere.insert({75, 3});
        SetGeneral(env.db(), 82020, {{"DATAN1", 75}, {"DATAN2", 3}});
        // A mask without a key is no binding: OK leaves such a row as it is.
        SetGeneral(env.db(), 82030, {{"DATAN1", 0}, {"DATAN2", 6}});
        SetGeneral(env.db(), 82050, {{"DATAN1", 46}, {"DATAN2", 6}});
        const QString bindings = "SELECT * FROM TRNGENERAL WHERE CODE IN (82010, 82020) ORDER BY CODE";
        FrmSetting dialog(env.services);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        Control<QComboBox>(&dialog, "CmbHotKey")->setCurrentIndex(1);
        auto* field = Control<QLineEdit>(&dialog, "TxtHotKey");
        field->setFocus();
        QTest::keyClick(field, key, Qt::KeyboardModifiers(modifiers));
        QCOMPARE(field->text(), shown);
        QVERIFY(dialog.isVisible());
        auto* noteLabel = Control<QLabel>(&dialog, "LabHotKeyNote");
        QCOMPARE(noteLabel->isHidden(), note.isEmpty());
        QVERIFY2(noteLabel->text().contains(note), qPrintable(noteLabel->text()));

        WriteLog log(env.db(), "TRNGENERAL", "CODE");
        Click(&dialog, "ComOK");
        // The row is stored whatever the note says.
        QCOMPARE(Lines(env.db(), bindings, {"DATAN1", "DATAN2"}), QStringList({"0|0", stored}));
        QCOMPARE(log.lines().filter("UPDATE 820"),
                 QStringList({"UPDATE 82010", "UPDATE 82020", "UPDATE 82040", "UPDATE 82050"}));
    }

    void pressRunsItsAction()
    {
        TestEnvironment env;
        // A, K, C and D with Ctrl+Alt, the list Shift+Ctrl+F1 (registered as Ctrl+Shift).
        const QList<QPair<int, int>> bindings = {{65, 6}, {75, 6}, {67, 6}, {68, 6}, {112, 3}};
        for (int i = 0; i < bindings.size(); ++i)
            SetGeneral(env.db(), 82010 + 10 * i, {{"DATAN1", bindings[i].first}, {"DATAN2", bindings[i].second}});
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
        QCOMPARE(env.hotKeys.registered.size(), 5);
        env.services.state.MainWindowIdle = true;
        for (const auto& [key, modifiers] :
             QList<QPair<int, int>>{{65, 3}, {75, 3}, {67, 3}, {68, 3}, {112, 6}, {65, 2}})
            env.hotKeys.press(key, modifiers);
        QCOMPARE(ran, QList<int>({0, 1, 2, 3, 4}));
        // A press while a dialog is up is dropped.
        env.services.state.MainWindowIdle = false;
        env.hotKeys.press(75, 3);
        QCOMPARE(ran.size(), 5);

        // Ctrl+Alt+D belongs to another program: the others are still taken.
        env.hotKeys.heldElsewhere.insert({68, 3});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("D for 付箋新規作成.*another program"));
        hotKeys.RegisterHotKeys();
        QCOMPARE(env.hotKeys.registered.size(), 4);
        QCOMPARE(hotKeys.statuses().at(3), HotKeyStatus::Taken);

        // The tests run on the offscreen platform: no X server to take keys from.
        const std::unique_ptr<HotKeyBackend> backend = CreateHotKeyBackend();
        QVERIFY(!backend->isAvailable());
        QCOMPARE(backend->registerHotKey(843, 75, 3), HotKeyStatus::Unavailable);
        QCOMPARE(backend->probe(75, 3), HotKeyStatus::Unavailable);
    }

    void fromTheMainWindow()
    {
        TestEnvironment env;
        SetGeneral(env.db(), 82010, {{"DATAN1", 76}, {"DATAN2", 6}});
        const std::unique_ptr<FrmMain> main = StartMainWindow(env);
        QCOMPARE(env.hotKeys.registered.values(), QList<FakeHotKeyBackend::Combination>({{76, 3}}));
        HalvernCalendar& calendar = *main->calendar();
        calendar.setCurrentDate(QDate(2027, 3, 9));
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
            Choose(dialog, "CmbTitle", 80602);
            Choose(dialog, "CmbWeekFormat", 80805);
            Choose(dialog, "CmbFirstWeek", 7);
            Type(dialog, "ChkHoliday", "0");
            Click(dialog, "ComOK");
        });
        main->OpenSettings();
        QVERIFY(releasedWhileOpen);
        QCOMPARE(env.hotKeys.registered.values(), QList<FakeHotKeyBackend::Combination>({{67, 3}, {75, 3}, {76, 3}}));
        // The calendar shows the new settings at once; its grid starts on the chosen weekday.
        QCOMPARE(calendar.titleText(), "2027年03月");
        QCOMPARE(calendar.weekdayHeaders().value(0), "Sat");
        QCOMPARE(calendar.FirstShownDate().dayOfWeek(), 6);
        QVERIFY(calendar.holidayName(QDate(2027, 3, 21)).isEmpty());

        // A press means today, though another day is selected.
        for (const auto& [key, title, dateField] :
             {std::tuple{75, "スケジュール", "TxtStartDate"}, {67, "タスク", "TxtEndDate"}}) {
            QString shownDate;
            ModalAnswer editor([&, dateField = dateField](QWidget* dialog) {
                shownDate = Control<QLineEdit>(dialog, dateField)->text();
                Click(dialog, "ComCancel");
            });
            env.hotKeys.press(key, 3);
            QTRY_VERIFY(editor.opened());
            QCOMPARE(editor.title(), title);
            QCOMPARE(shownDate, "2026/11/22");
        }
        main->Form_Unload();
        QVERIFY(env.hotKeys.registered.isEmpty());
    }

    void tickAndUntick_data()
    {
        QTest::addColumn<AutoStartRow>("row");
        QTest::newRow("ticked, OK") << AutoStartRow{QByteArray(), "0", "ComOK", "ours"};
        QTest::newRow("ticked, cancelled") << AutoStartRow{QByteArray(), "0", "ComCancel", "none"};
        QTest::newRow("unticked, OK") << AutoStartRow{HandMade, "1", "ComOK", "none"};
        QTest::newRow("hidden by the desktop: unticked") << AutoStartRow{HandMade + "Hidden=true\n", "0", "", "="};
        QTest::newRow("switched off by the session, ticked again") << AutoStartRow{SessionOff, "0", "ComOK", "ours"};
        QTest::newRow("entry edited by hand, box untouched") << AutoStartRow{HandMade, "1", "", "="};
        QTest::newRow("folder cannot be made") << AutoStartRow{QByteArray("folder?"), "0", "ComOK", "refused"};
    }
    void tickAndUntick()
    {
        QFETCH(AutoStartRow, row);
        const auto& [before, shown, close, after] = row;
        QTemporaryDir home;
        qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
        const QString path = home.filePath("autostart/org.halvern.verdaly.desktop");
        // A plain file where the autostart folder belongs leaves nowhere to write.
        const QString target = before == "folder?" ? QFileInfo(path).path() : path;
        if (!before.isEmpty())
            QVERIFY(QDir().mkpath(QFileInfo(target).path()) && WriteFile(target, before));
        TestEnvironment env;
        FrmSetting dialog(env.services);
        QCOMPARE(Shown(&dialog, "ChkAutoStart"), shown);
        if (!close.isEmpty()) {
            Click(&dialog, "ChkAutoStart");
            Type(&dialog, "ChkStay", "1");
        }
        Click(&dialog, close.isEmpty() ? "ComOK" : qPrintable(close));
        const QByteArray entry = FileBytes(path);
        if (after == "=") {
            QCOMPARE(entry, before);
        } else if (after == "ours") {
            // The login runs this program's launcher, marked as a login start, in an entry the
            // desktop's own checker accepts.
            const QRegularExpressionMatch exec =
                QRegularExpression("^Exec=(/\\S+/verdaly) --autostart$", QRegularExpression::MultilineOption)
                    .match(entry);
            QVERIFY2(exec.hasMatch() && QFileInfo(exec.captured(1)).isExecutable(), entry.constData());
            QCOMPARE(QProcess::execute("desktop-file-validate", {path}), 0);
        } else {
            QCOMPARE(entry, QByteArray("<no file>"));
        }
        if (after == "refused") {
            QVERIFY2(env.prompter.texts().value(0).contains(path), qPrintable(env.prompter.texts().value(0)));
            QVERIFY(!dialog.SettingCommitted());
            QCOMPARE(ShownAll(&dialog, {"ChkAutoStart=", "ChkStay="}), QStringList({"ChkAutoStart=1", "ChkStay=1"}));
        }
    }

    void execArgument_data()
    {
        QTest::addColumn<QString>("argument");
        QTest::addColumn<QString>("written"); // as it stands in the file
        // clang-format off
        QTest::newRow("blank") << "/home/a b/verdaly" << "\"/home/a b/verdaly\"";
        QTest::newRow("dollar") << "/opt/$HOME/verdaly" << "\"/opt/\\\\$HOME/verdaly\"";
        QTest::newRow("backslash") << "/x\\y/verdaly" << "\"/x\\\\\\\\y/verdaly\"";
        QTest::newRow("percent is no field code") << "/data/100%f" << "/data/100%%f";
        // clang-format on
    }
    void execArgument()
    {
        QFETCH(QString, argument);
        QFETCH(QString, written);
        QCOMPARE(DesktopExecArgument(argument), written);
    }

    void backupThenRestore_data()
    {
        QTest::addColumn<QByteArray>("existing"); // what the chosen path held before; null: no file
        QTest::addColumn<int>("version");         // the layout the backup is turned into before the restore
        QTest::newRow("new file") << QByteArray() << CurrentDatabaseVersion;
        QTest::newRow("over an older file, version 10") << QByteArray(70000, 'x') << 10;
    }
    void backupThenRestore()
    {
        QFETCH(QByteArray, existing);
        QFETCH(int, version);
        TestEnvironment env;
        StoreEntry(env.db(), Entry(1, "A1", "20261101", {}, {}, {}, "会議 it's"));
        // A note as it shows now, with text never written to its row before.
        env.services.state.StickyNotes[3] = StickyNoteSlot{true, "今の文字\n二行目", 2, 1500, 3000, nullptr};
        QTemporaryDir elsewhere;
        const QString chosen = elsewhere.filePath("mine.bdc");
        if (!existing.isNull())
            QVERIFY(WriteFile(chosen, existing));

        QVERIFY(RunMaintenance(env, "ComBackup", chosen));
        QCOMPARE(env.prompter.texts().last(), "バックアップが正常に終了しました。");
        // One self-contained file: nothing beside it that the copy would have needed.
        QCOMPARE(QDir(elsewhere.path()).entryList(QDir::Files), QStringList{"mine.bdc"});
        {
            DatabaseConnection backup(chosen);
            QCOMPARE(Lines(backup, "SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAN1 = 3",
                           {"DATAS3", "DATAN2", "MEMO1"}),
                     QStringList{"1|1500|今の文字\n二行目"});
            DowngradeDatabase(backup, version);
        }
        StoreEntry(env.db(), Entry(2, "A1", "20261102", {}, {}, {}, "after the backup"));
        const QByteArray chosenBytes = FileBytes(chosen);

        QVERIFY(RunMaintenance(env, "ComReg", chosen));
        QVERIFY(env.services.state.RestoreDone);
        QCOMPARE(env.prompter.texts().last(),
                 "バックアップを正常に復元しました。\nアプリケーションを終了いたしますので再起動してください。");
        QCOMPARE(FileBytes(chosen), chosenBytes);
        QCOMPARE(env.scalar("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10"), qint64(CurrentDatabaseVersion));
        QCOMPARE(Lines(env.db(), "SELECT * FROM TRNSCHTSK ORDER BY ID", {"ID", "BUSINESS"}),
                 QStringList{"1|会議 it's"});
        DatabaseConnection before(BeforeRestorePath(env.path()));
        QCOMPARE(Column(before, 2, "BUSINESS"), "after the backup");
        QCOMPARE(QDir(env.dir.path()).entryList(QDir::Files),
                 QStringList({"QMCalendar.mdb", "QMCalendar.mdb.before-restore"}));
    }

    void liveDataLeftAlone_data()
    {
        QTest::addColumn<FileRow>("row");
        QTest::newRow("backup question") << FileRow{"ComBackup", false, "x.bdc"};
        QTest::newRow("backup picker") << FileRow{"ComBackup", true, ""};
        QTest::newRow("restore question") << FileRow{"ComReg", false, "copy"};
        QTest::newRow("restore picker") << FileRow{"ComReg", true, ""};
        QTest::newRow("restore picker pattern") << FileRow{"ComReg", true, "*.bdc"};
        QTest::newRow("database without TRNGENERAL") << FileRow{"ComReg", true, "foreign"};
        QTest::newRow("no version row") << FileRow{"ComReg", true, "unversioned"};
        QTest::newRow("backup cut to half") << FileRow{"ComReg", true, "truncated"};
    }
    void liveDataLeftAlone()
    {
        QFETCH(FileRow, row);
        const auto& [button, questionOk, picked] = row;
        TestEnvironment env;
        QTemporaryDir elsewhere;
        const bool named = !picked.isEmpty() && !picked.startsWith('*');
        const bool refused = named && picked != "copy" && button == "ComReg" && questionOk;
        const QString chosen = named ? elsewhere.filePath(picked + ".bdc") : picked;
        if (picked == "foreign") {
            DatabaseConnection foreign(chosen, DatabaseConnection::OpenMode::CreateIfMissing);
            foreign.ExecuteSql("CREATE TABLE TRNSCHTSK (ID INTEGER)");
        } else if (picked == "copy" || picked == "unversioned" || picked == "truncated") {
            // A byte copy of the live database, taken with the connection closed.
            env.db().Close();
            QVERIFY(CopyFileOverwrite(env.path(), chosen));
            QVERIFY(env.db().Reopen());
            if (picked == "unversioned")
                DatabaseConnection(chosen).ExecuteSql("DELETE FROM TRNGENERAL WHERE CODE = 10");
            if (picked == "truncated")
                QVERIFY(QFile::resize(chosen, QFileInfo(chosen).size() / 2));
        }
        const QByteArray chosenBytes = FileBytes(chosen);
        const QStringList filesBefore = QDir(env.dir.path()).entryList(QDir::Files);
        FrmSetting dialog(env.services);
        // A design change the dialog holds uncommitted.
        env.db().ExecuteSql("UPDATE TRNCOLOR SET BACKCOLOR = 255 WHERE SETNUM = 0");
        const QByteArray liveBytes = FileBytes(env.path());
        env.prompter.answers = {questionOk ? PromptAnswer::Ok : PromptAnswer::Cancel};
        env.filePicker.answers = {chosen};

        Click(&dialog, qPrintable(button));
        const QString refusal = "バックアップファイルが正しくありません。復元をキャンセルします。";
        QCOMPARE(env.prompter.texts().mid(1), refused ? QStringList{refusal} : QStringList());
        QVERIFY(!refused || env.prompter.shown.last().icon == PromptIcon::Critical);
        QCOMPARE(FileBytes(chosen), chosenBytes);
        // Beside the live file only the journal of the dialog's change, while it is kept.
        QCOMPARE(QDir(env.dir.path()).entryList(QDir::Files),
                 filesBefore + (refused ? QStringList() : QStringList{"QMCalendar.mdb-journal"}));
        QCOMPARE(FileBytes(env.path()), liveBytes);
        QVERIFY(!dialog.SettingCommitted());
        QVERIFY(!env.services.state.RestoreDone);
        // Still usable in a transaction of the dialog's: the same one with its change unless a
        // restore was tried, which gives up the change first.
        QCOMPARE(env.db().transactionDepth(), 1);
        QCOMPARE(env.count("TRNCOLOR", "SETNUM = 0 AND BACKCOLOR <> 255") > 0, refused);
    }
};

VERDALY_TEST(TestSettings)
#include "tst_settings.moc"
