#include "views/FrmDate.h"

#include "calendarcontrol/CalendarDesign.h"
#include "calendarcontrol/HalvernCalendar.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/DatePicker.h"
#include "common/DateText.h"
#include "common/LinkLabel.h"
#include "common/Units.h"
#include "common/UserAction.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

FrmDate::FrmDate(AppServices& app, DatePickHandOver& handOver, QWidget* parent)
    : QDialog(parent, Qt::Popup), m_app(app), m_handOver(handOver)
{
    setObjectName(QStringLiteral("FrmDate"));
    setModal(true);

    m_calendar = new HalvernCalendar(this);
    m_calendar->setObjectName(QStringLiteral("HalvernCalendar"));
    m_calendar->setTodayProvider([this] { return m_app.clock->today(); });
    connect(m_calendar, &HalvernCalendar::dateClicked, this, &FrmDate::HalvernCalendar_DateClick);

    LabToday = new LinkLabel(QString(), this);
    LabToday->setObjectName(QStringLiteral("LabToday"));
    connect(LabToday, &LinkLabel::clicked, this, &FrmDate::LabToday_Click);

    ComCancel = new QPushButton(QStringLiteral("キャンセル"), this);
    ComCancel->setObjectName(QStringLiteral("ComCancel"));
    ComCancel->setAutoDefault(false);
    connect(ComCancel, &QPushButton::clicked, this, &FrmDate::ComCancel_Click);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(LabToday);
    bottom->addStretch();
    bottom->addWidget(ComCancel);
    auto* frame = new QFrame(this);
    frame->setFrameShape(QFrame::Box);
    auto* inner = new QVBoxLayout(frame);
    inner->setContentsMargins(4, 4, 4, 4);
    inner->addWidget(m_calendar, 1);
    inner->addLayout(bottom);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(frame);

    Form_Load();
}

void FrmDate::Form_Load()
{
    m_handOver.DatePicked = false;
    const double dpi = Units::LogicalDpi(this);
    move(Units::TwipsToPixels(m_handOver.PickerLeft, dpi), Units::TwipsToPixels(m_handOver.PickerTop, dpi));

    // Without its design the picker still works, in the calendar's own colours.
    RunUserAction(m_app, this, [this] { ApplyCalendarDesign(m_app.db(), *m_calendar); });

    const QDate today = m_app.clock->today();
    const QDate shown = m_handOver.PickedDate.isValid() ? m_handOver.PickedDate : today;
    m_calendar->setCurrentDate(shown);
    setWindowTitle(DateCaption(shown));
    LabToday->setText(QStringLiteral("Today : ") + DateCaption(today));
    m_calendar->setFocus();
    resize(sizeHint());
}

void FrmDate::HalvernCalendar_DateClick()
{
    m_handOver.PickedDate = m_calendar->CurrentDate();
    m_handOver.DatePicked = true;
    accept();
}

void FrmDate::LabToday_Click()
{
    m_calendar->setCurrentDate(m_app.clock->today());
    HalvernCalendar_DateClick();
}

void FrmDate::ComCancel_Click()
{
    reject();
}
