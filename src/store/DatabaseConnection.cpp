#include "store/DatabaseConnection.h"

#include "store/DatabaseError.h"
#include "store/JetDialect.h"
#include "store/StoreLog.h"

#include <QAtomicInt>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

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
    if (mode == OpenMode::ExistingOnly && !QFileInfo(path).isFile()) {
        m_openError = QStringLiteral("database file not found: %1").arg(path);
        qCWarning(lcStore) << m_openError;
        return;
    }
    QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_connectionName);
    db.setDatabaseName(path);
    if (!db.open()) {
        m_openError = EngineMessage(db.lastError());
        qCWarning(lcStore) << "cannot open" << path << m_openError;
        return;
    }
    m_open = true;
    // The default rollback journal keeps the data in one self-contained file that a
    // byte copy always captures whole; FULL makes every commit durable.
    execControl(QStringLiteral("PRAGMA synchronous=FULL"));
}

DatabaseConnection::~DatabaseConnection()
{
    Close();
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
    QSqlQuery query(QSqlDatabase::database(m_connectionName, false));
    query.setForwardOnly(true);
    if (!query.exec(statement)) {
        const QString message = EngineMessage(query.lastError());
        qCWarning(lcStore) << "query failed:" << message << statement;
        throw DatabaseError(message, sql);
    }
    const QSqlRecord record = query.record();
    auto columns = std::make_shared<Row::ColumnIndex>();
    const int count = record.count();
    for (int i = 0; i < count; ++i)
        columns->insert(record.fieldName(i).toUpper(), i);
    Rows rows;
    while (query.next()) {
        QVector<QVariant> values(count);
        for (int i = 0; i < count; ++i)
            values[i] = query.value(i);
        rows.emplace_back(columns, std::move(values));
    }
    return rows;
}

int DatabaseConnection::ExecuteSql(const QString& sql)
{
    const QString statement = RewriteJetSql(sql);
    if (!m_open)
        throw DatabaseError(QStringLiteral("データベースが開かれていません。"), sql);
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
