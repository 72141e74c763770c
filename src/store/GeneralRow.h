#pragma once

#include "store/Rows.h"

#include <optional>

class DatabaseConnection;

// The single row of a general code (TRNGENERAL), read fresh; nothing when the row is missing.
std::optional<Row> ReadGeneralRow(DatabaseConnection& db, int code);
