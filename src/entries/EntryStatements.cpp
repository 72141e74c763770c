#include "entries/EntryStatements.h"

#include "store/SqlText.h"

namespace {

QString Number(qint64 value)
{
    return QString::number(value);
}

} // namespace

QString EntryInsertSql(const EntryValues& v, const QDateTime& now)
{
    const QString columns = QStringLiteral(
        "ID,DATA,BUSINESS,STARTDT,STARTTM,ENDDT,ENDTM,ENDLESS,CLASS,ALARM,PRIORITY,COMPLETION,COMPDT,FROMTOKBN,COMMENT,"
        "UPDTIME");
    const QStringList values{
        Number(v.ID),         QuoteText(v.DATA),      QuoteText(v.BUSINESS), QuoteText(v.STARTDT),
        QuoteText(v.STARTTM), QuoteText(v.ENDDT),     QuoteText(v.ENDTM),    QuoteText(v.ENDLESS),
        Number(v.CLASS),      QuoteText(v.ALARM),     Number(v.PRIORITY),    QuoteText(v.COMPLETION),
        QuoteText(v.COMPDT),  QuoteText(v.FROMTOKBN), QuoteText(v.COMMENT),  DateLiteral(now)};
    return QStringLiteral("INSERT INTO TRNSCHTSK ") + QStringLiteral("(") + columns + QStringLiteral(") VALUES ( ") +
           values.join(QStringLiteral(", ")) + QStringLiteral(") ");
}

QString ScheduleUpdateSql(const EntryValues& v, const QDateTime& now, const QString& loadedUpdTime)
{
    QString sql = QStringLiteral("UPDATE TRNSCHTSK SET ");
    sql += QStringLiteral("BUSINESS  = ") + QuoteText(v.BUSINESS) + QStringLiteral(", ");
    sql += QStringLiteral("STARTDT   = ") + QuoteText(v.STARTDT) + QStringLiteral(", ");
    sql += QStringLiteral("STARTTM   = ") + QuoteText(v.STARTTM) + QStringLiteral(", ");
    if (v.ENDDT.isEmpty())
        sql += QStringLiteral("ENDDT = '', ");
    else
        sql += QStringLiteral("ENDDT = ") + QuoteText(v.ENDDT) + QStringLiteral(", ");
    sql += QStringLiteral("ENDTM     = ") + QuoteText(v.ENDTM) + QStringLiteral(", ");
    if (v.CLASS == 0)
        sql += QStringLiteral("CLASS = 0, ");
    else
        sql += QStringLiteral("CLASS = ") + Number(v.CLASS) + QStringLiteral(", ");
    sql += QStringLiteral("ALARM     = ") + QuoteText(v.ALARM) + QStringLiteral(", ");
    sql += QStringLiteral("FROMTOKBN = ") + QuoteText(v.FROMTOKBN) + QStringLiteral(", ");
    sql += QStringLiteral("COMMENT   = ") + QuoteText(v.COMMENT) + QStringLiteral(", ");
    sql += QStringLiteral("UPDTIME   = ") + DateLiteral(now) + QStringLiteral(" ");
    sql += QStringLiteral("WHERE ID      = ") + Number(v.ID) + QStringLiteral(" ");
    sql += QStringLiteral("AND   UPDTIME = ") + DateLiteral(loadedUpdTime) + QStringLiteral(" ");
    return sql;
}

QString TaskUpdateSql(const EntryValues& v, const QDateTime& now, const QString& loadedUpdTime)
{
    QString sql = QStringLiteral("UPDATE TRNSCHTSK SET ");
    sql += QStringLiteral("BUSINESS   = ") + QuoteText(v.BUSINESS) + QStringLiteral(", ");
    // The editor never saves a task without a deadline date, so ENDDT always has one here.
    sql += QStringLiteral("ENDDT  = ") + QuoteText(v.ENDDT) + QStringLiteral(", ");
    sql += QStringLiteral("ENDTM      = ") + QuoteText(v.ENDTM) + QStringLiteral(", ");
    sql += QStringLiteral("ENDLESS    = ") + QuoteText(v.ENDLESS) + QStringLiteral(", ");
    if (v.CLASS == 0)
        sql += QStringLiteral("CLASS  = 0, ");
    else
        sql += QStringLiteral("CLASS  = ") + Number(v.CLASS) + QStringLiteral(", ");
    sql += QStringLiteral("PRIORITY   = ") + Number(v.PRIORITY) + QStringLiteral(", ");
    sql += QStringLiteral("COMPLETION = ") + QuoteText(v.COMPLETION) + QStringLiteral(", ");
    if (v.COMPDT.isEmpty())
        sql += QStringLiteral("COMPDT = '', ");
    else
        sql += QStringLiteral("COMPDT = ") + QuoteText(v.COMPDT) + QStringLiteral(", ");
    sql += QStringLiteral("FROMTOKBN  = ") + QuoteText(v.FROMTOKBN) + QStringLiteral(", ");
    sql += QStringLiteral("COMMENT    = ") + QuoteText(v.COMMENT) + QStringLiteral(", ");
    sql += QStringLiteral("UPDTIME    = ") + DateLiteral(now) + QStringLiteral(" ");
    sql += QStringLiteral("WHERE ID      = ") + Number(v.ID) + QStringLiteral(" ");
    sql += QStringLiteral("AND   UPDTIME =") + DateLiteral(loadedUpdTime) + QStringLiteral(" ");
    return sql;
}
