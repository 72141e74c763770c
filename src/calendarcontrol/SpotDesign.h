#pragma once

#include <QColor>
#include <QFont>

// The look of one part ("spot") of the calendar: its background, its text colour and its
// font. Which of the three a spot uses depends on the spot.
struct SpotDesign
{
    QColor back;
    QColor text;
    QFont font;
};

// The spot codes of the design rows.
namespace CalendarSpot {
constexpr int Title = 10;           // year-month title bar
constexpr int WeekdayHeader = 20;   // weekday header row
constexpr int Day = 30;             // days of the shown month
constexpr int Sunday = 40;          // text colour of Sundays
constexpr int Saturday = 50;        // text colour of Saturdays
constexpr int OtherMonth = 60;      // days of the neighbouring months
constexpr int Today = 70;           // today's frame (text colour) and cell (back colour)
constexpr int Selected = 80;        // the selected day
constexpr int EntryDay = 90;        // days that carry entries
constexpr int SundayHeader = 100;   // text colour of the Sunday heading
constexpr int SaturdayHeader = 110; // text colour of the Saturday heading
constexpr int Background = 120;     // the control's own background
constexpr int DayOff = 130;         // day-off cells and their corner mark
constexpr int Holiday = 135;        // national holidays

// Every spot the control paints, in code order.
constexpr int Codes[] = {Title,    WeekdayHeader, Day,          Sunday,         Saturday,   OtherMonth, Today,
                         Selected, EntryDay,      SundayHeader, SaturdayHeader, Background, DayOff,     Holiday};
} // namespace CalendarSpot

// The look a spot has before any design is applied (the shipped design).
SpotDesign DefaultSpotDesign(int code);
