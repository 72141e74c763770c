// "ログイン時に起動": the box shows what the autostart folder holds, OK writes or removes the
// entry there, and an entry the desktop cannot use is never what OK leaves behind.
#include "settings/FrmSetting.h"
#include "shell/AutoStart.h"
#include "support/TestKit.h"

#include <QAbstractButton>
#include <QProcess>
#include <QStandardPaths>
#include <QtTest>

namespace {

// Points the autostart folder at a temporary config home for one test.
class ConfigHome final
{
public:
    ConfigHome() : m_old(qgetenv("XDG_CONFIG_HOME")) { qputenv("XDG_CONFIG_HOME", dir.path().toUtf8()); }
    ~ConfigHome() { qputenv("XDG_CONFIG_HOME", m_old); }
    QString entryPath() const { return dir.filePath(QStringLiteral("autostart/org.halvern.verdaly.desktop")); }
    QTemporaryDir dir;

private:
    QByteArray m_old;
};

QByteArray ReadFile(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<none>");
}

void WriteFile(const QString& path, const QByteArray& bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QString KeyValue(const QByteArray& entry, const QString& key)
{
    for (const QString& line : QString::fromUtf8(entry).split(QLatin1Char('\n'))) {
        if (line.startsWith(key + QLatin1Char('=')))
            return line.mid(key.size() + 1);
    }
    return QStringLiteral("<missing>");
}

// What the desktop's own checker says of the file ("" when it passes).
QString DesktopFileProblems(const QString& path)
{
    const QString tool = QStandardPaths::findExecutable(QStringLiteral("desktop-file-validate"));
    if (tool.isEmpty())
        return QStringLiteral("desktop-file-validate is missing: scripts/deps.sh installs it");
    QProcess validate;
    validate.start(tool, {path});
    validate.waitForFinished(10000);
    return validate.exitCode() == 0 ? QString() : QString::fromUtf8(validate.readAllStandardOutput());
}

const QByteArray HandMade = "[Desktop Entry]\nType=Application\nName=mine\nExec=/opt/my/verdaly --autostart\n";

} // namespace

class TestSettingAutoStart final : public QObject
{
    Q_OBJECT

private slots:
    void tickAndUntick_data();
    void tickAndUntick();
    void unwritableFolderKeepsTheDialog();
    void execArgument_data();
    void execArgument();
};

void TestSettingAutoStart::tickAndUntick_data()
{
    QTest::addColumn<QByteArray>("before"); // the entry before the dialog opens; empty: none
    QTest::addColumn<bool>("shown");        // the box as the dialog opens
    QTest::addColumn<bool>("click");
    QTest::addColumn<QString>("close"); // "ComOK" or "ComCancel"
    QTest::addColumn<QString>("after"); // "ours", "none" or "=" (byte for byte as before)
    // clang-format off
    QTest::newRow("ticked, OK") << QByteArray() << false << true << "ComOK" << "ours";
    QTest::newRow("ticked, cancelled") << QByteArray() << false << true << "ComCancel" << "none";
    QTest::newRow("unticked, OK") << HandMade << true << true << "ComOK" << "none";
    QTest::newRow("unticked, cancelled") << HandMade << true << true << "ComCancel" << "=";
    QTest::newRow("entry edited by hand, box untouched") << HandMade << true << false << "ComOK" << "=";
    QTest::newRow("entry hidden by the desktop shows unticked") << HandMade + "Hidden=true\n" << false << false << "ComOK" << "=";
    QTest::newRow("entry switched off by the session, ticked again") << HandMade + "X-GNOME-Autostart-enabled=false\n" << false << true << "ComOK" << "ours";
    QTest::newRow("Hidden of another group does not count") << HandMade + "[Desktop Action x]\nHidden=true\n" << true << false << "ComOK" << "=";
    // clang-format on
}

void TestSettingAutoStart::tickAndUntick()
{
    QFETCH(QByteArray, before);
    QFETCH(bool, shown);
    QFETCH(bool, click);
    QFETCH(QString, close);
    QFETCH(QString, after);
    ConfigHome home;
    if (!before.isEmpty())
        WriteFile(home.entryPath(), before);
    TestEnvironment env;
    {
        FrmSetting dialog(env.services);
        auto* box = Control<QAbstractButton>(&dialog, "ChkAutoStart");
        QCOMPARE(box->isChecked(), shown);
        if (click)
            box->click();
        Click(&dialog, close.toLatin1().constData());
    }
    const QByteArray entry = ReadFile(home.entryPath());
    if (after == QLatin1String("none")) {
        QVERIFY(!QFileInfo::exists(home.entryPath()));
    } else if (after == QLatin1String("=")) {
        QCOMPARE(entry, before);
    } else {
        // The login runs this program's launcher, marked as a login start.
        const QStringList exec = KeyValue(entry, QStringLiteral("Exec")).split(QLatin1Char(' '));
        QCOMPARE(exec.size(), 2);
        QVERIFY2(QFileInfo(exec.at(0)).isExecutable(), qPrintable(exec.at(0)));
        QCOMPARE(QFileInfo(exec.at(0)).fileName(), QStringLiteral("verdaly"));
        QCOMPARE(exec.at(1), QStringLiteral("--autostart"));
        QCOMPARE(KeyValue(entry, QStringLiteral("TryExec")), exec.at(0));
        QCOMPARE(KeyValue(entry, QStringLiteral("Hidden")), QStringLiteral("<missing>"));
        QCOMPARE(KeyValue(entry, QStringLiteral("X-GNOME-Autostart-enabled")), QStringLiteral("true"));
        const QString problems = DesktopFileProblems(home.entryPath());
        QVERIFY2(problems.isEmpty(), qPrintable(problems));
    }
    // The next dialog reads back what the file now says.
    FrmSetting again(env.services);
    QCOMPARE(Control<QAbstractButton>(&again, "ChkAutoStart")->isChecked(),
             after == QLatin1String("ours") || (after == QLatin1String("=") && shown));
}

void TestSettingAutoStart::unwritableFolderKeepsTheDialog()
{
    ConfigHome home;
    // A plain file where the autostart folder belongs: nothing can be written under it.
    WriteFile(home.dir.filePath(QStringLiteral("autostart")), "not a folder");
    TestEnvironment env;
    FrmSetting dialog(env.services);
    auto* box = Control<QAbstractButton>(&dialog, "ChkAutoStart");
    box->click();
    Type(&dialog, QStringLiteral("ChkStay"), QStringLiteral("1"));
    Click(&dialog, "ComOK");
    QCOMPARE(env.prompter.shown.size(), 1);
    QVERIFY2(env.prompter.shown.front().text.contains(home.entryPath()), qPrintable(env.prompter.shown.front().text));
    QVERIFY(!dialog.SettingCommitted());
    QVERIFY(box->isChecked());
    QCOMPARE(Shown(&dialog, QStringLiteral("ChkStay")), QStringLiteral("1"));

    // Once the folder can be made, the same OK goes through with everything as chosen.
    QVERIFY(QFile::remove(home.dir.filePath(QStringLiteral("autostart"))));
    Click(&dialog, "ComOK");
    QVERIFY(dialog.SettingCommitted());
    QVERIFY(QFileInfo(home.entryPath()).isFile());
    QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 311")), 1);
}

void TestSettingAutoStart::execArgument_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QString>("written"); // as it stands in the file
    // clang-format off
    QTest::newRow("plain path") << "/usr/bin/verdaly" << "/usr/bin/verdaly";
    QTest::newRow("blank") << "/home/a b/verdaly" << "\"/home/a b/verdaly\"";
    QTest::newRow("dollar") << "/opt/$HOME/verdaly" << "\"/opt/\\\\$HOME/verdaly\"";
    QTest::newRow("double quote") << "/x/\"q\"/verdaly" << "\"/x/\\\\\"q\\\\\"/verdaly\"";
    QTest::newRow("backslash") << "/x\\y/verdaly" << "\"/x\\\\\\\\y/verdaly\"";
    QTest::newRow("percent is no field code") << "/data/100%f" << "/data/100%%f";
    QTest::newRow("apostrophe") << "/home/it's/verdaly" << "\"/home/it's/verdaly\"";
    QTest::newRow("Japanese folder") << "/home/予定/verdaly" << "/home/予定/verdaly";
    // clang-format on
}

void TestSettingAutoStart::execArgument()
{
    QFETCH(QString, argument);
    QFETCH(QString, written);
    QCOMPARE(DesktopExecArgument(argument), written);

    // The desktop's checker agrees the line is well formed.
    ConfigHome home;
    WriteFile(home.entryPath(), AutoStartEntry({argument, QStringLiteral("/data/x y")}).toUtf8());
    const QString problems = DesktopFileProblems(home.entryPath());
    QVERIFY2(problems.isEmpty(), qPrintable(problems));
}

VERDALY_TEST(TestSettingAutoStart)
#include "TestSettingAutoStart.moc"
