#include "store/DatabaseConnection.h"

#include "store/DatabaseError.h"
#include "store/JetDialect.h"
#include "store/StoreLog.h"

#include <QAtomicInt>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

#include <sqlite3.h>

namespace {

QString NextConnectionName()
{
    static QAtomicInt counter;
    return QStringLiteral("verdaly-%1").arg(counter.fetchAndAddRelaxed(1));
}

QString EngineMessage(const QSqlError& error)
{
    QString text = error.databaseText();
    if (text.isEmpty())
        text = error.text();
    return text;
}

} // namespace

DatabaseConnection::DatabaseConnection(const QString& path, OpenMode mode)
    : m_path(path), m_connectionName(NextConnectionName())
{
    open(mode);
}

bool DatabaseConnection::Reopen()
{
    Close();
    m_connectionName = NextConnectionName();
    m_openError.clear();
    m_openFailure = OpenFailure::None;
    ++m_writeGeneration;
    open(OpenMode::ExistingOnly);
    return m_open;
}

void DatabaseConnection::open(OpenMode mode)
{
    const QString& path = m_path;
    if (mode == OpenMode::ExistingOnly && !QFileInfo(path).isFile()) {
        m_openError = QStringLiteral("database file not found: %1").arg(path);
        m_openFailure = OpenFailure::Missing;
        qCWarning(lcStore) << m_openError;
        return;
    }
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
    db.setDatabaseName(path);
    // A lock held by another program is waited for, but only briefly: the user is waiting too.
    db.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(BusyTimeoutMs));
    if (!db.open()) {
        m_openError = EngineMessage(db.lastError());
        m_openFailure = OpenFailure::Other;
        qCWarning(lcStore) << "cannot open" << path << m_openError;
        return;
    }
    m_open = true;
    probe();
    if (!m_open)
        return;
    // The default rollback journal keeps the data in one self-contained file that a
    // byte copy always captures whole; FULL makes every commit durable.
    execControl(QStringLiteral("PRAGMA synchronous=FULL"));
    // Room for the whole file of a heavy user (100,000 entries take about 10 MB), so that
    // turning months reads pages from memory rather than from the file again and again.
    execControl(QStringLiteral("PRAGMA cache_size=-32768"));
}

DatabaseConnection::~DatabaseConnection()
{
    Close();
}

// The engine opens a file lazily: a file that is not a database, or one another program
// holds locked, only shows at the first read. Reading the schema finds both without
// writing a byte.
void DatabaseConnection::probe()
{
    sqlite3* handle = nativeHandle();
    const int rc = sqlite3_exec(handle, "SELECT COUNT(*) FROM sqlite_master", nullptr, nullptr, nullptr);
    if (rc == SQLITE_OK)
        return;
    m_openError = QString::fromUtf8(sqlite3_errmsg(handle));
    switch (rc & 0xff) {
    case SQLITE_NOTADB:
    case SQLITE_CORRUPT:
        m_openFailure = OpenFailure::NotADatabase;
        break;
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
        m_openFailure = OpenFailure::Locked;
        break;
    default:
        m_openFailure = OpenFailure::Other;
        break;
    }
    qCWarning(lcStore) << "cannot read" << m_path << m_openError;
    QSqlDatabase::database(m_connectionName, false).close();
    m_open = false;
}

void DatabaseConnection::Close()
{
    if (m_connectionName.isEmpty())
        return;
    if (m_open) {
        if (m_depth > 0) {
            qCWarning(lcStore) << "closing with" << m_depth << "open transaction level(s); rolling back";
            RollbackTo(0);
        }
        QSqlDatabase::database(m_connectionName, false).close();
        m_open = false;
    }
    const QString name = m_connectionName;
    m_connectionName.clear();
    QSqlDatabase::removeDatabase(name);
}

Rows DatabaseConnection::ReadRows(const QString& sql)
{
    const QString statement = RewriteJetSql(sql);
    if (!m_open)
        throw DatabaseError(QStringLiteral("データベースが開かれていません。"), sql);
    // Reads go straight to the engine on the driver's own connection: the month grid reads
    // every column of a thousand rows at a time, and keeping each value as stored is several
    // times cheaper than the driver's conversion of every value into a QVariant.
    sqlite3* handle = nativeHandle();
    sqlite3_stmt* stmt = nullptr;
    const QByteArray utf8 = statement.toUtf8();
    if (sqlite3_prepare_v2(handle, utf8.constData(), static_cast<int>(utf8.size()), &stmt, nullptr) != SQLITE_OK) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(handle));
        sqlite3_finalize(stmt);
        qCWarning(lcStore) << "query failed:" << message << statement;
        throw DatabaseError(message, sql);
    }
    const int count = sqlite3_column_count(stmt);
    auto columns = std::make_shared<Row::ColumnIndex>();
    for (int i = 0; i < count; ++i)
        columns->insert(QString::fromUtf8(sqlite3_column_name(stmt, i)).toUpper(), i);
    Rows rows;
    int rc = SQLITE_ROW;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
        Row& row = rows.emplace_back(columns, count);
        int bytes = 0;
        for (int i = 0; i < count; ++i)
            bytes += sqlite3_column_bytes(stmt, i);
        row.reserveBytes(bytes);
        for (int i = 0; i < count; ++i) {
            switch (sqlite3_column_type(stmt, i)) {
            case SQLITE_INTEGER:
                row.setInteger(i, sqlite3_column_int64(stmt, i));
                break;
            case SQLITE_FLOAT:
                row.setReal(i, sqlite3_column_double(stmt, i));
                break;
            case SQLITE_TEXT:
                row.setText(i, reinterpret_cast<const char*>(sqlite3_column_text(stmt, i)),
                            sqlite3_column_bytes(stmt, i));
                break;
            case SQLITE_BLOB:
                row.setBlob(i, static_cast<const char*>(sqlite3_column_blob(stmt, i)), sqlite3_column_bytes(stmt, i));
                break;
            default:
                break; // NULL
            }
        }
    }
    if (rc != SQLITE_DONE) {
        const QString message = QString::fromUtf8(sqlite3_errmsg(handle));
        sqlite3_finalize(stmt);
        qCWarning(lcStore) << "query failed:" << message << statement;
        throw DatabaseError(message, sql);
    }
    sqlite3_finalize(stmt);
    return rows;
}

sqlite3* DatabaseConnection::nativeHandle() const
{
    const QVariant handle = QSqlDatabase::database(m_connectionName, false).driver()->handle();
    if (!handle.isValid() || qstrcmp(handle.typeName(), "sqlite3*") != 0)
        throw DatabaseError(QStringLiteral("the database driver is not SQLite"), QString());
    sqlite3* native = *static_cast<sqlite3* const*>(handle.constData());
    if (!native)
        throw DatabaseError(QStringLiteral("データベースが開かれていません。"), QString());
    return native;
}

int DatabaseConnection::ExecuteSql(const QString& sql)
{
    const QString statement = RewriteJetSql(sql);
    if (!m_open)
        throw DatabaseError(QStringLiteral("データベースが開かれていません。"), sql);
    ++m_writeGeneration;
    QSqlQuery query(QSqlDatabase::database(m_connectionName, false));
    if (!query.exec(statement)) {
        const QString message = EngineMessage(query.lastError());
        qCWarning(lcStore) << "statement failed:" << message << statement;
        throw DatabaseError(message, sql);
    }
    return query.numRowsAffected();
}

void DatabaseConnection::execControl(const QString& sql)
{
    if (!m_open)
        throw DatabaseError(QStringLiteral("データベースが開かれていません。"), sql);
    QSqlQuery query(QSqlDatabase::database(m_connectionName, false));
    if (!query.exec(sql)) {
        const QString message = EngineMessage(query.lastError());
        qCWarning(lcStore) << "control statement failed:" << message << sql;
        throw DatabaseError(message, sql);
    }
}

void DatabaseConnection::BeginTrans()
{
    if (m_depth == 0)
        execControl(QStringLiteral("BEGIN"));
    else
        execControl(QStringLiteral("SAVEPOINT level%1").arg(m_depth));
    ++m_depth;
}

void DatabaseConnection::CommitTrans()
{
    if (m_depth == 0) {
        qCWarning(lcStore) << "CommitTrans without an open transaction";
        return;
    }
    --m_depth;
    if (m_depth == 0)
        execControl(QStringLiteral("COMMIT"));
    else
        execControl(QStringLiteral("RELEASE SAVEPOINT level%1").arg(m_depth));
}

void DatabaseConnection::RollbackTrans()
{
    if (m_depth == 0) {
        qCWarning(lcStore) << "RollbackTrans without an open transaction";
        return;
    }
    --m_depth;
    ++m_writeGeneration;
    // A rollback must not fail on top of the failure it is cleaning up after (the engine
    // may already have ended the transaction itself), so it only logs.
    try {
        if (m_depth == 0) {
            execControl(QStringLiteral("ROLLBACK"));
        } else {
            execControl(QStringLiteral("ROLLBACK TO SAVEPOINT level%1").arg(m_depth));
            execControl(QStringLiteral("RELEASE SAVEPOINT level%1").arg(m_depth));
        }
    } catch (const DatabaseError& error) {
        qCWarning(lcStore) << "rollback failed:" << error.engineMessage();
    }
}

void DatabaseConnection::RollbackTo(int depth)
{
    while (m_depth > depth && m_depth > 0)
        RollbackTrans();
}

std::unique_ptr<DatabaseConnection> OpenDatabaseConnection(const QString& path, const QString& password)
{
    Q_UNUSED(password)
    if (path.isEmpty())
        return nullptr;
    return std::make_unique<DatabaseConnection>(path);
}
