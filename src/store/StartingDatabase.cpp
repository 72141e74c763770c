#include "store/StartingDatabase.h"

#include "store/DatabaseConnection.h"
#include "store/DatabaseError.h"
#include "store/JetDialect.h"
#include "store/StoreLog.h"

#include <QFile>
#include <QFileInfo>

static void EnsureResources()
{
    // The resources live in a static library; nothing else would pull them into the link.
    Q_INIT_RESOURCE(resources);
}

QStringList StartingDatabaseStatements()
{
    EnsureResources();
    QFile file(QStringLiteral(":/verdaly/starting-database.sql"));
    if (!file.open(QIODevice::ReadOnly)) {
        qCWarning(lcStore) << "starting database script missing from the resources";
        return {};
    }
    return SplitSqlScript(QString::fromUtf8(file.readAll()));
}

bool CreateStartingDatabase(const QString& path, QString* error)
{
    const QString building = path + QStringLiteral(".building");
    QFile::remove(building);
    const QStringList statements = StartingDatabaseStatements();
    if (statements.isEmpty()) {
        if (error)
            *error = QStringLiteral("starting database script missing");
        return false;
    }
    try {
        DatabaseConnection db(building, DatabaseConnection::OpenMode::CreateIfMissing);
        if (!db.isOpen())
            throw DatabaseError(db.openError(), QString());
        db.BeginTrans();
        for (const QString& statement : statements)
            db.ExecuteSql(statement);
        db.CommitTrans();
    } catch (const DatabaseError& e) {
        qCWarning(lcStore) << "cannot build the starting database:" << e.engineMessage() << e.sql();
        if (error)
            *error = e.engineMessage();
        QFile::remove(building);
        return false;
    }
    if (!QFile::rename(building, path)) {
        if (error)
            *error = QStringLiteral("cannot move %1 into place").arg(building);
        qCWarning(lcStore) << "cannot move" << building << "to" << path;
        QFile::remove(building);
        return false;
    }
    return true;
}
