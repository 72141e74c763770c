#pragma once

#include <QString>

class DatabaseConnection;

// Adds a class under a new ID with sort key 0, so it lists first until the user orders
// it; answers the ID.
qint64 InsertNewClass(DatabaseConnection& db, const QString& name);
