// Painting of the month calendar. Everything is drawn in logical coordinates; Qt scales to
// the screen, so the grid stays crisp on high-dpi screens. Lines are drawn without
// antialiasing on whole pixels, the round marks with it.
#include "calendarcontrol/HalvernCalendar.h"

#include <QPainter>
#include <QPainterPath>

using namespace CalendarSpot;

namespace {

QColor WithAlpha(QColor color, int alpha)
{
    color.setAlpha(alpha);
    return color;
}

// Halfway between two colours: a holiday of a neighbouring month is marked, but paler.
QColor Halfway(const QColor& a, const QColor& b)
{
    return QColor((a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2);
}

} // namespace

void HalvernCalendar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const CalendarLayout::Geometry g = currentGeometry();
    painter.fillRect(rect(), spotDesign(Background).back);
    paintTitle(painter, g);
    paintHeader(painter, g);
    const QDate todayDate = today();
    for (int i = 0; i < CalendarLayout::ShownDays; ++i)
        paintDay(painter, g.cell(i), m_firstShown.addDays(i), todayDate);
    paintGridLines(painter, g);
}

void HalvernCalendar::paintTitle(QPainter& painter, const CalendarLayout::Geometry& g) const
{
    const SpotDesign title = spotDesign(Title);
    painter.fillRect(g.title, title.back);
    painter.setFont(title.font);
    painter.setPen(title.text);
    const QRect textRect =
        g.title.adjusted(g.previousButton.right() + 1, 0, -(g.title.width() - g.nextButton.left()), 0);
    painter.drawText(textRect, Qt::AlignCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(titleText(), Qt::ElideRight, textRect.width()));
    paintArrow(painter, g.previousButton, true, m_hoverArrow < 0);
    paintArrow(painter, g.nextButton, false, m_hoverArrow > 0);
}

void HalvernCalendar::paintArrow(QPainter& painter, const QRect& rect, bool pointsLeft, bool hovered) const
{
    const QColor color = spotDesign(Title).text;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF center = QRectF(rect).center();
    const double size = qMax(3.0, rect.height() / 7.0);
    if (hovered) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(WithAlpha(color, 40));
        painter.drawEllipse(center, size * 2.4, size * 2.4);
    }
    QPen pen(color, qMax(1.5, size / 2.2));
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    // The tip of the chevron is at center + dx: left of the centre for "previous".
    const double dx = pointsLeft ? -size / 2 : size / 2;
    const QPointF chevron[] = {center + QPointF(-dx, -size), center + QPointF(dx, 0), center + QPointF(-dx, size)};
    painter.drawPolyline(chevron, 3);
    painter.restore();
}

void HalvernCalendar::paintHeader(QPainter& painter, const CalendarLayout::Geometry& g) const
{
    const SpotDesign header = spotDesign(WeekdayHeader);
    painter.fillRect(g.header, header.back);
    painter.setFont(header.font);
    const QStringList names = weekdayHeaders();
    for (int column = 0; column < CalendarLayout::Columns; ++column) {
        const int weekday = CalendarLayout::WeekdayOfColumn(column, m_firstDayOfWeek);
        QColor color = header.text;
        if (weekday == 1)
            color = spotDesign(SundayHeader).text;
        else if (weekday == 7)
            color = spotDesign(SaturdayHeader).text;
        painter.setPen(color);
        painter.drawText(g.headerCell(column), Qt::AlignCenter | Qt::TextSingleLine, names.at(column));
    }
}

QColor HalvernCalendar::dayTextColor(const QDate& date) const
{
    const bool holiday = m_holidays.contains(date);
    if (date.year() != m_current.year() || date.month() != m_current.month())
        return holiday ? Halfway(spotDesign(OtherMonth).text, spotDesign(Holiday).text) : spotDesign(OtherMonth).text;
    if (holiday)
        return spotDesign(Holiday).text;
    if (m_dayOffs.contains(date))
        return spotDesign(DayOff).text;
    const int weekday = CalendarLayout::WeekdayNumber(date);
    if (weekday == 1)
        return spotDesign(Sunday).text;
    if (weekday == 7)
        return spotDesign(Saturday).text;
    return spotDesign(Day).text;
}

void HalvernCalendar::paintDay(QPainter& painter, const QRect& cell, const QDate& date, const QDate& todayDate) const
{
    const bool inMonth = date.year() == m_current.year() && date.month() == m_current.month();
    const bool entry = m_entryDays.contains(date);
    const bool dayOff = m_dayOffs.contains(date);
    const bool holiday = m_holidays.contains(date);
    const bool isToday = date == todayDate;
    const bool selected = date == m_current;

    QColor back = spotDesign(inMonth ? Day : OtherMonth).back;
    if (dayOff)
        back = spotDesign(DayOff).back;
    // A day that is both a holiday and a day-off wears the holiday's colours and the
    // day-off's corner.
    if (holiday)
        back = inMonth ? spotDesign(Holiday).back : Halfway(back, spotDesign(Holiday).back);
    if (entry)
        back = spotDesign(EntryDay).back;
    if (isToday)
        back = spotDesign(Today).back;
    painter.fillRect(cell, back);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF inner = QRectF(cell).adjusted(2.5, 2.5, -1.5, -1.5);
    const double radius = qMin(inner.width(), inner.height()) / 6.0;
    if (selected) {
        const SpotDesign design = spotDesign(Selected);
        painter.setBrush(design.back);
        painter.setPen(QPen(WithAlpha(design.text, hasFocus() ? 150 : 70), 1.0));
        painter.drawRoundedRect(inner, radius, radius);
    } else if (date == m_hoverDate) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(WithAlpha(spotDesign(Selected).back.darker(130), 200), 1.0));
        painter.drawRoundedRect(inner, radius, radius);
    }
    if (isToday) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(spotDesign(Today).text, 2.0));
        painter.drawRoundedRect(inner.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
    }
    if (dayOff) {
        const double side = qBound(5.0, qMin(cell.width(), cell.height()) / 4.0, 10.0);
        const QPointF corner(cell.right() + 1.0, cell.top());
        QPainterPath mark;
        mark.moveTo(corner);
        mark.lineTo(corner - QPointF(side, 0));
        mark.lineTo(corner + QPointF(0, side));
        mark.closeSubpath();
        painter.fillPath(mark, spotDesign(DayOff).text);
    }
    if (entry) {
        const double dot = qBound(1.8, cell.height() / 14.0, 3.5);
        painter.setPen(Qt::NoPen);
        painter.setBrush(spotDesign(EntryDay).text);
        painter.drawEllipse(QPointF(QRectF(cell).center().x(), cell.bottom() - 2.0 - 1.6 * dot), dot, dot);
    }
    painter.restore();

    painter.setFont(spotDesign(entry ? EntryDay : Day).font);
    painter.setPen(dayTextColor(date));
    // Lift the digits a little when the dot sits below them, so both stay clear.
    const int lift = entry ? qMax(2, cell.height() / 10) : 0;
    painter.drawText(cell.adjusted(0, 0, 0, -lift), Qt::AlignCenter | Qt::TextSingleLine, QString::number(date.day()));
}

void HalvernCalendar::paintGridLines(QPainter& painter, const CalendarLayout::Geometry& g) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(m_gridLineColor, 0));
    for (int column = 1; column < CalendarLayout::Columns; ++column) {
        const int x = g.cell(column).left();
        painter.drawLine(x, g.grid.top(), x, g.grid.bottom());
    }
    for (int row = 1; row < CalendarLayout::Rows; ++row) {
        const int y = g.cell(row * CalendarLayout::Columns).top();
        painter.drawLine(g.grid.left(), y, g.grid.right(), y);
    }
    painter.drawLine(g.grid.left(), g.grid.top(), g.grid.right(), g.grid.top());
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(g.header.united(g.grid).adjusted(0, 0, -1, -1));
    painter.restore();
}
