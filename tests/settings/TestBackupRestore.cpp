// Backup and restore from the settings dialog: what a backup holds, what a restore puts in
// place, and that nothing but a sound backup can ever replace the live data.
#include "settings/BackupRestore.h"
#include "settings/FrmSetting.h"
#include "store/DatabaseVersion.h"
#include "store/SqlText.h"
#include "support/TestKit.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QtTest>

class TestBackupRestore final : public QObject
{
    Q_OBJECT

private slots:
    void backupThenRestore_data();
    void backupThenRestore();
    void cancelChangesNothing_data();
    void cancelChangesNothing();
    void refusedFileLeavesLiveDataAlone_data();
    void refusedFileLeavesLiveDataAlone();
};

namespace {

const QString Refused = QStringLiteral("バックアップファイルが正しくありません。復元をキャンセルします。");

QByteArray Bytes(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QByteArray("<unreadable>");
    return file.readAll();
}

void WriteBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(bytes), bytes.size());
}

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

// A byte copy of the live database as it stands now, taken with the connection closed.
void CopyLive(TestEnvironment& env, const QString& target)
{
    env.db().Close();
    QVERIFY(CopyFileOverwrite(env.path(), target));
    QVERIFY(env.db().Reopen());
}

} // namespace

void TestBackupRestore::backupThenRestore_data()
{
    QTest::addColumn<QByteArray>("existing"); // what the chosen path held before; null: no file
    QTest::addColumn<int>("version");         // the layout the backup is turned into before the restore
    QTest::newRow("new file") << QByteArray() << CurrentDatabaseVersion;
    QTest::newRow("over an older file, version 11") << QByteArray(70000, 'x') << 11;
    QTest::newRow("version 10") << QByteArray() << 10;
}

void TestBackupRestore::backupThenRestore()
{
    QFETCH(QByteArray, existing);
    QFETCH(int, version);
    TestEnvironment env;
    StoreEntry(env.db(),
               Entry(1, QStringLiteral("A1"), QStringLiteral("20261101"), {}, {}, {}, QStringLiteral("会議 it's")));
    // A note as it shows now, with text never written to its row before.
    StickyNoteSlot& note = env.services.state.StickyNotes[3];
    note = StickyNoteSlot{true, QStringLiteral("今の文字\n二行目"), 2, 1500, 3000, nullptr};
    QTemporaryDir elsewhere;
    const QString chosen = elsewhere.filePath(QStringLiteral("mine.bdc"));
    if (!existing.isNull())
        WriteBytes(chosen, existing);

    QVERIFY(RunMaintenance(env, "ComBackup", chosen));
    QCOMPARE(env.prompter.texts().last(), QStringLiteral("バックアップが正常に終了しました。"));
    // One self-contained file: nothing beside it that the copy would have needed.
    QCOMPARE(Files(elsewhere.path()), QStringList{QStringLiteral("mine.bdc")});
    {
        DatabaseConnection backup(chosen);
        QCOMPARE(Column(backup, 1, "BUSINESS"), QStringLiteral("会議 it's"));
        QCOMPARE(Lines(backup, QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 501 AND DATAN1 = 3"),
                       {QStringLiteral("DATAS3"), QStringLiteral("DATAN2"), QStringLiteral("MEMO1")}),
                 QStringList{QStringLiteral("1|1500|今の文字\n二行目")});
        DowngradeDatabase(backup, version);
    }
    // The program goes on with the live database, outside any transaction.
    QCOMPARE(env.db().transactionDepth(), 0);
    StoreEntry(env.db(), Entry(2, QStringLiteral("A1"), QStringLiteral("20261102"), {}, {}, {},
                               QStringLiteral("after the backup")));
    const QByteArray chosenBytes = Bytes(chosen);

    QVERIFY(RunMaintenance(env, "ComReg", chosen));
    QVERIFY(env.services.state.RestoreDone);
    QCOMPARE(env.prompter.texts().last(), QStringLiteral("バックアップを正常に復元しました。\n"
                                                         "アプリケーションを終了いたしますので再起動してください。"));
    QCOMPARE(Bytes(chosen), chosenBytes);
    QCOMPARE(env.scalar(QStringLiteral("SELECT DATAN1 AS V FROM TRNGENERAL WHERE CODE = 10")),
             qint64(CurrentDatabaseVersion));
    QCOMPARE(Column(env.db(), 1, "BUSINESS"), QStringLiteral("会議 it's"));
    QCOMPARE(Column(env.db(), 2, "BUSINESS"), QStringLiteral("<no row>"));
    DatabaseConnection before(BeforeRestorePath(env.path()));
    QCOMPARE(Column(before, 2, "BUSINESS"), QStringLiteral("after the backup"));
    QCOMPARE(Files(env.dir.path()),
             (QStringList{QStringLiteral("QMCalendar.mdb"), QStringLiteral("QMCalendar.mdb.before-restore")}));
}

void TestBackupRestore::cancelChangesNothing_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("questionOk");
    QTest::addColumn<QString>("picked");
    QTest::newRow("backup question") << "ComBackup" << false << "x.bdc";
    QTest::newRow("backup picker") << "ComBackup" << true << "";
    QTest::newRow("restore question") << "ComReg" << false << "x.bdc";
    QTest::newRow("restore picker") << "ComReg" << true << "";
    QTest::newRow("restore picker pattern") << "ComReg" << true << "*.bdc";
}

void TestBackupRestore::cancelChangesNothing()
{
    QFETCH(QString, button);
    QFETCH(bool, questionOk);
    QFETCH(QString, picked);
    TestEnvironment env;
    const QString target = picked.isEmpty() || picked.startsWith(QLatin1Char('*')) ? picked : env.dir.filePath(picked);
    if (button == QLatin1String("ComReg") && !target.isEmpty() && !picked.startsWith(QLatin1Char('*')))
        CopyLive(env, target);
    FrmSetting dialog(env.services);
    // A design change the dialog holds uncommitted.
    env.db().ExecuteSql(QStringLiteral("UPDATE TRNCOLOR SET BACKCOLOR = 255 WHERE SETNUM = 0"));
    const QStringList filesBefore = Files(env.dir.path());
    const QByteArray liveBytes = Bytes(env.path());
    env.prompter.answers = {questionOk ? PromptAnswer::Ok : PromptAnswer::Cancel};
    env.filePicker.answers = {target};

    Click(&dialog, button.toLatin1().constData());

    QCOMPARE(env.prompter.shown.size(), 1);
    QCOMPARE(env.filePicker.requests.size(), questionOk ? 1 : 0);
    QCOMPARE(Files(env.dir.path()), filesBefore);
    QCOMPARE(Bytes(env.path()), liveBytes);
    QVERIFY(!dialog.SettingCommitted());
    QVERIFY(!env.services.state.RestoreDone);
    // The dialog's transaction is still open with its change in it.
    QCOMPARE(env.db().transactionDepth(), 1);
    QCOMPARE(env.scalar(QStringLiteral("SELECT COUNT(*) AS V FROM TRNCOLOR WHERE SETNUM = 0 AND BACKCOLOR <> 255")),
             qint64(0));
}

void TestBackupRestore::refusedFileLeavesLiveDataAlone_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("random bytes") << "random";
    QTest::newRow("empty file") << "empty";
    QTest::newRow("database without TRNGENERAL") << "foreign";
    QTest::newRow("no version row") << "unversioned";
    QTest::newRow("backup cut to half") << "truncated";
}

void TestBackupRestore::refusedFileLeavesLiveDataAlone()
{
    QFETCH(QString, kind);
    TestEnvironment env;
    StoreEntry(env.db(),
               Entry(1, QStringLiteral("A1"), QStringLiteral("20261122"), {}, {}, {}, QStringLiteral("live")));
    QTemporaryDir elsewhere;
    const QString chosen = elsewhere.filePath(QStringLiteral("bad.bdc"));
    if (kind == QLatin1String("random")) {
        QByteArray noise(8192, '\0');
        QRandomGenerator generator(14);
        for (char& byte : noise)
            byte = static_cast<char>(generator.bounded(256));
        WriteBytes(chosen, noise);
    } else if (kind == QLatin1String("empty")) {
        WriteBytes(chosen, QByteArray(""));
    } else if (kind == QLatin1String("foreign")) {
        DatabaseConnection foreign(chosen, DatabaseConnection::OpenMode::CreateIfMissing);
        foreign.ExecuteSql(QStringLiteral("CREATE TABLE TRNSCHTSK (ID INTEGER)"));
    } else {
        CopyLive(env, chosen);
        if (kind == QLatin1String("unversioned")) {
            DatabaseConnection unversioned(chosen);
            unversioned.ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL WHERE CODE = 10"));
        } else {
            QFile file(chosen);
            QVERIFY(file.resize(file.size() / 2));
        }
    }
    const QByteArray chosenBytes = Bytes(chosen);
    const QStringList filesBefore = Files(env.dir.path());
    FrmSetting dialog(env.services);
    const QByteArray liveBytes = Bytes(env.path());

    env.prompter.answers = {PromptAnswer::Ok};
    env.filePicker.answers = {chosen};
    Click(&dialog, "ComReg");

    QCOMPARE(env.prompter.texts().last(), Refused);
    QCOMPARE(env.prompter.shown.last().icon, PromptIcon::Critical);
    QVERIFY(!env.services.state.RestoreDone);
    QCOMPARE(Bytes(chosen), chosenBytes);
    QCOMPARE(Bytes(env.path()), liveBytes);
    QCOMPARE(Files(env.dir.path()), filesBefore);
    // Still usable, with a fresh transaction for the dialog.
    QCOMPARE(env.db().transactionDepth(), 1);
    QCOMPARE(Column(env.db(), 1, "BUSINESS"), QStringLiteral("live"));
}

VERDALY_TEST(TestBackupRestore)

#include "TestBackupRestore.moc"
