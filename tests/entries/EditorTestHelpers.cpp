#include "EditorTestHelpers.h"

#include "store/SqlText.h"

void StoreEntry(DatabaseConnection& db, const StoredEntry& e)
{
    db.ExecuteSql(QStringLiteral("INSERT INTO TRNSCHTSK (ID,DATA,BUSINESS,STARTDT,STARTTM,ENDDT,ENDTM,ENDLESS,CLASS,"
                                 "ALARM,PRIORITY,COMPLETION,COMPDT,FROMTOKBN,COMMENT,UPDTIME) VALUES (") +
                  QStringList{QString::number(e.id), QuoteText(e.data), QuoteText(e.business), QuoteText(e.startDt),
                              QuoteText(e.startTm), QuoteText(e.endDt), QuoteText(e.endTm), QuoteText(e.endless),
                              QString::number(e.classId), QuoteText(e.alarm), QString::number(e.priority),
                              QuoteText(e.completion), QuoteText(e.compDt), QuoteText(e.kind), QuoteText(e.comment),
                              QuoteText(e.updTime)}
                      .join(QLatin1Char(',')) +
                  QStringLiteral(")"));
}

void StoreClass(DatabaseConnection& db, int id, const QString& name, int sortKey)
{
    db.ExecuteSql(QStringLiteral("INSERT INTO MSTCLASS (ID,CLASS,SORTKEY) VALUES (%1,%2,%3)")
                      .arg(id)
                      .arg(QuoteText(name))
                      .arg(sortKey));
}

QString Column(DatabaseConnection& db, int id, const char* column)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT * FROM TRNSCHTSK WHERE ID = %1").arg(id));
    if (rows.empty())
        return QStringLiteral("<no row>");
    return rows.front().text(QLatin1String(column));
}
