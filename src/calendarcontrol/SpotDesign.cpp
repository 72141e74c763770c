#include "calendarcontrol/SpotDesign.h"

namespace {

QFont DesignFont(double pointSize, bool bold)
{
    QFont font(QStringLiteral("IPAPGothic"));
    font.setPointSizeF(pointSize);
    font.setBold(bold);
    return font;
}

QColor Rgb(int r, int g, int b)
{
    return QColor(r, g, b);
}

} // namespace

SpotDesign DefaultSpotDesign(int code)
{
    using namespace CalendarSpot;
    switch (code) {
    case Title:
        return {Rgb(0xE0, 0xEE, 0xF8), Rgb(0x00, 0x30, 0x60), DesignFont(11, true)};
    case WeekdayHeader:
        return {Rgb(0xEC, 0xF0, 0xF4), Rgb(0x40, 0x40, 0x40), DesignFont(9, false)};
    case Day:
        return {Rgb(0xFF, 0xFF, 0xFF), Rgb(0x20, 0x20, 0x20), DesignFont(10, false)};
    case Sunday:
        return {Rgb(0xFF, 0xFF, 0xFF), Rgb(0xC0, 0x00, 0x00), DesignFont(10, false)};
    case Saturday:
        return {Rgb(0xFF, 0xFF, 0xFF), Rgb(0x00, 0x00, 0xC0), DesignFont(10, false)};
    case OtherMonth:
        return {Rgb(0xF8, 0xF8, 0xF8), Rgb(0xA8, 0xA8, 0xA8), DesignFont(10, false)};
    case Today:
        return {Rgb(0xFF, 0xFF, 0xD8), Rgb(0xFF, 0x80, 0x00), DesignFont(10, false)};
    case Selected:
        return {Rgb(0xB0, 0xD8, 0xFF), Rgb(0x00, 0x00, 0x00), DesignFont(10, false)};
    case EntryDay:
        return {Rgb(0xE4, 0xFF, 0xE4), Rgb(0x00, 0x80, 0x00), DesignFont(10, true)};
    case SundayHeader:
        return {Rgb(0xEC, 0xF0, 0xF4), Rgb(0xC0, 0x00, 0x00), DesignFont(9, false)};
    case SaturdayHeader:
        return {Rgb(0xEC, 0xF0, 0xF4), Rgb(0x00, 0x00, 0xC0), DesignFont(9, false)};
    case Background:
        return {Rgb(0xFF, 0xFF, 0xFF), Rgb(0x00, 0x00, 0x00), DesignFont(9, false)};
    case DayOff:
        return {Rgb(0xFF, 0xE8, 0xE8), Rgb(0xC0, 0x00, 0x00), DesignFont(10, false)};
    case Holiday:
        return {Rgb(0xFF, 0xE8, 0xE8), Rgb(0xE0, 0x00, 0x00), DesignFont(10, false)};
    default:
        return {Rgb(0xFF, 0xFF, 0xFF), Rgb(0x00, 0x00, 0x00), DesignFont(10, false)};
    }
}
