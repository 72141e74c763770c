#pragma once

#include <QDateTime>
#include <QString>

class QComboBox;
class QLineEdit;

// Text helpers with which every statement is built.

// 'text' as an SQL string literal. Apostrophes inside are doubled, so any typed text is
// stored exactly as typed and can never change the statement around it.
QString QuoteText(const QString& text);

// #yyyy/mm/dd HH:MM:SS#, the date-time literal of UPDTIME values.
QString DateLiteral(const QDateTime& value);
// The same form for a stored UPDTIME text (already "yyyy/mm/dd HH:MM:SS").
QString DateLiteral(const QString& storedStamp);

// Asked by the editors before they save. Quoting makes apostrophes harmless, so it
// answers false for every text and the "no apostrophes" message never shows.
bool HasQuote(const QString& text);

// Caret to 0 and the whole text selected, for an edit box that just got the focus.
void SelectAllText(QLineEdit* box);

// Selects the first item whose item data equals value, or nothing when none does.
void SelectComboByItemData(QComboBox* combo, qint64 value);

// Copies source over destination; answers false (and logs) when the copy failed.
// The destination is replaced only once the new copy is complete.
bool CopyFileOverwrite(const QString& source, const QString& destination);
