#pragma once

#include <QString>

class Clock;
class DatabaseConnection;

// Copying the whole database to a backup file and putting a backup back in its place.
// Both close the shared connection for the copy and open it again on the same object, so
// an open dialog's transaction object stays valid (it must hold no level at that moment).

struct MaintenanceResult
{
    bool ok = false;
    // Why it failed, for the user: names the file and what went wrong.
    QString problem;
};

// Copies the live database file onto target, replacing it whole only once the copy is
// complete. The connection must hold no transaction: everything committed is in the file
// and no rollback journal is left that the copy would miss.
MaintenanceResult BackupDatabase(DatabaseConnection& db, const QString& target);

// The file kept beside the live database before a restore replaces it.
QString BeforeRestorePath(const QString& livePath);

enum class RestoreOutcome
{
    Restored,
    NotABackup, // the chosen file failed the checks; nothing was changed
    Failed,     // a copy or the final move failed; the live database was kept
};

// Replaces the live database with the chosen backup. The backup is copied beside the live
// file, checked and brought to the current version there, and only then moved into place
// in one step, after the live file was kept as BeforeRestorePath(). The chosen file is only
// ever read. Whatever the outcome, the connection is open again on the live path when the
// file can be opened. The connection must hold no transaction.
RestoreOutcome RestoreDatabase(DatabaseConnection& db, const QString& chosen, const Clock& clock,
                               QString* problem = nullptr);
