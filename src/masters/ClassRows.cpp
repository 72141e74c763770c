#include "masters/ClassRows.h"

#include "store/DatabaseConnection.h"
#include "store/NewId.h"
#include "store/SqlText.h"

qint64 InsertNewClass(DatabaseConnection& db, const QString& name)
{
    const qint64 id = NextId(db, QStringLiteral("MSTCLASS"));
    db.ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS ") + QStringLiteral("(") + QStringLiteral("ID,") +
                  QStringLiteral("CLASS, ") + QStringLiteral("SORTKEY ") + QStringLiteral(") VALUES ( ") +
                  QString::number(id) + QStringLiteral(", ") + QuoteText(name) + QStringLiteral(", ") +
                  QStringLiteral("0 ) "));
    return id;
}
