// The option side of the settings dialog: what it loads and what OK writes, the alarm
// controls' enabled states, the sound file, the hot-key rows and the note beside the
// capture field.
#include "settings/FrmSetting.h"
#include "support/TestKit.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

class TestSettingOptions final : public QObject
{
    Q_OBJECT

private slots:
    void okWritesEachCode_data();
    void okWritesEachCode();
    void alarmControlsFollowDelivery_data();
    void alarmControlsFollowDelivery();
    void missingSoundFileKeepsDialogOpen();
    void hotKeyRowsWithMaskButNoKeyAreLeft();
    void noteBesideCaptureField_data();
    void noteBesideCaptureField();
};

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

void TestSettingOptions::okWritesEachCode_data()
{
    QTest::addColumn<QString>("control");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("stored"); // loaded into the control, which then gets the other value
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
}

void TestSettingOptions::okWritesEachCode()
{
    QFETCH(QString, control);
    QFETCH(int, code);
    QFETCH(int, stored);
    QFETCH(int, chosen);
    TestEnvironment env;
    SetOption(env.db(), code, QStringLiteral("DATAN1 = %1").arg(stored));
    FrmSetting dialog(env.services);
    QWidget* widget = Control(&dialog, control.toLatin1().constData());
    if (auto* combo = qobject_cast<QComboBox*>(widget)) {
        QCOMPARE(combo->currentData().toInt(), stored);
        combo->setCurrentIndex(combo->findData(chosen));
    } else {
        auto* box = qobject_cast<QAbstractButton*>(widget);
        const bool checksOn = control != QLatin1String("OptMsgbox");
        QCOMPARE(box->isChecked(), (stored != 0) == checksOn);
        box->click();
    }
    QCOMPARE(Option(env.db(), code), QString::number(stored)); // nothing before OK
    Click(&dialog, "ComOK");
    QCOMPARE(dialog.result(), int(QDialog::Accepted));
    QCOMPARE(env.db().transactionDepth(), 0);
    QCOMPARE(Option(env.db(), code), QString::number(chosen));
}

void TestSettingOptions::alarmControlsFollowDelivery_data()
{
    QTest::addColumn<int>("delivery"); // 314: 0 message box, anything else balloon
    QTest::addColumn<bool>("sound");
    QTest::addColumn<QString>("states");
    QTest::newRow("message box, sound on") << 0 << true << "000";
    QTest::newRow("balloon, sound on") << 1 << true << "111";
    QTest::newRow("balloon, sound off") << 1 << false << "100";
    QTest::newRow("any non-zero is balloon") << 7 << true << "111";
}

void TestSettingOptions::alarmControlsFollowDelivery()
{
    QFETCH(int, delivery);
    QFETCH(bool, sound);
    QFETCH(QString, states);
    TestEnvironment env;
    SetOption(env.db(), 314, QStringLiteral("DATAN1 = %1").arg(delivery));
    SetOption(env.db(), 316, QStringLiteral("DATAN1 = %1").arg(sound ? 1 : 0));
    FrmSetting dialog(env.services);
    QCOMPARE(SoundStates(dialog), states);
    // Switching delivery: the box follows the option, the path follows the box.
    Click(&dialog, "OptMsgbox");
    QCOMPARE(SoundStates(dialog), QStringLiteral("000"));
    Click(&dialog, "OptBalloon");
    QCOMPARE(SoundStates(dialog), sound ? QStringLiteral("111") : QStringLiteral("100"));
    Click(&dialog, "ChkSound");
    QCOMPARE(SoundStates(dialog), sound ? QStringLiteral("100") : QStringLiteral("111"));
}

void TestSettingOptions::missingSoundFileKeepsDialogOpen()
{
    TestEnvironment env;
    SetOption(env.db(), 314, QStringLiteral("DATAN1 = 1"));
    FrmSetting dialog(env.services);
    dialog.show();
    Click(&dialog, "ChkSound");
    env.filePicker.answers.push_back(QStringLiteral("/no/such/ring.wav"));
    Click(&dialog, "ComSound");
    QCOMPARE(Control<QLineEdit>(&dialog, "TxtSoundPath")->text(), QStringLiteral("/no/such/ring.wav"));
    Click(&dialog, "ComOK");
    QVERIFY(dialog.isVisible());
    QCOMPARE(env.prompter.texts().size(), 1);
    QVERIFY(env.prompter.texts().front().contains(QStringLiteral("/no/such/ring.wav")));
    QCOMPARE(Option(env.db(), 316), QStringLiteral("0"));

    const QString wav = env.dir.filePath(QStringLiteral("ding.wav"));
    QFile file(wav);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    Control<QLineEdit>(&dialog, "TxtSoundPath")->setText(wav);
    Click(&dialog, "ComOK");
    QVERIFY(dialog.SettingCommitted());
    QCOMPARE(Option(env.db(), 316) + Option(env.db(), 315, "MEMO1"), QStringLiteral("1") + wav);
}

void TestSettingOptions::hotKeyRowsWithMaskButNoKeyAreLeft()
{
    TestEnvironment env;
    SetOption(env.db(), 82030, QStringLiteral("DATAN1 = 0, DATAN2 = 6"));
    FrmSetting dialog(env.services);
    WriteLog log(env.db(), QStringLiteral("TRNGENERAL"), QStringLiteral("CODE"));
    Click(&dialog, "ComOK");
    QCOMPARE(log.lines().filter(QStringLiteral("UPDATE 820")),
             QStringList({"UPDATE 82010", "UPDATE 82020", "UPDATE 82040", "UPDATE 82050"}));
    QCOMPARE(Option(env.db(), 82030, "DATAN2"), QStringLiteral("6"));
}

void TestSettingOptions::noteBesideCaptureField_data()
{
    QTest::addColumn<bool>("available");
    QTest::addColumn<bool>("heldElsewhere");
    QTest::addColumn<int>("listKey");     // the list action's key, with Ctrl+Alt
    QTest::addColumn<QString>("noteHas"); // empty: no note
    QTest::newRow("free") << true << false << 0 << "";
    QTest::newRow("held by another program") << true << true << 0 << "他のプログラム";
    QTest::newRow("same as another action") << true << false << 75 << "「スケジュール一覧」";
    QTest::newRow("no hot keys on this desktop") << false << false << 0 << "使用できません";
}

void TestSettingOptions::noteBesideCaptureField()
{
    QFETCH(bool, available);
    QFETCH(bool, heldElsewhere);
    QFETCH(int, listKey);
    QFETCH(QString, noteHas);
    TestEnvironment env;
    env.hotKeys.available = available;
    if (heldElsewhere)
        env.hotKeys.heldElsewhere.insert({75, 3});
    SetOption(env.db(), 82050, QStringLiteral("DATAN1 = %1, DATAN2 = 6").arg(listKey));
    FrmSetting dialog(env.services);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    auto* field = Control<QLineEdit>(&dialog, "TxtHotKey");
    field->setFocus();
    QTest::keyClick(field, Qt::Key_K, Qt::ControlModifier | Qt::AltModifier);
    auto* note = Control<QLabel>(&dialog, "LabHotKeyNote");
    QCOMPARE(note->isHidden(), noteHas.isEmpty());
    QVERIFY2(note->text().contains(noteHas), qPrintable(note->text()));
    // The row is stored whatever the note says.
    Click(&dialog, "ComOK");
    QCOMPARE(Option(env.db(), 82010), QStringLiteral("75"));
}

VERDALY_TEST(TestSettingOptions)
#include "TestSettingOptions.moc"
