#pragma once

#include <QString>

class DatabaseConnection;

// A new key for table: the largest ID plus 1, or 1 while the table is empty
// ("SELECT MAX(ID) AS MAXID FROM " + table).
qint64 NextId(DatabaseConnection& db, const QString& table);
