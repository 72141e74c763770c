#include "calendarcontrol/HalvernCalendar.h"

#include "calendarcontrol/CalendarAccessible.h"
#include "holidays/JapaneseHolidays.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>

namespace {

constexpr int Margin = 4;
constexpr int WheelStep = 120; // one notch of a classic mouse wheel

} // namespace

HalvernCalendar::HalvernCalendar(QWidget* parent)
    : QWidget(parent), m_titleFormat(QStringLiteral("yyyy年m月")), m_weekdayFormat(QStringLiteral("日")),
      m_gridLineColor(0xE0, 0xE0, 0xE0)
{
    setObjectName(QStringLiteral("HalvernCalendar"));
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    for (const int code : CalendarSpot::Codes)
        m_spots.insert(code, DefaultSpotDesign(code));
    // The calendar never reads the system clock itself; until its owner picks a day it
    // shows a fixed month.
    m_current = QDate(2000, 1, 1);
    m_firstShown = CalendarLayout::FirstShownDate(m_current.year(), m_current.month(), m_firstDayOfWeek);
    InstallCalendarAccessibility();
    refreshHolidays();
}

void HalvernCalendar::setCurrentDate(const QDate& date)
{
    if (!date.isValid() || date == m_current)
        return;
    const bool monthMoved = date.year() != m_current.year() || date.month() != m_current.month();
    m_current = date;
    if (monthMoved) {
        m_firstShown = CalendarLayout::FirstShownDate(date.year(), date.month(), m_firstDayOfWeek);
        pruneMarks();
        refreshHolidays();
    }
    update();
    scheduleAccessibleUpdate();
    if (monthMoved)
        emit monthChanged(date.year(), date.month());
    // A month listener may already have moved on to another day; then that move reported it.
    if (m_current == date)
        emit dateChanged(date);
}

bool HalvernCalendar::isShown(const QDate& date) const
{
    return date.isValid() && date >= m_firstShown && date <= LastShownDate();
}

void HalvernCalendar::ClearEntryMarks()
{
    if (m_entryDays.isEmpty())
        return;
    m_entryDays.clear();
    update();
    scheduleAccessibleUpdate();
}

void HalvernCalendar::MarkEntryDay(const QDate& date)
{
    if (!isShown(date) || m_entryDays.contains(date))
        return;
    m_entryDays.insert(date);
    update();
    scheduleAccessibleUpdate();
}

void HalvernCalendar::ClearDayOffMarks()
{
    m_dayOffNames.clear();
    if (m_dayOffs.isEmpty())
        return;
    m_dayOffs.clear();
    update();
    scheduleAccessibleUpdate();
}

void HalvernCalendar::MarkDayOff(const QDate& date, const QString& name)
{
    if (!isShown(date))
        return;
    if (!name.isEmpty())
        m_dayOffNames.insert(date, name);
    if (m_dayOffs.contains(date))
        return;
    m_dayOffs.insert(date);
    update();
    scheduleAccessibleUpdate();
}

void HalvernCalendar::scheduleAccessibleUpdate()
{
    if (m_accessibleUpdatePending || !QAccessible::isActive())
        return;
    m_accessibleUpdatePending = true;
    QTimer::singleShot(0, this, [this] {
        m_accessibleUpdatePending = false;
        NotifyCalendarCellsChanged(this);
    });
}

void HalvernCalendar::pruneMarks()
{
    for (QSet<QDate>* marks : {&m_entryDays, &m_dayOffs}) {
        for (auto it = marks->begin(); it != marks->end();) {
            if (isShown(*it))
                ++it;
            else
                it = marks->erase(it);
        }
    }
}

void HalvernCalendar::setHolidaysShown(bool shown)
{
    if (shown == m_holidaysShown)
        return;
    m_holidaysShown = shown;
    refreshHolidays();
    update();
}

void HalvernCalendar::refreshHolidays()
{
    m_holidays.clear();
    if (!m_holidaysShown)
        return;
    for (const JapaneseHolidays::Holiday& holiday : JapaneseHolidays::HolidaysBetween(m_firstShown, LastShownDate()))
        m_holidays.insert(holiday.date, holiday.name);
}

void HalvernCalendar::setTitleFormat(const QString& format)
{
    m_titleFormat = format;
    updateGeometry();
    update();
}

void HalvernCalendar::setFirstDayOfWeek(int firstDayOfWeek)
{
    const int normalized = CalendarLayout::NormalizedFirstDayOfWeek(firstDayOfWeek);
    if (normalized == m_firstDayOfWeek)
        return;
    m_firstDayOfWeek = normalized;
    m_firstShown = CalendarLayout::FirstShownDate(m_current.year(), m_current.month(), m_firstDayOfWeek);
    pruneMarks();
    refreshHolidays();
    update();
}

void HalvernCalendar::setWeekdayFormat(const QString& format)
{
    m_weekdayFormat = format;
    updateGeometry();
    update();
}

QString HalvernCalendar::titleText() const
{
    return CalendarLayout::FormatTitle(m_titleFormat, m_current);
}

QStringList HalvernCalendar::weekdayHeaders() const
{
    const QStringList names = CalendarLayout::WeekdayNames(m_weekdayFormat);
    QStringList headers;
    for (int column = 0; column < CalendarLayout::Columns; ++column)
        headers << names.at(CalendarLayout::WeekdayOfColumn(column, m_firstDayOfWeek) - 1);
    return headers;
}

void HalvernCalendar::setSpotDesign(int code, const SpotDesign& design)
{
    m_spots.insert(code, design);
    updateGeometry();
    update();
}

SpotDesign HalvernCalendar::spotDesign(int code) const
{
    return m_spots.value(code, DefaultSpotDesign(code));
}

void HalvernCalendar::setGridLineColor(const QColor& color)
{
    m_gridLineColor = color;
    update();
}

void HalvernCalendar::setTodayProvider(TodayProvider provider)
{
    m_today = std::move(provider);
    update();
}

void HalvernCalendar::setToday(const QDate& date)
{
    setTodayProvider([date] { return date; });
}

QDate HalvernCalendar::today() const
{
    return m_today ? m_today() : QDate();
}

CalendarLayout::Geometry HalvernCalendar::geometryFor(const QSize& size) const
{
    return CalendarLayout::Geometry::Compute(size, titleHeight(), headerHeight(), Margin);
}

int HalvernCalendar::titleHeight() const
{
    return QFontMetrics(spotDesign(CalendarSpot::Title).font).height() + 14;
}

int HalvernCalendar::headerHeight() const
{
    return QFontMetrics(spotDesign(CalendarSpot::WeekdayHeader).font).height() + 8;
}

QSize HalvernCalendar::cellSizeHint() const
{
    const QFontMetrics day(spotDesign(CalendarSpot::Day).font);
    const QFontMetrics entry(spotDesign(CalendarSpot::EntryDay).font);
    const QFontMetrics header(spotDesign(CalendarSpot::WeekdayHeader).font);
    int width = qMax(day.horizontalAdvance(QStringLiteral("30")), entry.horizontalAdvance(QStringLiteral("30")));
    for (const QString& name : weekdayHeaders())
        width = qMax(width, header.horizontalAdvance(name));
    const int height = qMax(day.height(), entry.height());
    // Room around the digits for the today frame, the entry dot and the day-off corner.
    return QSize(width + 16, height + 14);
}

QSize HalvernCalendar::sizeHint() const
{
    const QSize cell = cellSizeHint();
    const int titleWidth = QFontMetrics(spotDesign(CalendarSpot::Title).font).horizontalAdvance(titleText());
    const int width = qMax(CalendarLayout::Columns * cell.width(), titleWidth + 2 * titleHeight() + 16) + 2 * Margin;
    return QSize(width, titleHeight() + Margin + headerHeight() + CalendarLayout::Rows * cell.height() + Margin);
}

QSize HalvernCalendar::minimumSizeHint() const
{
    const QSize cell = cellSizeHint() - QSize(8, 8);
    return QSize(CalendarLayout::Columns * cell.width() + 2 * Margin,
                 titleHeight() + Margin + headerHeight() + CalendarLayout::Rows * cell.height() + Margin);
}

QRect HalvernCalendar::dayRect(const QDate& date) const
{
    if (!isShown(date))
        return QRect();
    return currentGeometry().cell(static_cast<int>(m_firstShown.daysTo(date)));
}

QDate HalvernCalendar::dateAt(const QPoint& point) const
{
    const int index = currentGeometry().cellAt(point);
    return index < 0 ? QDate() : m_firstShown.addDays(index);
}

QRect HalvernCalendar::previousMonthButtonRect() const
{
    return currentGeometry().previousButton;
}

QRect HalvernCalendar::nextMonthButtonRect() const
{
    return currentGeometry().nextButton;
}

void HalvernCalendar::moveBy(int days)
{
    setCurrentDate(m_current.addDays(days));
}

void HalvernCalendar::moveByMonths(int months)
{
    setCurrentDate(CalendarLayout::AddMonthsClamped(m_current, months));
}

void HalvernCalendar::showPreviousMonth()
{
    moveByMonths(-1);
}

void HalvernCalendar::showNextMonth()
{
    moveByMonths(1);
}

void HalvernCalendar::goToToday()
{
    setCurrentDate(today());
}

bool HalvernCalendar::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    const QDate date = dateAt(help->pos());
    // The holiday's name comes first, then whatever the owner says about the day.
    QStringList lines;
    if (date.isValid()) {
        if (const QString holiday = holidayName(date); !holiday.isEmpty())
            lines << holiday;
        if (const QString more = m_dayToolTip ? m_dayToolTip(date) : QString(); !more.isEmpty())
            lines << more;
    }
    const QString text = lines.join(QLatin1Char('\n'));
    if (text.isEmpty()) {
        QToolTip::hideText();
        event->ignore();
    } else {
        // Tied to the day's cell: moving to another day asks again.
        QToolTip::showText(help->globalPos(), text, this, dayRect(date));
    }
    return true;
}

void HalvernCalendar::mousePressEvent(QMouseEvent* event)
{
    m_pressedDate = QDate();
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    const QPoint point = event->position().toPoint();
    const CalendarLayout::Geometry g = currentGeometry();
    if (g.previousButton.contains(point)) {
        showPreviousMonth();
    } else if (g.nextButton.contains(point)) {
        showNextMonth();
    } else if (const QDate date = dateAt(point); date.isValid()) {
        // Remember the day pressed: a day of a neighbouring month moves the grid under
        // the pointer, and the release must still mean the day that was pressed.
        setCurrentDate(date);
        m_pressedDate = date;
    }
    event->accept();
}

void HalvernCalendar::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_pressedDate.isValid()) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const QDate date = m_pressedDate;
    m_pressedDate = QDate();
    event->accept();
    emit dateClicked(date);
}

void HalvernCalendar::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    const CalendarLayout::Geometry g = currentGeometry();
    const int arrow = g.previousButton.contains(point) ? -1 : g.nextButton.contains(point) ? 1 : 0;
    const QDate date = dateAt(point);
    if (arrow != m_hoverArrow || date != m_hoverDate) {
        m_hoverArrow = arrow;
        m_hoverDate = date;
        update();
    }
    QWidget::mouseMoveEvent(event);
}

void HalvernCalendar::leaveEvent(QEvent* event)
{
    m_hoverArrow = 0;
    m_hoverDate = QDate();
    update();
    QWidget::leaveEvent(event);
}

void HalvernCalendar::wheelEvent(QWheelEvent* event)
{
    // Fine-grained wheels send small steps; a month passes for every full notch.
    m_wheelRemainder += event->angleDelta().y();
    while (m_wheelRemainder >= WheelStep) {
        m_wheelRemainder -= WheelStep;
        showPreviousMonth();
    }
    while (m_wheelRemainder <= -WheelStep) {
        m_wheelRemainder += WheelStep;
        showNextMonth();
    }
    event->accept();
}

void HalvernCalendar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        moveBy(-1);
        break;
    case Qt::Key_Right:
        moveBy(1);
        break;
    case Qt::Key_Up:
        moveBy(-CalendarLayout::Columns);
        break;
    case Qt::Key_Down:
        moveBy(CalendarLayout::Columns);
        break;
    case Qt::Key_PageUp:
        showPreviousMonth();
        break;
    case Qt::Key_PageDown:
        showNextMonth();
        break;
    case Qt::Key_Home:
        goToToday();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        emit dateClicked(m_current);
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}
