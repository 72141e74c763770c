#include "calendarcontrol/CalendarAccessible.h"

#include "calendarcontrol/HalvernCalendar.h"

#include <QMetaObject>
#include <QWindow>

namespace {

QString WeekdayFullName(const QDate& date)
{
    // QDate counts Monday as 1 and Sunday as 7.
    static const char* const names[] = {"月曜日", "火曜日", "水曜日", "木曜日", "金曜日", "土曜日", "日曜日"};
    return QString::fromUtf8(names[date.dayOfWeek() - 1]);
}

// One day of the grid, at a fixed position 0..41 of it.
class CalendarCellAccessible final : public QAccessibleInterface,
                                     public QAccessibleTableCellInterface,
                                     public QAccessibleActionInterface
{
public:
    CalendarCellAccessible(HalvernCalendar* calendar, int index) : m_calendar(calendar), m_index(index) {}

    QDate date() const { return m_calendar ? m_calendar->FirstShownDate().addDays(m_index) : QDate(); }

    bool isValid() const override { return !m_calendar.isNull(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return m_calendar ? m_calendar->window()->windowHandle() : nullptr; }
    QList<QPair<QAccessibleInterface*, QAccessible::Relation>> relations(QAccessible::Relation) const override
    {
        return {};
    }
    QAccessibleInterface* focusChild() const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(m_calendar); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text t) const override
    {
        if (!m_calendar || t != QAccessible::Name)
            return QString();
        const QDate day = date();
        return DayAccessibleName(day, m_calendar->isEntryDay(day), m_calendar->isDayOff(day),
                                 m_calendar->dayOffName(day), m_calendar->holidayName(day));
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override
    {
        if (!m_calendar)
            return QRect();
        const QRect local = m_calendar->dayRect(date());
        return QRect(m_calendar->mapToGlobal(local.topLeft()), local.size());
    }
    QAccessible::Role role() const override { return QAccessible::Cell; }
    QAccessible::State state() const override
    {
        QAccessible::State s;
        s.selectable = true;
        s.focusable = true;
        if (!m_calendar || !m_calendar->isVisible())
            s.invisible = true;
        if (isSelected()) {
            s.selected = true;
            s.focused = m_calendar->hasFocus();
        }
        return s;
    }
    void* interface_cast(QAccessible::InterfaceType type) override
    {
        if (type == QAccessible::TableCellInterface)
            return static_cast<QAccessibleTableCellInterface*>(this);
        if (type == QAccessible::ActionInterface)
            return static_cast<QAccessibleActionInterface*>(this);
        return nullptr;
    }

    // The cell.
    bool isSelected() const override { return m_calendar && m_calendar->CurrentDate() == date(); }
    QList<QAccessibleInterface*> columnHeaderCells() const override { return {}; }
    QList<QAccessibleInterface*> rowHeaderCells() const override { return {}; }
    int columnIndex() const override { return m_index % CalendarLayout::Columns; }
    int rowIndex() const override { return m_index / CalendarLayout::Columns; }
    int columnExtent() const override { return 1; }
    int rowExtent() const override { return 1; }
    QAccessibleInterface* table() const override { return parent(); }

    // Pressing a day selects it, as a click does. Queued, so that the caller (a screen
    // reader over the bus) has its answer before the panel refreshes.
    QStringList actionNames() const override { return {pressAction()}; }
    void doAction(const QString& action) override
    {
        if (action != pressAction() || !m_calendar)
            return;
        const QDate day = date();
        QPointer<HalvernCalendar> calendar = m_calendar;
        QMetaObject::invokeMethod(
            m_calendar,
            [calendar, day] {
                if (calendar)
                    calendar->setCurrentDate(day);
            },
            Qt::QueuedConnection);
    }
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    QPointer<HalvernCalendar> m_calendar;
    int m_index;
};

QAccessibleInterface* CalendarFactory(const QString& className, QObject* object)
{
    if (className == QLatin1String("HalvernCalendar") && object && object->isWidgetType())
        return new CalendarAccessible(static_cast<HalvernCalendar*>(object));
    return nullptr;
}

} // namespace

QString DayAccessibleName(const QDate& date, bool hasEntries, bool isDayOff, const QString& dayOffName,
                          const QString& holidayName)
{
    if (!date.isValid())
        return QString();
    QStringList parts{QStringLiteral("%1年%2月%3日").arg(date.year()).arg(date.month()).arg(date.day()),
                      WeekdayFullName(date)};
    if (hasEntries)
        parts << QStringLiteral("予定あり");
    if (!holidayName.isEmpty())
        parts << holidayName;
    // Many users keep the national holidays as day-offs of the same name: said twice, the
    // name is only noise. A day-off of its own name, or one without a name, on a holiday is
    // still said, since the grid shows the day-off mark as well.
    const QString ownName = dayOffName.trimmed();
    if (isDayOff && (ownName.isEmpty() || ownName != holidayName))
        parts << (ownName.isEmpty() ? QStringLiteral("休日") : ownName);
    return parts.join(QLatin1Char(' '));
}

CalendarAccessible::CalendarAccessible(HalvernCalendar* calendar) : QAccessibleWidget(calendar, QAccessible::Table) {}

CalendarAccessible::~CalendarAccessible()
{
    for (const QAccessible::Id id : std::as_const(m_cells))
        QAccessible::deleteAccessibleInterface(id);
}

HalvernCalendar* CalendarAccessible::calendar() const
{
    return static_cast<HalvernCalendar*>(widget());
}

void* CalendarAccessible::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableInterface)
        return static_cast<QAccessibleTableInterface*>(this);
    return QAccessibleWidget::interface_cast(type);
}

int CalendarAccessible::childCount() const
{
    return CalendarLayout::ShownDays;
}

QAccessibleInterface* CalendarAccessible::child(int index) const
{
    if (index < 0 || index >= CalendarLayout::ShownDays)
        return nullptr;
    auto found = m_cells.constFind(index);
    if (found == m_cells.constEnd())
        found = m_cells.insert(index,
                               QAccessible::registerAccessibleInterface(new CalendarCellAccessible(calendar(), index)));
    return QAccessible::accessibleInterface(found.value());
}

int CalendarAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const QAccessible::Id id = QAccessible::uniqueId(const_cast<QAccessibleInterface*>(child));
    for (auto it = m_cells.constBegin(); it != m_cells.constEnd(); ++it) {
        if (it.value() == id)
            return it.key();
    }
    return -1;
}

QAccessibleInterface* CalendarAccessible::childAt(int x, int y) const
{
    const QDate day = calendar()->dateAt(calendar()->mapFromGlobal(QPoint(x, y)));
    if (!day.isValid())
        return nullptr;
    return child(static_cast<int>(calendar()->FirstShownDate().daysTo(day)));
}

QAccessibleInterface* CalendarAccessible::focusChild() const
{
    if (!calendar()->hasFocus())
        return nullptr;
    return child(static_cast<int>(calendar()->FirstShownDate().daysTo(calendar()->CurrentDate())));
}

QString CalendarAccessible::text(QAccessible::Text t) const
{
    if (t == QAccessible::Name && widget()->accessibleName().isEmpty())
        return calendar()->titleText();
    return QAccessibleWidget::text(t);
}

QAccessibleInterface* CalendarAccessible::cellAt(int row, int column) const
{
    if (row < 0 || row >= CalendarLayout::Rows || column < 0 || column >= CalendarLayout::Columns)
        return nullptr;
    return child(row * CalendarLayout::Columns + column);
}

QList<QAccessibleInterface*> CalendarAccessible::selectedCells() const
{
    const qint64 index = calendar()->FirstShownDate().daysTo(calendar()->CurrentDate());
    if (QAccessibleInterface* cell = child(static_cast<int>(index)))
        return {cell};
    return {};
}

QString CalendarAccessible::columnDescription(int column) const
{
    if (column < 0 || column >= CalendarLayout::Columns)
        return QString();
    return WeekdayFullName(calendar()->FirstShownDate().addDays(column));
}

int CalendarAccessible::columnCount() const
{
    return CalendarLayout::Columns;
}

int CalendarAccessible::rowCount() const
{
    return CalendarLayout::Rows;
}

void NotifyCalendarCellsChanged(HalvernCalendar* calendar)
{
    if (!QAccessible::isActive())
        return;
    QAccessibleInterface* grid = QAccessible::queryAccessibleInterface(calendar);
    if (!grid)
        return;
    for (int i = 0; i < grid->childCount(); ++i) {
        QAccessibleEvent named(grid->child(i), QAccessible::NameChanged);
        QAccessible::updateAccessibility(&named);
    }
    QAccessibleEvent selection(calendar, QAccessible::SelectionWithin);
    QAccessible::updateAccessibility(&selection);
    if (QAccessibleInterface* current = grid->focusChild()) {
        QAccessibleEvent focus(current, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

void InstallCalendarAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(CalendarFactory);
        return true;
    }();
    Q_UNUSED(installed)
}
