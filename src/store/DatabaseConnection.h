#pragma once

#include "store/Rows.h"

#include <QString>

#include <memory>

struct sqlite3;

// The program's one connection to its database file. Statements are plain SQL text;
// a statement the engine refuses throws DatabaseError.
//
// Transactions nest: the first BeginTrans is a real BEGIN, deeper ones are savepoints.
// A dialog may hold a transaction open for as long as it is up, and another dialog
// opened on top of it (from a hot key, say) may begin its own.
class DatabaseConnection final
{
public:
    enum class OpenMode
    {
        ExistingOnly,
        CreateIfMissing,
    };
    // Why an open failed, so the start-up can tell the user what is wrong with the file.
    enum class OpenFailure
    {
        None,
        Missing,
        NotADatabase, // not an SQLite file at all, or a damaged one
        Locked,       // another program holds it locked for longer than BusyTimeoutMs
        Other,
    };
    // How long a statement waits for another program's lock before it fails.
    static constexpr int BusyTimeoutMs = 2500;

    explicit DatabaseConnection(const QString& path, OpenMode mode = OpenMode::ExistingOnly);
    ~DatabaseConnection();
    DatabaseConnection(const DatabaseConnection&) = delete;
    DatabaseConnection& operator=(const DatabaseConnection&) = delete;

    bool isOpen() const { return m_open; }
    const QString& path() const { return m_path; }
    // Why the open failed, for the log; empty when it succeeded.
    const QString& openError() const { return m_openError; }
    OpenFailure openFailure() const { return m_openFailure; }

    // A fully read, disconnected snapshot of the result.
    Rows ReadRows(const QString& sql);
    // Runs a statement and answers the number of rows it changed.
    int ExecuteSql(const QString& sql);

    void BeginTrans();
    void CommitTrans();
    void RollbackTrans();
    int transactionDepth() const { return m_depth; }
    // Rolls back every transaction level above depth (used when a user action fails).
    void RollbackTo(int depth);

    void Close();
    // Closes and opens the same file again on this very object, so that everything holding
    // a reference to the shared connection (an open dialog's transaction) keeps working
    // after the file was copied or replaced underneath. Answers isOpen().
    bool Reopen();

    // Identifies the data as this connection last saw it: the pair changes whenever a
    // statement or a rollback may have changed anything, and differs between connections,
    // so a reader may keep what it built from the same pair.
    const QString& connectionId() const { return m_connectionName; }
    quint64 writeGeneration() const { return m_writeGeneration; }

private:
    void open(OpenMode mode);
    void execControl(const QString& sql);
    void probe();
    sqlite3* nativeHandle() const;

    QString m_path;
    QString m_connectionName;
    QString m_openError;
    OpenFailure m_openFailure = OpenFailure::None;
    bool m_open = false;
    int m_depth = 0;
    quint64 m_writeGeneration = 0;
};

// Opens the database at path. An empty path answers nullptr; a file that cannot be
// opened answers a connection whose isOpen() is false (every statement on it fails).
// The password is accepted for the signature's sake: the file has none.
std::unique_ptr<DatabaseConnection> OpenDatabaseConnection(const QString& path, const QString& password);
