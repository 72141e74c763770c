#include "mainwindow/FrmMain.h"

#include "common/AppIcon.h"
#include "common/AppInfo.h"
#include "common/AppServices.h"
#include "shell/SingleInstance.h"

#include <QLabel>
#include <QTimer>
#include <QVBoxLayout>

FrmMain::FrmMain(AppServices& app, QWidget* parent) : QWidget(parent), m_app(app)
{
    setObjectName(QStringLiteral("frmMAIN"));
    setWindowTitle(AppInfo::productTitle());
    setWindowIcon(AppIcon());
    buildControls();
}

FrmMain::~FrmMain() = default;

void FrmMain::buildControls()
{
    Timer = new QTimer(this);
    Timer->setObjectName(QStringLiteral("Timer"));
    Timer->setInterval(30000);

    auto* layout = new QVBoxLayout(this);
    m_calendarPlaceholder = new QLabel(AppInfo::productTitle(), this);
    m_calendarPlaceholder->setObjectName(QStringLiteral("HalvernCalendar"));
    m_calendarPlaceholder->setAlignment(Qt::AlignCenter);
    m_calendarPlaceholder->setMinimumSize(220, 180);
    layout->addWidget(m_calendarPlaceholder);
    resize(240, 300);
}
