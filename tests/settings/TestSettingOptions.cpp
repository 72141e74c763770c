// The option side of the settings dialog: what it loads and what OK writes, the alarm
// controls and the sound file, and the hot-key field driven from the keyboard.
#include "settings/FrmSetting.h"
#include "support/TestKit.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

namespace {

QString Option(DatabaseConnection& db, int code, const char* column = "DATAN1")
{
    return Lines(db, QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = %1").arg(code), {column}).value(0);
}

void SetOption(DatabaseConnection& db, int code, const QString& set)
{
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET %1 WHERE CODE = %2").arg(set).arg(code));
}

// "ChkSound TxtSoundPath ComSound" enabled states as three 0/1.
QString SoundStates(FrmSetting& dialog)
{
    QString states;
    for (const char* name : {"ChkSound", "TxtSoundPath", "ComSound"})
        states += Control(&dialog, name)->isEnabled() ? QLatin1Char('1') : QLatin1Char('0');
    return states;
}

} // namespace

class TestSettingOptions final : public QObject
{
    Q_OBJECT

private slots:
    void okWritesEachCode_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("stored"); // loaded into the control, which then gets the other value; -1: no row
        QTest::addColumn<int>("chosen");
        QTest::newRow("title format") << "CmbTitle" << 301 << 80603 << 80604;
        QTest::newRow("first weekday") << "CmbFirstWeek" << 302 << 7 << 2;
        QTest::newRow("weekday names") << "CmbWeekFormat" << 303 << 80802 << 80805;
        QTest::newRow("alarm advance") << "CmbAlarm" << 304 << 0 << 30;
        QTest::newRow("resident") << "ChkStay" << 311 << 1 << 0;
        QTest::newRow("always on top") << "ChkAlwaysShow" << 312 << 0 << 1;
        QTest::newRow("transparency") << "CmbClear" << 313 << 60 << 20;
        QTest::newRow("balloon") << "OptBalloon" << 314 << 0 << 1;
        QTest::newRow("message box") << "OptMsgbox" << 314 << 1 << 0;
        QTest::newRow("holidays, no row reads as on") << "ChkHoliday" << 317 << -1 << 0;
        QTest::newRow("holidays on") << "ChkHoliday" << 317 << 1 << 0;
        QTest::newRow("holidays off") << "ChkHoliday" << 317 << 0 << 1;
    }
    void okWritesEachCode()
    {
        QFETCH(QString, control);
        QFETCH(int, code);
        QFETCH(int, stored);
        QFETCH(int, chosen);
        TestEnvironment env;
        if (stored < 0)
            env.db().ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = %1").arg(code));
        else
            SetOption(env.db(), code, QStringLiteral("DATAN1 = %1").arg(stored));
        FrmSetting dialog(env.services);
        QWidget* widget = Control(&dialog, control.toLatin1().constData());
        if (auto* combo = qobject_cast<QComboBox*>(widget)) {
            QCOMPARE(combo->currentData().toInt(), stored);
            combo->setCurrentIndex(combo->findData(chosen));
        } else {
            auto* box = qobject_cast<QAbstractButton*>(widget);
            QCOMPARE(box->isChecked(), (stored != 0) == (control != QLatin1String("OptMsgbox")));
            box->click();
        }
        QCOMPARE(Option(env.db(), code), stored < 0 ? QString() : QString::number(stored)); // nothing before OK
        Click(&dialog, "ComOK");
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(env.db().transactionDepth(), 0);
        QCOMPARE(Option(env.db(), code), QString::number(chosen));
    }

    void alarmControlsAndSoundFile_data()
    {
        QTest::addColumn<int>("delivery"); // 314: 0 message box, anything else balloon
        QTest::addColumn<bool>("sound");
        QTest::addColumn<QString>("states");
        QTest::newRow("message box, sound on") << 0 << true << "000";
        QTest::newRow("balloon, sound on") << 1 << true << "111";
        QTest::newRow("balloon, sound off") << 1 << false << "100";
        QTest::newRow("any non-zero is balloon") << 7 << true << "111";
    }
    void alarmControlsAndSoundFile()
    {
        QFETCH(int, delivery);
        QFETCH(bool, sound);
        QFETCH(QString, states);
        TestEnvironment env;
        SetOption(env.db(), 314, QStringLiteral("DATAN1 = %1").arg(delivery));
        SetOption(env.db(), 316, QStringLiteral("DATAN1 = %1").arg(sound ? 1 : 0));
        FrmSetting dialog(env.services);
        dialog.show();
        QCOMPARE(SoundStates(dialog), states);
        // Switching delivery: the box follows the option, the path follows the box.
        Click(&dialog, "OptMsgbox");
        QCOMPARE(SoundStates(dialog), QStringLiteral("000"));
        Click(&dialog, "OptBalloon");
        QCOMPARE(SoundStates(dialog), sound ? QStringLiteral("111") : QStringLiteral("100"));
        Click(&dialog, "ChkSound");
        QCOMPARE(SoundStates(dialog), sound ? QStringLiteral("100") : QStringLiteral("111"));

        // A sound file that is not there keeps the dialog open and writes nothing.
        Type(&dialog, QStringLiteral("ChkSound"), QStringLiteral("1"));
        env.filePicker.answers.push_back(QStringLiteral("/no/such/ring.wav"));
        Click(&dialog, "ComSound");
        QCOMPARE(Shown(&dialog, QStringLiteral("TxtSoundPath")), QStringLiteral("/no/such/ring.wav"));
        Click(&dialog, "ComOK");
        QVERIFY(dialog.isVisible());
        QCOMPARE(env.prompter.texts().size(), 1);
        QVERIFY(env.prompter.texts().front().contains(QStringLiteral("/no/such/ring.wav")));
        QCOMPARE(Option(env.db(), 316), QString::number(sound ? 1 : 0));
        const QString wav = env.dir.filePath(QStringLiteral("ding.wav"));
        QFile file(wav);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        Type(&dialog, QStringLiteral("TxtSoundPath"), wav);
        Click(&dialog, "ComOK");
        QVERIFY(dialog.SettingCommitted());
        QCOMPARE(Option(env.db(), 316) + Option(env.db(), 315, "MEMO1"), QStringLiteral("1") + wav);
    }

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
        SetOption(env.db(), 82020, QStringLiteral("DATAN1 = 75, DATAN2 = 3"));
        // A mask without a key is no binding: OK leaves such a row as it is.
        SetOption(env.db(), 82030, QStringLiteral("DATAN1 = 0, DATAN2 = 6"));
        SetOption(env.db(), 82050, QStringLiteral("DATAN1 = 46, DATAN2 = 6"));
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
};

VERDALY_TEST(TestSettingOptions)
#include "TestSettingOptions.moc"
