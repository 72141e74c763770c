#pragma once

#include <QString>

// Builds a new database at path from the starting database shipped with the program.
// The file appears only once it is complete: it is built beside the target and moved
// into place, so an interrupted first start never leaves half a database behind.
// Answers false (with the reason in error) when it could not be built.
bool CreateStartingDatabase(const QString& path, QString* error = nullptr);

// The starting database's statements, in order.
QStringList StartingDatabaseStatements();
