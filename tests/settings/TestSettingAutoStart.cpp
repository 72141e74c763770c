// "ログイン時に起動": the box shows what the autostart folder holds, OK writes or removes the
// entry there, and a write that fails keeps the dialog open with every choice as made.
#include "settings/FrmSetting.h"
#include "shell/AutoStart.h"
#include "support/TestKit.h"

#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

namespace {

const QByteArray HandMade = "[Desktop Entry]\nType=Application\nName=mine\nExec=/opt/my/verdaly --autostart\n";

void WriteFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
}

} // namespace

class TestSettingAutoStart final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("XDG_CONFIG_HOME"); }
    void tickAndUntick_data();
    void tickAndUntick();
    void execArgument_data();
    void execArgument();
};

void TestSettingAutoStart::tickAndUntick_data()
{
    QTest::addColumn<QByteArray>("before"); // the entry before the dialog opens; "folder?": cannot be made
    QTest::addColumn<QString>("shown");     // ChkAutoStart as the dialog opens
    QTest::addColumn<QString>("close");     // "ComOK" or "ComCancel"
    QTest::addColumn<QString>("after");     // "ours", "none", "=" (byte for byte as before) or "refused"
    // clang-format off
    QTest::newRow("ticked, OK") << QByteArray() << "0" << "ComOK" << "ours";
    QTest::newRow("ticked, cancelled") << QByteArray() << "0" << "ComCancel" << "none";
    QTest::newRow("unticked, OK") << HandMade << "1" << "ComOK" << "none";
    QTest::newRow("entry hidden by the desktop shows unticked") << HandMade + "Hidden=true\n" << "0" << "" << "=";
    QTest::newRow("entry switched off by the session, ticked again") << HandMade + "X-GNOME-Autostart-enabled=false\n" << "0" << "ComOK" << "ours";
    QTest::newRow("entry edited by hand, box untouched") << HandMade << "1" << "" << "=";
    QTest::newRow("folder cannot be made") << QByteArray("folder?") << "0" << "ComOK" << "refused";
    // clang-format on
}

void TestSettingAutoStart::tickAndUntick()
{
    QFETCH(QByteArray, before);
    QFETCH(QString, shown);
    QFETCH(QString, close);
    QFETCH(QString, after);
    QTemporaryDir home;
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    const QString path = home.filePath(QStringLiteral("autostart/org.halvern.verdaly.desktop"));
    // A plain file where the autostart folder belongs leaves nowhere to write.
    if (!before.isEmpty())
        WriteFile(before == "folder?" ? QFileInfo(path).path() : path, before);
    TestEnvironment env;
    FrmSetting dialog(env.services);
    QCOMPARE(Shown(&dialog, QStringLiteral("ChkAutoStart")), shown);
    if (!close.isEmpty()) {
        Click(&dialog, "ChkAutoStart");
        Type(&dialog, QStringLiteral("ChkStay"), QStringLiteral("1"));
    }
    Click(&dialog, close.isEmpty() ? "ComOK" : close.toLatin1().constData());
    QFile file(path);
    const QByteArray entry = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    QCOMPARE(file.exists(), after == QLatin1String("ours") || after == QLatin1String("="));
    if (after == QLatin1String("=")) {
        QCOMPARE(entry, before);
    } else if (after == QLatin1String("ours")) {
        // The login runs this program's launcher, marked as a login start, in an entry the
        // desktop's own checker accepts.
        const QRegularExpressionMatch exec = QRegularExpression(QStringLiteral("^Exec=(/\\S+/verdaly) --autostart$"),
                                                                QRegularExpression::MultilineOption)
                                                 .match(QString::fromUtf8(entry));
        QVERIFY2(exec.hasMatch() && QFileInfo(exec.captured(1)).isExecutable(), entry.constData());
        QCOMPARE(QProcess::execute(QStringLiteral("desktop-file-validate"), {path}), 0);
    } else if (after == QLatin1String("refused")) {
        QVERIFY2(env.prompter.texts().value(0).contains(path), qPrintable(env.prompter.texts().value(0)));
        QVERIFY(!dialog.SettingCommitted());
        QCOMPARE(ShownAll(&dialog, {"ChkAutoStart=", "ChkStay="}), QStringList({"ChkAutoStart=1", "ChkStay=1"}));
    }
}

void TestSettingAutoStart::execArgument_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("written"); // as it stands in the file
    QTest::newRow("plain path") << "/usr/bin/verdaly"
                                << "/usr/bin/verdaly";
    QTest::newRow("blank") << "/home/a b/verdaly"
                           << "\"/home/a b/verdaly\"";
    QTest::newRow("dollar") << "/opt/$HOME/verdaly"
                            << "\"/opt/\\\\$HOME/verdaly\"";
    QTest::newRow("backslash") << "/x\\y/verdaly"
                               << "\"/x\\\\\\\\y/verdaly\"";
    QTest::newRow("percent is no field code") << "/data/100%f"
                                              << "/data/100%%f";
}

void TestSettingAutoStart::execArgument()
{
    QFETCH(QString, argument);
    QFETCH(QString, written);
    QCOMPARE(DesktopExecArgument(argument), written);
}

VERDALY_TEST(TestSettingAutoStart)
#include "TestSettingAutoStart.moc"
