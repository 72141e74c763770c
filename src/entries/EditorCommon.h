#pragma once

#include <QString>

#include <functional>
#include <initializer_list>

class DatabaseConnection;
class QComboBox;
class QLineEdit;
class QWidget;
struct AppServices;

// Pieces the schedule and task editors share.

// Offers the time choices of CODE 401 in each combo, nothing selected.
void FillTimeCombos(DatabaseConnection& db, std::initializer_list<QComboBox*> combos);

// A typed time becomes "hh:mm" (9:5 -> 09:05); anything that is no time becomes "".
void NormaliseTimeBox(QComboBox* combo);
// A typed date becomes "yyyy/mm/dd"; anything that is no date becomes "".
void NormaliseDateBox(QLineEdit* box, int defaultYear);

// A validation message: exclamation icon, the program's title.
void WarnUser(AppServices& app, QWidget* parent, const QString& text);

// Opens the date picker under a date box of dialog (leftOffsetTwips to the right of the
// box's left edge) on the box's date, or today when the box holds none, and writes the
// picked date into the box. Nothing changes when the picker is cancelled.
void PickDateInto(AppServices& app, QWidget* dialog, QLineEdit* box, int leftOffsetTwips);

// A sticky note colour, 0 to 6.
int RandomPostColor(AppServices& app);

// Runs in() when widget gets the keyboard focus and out() when it loses it.
void OnFocusChange(QWidget* widget, std::function<void()> in, std::function<void()> out);

// What an editor's class combo held before an action, to put back when the action failed
// and its new class was rolled back with it.
class ComboSnapshot final
{
public:
    explicit ComboSnapshot(QComboBox* combo);
    void restore() const;

private:
    QComboBox* m_combo;
    int m_count;
    int m_index;
    QString m_text;
};
