#include "store/GeneralRow.h"

#include "store/DatabaseConnection.h"

std::optional<Row> ReadGeneralRow(DatabaseConnection& db, int code)
{
    Rows rows = db.ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNGENERAL ") +
                            QStringLiteral("WHERE CODE = ") + QString::number(code) + QLatin1Char(' '));
    if (rows.empty())
        return std::nullopt;
    return rows.front();
}
