// The files the settings dialog writes besides its rows: a backup and what a restore puts in
// place (nothing but a sound backup may ever replace the live data), and the login start.
#include "settings/BackupRestore.h"
#include "settings/FrmSetting.h"
#include "shell/AutoStart.h"
#include "store/DatabaseVersion.h"
#include "store/SqlText.h"
#include "support/TestKit.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

namespace {

QStringList Files(const QString& dir)
{
    return QDir(dir).entryList(QDir::Files, QDir::Name);
}

// Clicks a maintenance button of a fresh dialog with the question answered and the picker
// answering path; answers whether the dialog ended committed.
bool RunMaintenance(TestEnvironment& env, const char* button, const QString& path)
{
    env.prompter.answers = {PromptAnswer::Ok};
    env.filePicker.answers = {path};
    FrmSetting dialog(env.services);
    Click(&dialog, button);
    return dialog.SettingCommitted();
}

const QByteArray HandMade = "[Desktop Entry]\nType=Application\nName=mine\nExec=/opt/my/verdaly --autostart\n";

} // namespace

class TestSettingFiles final : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qunsetenv("XDG_CONFIG_HOME"); }

    void tickAndUntick_data()
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
    void tickAndUntick()
    {
        QFETCH(QByteArray, before);
        QFETCH(QString, shown);
        QFETCH(QString, close);
        QFETCH(QString, after);
        QTemporaryDir home;
        qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
        const QString path = home.filePath(QStringLiteral("autostart/org.halvern.verdaly.desktop"));
        // A plain file where the autostart folder belongs leaves nowhere to write.
        const QString target = before == "folder?" ? QFileInfo(path).path() : path;
        if (!before.isEmpty())
            QVERIFY(QDir().mkpath(QFileInfo(target).path()) && WriteFile(target, before));
        TestEnvironment env;
        FrmSetting dialog(env.services);
        QCOMPARE(Shown(&dialog, QStringLiteral("ChkAutoStart")), shown);
        if (!close.isEmpty()) {
            Click(&dialog, "ChkAutoStart");
            Type(&dialog, QStringLiteral("ChkStay"), QStringLiteral("1"));
        }
        Click(&dialog, close.isEmpty() ? "ComOK" : close.toLatin1().constData());
        const QByteArray entry = FileBytes(path);
        if (after == QLatin1String("=")) {
            QCOMPARE(entry, before);
        } else if (after == QLatin1String("ours")) {
            // The login runs this program's launcher, marked as a login start, in an entry the
            // desktop's own checker accepts.
            const QRegularExpressionMatch exec =
                QRegularExpression(QStringLiteral("^Exec=(/\\S+/verdaly) --autostart$"),
                                   QRegularExpression::MultilineOption)
                    .match(QString::fromUtf8(entry));
            QVERIFY2(exec.hasMatch() && QFileInfo(exec.captured(1)).isExecutable(), entry.constData());
            QCOMPARE(QProcess::execute(QStringLiteral("desktop-file-validate"), {path}), 0);
        } else {
            QCOMPARE(entry, QByteArray("<no file>"));
        }
        if (after == QLatin1String("refused")) {
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
        QTest::newRow("plain path") << "/usr/bin/verdaly" << "/usr/bin/verdaly";
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
        QTest::newRow("over an older file, version 11") << QByteArray(70000, 'x') << 11;
        QTest::newRow("version 10") << QByteArray() << 10;
    }
    void backupThenRestore()
    {
        QFETCH(QByteArray, existing);
        QFETCH(int, version);
        TestEnvironment env;
        StoreEntry(env.db(), Entry(1, "A1", "20261101", {}, {}, {}, QStringLiteral("会議 it's")));
        // A note as it shows now, with text never written to its row before.
        env.services.state.StickyNotes[3] =
            StickyNoteSlot{true, QStringLiteral("今の文字\n二行目"), 2, 1500, 3000, nullptr};
        QTemporaryDir elsewhere;
        const QString chosen = elsewhere.filePath(QStringLiteral("mine.bdc"));
        if (!existing.isNull())
            QVERIFY(WriteFile(chosen, existing));

        QVERIFY(RunMaintenance(env, "ComBackup", chosen));
        QCOMPARE(env.prompter.texts().last(), QStringLiteral("バックアップが正常に終了しました。"));
        // One self-contained file: nothing beside it that the copy would have needed.
        QCOMPARE(Files(elsewhere.path()), QStringList{QStringLiteral("mine.bdc")});
        {
            DatabaseConnection backup(chosen);
            QCOMPARE(Column(backup, 1, "BUSINESS"), QStringLiteral("会議 it's"));
            QCOMPARE(Lines(backup, QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAN1 = 3"),
                           {"DATAS3", "DATAN2", "MEMO1"}),
                     QStringList{QStringLiteral("1|1500|今の文字\n二行目")});
            DowngradeDatabase(backup, version);
        }
        // The program goes on with the live database, outside any transaction.
        QCOMPARE(env.db().transactionDepth(), 0);
        StoreEntry(env.db(), Entry(2, "A1", "20261102", {}, {}, {}, QStringLiteral("after the backup")));
        const QByteArray chosenBytes = FileBytes(chosen);

        QVERIFY(RunMaintenance(env, "ComReg", chosen));
        QVERIFY(env.services.state.RestoreDone);
        QCOMPARE(env.prompter.texts().last(),
                 QStringLiteral("バックアップを正常に復元しました。\n"
                                "アプリケーションを終了いたしますので再起動してください。"));
        QCOMPARE(FileBytes(chosen), chosenBytes);
        QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10")),
                 qint64(CurrentDatabaseVersion));
        QCOMPARE(Column(env.db(), 1, "BUSINESS"), QStringLiteral("会議 it's"));
        QCOMPARE(Column(env.db(), 2, "BUSINESS"), QStringLiteral("<no row>"));
        DatabaseConnection before(BeforeRestorePath(env.path()));
        QCOMPARE(Column(before, 2, "BUSINESS"), QStringLiteral("after the backup"));
        QCOMPARE(Files(env.dir.path()),
                 (QStringList{QStringLiteral("QMCalendar.mdb"), QStringLiteral("QMCalendar.mdb.before-restore")}));
    }

    void liveDataLeftAlone_data()
    {
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("questionOk");
        QTest::addColumn<QString>("picked"); // "": the picker cancelled; a pattern; or the file made as named
        // clang-format off
        QTest::newRow("backup question") << "ComBackup" << false << "x.bdc";
        QTest::newRow("backup picker") << "ComBackup" << true << "";
        QTest::newRow("restore question") << "ComReg" << false << "copy";
        QTest::newRow("restore picker") << "ComReg" << true << "";
        QTest::newRow("restore picker pattern") << "ComReg" << true << "*.bdc";
        QTest::newRow("junk bytes") << "ComReg" << true << "random";
        QTest::newRow("empty file") << "ComReg" << true << "empty";
        QTest::newRow("database without TRNGENERAL") << "ComReg" << true << "foreign";
        QTest::newRow("no version row") << "ComReg" << true << "unversioned";
        QTest::newRow("backup cut to half") << "ComReg" << true << "truncated";
        // clang-format on
    }
    void liveDataLeftAlone()
    {
        QFETCH(QString, button);
        QFETCH(bool, questionOk);
        QFETCH(QString, picked);
        TestEnvironment env;
        QTemporaryDir elsewhere;
        const bool refused = picked != "copy" && button == "ComReg" && questionOk && !picked.isEmpty() &&
                             !picked.startsWith(QLatin1Char('*'));
        const QString chosen =
            picked.isEmpty() || picked.startsWith(QLatin1Char('*')) ? picked : elsewhere.filePath(picked + ".bdc");
        if (picked == "random") {
            QVERIFY(WriteFile(chosen, QByteArray(8192, '\xA7')));
        } else if (picked == "empty") {
            QVERIFY(WriteFile(chosen, QByteArray("")));
        } else if (picked == "foreign") {
            DatabaseConnection foreign(chosen, DatabaseConnection::OpenMode::CreateIfMissing);
            foreign.ExecuteSql(QStringLiteral("CREATE TABLE TRNSCHTSK (ID INTEGER)"));
        } else if (picked == "copy" || picked == "unversioned" || picked == "truncated") {
            // A byte copy of the live database, taken with the connection closed.
            env.db().Close();
            QVERIFY(CopyFileOverwrite(env.path(), chosen));
            QVERIFY(env.db().Reopen());
            if (picked == "unversioned")
                DatabaseConnection(chosen).ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 10"));
            QFile file(chosen);
            if (picked == "truncated")
                QVERIFY(file.resize(file.size() / 2));
        }
        const QByteArray chosenBytes = FileBytes(chosen);
        const QStringList filesBefore = Files(env.dir.path());
        FrmSetting dialog(env.services);
        // A design change the dialog holds uncommitted.
        env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = 255 WHERE SETNUM = 0"));
        const QByteArray liveBytes = FileBytes(env.path());
        env.prompter.answers = {questionOk ? PromptAnswer::Ok : PromptAnswer::Cancel};
        env.filePicker.answers = {chosen};

        Click(&dialog, button.toLatin1().constData());
        QCOMPARE(env.prompter.shown.size(), refused ? 2 : 1);
        if (refused) {
            QCOMPARE(env.prompter.texts().last(),
                     QStringLiteral("バックアップファイルが正しくありません。復元をキャンセルします。"));
            QCOMPARE(env.prompter.shown.last().icon, PromptIcon::Critical);
        }
        QCOMPARE(env.filePicker.requests.size(), questionOk ? 1 : 0);
        QCOMPARE(FileBytes(chosen), chosenBytes);
        // Beside the live file only the journal of the dialog's change, while it is kept.
        QCOMPARE(Files(env.dir.path()),
                 filesBefore + (refused ? QStringList() : QStringList{"QMCalendar.mdb-journal"}));
        QCOMPARE(FileBytes(env.path()), liveBytes);
        QVERIFY(!dialog.SettingCommitted());
        QVERIFY(!env.services.state.RestoreDone);
        // Still usable in a transaction of the dialog's: the same one with its change unless a
        // restore was tried, which gives up the change first.
        QCOMPARE(env.db().transactionDepth(), 1);
        QCOMPARE(env.count(QStringLiteral("TRNCOLOR"), QStringLiteral("SETNUM = 0 AND BACKCOLOR <> 255")) > 0, refused);
    }
};

VERDALY_TEST(TestSettingFiles)
#include "TestSettingFiles.moc"
