#pragma once

#include "store/DatabaseConnection.h"
#include "store/SqlText.h"

#include <QString>

// An entry with its alarm set, as the editors store it.
struct AlarmEntry
{
    int id = 1;
    QString kind;
    QString startDt;
    QString startTm;
    QString endDt;
    QString endTm;
    QString completion;
    QString business = QStringLiteral("entry");
    QString comment;
    QString alarm = QStringLiteral("1");
    QString updTime = QStringLiteral("2026/11/01 08:00:00");
};

inline void StoreAlarmEntry(DatabaseConnection& db, const AlarmEntry& e)
{
    const bool task = e.kind.startsWith(QLatin1Char('T'));
    db.ExecuteSql(QStringLiteral("INSERT INTO TRNSCHTSK (ID,DATA,BUSINESS,STARTDT,STARTTM,ENDDT,ENDTM,ENDLESS,CLASS,"
                                 "ALARM,PRIORITY,COMPLETION,COMPDT,FROMTOKBN,COMMENT,UPDTIME) VALUES (") +
                  QString::number(e.id) + QStringLiteral(",") +
                  QuoteText(task ? QStringLiteral("2") : QStringLiteral("1")) + QStringLiteral(",") +
                  QuoteText(e.business) + QStringLiteral(",") + QuoteText(e.startDt) + QStringLiteral(",") +
                  QuoteText(e.startTm) + QStringLiteral(",") + QuoteText(e.endDt) + QStringLiteral(",") +
                  QuoteText(e.endTm) + QStringLiteral(",'',0,") + QuoteText(e.alarm) + QStringLiteral(",0,") +
                  QuoteText(e.completion) + QStringLiteral(",'',") + QuoteText(e.kind) + QStringLiteral(",") +
                  QuoteText(e.comment) + QStringLiteral(",") + QuoteText(e.updTime) + QStringLiteral(")"));
}

inline QString AlarmFlag(DatabaseConnection& db, int id)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT ALARM FROM TRNSCHTSK WHERE ID = %1").arg(id));
    return rows.empty() ? QStringLiteral("<no row>") : rows.front().text(QStringLiteral("ALARM"));
}

// The alarm settings as the settings dialog writes them: advance minutes (304), balloon
// (314), sound on (316) and its file (315).
inline void SetAlarmSettings(DatabaseConnection& db, int advance, bool balloon = false, bool sound = false,
                             const QString& soundFile = QString())
{
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = 304").arg(advance));
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = 314").arg(balloon ? 1 : 0));
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET DATAN1 = %1 WHERE CODE = 316").arg(sound ? 1 : 0));
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET MEMO1 = %1 WHERE CODE = 315").arg(QuoteText(soundFile)));
}
