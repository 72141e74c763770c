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
#include "store/GeneralRow.h"

#include <QEvent>
#include <QFrame>
#include <QLabel>
#include <QLayout>
#include <QLoggingCategory>
#include <QScreen>

Q_LOGGING_CATEGORY(lcMainWindow, "verdaly.mainwindow")

#include <optional>

namespace {

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
        if (!EntryRowIsReadable(entry))
            continue;
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
            m_calendar->MarkDayOff(day, row.text(QStringLiteral("DATAS1")));
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
        if (!EntryRowIsReadable(entry))
            continue;
        if (n >= PanelRows) {
            LabMore->show();
            break;
        }
        LabTime[n]->setText(EntryLineText(day, entry));
        const QString subject = PanelSubject(entry);
        m_panelSubject[n] = subject;
        ElidePanelSubject(static_cast<int>(n));
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
        m_panelSubject[i].clear();
        m_panelEntryId[i] = 0;
        m_panelEntryData[i].clear();
    }
}

void FrmMain::ElidePanelSubject(int row)
{
    LinkLabel* label = LabYotei.at(static_cast<size_t>(row));
    const QString& subject = m_panelSubject.at(static_cast<size_t>(row));
    // A subject too long for the panel ends in an ellipsis instead of being cut mid-glyph.
    const int width = label->contentsRect().width();
    label->setText(width > 0 ? label->fontMetrics().elidedText(subject, Qt::ElideRight, width) : subject);
}

bool FrmMain::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange) {
        for (int i = 0; i < PanelRows; ++i) {
            if (watched == LabYotei.at(static_cast<size_t>(i)))
                ElidePanelSubject(i);
        }
    }
    return QWidget::eventFilter(watched, event);
}

void FrmMain::FitDesignToScreen()
{
    const QScreen* screen = this->screen();
    if (!screen)
        return;
    // Room for the window manager's frame, which is not known before the window is shown.
    const QSize room = screen->availableGeometry().size() - QSize(16, 48);
    FixPanelRowHeights();
    for (int pass = 0; pass < 4; ++pass) {
        layout()->activate();
        const QSize need = minimumSizeHint();
        if (need.width() <= room.width() && need.height() <= room.height())
            return;
        const double factor = 0.95 * qMin(static_cast<double>(room.width()) / need.width(),
                                          static_cast<double>(room.height()) / need.height());
        const auto scaled = [factor](QFont font) {
            if (font.pointSizeF() > 0)
                font.setPointSizeF(qMax(6.0, font.pointSizeF() * factor));
            else if (font.pixelSize() > 0)
                font.setPixelSize(qMax(8, qRound(font.pixelSize() * factor)));
            return font;
        };
        qCWarning(lcMainWindow) << "the design's fonts do not fit the screen; shown at" << factor << "of their size";
        for (const int code : CalendarSpot::Codes) {
            SpotDesign design = m_calendar->spotDesign(code);
            design.font = scaled(design.font);
            m_calendar->setSpotDesign(code, design);
        }
        for (QLabel* label : findChildren<QLabel*>())
            label->setFont(scaled(label->font()));
        for (QLabel* time : LabTime)
            time->setMinimumWidth(time->fontMetrics().horizontalAdvance(QString(13, QLatin1Char('0'))));
        FixPanelRowHeights();
    }
}

void FrmMain::ApplyTransparency()
{
    const std::optional<Row> row = ReadGeneralRow(m_app.db(), 313);
    if (!row)
        return;
    // The choices are percentages of transparency; a window never disappears entirely.
    const qint64 percent = qBound(qint64(0), row->number(QStringLiteral("DATAN1")), qint64(90));
    setWindowOpacity(1.0 - static_cast<double>(percent) / 100.0);
}

void FrmMain::ApplyDesignSettings()
{
    DatabaseConnection& db = m_app.db();
    if (const std::optional<Row> onTop = ReadGeneralRow(db, 312))
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
    FitDesignToScreen();
}

void FrmMain::FixPanelRowHeights()
{
    for (size_t i = 0; i < PanelRows; ++i) {
        const int height = qMax(LabTime[i]->fontMetrics().height(), LabYotei[i]->fontMetrics().height());
        LabTime[i]->setFixedHeight(height);
        LabYotei[i]->setFixedHeight(height);
    }
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
