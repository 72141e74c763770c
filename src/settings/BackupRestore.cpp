#include "settings/BackupRestore.h"

#include "settings/SettingsLog.h"
#include "store/DatabaseConnection.h"
#include "store/DatabaseError.h"
#include "store/DatabaseVersion.h"
#include "store/SqlText.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

QString JournalPath(const QString& path)
{
    return path + QStringLiteral("-journal");
}

void RemoveWithJournal(const QString& path)
{
    QFile::remove(path);
    QFile::remove(JournalPath(path));
}

// A level still open would be rolled back by the close and lost without a word.
bool HoldsTransaction(const DatabaseConnection& db, QString* problem)
{
    if (db.transactionDepth() == 0)
        return false;
    qCWarning(lcSettings) << "refusing to copy the database with" << db.transactionDepth() << "open level(s)";
    *problem = QStringLiteral("他の画面が編集中のため、データベースをコピーできません。");
    return true;
}

// Why the file at path cannot be restored; empty when it can. Opens only the copy made for
// the check: reading a file can replay a journal lying beside it, which writes to it.
QString BackupFileProblem(const QString& path, const Clock& clock)
{
    DatabaseConnection candidate(path);
    if (!candidate.isOpen())
        return candidate.openError();
    try {
        const Rows check = candidate.ReadRows(QStringLiteral("PRAGMA integrity_check"));
        const QString verdict = check.empty() ? QString() : check.front().text(QStringLiteral("INTEGRITY_CHECK"));
        if (verdict != QLatin1String("ok"))
            return QStringLiteral("integrity_check: ") + verdict;
        if (candidate.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 10 ")).empty())
            return QStringLiteral("no version row");
        // An older backup is brought to the current layout here, in the copy, never in the
        // user's own file.
        candidate.BeginTrans();
        CheckDatabaseVersion(candidate, clock);
        candidate.CommitTrans();
    } catch (const DatabaseError& error) {
        candidate.RollbackTo(0);
        return error.engineMessage();
    }
    return QString();
}

MaintenanceResult Reopened(DatabaseConnection& db, MaintenanceResult result)
{
    if (!db.Reopen()) {
        result.ok = false;
        result.problem += (result.problem.isEmpty() ? QString() : QStringLiteral("\n")) +
                          QStringLiteral("データベースを開き直せません。\n") + db.path() + QStringLiteral("\n") +
                          db.openError();
    }
    return result;
}

} // namespace

MaintenanceResult BackupDatabase(DatabaseConnection& db, const QString& target)
{
    MaintenanceResult result;
    if (HoldsTransaction(db, &result.problem))
        return result;
    db.Close();
    result.ok = CopyFileOverwrite(db.path(), target);
    if (!result.ok)
        result.problem = QStringLiteral("バックアップファイルを書き込めません。\n") + target;
    return Reopened(db, result);
}

QString BeforeRestorePath(const QString& livePath)
{
    return livePath + QStringLiteral(".before-restore");
}

RestoreOutcome RestoreDatabase(DatabaseConnection& db, const QString& chosen, const Clock& clock, QString* problem)
{
    QString why;
    const auto finish = [&](RestoreOutcome outcome) {
        const MaintenanceResult reopened = Reopened(db, {true, why});
        if (problem)
            *problem = reopened.problem;
        if (!reopened.ok && outcome == RestoreOutcome::Restored)
            qCWarning(lcSettings) << "restored, but cannot open it:" << reopened.problem;
        return outcome;
    };
    if (HoldsTransaction(db, &why)) {
        if (problem)
            *problem = why;
        return RestoreOutcome::Failed;
    }
    const QString live = db.path();
    db.Close();

    // The copy lives beside the live file, so the final move is a rename on one file system.
    const QString incoming = live + QStringLiteral(".restoring");
    RemoveWithJournal(incoming);
    if (!CopyFileOverwrite(chosen, incoming)) {
        RemoveWithJournal(incoming);
        why = QStringLiteral("cannot read ") + chosen;
        qCWarning(lcSettings) << "restore refused:" << why;
        return finish(RestoreOutcome::NotABackup);
    }
    why = BackupFileProblem(incoming, clock);
    if (!why.isEmpty()) {
        RemoveWithJournal(incoming);
        qCWarning(lcSettings) << "restore refused:" << chosen << why;
        return finish(RestoreOutcome::NotABackup);
    }

    // Kept so a restore can be undone by hand.
    const QString before = BeforeRestorePath(live);
    if (!CopyFileOverwrite(live, before)) {
        RemoveWithJournal(incoming);
        why = QStringLiteral("復元前のデータを保存できません。\n") + before;
        return finish(RestoreOutcome::Failed);
    }
    // A journal of the old file would be replayed over the restored one at the next open.
    QFile::remove(JournalPath(live));
    if (std::rename(QFile::encodeName(incoming).constData(), QFile::encodeName(live).constData()) != 0) {
        RemoveWithJournal(incoming);
        why = QStringLiteral("データベースを置き換えられません。\n") + live;
        return finish(RestoreOutcome::Failed);
    }
    qCInfo(lcSettings) << "restored" << chosen << "over" << live << "; the old data is in" << before;
    why.clear();
    return finish(RestoreOutcome::Restored);
}
