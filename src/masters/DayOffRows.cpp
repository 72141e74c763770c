#include "masters/DayOffRows.h"

#include "store/DatabaseConnection.h"
#include "store/SqlText.h"

qint64 CountDayOffs(DatabaseConnection& db, int month, int day)
{
    const Rows rows = db.ReadRows(QStringLiteral("SELECT COUNT(*) AS REC_COUNT FROM TRNGENERAL WHERE CODE = 200 "
                                                 "AND DATAN1 = ") +
                                  QString::number(month) + QStringLiteral(" AND DATAN2 = ") + QString::number(day) +
                                  QStringLiteral(" ;"));
    return rows.empty() ? 0 : rows.front().number(QStringLiteral("REC_COUNT"));
}

QString ReadDayOffRemark(DatabaseConnection& db, int month, int day)
{
    const Rows rows =
        db.ReadRows(QStringLiteral("SELECT * FROM TRNGENERAL WHERE CODE = 200 AND DATAN1 = ") + QString::number(month) +
                    QStringLiteral(" AND DATAN2 = ") + QString::number(day) + QStringLiteral(" ;"));
    return rows.empty() ? QString() : rows.front().text(QStringLiteral("DATAS1"));
}

void InsertDayOff(DatabaseConnection& db, int month, int day, const QString& remark)
{
    db.ExecuteSql(QStringLiteral("INSERT INTO TRNGENERAL ") + QStringLiteral("(") + QStringLiteral("CODE,") +
                  QStringLiteral("DATAS1, ") + QStringLiteral("DATAS2, ") + QStringLiteral("DATAN1, ") +
                  QStringLiteral("DATAN2 ") + QStringLiteral(") VALUES ( ") + QStringLiteral("200") +
                  QStringLiteral(", ") + QuoteText(remark) + QStringLiteral(",") + QStringLiteral("'',") +
                  QString::number(month) + QStringLiteral(",") + QString::number(day) + QStringLiteral(") "));
}

void UpdateDayOffs(DatabaseConnection& db, int oldMonth, int oldDay, int month, int day, const QString& remark)
{
    db.ExecuteSql(QStringLiteral("UPDATE TRNGENERAL SET ") + QStringLiteral("DATAS1 = ") + QuoteText(remark) +
                  QStringLiteral(" ,") + QStringLiteral("DATAN1 = ") + QString::number(month) + QStringLiteral(",") +
                  QStringLiteral("DATAN2 = ") + QString::number(day) + QStringLiteral(" ") +
                  QStringLiteral("WHERE CODE   = 200 ") + QStringLiteral("AND   DATAN1 = ") +
                  QString::number(oldMonth) + QStringLiteral(" ") + QStringLiteral("AND   DATAN2 = ") +
                  QString::number(oldDay) + QStringLiteral(" "));
}

void DeleteDayOffs(DatabaseConnection& db, int month, int day)
{
    db.ExecuteSql(QStringLiteral("DELETE FROM TRNGENERAL ") + QStringLiteral("WHERE CODE   = 200 ") +
                  QStringLiteral("AND   DATAN1 = ") + QString::number(month) + QStringLiteral(" ") +
                  QStringLiteral("AND   DATAN2 = ") + QString::number(day) + QStringLiteral(" "));
}
