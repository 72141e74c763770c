#pragma once

class Clock;
class DatabaseConnection;

// Brings an older database up to the current layout (version 12) by adding rows.
// Each step runs statement by statement, as older releases did.
void CheckDatabaseVersion(DatabaseConnection& db, const Clock& clock);
void UpgradeToVersion11(DatabaseConnection& db, const Clock& clock);
void UpgradeToVersion12(DatabaseConnection& db, const Clock& clock);
// The era title-format choice (CODE 80607), added when missing.
void AddEraTitleChoice(DatabaseConnection& db, const Clock& clock);

constexpr int CurrentDatabaseVersion = 12;
