// The design frame of the settings dialog: what each spot offers, the colour and font
// pickers written at once, the reset of every spot, and closing without OK undoing it all.
#include "settings/FrmSetting.h"
#include "support/TestKit.h"

#include <QComboBox>
#include <QFrame>
#include <QLineEdit>
#include <QtTest>

class TestSettingDesign final : public QObject
{
    Q_OBJECT

private slots:
    void spotOffersWhatItHas_data();
    void spotOffersWhatItHas();
    void colourWrittenAtOnce_data();
    void colourWrittenAtOnce();
    void fontWrittenAtOnce();
    void resetTouchesEverySpot_data();
    void resetTouchesEverySpot();
    void closingWithoutOkRestoresDesign_data();
    void closingWithoutOkRestoresDesign();
};

namespace {

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

void TestSettingDesign::spotOffersWhatItHas_data()
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

void TestSettingDesign::spotOffersWhatItHas()
{
    QFETCH(QString, flags);
    QFETCH(QString, style);
    QFETCH(QString, states);
    QFETCH(QString, font);
    TestEnvironment env;
    env.db().ExecuteSql(
        QStringLiteral("UPDATE TRNCOLOR SET FOREFONT = 'IPAGothic', FSIZE = 14, FBOLD = 1 WHERE CODE = 10"));
    // Colours are stored blue-green-red: 0x332211 is red 0x11, green 0x22, blue 0x33.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET SETBCOLOR = '%1', SETFONT = '%2', SETFCOLOR = '%3', "
                                       "BACKCOLOR = 3351057, FORECOLOR = 6706500, FOREFONT = 'Mincho', "
                                       "FSIZE = 10.5, FBOLD = %4, FITALIC = %5 WHERE CODE = 90")
                            .arg(flags.mid(0, 1), flags.mid(1, 1), flags.mid(2, 1), style.mid(0, 1), style.mid(1, 1)));
    FrmSetting dialog(env.services);
    ShowSpot(dialog, 10);
    ShowSpot(dialog, 90);
    QString shown;
    for (const char* name : {"LabBackColor", "ComBackColor", "|", "LabFont", "LabSize", "TxtFont", "TxtSize", "ComFont",
                             "|", "LabForeColor", "ComForeColor"})
        shown += *name == '|' ? QStringLiteral("|") : Control(&dialog, name)->isEnabled() ? "1" : "0";
    QCOMPARE(shown, states);
    // A spot without a font leaves the previous spot's font in view, greyed.
    QCOMPARE(Control<QLineEdit>(&dialog, "TxtFont")->text(), font);
    QCOMPARE(Control<QLineEdit>(&dialog, "TxtSize")->text(), flags.at(1) == '1' ? "10.5" : "14");
    const QColor dialogColour = dialog.palette().color(QPalette::Window);
    QCOMPARE(Swatch(dialog, "ShaBackColor"), flags.at(0) == '1' ? QColor(0x11, 0x22, 0x33) : dialogColour);
    QCOMPARE(Swatch(dialog, "ShaForeColor"), flags.at(2) == '1' ? QColor(0x44, 0x55, 0x66) : dialogColour);
}

void TestSettingDesign::colourWrittenAtOnce_data()
{
    QTest::addColumn<QString>("which"); // Back or Fore
    QTest::addColumn<QColor>("answer"); // invalid: the picker is cancelled
    QTest::addColumn<int>("stored");
    // clang-format off
    QTest::newRow("background") << "Back" << QColor(0x12, 0x34, 0x56) << 0x563412;
    QTest::newRow("text") << "Fore" << QColor(0xFE, 0x01, 0x80) << 0x8001FE;
    QTest::newRow("background cancelled") << "Back" << QColor() << 0x0A0B0C;
    // clang-format on
}

void TestSettingDesign::colourWrittenAtOnce()
{
    QFETCH(QString, which);
    QFETCH(QColor, answer);
    QFETCH(int, stored);
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = 658188, FORECOLOR = 658188 WHERE CODE = 10"));
    FrmSetting dialog(env.services);
    ShowSpot(dialog, 10);
    WriteLog log(env.db(), QStringLiteral("TRNCOLOR"), QStringLiteral("CODE"));
    if (answer.isValid())
        env.colorPicker.answers.push_back(answer);
    Click(&dialog, ("Com" + which + "Color").toLatin1().constData());

    const QColor start(0x0C, 0x0B, 0x0A);
    QCOMPARE(env.colorPicker.requests, QList<QColor>({start}));
    QCOMPARE(Swatch(dialog, ("Sha" + which + "Color").toLatin1().constData()), answer.isValid() ? answer : start);
    // Written before OK, and also after a cancel (then with the colour it had).
    QCOMPARE(log.lines(), QStringList({"UPDATE 10"}));
    const QString column = which.toUpper() + QStringLiteral("COLOR");
    const QString sql = QStringLiteral("SELECT * FROM TRNCOLOR WHERE CODE = 10");
    QCOMPARE(Lines(env.db(), sql, {column.toLatin1().constData()}), QStringList({QString::number(stored)}));
    Click(&dialog, "ComOK");
    QCOMPARE(env.db().transactionDepth(), 0);
    QCOMPARE(Lines(env.db(), sql, {column.toLatin1().constData()}), QStringList({QString::number(stored)}));
}

void TestSettingDesign::fontWrittenAtOnce()
{
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET FOREFONT = 'IPAGothic', FSIZE = 9.5, FBOLD = 0, "
                                       "FITALIC = 1 WHERE CODE = 20"));
    FrmSetting dialog(env.services);
    ShowSpot(dialog, 20);
    Click(&dialog, "ComFont"); // cancelled: nothing changes
    env.fontPicker.answers.push_back(FontChoice{QStringLiteral("O'Brien Sans"), 12.25, true, true});
    Click(&dialog, "ComFont");

    QCOMPARE(env.fontPicker.requests.size(), 2);
    const FontChoice asked = env.fontPicker.requests.at(1);
    // The picker starts from the font without its style words.
    QCOMPARE(asked.name, QStringLiteral("IPAGothic"));
    QCOMPARE(asked.size, 9.5);
    QVERIFY(!asked.bold && asked.italic);
    QCOMPARE(Control<QLineEdit>(&dialog, "TxtFont")->text(), QStringLiteral("O'Brien Sans - 太字 斜体"));
    QCOMPARE(Control<QLineEdit>(&dialog, "TxtSize")->text(), QStringLiteral("12.25"));
    QCOMPARE(Lines(env.db(), QStringLiteral("SELECT * FROM TRNCOLOR WHERE CODE = 20"),
                   {"FOREFONT", "FSIZE", "FBOLD", "FITALIC"}),
             QStringList({"O'Brien Sans|12.25|1|1"}));
}

void TestSettingDesign::resetTouchesEverySpot_data()
{
    QTest::addColumn<bool>("confirmed");
    // clang-format off
    QTest::newRow("confirmed") << true;
    QTest::newRow("declined") << false;
    // clang-format on
}

void TestSettingDesign::resetTouchesEverySpot()
{
    QFETCH(bool, confirmed);
    TestEnvironment env;
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = 1, FOREFONT = 'x', FSIZE = 20, FBOLD = 1, "
                                       "FITALIC = 1, FORECOLOR = 2"));
    const QString differing =
        QStringLiteral("SETNUM = 0 AND NOT (BACKCOLOR = DBACKCOLOR AND FOREFONT = DFOREFONT AND FSIZE = DFSIZE AND "
                       "FBOLD = DFBOLD AND FITALIC = DFITALIC AND FORECOLOR = DFORECOLOR)");
    const int spots = env.count(QStringLiteral("TRNCOLOR"), differing);
    QVERIFY(spots > 10);
    FrmSetting dialog(env.services);
    ShowSpot(dialog, 30);
    env.prompter.answers.push_back(confirmed ? PromptAnswer::Ok : PromptAnswer::Cancel);
    Click(&dialog, "ComDef");
    QCOMPARE(env.prompter.shown.size(), 1);
    QCOMPARE(env.prompter.shown.front().defaultAnswer, PromptAnswer::Cancel);
    Click(&dialog, "ComOK");
    QCOMPARE(env.count(QStringLiteral("TRNCOLOR"), differing), confirmed ? 0 : spots);
}

void TestSettingDesign::closingWithoutOkRestoresDesign_data()
{
    QTest::addColumn<QString>("how");
    // clang-format off
    QTest::newRow("cancel button") << "cancel";
    QTest::newRow("escape key") << "escape";
    QTest::newRow("close box") << "close";
    // clang-format on
}

void TestSettingDesign::closingWithoutOkRestoresDesign()
{
    QFETCH(QString, how);
    TestEnvironment env;
    // A design of the user's own, which the reset would undo.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET FORECOLOR = 12345, FSIZE = 13.5 WHERE CODE = 30"));
    const QByteArray before = DesignRows(env.db()).join(QLatin1Char('\n')).toUtf8();
    {
        FrmSetting dialog(env.services);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        env.colorPicker.answers.push_back(QColor(1, 2, 3));
        Click(&dialog, "ComBackColor");
        env.fontPicker.answers.push_back(FontChoice{QStringLiteral("Changed"), 30, true, true});
        Click(&dialog, "ComFont");
        Click(&dialog, "ComDef");
        QVERIFY(DesignRows(env.db()).join(QLatin1Char('\n')).toUtf8() != before);
        if (how == QLatin1String("cancel"))
            Click(&dialog, "ComCancel");
        else if (how == QLatin1String("escape"))
            QTest::keyClick(Control(&dialog, "CmbSpot"), Qt::Key_Escape);
        else
            dialog.close();
        QVERIFY(!dialog.isVisible());
        QVERIFY(!dialog.SettingCommitted());
    }
    QCOMPARE(env.db().transactionDepth(), 0);
    QCOMPARE(DesignRows(env.db()).join(QLatin1Char('\n')).toUtf8(), before);
}

VERDALY_TEST(TestSettingDesign)
#include "TestSettingDesign.moc"
