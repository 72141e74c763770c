#pragma once

#include <QString>

class DatabaseConnection;
class QComboBox;

// Makes the class named in an entry editor's class combo a real class. When the text
// shown is that of the selected item, nothing changes. Otherwise the first item whose
// text equals the trimmed text is selected; when there is none, the name becomes a new
// MSTCLASS row (next ID, SORTKEY 0, so it sorts first until the user orders it), which is
// added to the combo and selected. A name typed twice while the editor stays open is
// therefore inserted once.
// Answers the class ID to store: 0 when the trimmed text is empty.
// Raises DatabaseError when the engine refuses; the combo is then left as it was.
qint64 EnsureClassFromCombo(DatabaseConnection& db, QComboBox* combo);

// Fills a class combo from rows of MSTCLASS (item text CLASS, item data ID), nothing selected.
void FillClassCombo(DatabaseConnection& db, QComboBox* combo, const QString& sql);
