#include "mainwindow/FrmMain.h"

#include "alarms/AlarmEngine.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "common/AppIcon.h"
#include "common/AppInfo.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/Fonts.h"
#include "common/LinkLabel.h"
#include "common/UserAction.h"
#include "mainwindow/DayToolTip.h"
#include "notes/StickyNotes.h"
#include "shell/SingleInstance.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

FrmMain::FrmMain(AppServices& app, QWidget* parent) : QWidget(parent), m_app(app)
{
    setObjectName(QStringLiteral("frmMAIN"));
    setWindowTitle(AppInfo::productTitle());
    setWindowIcon(AppIcon());
    setMouseTracking(true);
    m_notes = new StickyNotes(m_app, this);
    buildControls();
    buildMenus();
}

FrmMain::~FrmMain() = default;

namespace {

LinkLabel* MakeLink(const QString& name, const QString& text, QWidget* parent)
{
    auto* label = new LinkLabel(text, parent);
    label->setObjectName(name);
    return label;
}

} // namespace

void FrmMain::buildControls()
{
    Timer = new QTimer(this);
    Timer->setObjectName(QStringLiteral("Timer"));
    Timer->setInterval(30000);
    m_alarms = new AlarmEngine(
        m_app, *Timer, [this] { return m_calendar->CurrentDate(); }, this);
    connect(Timer, &QTimer::timeout, this, &FrmMain::Timer_Timer);
    m_clockTimer = new QTimer(this);
    m_clockTimer->setObjectName(QStringLiteral("ClockTimer"));
    m_clockTimer->setSingleShot(true);
    connect(m_clockTimer, &QTimer::timeout, this, &FrmMain::FollowClock);

    m_calendar = new HalvernCalendar(this);
    m_calendar->setObjectName(QStringLiteral("HalvernCalendar"));
    m_calendar->setTodayProvider([this] { return m_app.clock ? m_app.clock->today() : QDate(); });
    m_calendar->setDayToolTipProvider([this](const QDate& day) {
        QString text;
        // Hovering must never raise a message box: a day that cannot be read shows nothing.
        RunUserAction(
            m_app, this, [&] { text = DayToolTipText(m_app.db(), day); }, false);
        return text;
    });
    connect(m_calendar, &HalvernCalendar::dateChanged, this, &FrmMain::onDayChanged);
    connect(m_calendar, &HalvernCalendar::monthChanged, this, &FrmMain::onMonthChanged);

    LinLine = new QFrame(this);
    LinLine->setObjectName(QStringLiteral("LinLine"));
    LinLine->setFrameShape(QFrame::HLine);
    LinLine->setFrameShadow(QFrame::Plain);

    auto* rows = new QGridLayout;
    rows->setHorizontalSpacing(6);
    rows->setVerticalSpacing(1);
    const QFont timeFont = FixedPitchJapaneseFont(9);
    for (int i = 0; i < PanelRows; ++i) {
        auto* time = new QLabel(this);
        time->setObjectName(QStringLiteral("LabTime(%1)").arg(i));
        time->setFont(timeFont);
        time->setTextFormat(Qt::PlainText);
        // Every time text is at most 13 characters; reserving them keeps the subjects in a column.
        time->setMinimumWidth(QFontMetrics(timeFont).horizontalAdvance(QString(13, QLatin1Char('0'))));
        auto* subject = MakeLink(QStringLiteral("LabYotei(%1)").arg(i), QString(), this);
        subject->setTextFormat(Qt::PlainText);
        // Long subjects are elided instead of widening the window, and a row is one line
        // high, empty or not, so the grid above never moves with what the panel holds.
        subject->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        subject->installEventFilter(this);
        time->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        LabTime[static_cast<size_t>(i)] = time;
        LabYotei[static_cast<size_t>(i)] = subject;
        rows->addWidget(time, i, 0);
        rows->addWidget(subject, i, 1);
    }
    rows->setColumnStretch(1, 1);
    FixPanelRowHeights();

    LabMore = MakeLink(QStringLiteral("LabMore"), QStringLiteral("more..."), this);
    QSizePolicy morePolicy = LabMore->sizePolicy();
    // Its line is kept while it is hidden: the grid must not jump when it appears.
    morePolicy.setRetainSizeWhenHidden(true);
    LabMore->setSizePolicy(morePolicy);
    LabMore->hide();
    LabMenu = MakeLink(QStringLiteral("LabMenu"), QStringLiteral("Menu"), this);
    LabJump = MakeLink(QStringLiteral("LabJump"), QStringLiteral("Jump"), this);
    LabScaedule = MakeLink(QStringLiteral("LabScaedule"), QStringLiteral("Schedule"), this);
    LabHelp = MakeLink(QStringLiteral("LabHelp"), QStringLiteral("Help"), this);
    for (LinkLabel* link : {LabMore, LabMenu, LabJump, LabScaedule, LabHelp})
        connect(link, &LinkLabel::clicked, this, &FrmMain::ResetLinkStyles);

    auto* moreRow = new QHBoxLayout;
    moreRow->addStretch();
    moreRow->addWidget(LabMore);
    auto* links = new QHBoxLayout;
    links->setSpacing(10);
    for (LinkLabel* link : {LabMenu, LabJump, LabScaedule, LabHelp})
        links->addWidget(link);
    links->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(3);
    layout->addWidget(m_calendar, 1);
    layout->addWidget(LinLine);
    layout->addLayout(rows);
    layout->addLayout(moreRow);
    layout->addLayout(links);
    resize(sizeHint());
}

void FrmMain::onDayChanged()
{
    if (m_loading)
        return;
    // The month refresh that came just before for this very day has failed already: a
    // second wait for the same lock would only keep the user waiting twice.
    if (m_viewStale && m_staleDay == m_calendar->CurrentDate())
        return;
    refreshView(false);
}

void FrmMain::onMonthChanged()
{
    if (m_loading)
        return;
    refreshView(true);
}

void FrmMain::refreshView(bool wholeMonth)
{
    const bool ok = RunUserAction(
        m_app, this,
        [this, wholeMonth] {
            if (wholeMonth || m_viewStale)
                RefreshMonthMarks();
            else
                RefreshDayPanel();
        },
        !m_staleReported);
    if (ok) {
        m_viewStale = false;
        m_staleReported = false;
        return;
    }
    ClearDayPanel();
    m_viewStale = true;
    m_staleReported = true;
    m_staleDay = m_calendar->CurrentDate();
}

void FrmMain::scheduleClockCheck()
{
    if (!m_app.clock)
        return;
    const QDateTime now = m_app.clock->now();
    const qint64 toMidnight = now.msecsTo(QDateTime(now.date().addDays(1), QTime(0, 0)));
    // Never longer than a minute: a timer does not count the time the machine slept.
    m_clockTimer->start(static_cast<int>(qBound(qint64(50), toMidnight + 50, qint64(60000))));
}

void FrmMain::FollowClock()
{
    const QDate today = m_app.clock ? m_app.clock->today() : QDate();
    if (today.isValid() && today != m_today) {
        const QDate previous = m_today;
        m_today = today;
        // A selection that was on today moves with it (to the next month at a month's end).
        if (m_calendar->CurrentDate() == previous)
            m_calendar->setCurrentDate(today);
        m_calendar->update();
    }
    if (m_viewStale)
        refreshView(true);
    scheduleClockCheck();
}

void FrmMain::mouseMoveEvent(QMouseEvent* event)
{
    QWidget::mouseMoveEvent(event);
    ResetLinkStyles();
}

void FrmMain::Timer_Timer()
{
    m_alarms->tick();
}

void FrmMain::RearmAlarms()
{
    m_alarms->rearm();
}
