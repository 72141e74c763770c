#pragma once

#include <QDate>

class QWidget;

// What a caller hands to the pop-up date picker and gets back from it.
struct DatePickHandOver
{
    QDate PickedDate;        // in: the date to show; out: the date chosen
    bool DatePicked = false; // out: a date was chosen (false after cancel)
    int PickerTop = 0;       // in: where the picker appears, twips on the screen
    int PickerLeft = 0;
};

// Shows the date picker modally. Production opens the calendar pop-up; tests answer
// from a script.
class DatePicker
{
public:
    virtual ~DatePicker() = default;
    virtual void pickDate(QWidget* parent, DatePickHandOver& handOver) = 0;
};
