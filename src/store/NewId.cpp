#include "store/NewId.h"

#include "store/DatabaseConnection.h"

qint64 NextId(DatabaseConnection& db, const QString& table)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT MAX(ID) AS MAXID FROM ") + table);
    if (rows.empty() || rows.front().isNull(QStringLiteral("MAXID")))
        return 1;
    return rows.front().number(QStringLiteral("MAXID")) + 1;
}
