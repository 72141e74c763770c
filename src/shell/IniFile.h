#pragma once

#include <QList>
#include <QPair>
#include <QString>

// A small INI-format settings file: [section] headers and key=value lines. Writing a key
// keeps every other line of the file as it was.

using IniValues = QList<QPair<QString, QString>>;

// Replaces the whole of one section with values, keeping every other section and line, in
// one write: the new file replaces the old one only once it has been written completely,
// so a full disk or a crash leaves the old file as it was. Answers false when it could
// not be written.
bool WriteIniSection(const QString& file, const QString& section, const IniValues& values);
// Writes one value, keeping the rest of its section; answers false as WriteIniSection.
bool WriteIniValue(const QString& file, const QString& section, const QString& key, const QString& value);
// Reads one value; "" when the file, the section or the key is missing.
QString ReadIniValue(const QString& file, const QString& section, const QString& key);
