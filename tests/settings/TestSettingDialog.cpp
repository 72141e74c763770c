// The settings dialog on its own: what each design spot offers, the pickers written at once,
// the reset, closing without OK undoing it all; what the options load and what OK writes, and
// the alarm controls with the sound file.
#include "settings/FrmSetting.h"
#include "support/TestKit.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QFrame>
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

QStringList DesignRows(DatabaseConnection& db)
{
    return Lines(db, QStringLiteral("SELECT * FROM TRNCOLOR ORDER BY CODE, SETNUM"),
                 {"CODE", "SETNUM", "SPOT", "SETBCOLOR", "SETFONT", "SETFCOLOR", "BACKCOLOR", "FOREFONT", "FSIZE",
                  "FBOLD", "FITALIC", "FORECOLOR", "UPDTIME"});
}

void ShowSpot(FrmSetting& dialog, int code)
{
    auto* spots = Control<QComboBox>(&dialog, "CmbSpot");
    spots->setCurrentIndex(spots->findData(code));
    QCOMPARE(spots->currentData().toInt(), code);
}

QColor Swatch(FrmSetting& dialog, const char* name)
{
    return Control<QFrame>(&dialog, name)->palette().color(QPalette::Window);
}

} // namespace

class TestSettingDialog final : public QObject
{
    Q_OBJECT

private slots:
    void spotOffersWhatItHas_data()
    {
        QTest::addColumn<QString>("flags"); // SETBCOLOR SETFONT SETFCOLOR
        QTest::addColumn<QString>("style"); // FBOLD FITALIC
        QTest::addColumn<QString>("states");
        QTest::addColumn<QString>("font");
        // The spot shown before (the title bar) has "IPAGothic", bold, size 14.
        // clang-format off
        QTest::newRow("everything, plain") << "111" << "00" << "11|11111|11" << "Mincho";
        QTest::newRow("bold") << "111" << "10" << "11|11111|11" << "Mincho - 太字";
        QTest::newRow("italic") << "111" << "01" << "11|11111|11" << "Mincho - 斜体";
        QTest::newRow("bold italic") << "111" << "11" << "11|11111|11" << "Mincho - 太字 斜体";
        QTest::newRow("text colour only") << "001" << "00" << "00|00000|11" << "IPAGothic - 太字";
        QTest::newRow("background only") << "100" << "11" << "11|00000|00" << "IPAGothic - 太字";
        QTest::newRow("nothing, flags not 1") << "2 0" << "00" << "00|00000|00" << "IPAGothic - 太字";
        // clang-format on
    }
    void spotOffersWhatItHas()
    {
        QFETCH(QString, flags);
        QFETCH(QString, style);
        QFETCH(QString, states);
        QFETCH(QString, font);
        TestEnvironment env;
        env.db().ExecuteSql(
            QStringLiteral("UPDATE TRNCOLOR SET FOREFONT = 'IPAGothic', FSIZE = 14, FBOLD = 1 WHERE CODE = 10"));
        // Colours are stored blue-green-red: 0x332211 is red 0x11, green 0x22, blue 0x33.
        env.db().ExecuteSql(
            QStringLiteral("UPDATE TRNCOLOR SET SETBCOLOR = '%1', SETFONT = '%2', SETFCOLOR = '%3', "
                           "BACKCOLOR = 3351057, FORECOLOR = 6706500, FOREFONT = 'Mincho', "
                           "FSIZE = 10.5, FBOLD = %4, FITALIC = %5 WHERE CODE = 90")
                .arg(flags.mid(0, 1), flags.mid(1, 1), flags.mid(2, 1), style.mid(0, 1), style.mid(1, 1)));
        FrmSetting dialog(env.services);
        ShowSpot(dialog, 10);
        ShowSpot(dialog, 90);
        QString shown;
        for (const char* name : {"LabBackColor", "ComBackColor", "|", "LabFont", "LabSize", "TxtFont", "TxtSize",
                                 "ComFont", "|", "LabForeColor", "ComForeColor"})
            shown += *name == '|' ? QStringLiteral("|") : Control(&dialog, name)->isEnabled() ? "1" : "0";
        QCOMPARE(shown, states);
        // A spot without a font leaves the previous spot's font in view, greyed.
        QCOMPARE(Shown(&dialog, QStringLiteral("TxtFont")), font);
        QCOMPARE(Shown(&dialog, QStringLiteral("TxtSize")), flags.at(1) == '1' ? "10.5" : "14");
        const QColor dialogColour = dialog.palette().color(QPalette::Window);
        QCOMPARE(Swatch(dialog, "ShaBackColor"), flags.at(0) == '1' ? QColor(0x11, 0x22, 0x33) : dialogColour);
        QCOMPARE(Swatch(dialog, "ShaForeColor"), flags.at(2) == '1' ? QColor(0x44, 0x55, 0x66) : dialogColour);
    }

    void writtenAtOnceUndoneWithoutOk_data()
    {
        QTest::addColumn<QString>("how");
        QTest::newRow("OK") << "ok";
        QTest::newRow("cancel button") << "cancel";
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
        const int spots = env.count(QStringLiteral("TRNCOLOR"), differing);
        QVERIFY(spots > 10);
        const QStringList before = DesignRows(env.db());
        FrmSetting dialog(env.services);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        ShowSpot(dialog, 10);
        WriteLog log(env.db(), QStringLiteral("TRNCOLOR"), QStringLiteral("CODE"));

        // Each picker starts from the spot's own; a cancelled one writes the colour it had.
        env.colorPicker.answers.push_back(QColor(0x12, 0x34, 0x56));
        Click(&dialog, "ComBackColor");
        Click(&dialog, "ComForeColor");
        const QColor start(0x0C, 0x0B, 0x0A);
        QCOMPARE(env.colorPicker.requests, QList<QColor>({start, start}));
        QCOMPARE(Swatch(dialog, "ShaBackColor"), QColor(0x12, 0x34, 0x56));
        QCOMPARE(Swatch(dialog, "ShaForeColor"), start);
        QCOMPARE(log.lines(), QStringList({"UPDATE 10", "UPDATE 10"}));
        // The font picker starts from the font without its style words; a cancel changes nothing.
        Click(&dialog, "ComFont");
        env.fontPicker.answers.push_back(FontChoice{QStringLiteral("O'Brien Sans"), 12.25, true, true});
        Click(&dialog, "ComFont");
        QCOMPARE(env.fontPicker.requests.size(), 2);
        const FontChoice asked = env.fontPicker.requests.at(1);
        QCOMPARE(asked.name, QStringLiteral("IPAGothic"));
        QCOMPARE(asked.size, 9.5);
        QVERIFY(!asked.bold && asked.italic);
        QCOMPARE(ShownAll(&dialog, {"TxtFont=", "TxtSize="}),
                 QStringList({"TxtFont=O'Brien Sans - 太字 斜体", "TxtSize=12.25"}));
        QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM TRNCOLOR WHERE CODE = 10"),
                       {"BACKCOLOR", "FORECOLOR", "FOREFONT", "FSIZE", "FBOLD", "FITALIC"}),
                 QStringList({"5649426|658188|O'Brien Sans|12.25|1|1"}));

        // The reset asks first, with Cancel as the default answer, and then touches every spot.
        env.prompter.answers = {PromptAnswer::Cancel, PromptAnswer::Ok};
        Click(&dialog, "ComDef");
        QCOMPARE(env.count(QStringLiteral("TRNCOLOR"), differing), spots);
        Click(&dialog, "ComDef");
        QCOMPARE(env.prompter.shown.size(), 2);
        QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
        QCOMPARE(env.count(QStringLiteral("TRNCOLOR"), differing), 0);

        if (how == QLatin1String("ok"))
            Click(&dialog, "ComOK");
        else if (how == QLatin1String("cancel"))
            Click(&dialog, "ComCancel");
        else if (how == QLatin1String("escape"))
            QTest::keyClick(Control(&dialog, "CmbSpot"), Qt::Key_Escape);
        else
            dialog.close();
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.SettingCommitted(), how == QLatin1String("ok"));
        QCOMPARE(env.db().transactionDepth(), 0);
        if (how == QLatin1String("ok"))
            QCOMPARE(env.count(QStringLiteral("TRNCOLOR"), differing), 0);
        else
            QCOMPARE(DesignRows(env.db()), before);
    }

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
};

VERDALY_TEST(TestSettingDialog)
#include "TestSettingDialog.moc"
