// The month grid's marks, the selected-day panel, and the design applied to both.
#include "mainwindow/FrmMain.h"

#include "calendarcontrol/CalendarDesign.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "common/AppServices.h"
#include "common/DateText.h"
#include "common/Fonts.h"
#include "common/LinkLabel.h"
#include "common/Units.h"
#include "entries/EntryKinds.h"
#include "entries/EntryQueries.h"

#include <QFrame>
#include <QLabel>

#include <optional>

namespace {

// The single row of a general code, if there is one.
std::optional<Row> GeneralRow(DatabaseConnection& db, int code)
{
    Rows rows = db.ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNGENERAL ") +
                            QStringLiteral("WHERE CODE = ") + QString::number(code) + QLatin1Char(' '));
    if (rows.empty())
        return std::nullopt;
    return rows.front();
}

QFont SpotFont(const Row& row)
{
    QFont font(row.text(QStringLiteral("FOREFONT")));
    const double size = row.real(QStringLiteral("FSIZE"));
    if (size > 0)
        font.setPointSizeF(size);
    font.setBold(row.number(QStringLiteral("FBOLD")) != 0);
    font.setItalic(row.number(QStringLiteral("FITALIC")) != 0);
    return font;
}

} // namespace

void FrmMain::RefreshMonthMarks()
{
    DatabaseConnection& db = m_app.db();
    const QDate first = m_calendar->FirstShownDate();
    const QDate last = m_calendar->LastShownDate();

    // Cleared before the read: if the read fails, no marks of another month stay behind.
    m_calendar->ClearEntryMarks();
    const Rows entries = db.ReadRows(MonthQuerySql(first, last));
    for (const Row& entry : entries) {
        for (const QDate& day : EntryMarkDates(entry, first, last))
            m_calendar->MarkEntryDay(day);
    }
    MarkDayOffs();
    RefreshDayPanel();
}

void FrmMain::MarkDayOffs()
{
    const QDate current = m_calendar->CurrentDate();
    m_calendar->ClearDayOffMarks();
    const Rows dayOffs = m_app.db().ReadRows(DayOffQuerySql(current.month()));
    for (const Row& row : dayOffs) {
        const QDate day =
            DayOffDate(current.year(), row.number(QStringLiteral("DATAN1")), row.number(QStringLiteral("DATAN2")));
        if (day.isValid())
            m_calendar->MarkDayOff(day);
    }
}

void FrmMain::RefreshDayPanel()
{
    const QDate day = m_calendar->CurrentDate();
    DatabaseConnection& db = m_app.db();
    const PanelKey key{db.connectionId(), db.writeGeneration(), day};
    if (key == m_panelShown && !key.connection.isEmpty())
        return;
    ClearDayPanel();
    const Rows entries = db.ReadRows(DayQuerySql(day));
    size_t n = 0;
    for (const Row& entry : entries) {
        if (n >= PanelRows) {
            LabMore->show();
            break;
        }
        LabTime[n]->setText(EntryLineText(day, entry));
        const QString subject = PanelSubject(entry);
        LabYotei[n]->setText(subject);
        LabYotei[n]->setToolTip(subject);
        m_panelEntryId[n] = static_cast<int>(entry.number(QStringLiteral("ID")));
        m_panelEntryData[n] = entry.text(QStringLiteral("DATA"));
        ++n;
    }
    setWindowTitle(DateCaption(day));
    m_panelShown = key;
}

void FrmMain::ClearDayPanel()
{
    m_panelShown = PanelKey{};
    LabMore->hide();
    for (size_t i = 0; i < PanelRows; ++i) {
        LabTime[i]->clear();
        LabYotei[i]->clear();
        LabYotei[i]->setToolTip(QString());
        m_panelEntryId[i] = 0;
        m_panelEntryData[i].clear();
    }
}

void FrmMain::ApplyTransparency()
{
    const std::optional<Row> row = GeneralRow(m_app.db(), 313);
    if (!row)
        return;
    // The choices are percentages of transparency; a window never disappears entirely.
    const qint64 percent = qBound(qint64(0), row->number(QStringLiteral("DATAN1")), qint64(90));
    setWindowOpacity(1.0 - static_cast<double>(percent) / 100.0);
}

void FrmMain::ApplyDesignSettings()
{
    DatabaseConnection& db = m_app.db();
    if (const std::optional<Row> onTop = GeneralRow(db, 312))
        setAlwaysOnTop(onTop->number(QStringLiteral("DATAN1")) == 1);

    ApplyCalendarDesign(db, *m_calendar);

    const Rows panel = db.ReadRows(QStringLiteral("SELECT * ") + QStringLiteral("FROM TRNCOLOR ") +
                                   QStringLiteral("WHERE CODE = 140 ") + QStringLiteral("AND   SETNUM = 0 "));
    if (panel.empty())
        return;
    const Row& spot = panel.front();
    m_labelForeColor = Units::ColorFromStored(spot.number(QStringLiteral("FORECOLOR")));
    const QColor back = Units::ColorFromStored(spot.number(QStringLiteral("BACKCOLOR")));
    const QFont font = SpotFont(spot);

    QPalette windowPalette = palette();
    windowPalette.setColor(QPalette::Window, back);
    setPalette(windowPalette);
    setAutoFillBackground(true);

    QFont timeFont = FixedPitchJapaneseFont(font.pointSizeF());
    for (QLabel* time : LabTime) {
        QPalette p = time->palette();
        p.setColor(QPalette::WindowText, m_labelForeColor);
        time->setPalette(p);
        time->setFont(timeFont);
        time->setMinimumWidth(QFontMetrics(timeFont).horizontalAdvance(QString(13, QLatin1Char('0'))));
    }
    for (LinkLabel* link : LabYotei)
        link->setFont(font);
    for (LinkLabel* link : {LabMore, LabMenu, LabJump, LabScaedule, LabHelp})
        link->setFont(font);
    QPalette linePalette = LinLine->palette();
    linePalette.setColor(QPalette::WindowText, m_labelForeColor);
    LinLine->setPalette(linePalette);
    ResetLinkStyles();
}

void FrmMain::ResetLinkStyles()
{
    for (LinkLabel* link : {LabHelp, LabJump, LabMenu, LabMore, LabScaedule, LabYotei[0], LabYotei[1], LabYotei[2]}) {
        if (m_labelForeColor.isValid())
            link->setNormalColor(m_labelForeColor);
        link->resetStyle();
    }
}

void FrmMain::setAlwaysOnTop(bool onTop)
{
    if (windowFlags().testFlag(Qt::WindowStaysOnTopHint) == onTop)
        return;
    const bool wasVisible = isVisible();
    setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    // Changing a window's flags hides it; bring it back as it was.
    if (wasVisible)
        show();
}
