#pragma once

#include <QString>

// A small INI-format settings file: [section] headers and key=value lines. Writing a key
// keeps every other line of the file as it was.

// Writes one value; answers false when the file could not be written.
bool WriteIniValue(const QString& file, const QString& section, const QString& key, const QString& value);
// Reads one value; "" when the file, the section or the key is missing.
QString ReadIniValue(const QString& file, const QString& section, const QString& key);
