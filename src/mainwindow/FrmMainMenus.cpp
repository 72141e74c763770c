// The main window's commands: the four links and "more...", their pop-up menus, the
// panel's entry labels and the tray icon. A menu item only leaves its word in MenuCommand;
// the link that popped the menu up acts on the word after the menu has closed.
#include "mainwindow/FrmMain.h"

#include "calendarcontrol/HalvernCalendar.h"
#include "common/AppInfo.h"
#include "common/AppServices.h"
#include "common/Clock.h"
#include "common/LinkLabel.h"
#include "common/Prompter.h"
#include "common/UrlOpener.h"
#include "common/UserAction.h"
#include "entries/EntryHandOver.h"
#include "mainwindow/FrmVersion.h"
#include "mainwindow/MonthJump.h"
#include "mainwindow/OnlineHelp.h"

#include <QApplication>
#include <QMenu>
#include <QUrl>

void FrmMain::buildMenus()
{
    m_menus = BuildMainMenus(this, m_app.state.MenuCommand);

    connect(m_menus.item(QStringLiteral("MnuToday")), &QAction::triggered, this, &FrmMain::MnuToday_Click);
    for (int month = 1; month <= 12; ++month) {
        connect(m_menus.item(QStringLiteral("MnuMonth%1").arg(month)), &QAction::triggered, this,
                [this, month] { MnuMonth_Click(month); });
    }
    connect(m_menus.item(QStringLiteral("MnuMainOpen")), &QAction::triggered, this, &FrmMain::ShowCalendar);
    connect(m_menus.item(QStringLiteral("MnuTaskPost")), &QAction::triggered, this, &FrmMain::NewEmptyStickyNote);
    connect(m_menus.item(QStringLiteral("MnuEnd")), &QAction::triggered, this,
            [this] { RequestShutdown(UnloadMode::FormCode); });

    connect(LabMenu, &LinkLabel::clicked, this, &FrmMain::LabMenu_Click);
    connect(LabJump, &LinkLabel::clicked, this, &FrmMain::LabJump_Click);
    connect(LabScaedule, &LinkLabel::clicked, this, &FrmMain::LabScaedule_Click);
    connect(LabMore, &LinkLabel::clicked, this, &FrmMain::LabMore_Click);
    connect(LabHelp, &LinkLabel::clicked, this, &FrmMain::LabHelp_Click);
    for (int i = 0; i < PanelRows; ++i) {
        LinkLabel* label = LabYotei[static_cast<size_t>(i)];
        connect(label, &LinkLabel::clicked, this, [this, i] { LabYotei_Click(i); });
        // The context-menu request comes from the right button and from the keyboard's menu key.
        label->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(label, &QWidget::customContextMenuRequested, this, [this, i] { LabYotei_MouseDown(i); });
    }
}

void FrmMain::wireTrayIcon()
{
    if (!m_tray)
        return;
    // As the icon's own context menu it is shown by the tray host too, also by those that
    // draw the menu themselves from what the program exports.
    m_tray->setContextMenu(m_menus.MnuTaskMenu);
    connect(m_tray, &QSystemTrayIcon::activated, this, &FrmMain::TrayIcon_Activated);
}

QString FrmMain::popUp(QMenu* menu, QWidget* under)
{
    m_app.state.MenuCommand.clear();
    menu->exec(under->mapToGlobal(QPoint(0, under->height())));
    return m_app.state.MenuCommand;
}

void FrmMain::LabMenu_Click()
{
    if (!m_app.state.MainWindowIdle)
        return;
    const QString command = popUp(m_menus.MnuSubMenu, LabMenu);
    if (command == QLatin1String("LIST")) {
        const QDate today = m_app.clock->today();
        OpenList(today, today.addMonths(1));
    } else if (command == QLatin1String("DAYOFF")) {
        OpenDayOffs();
    } else if (command == QLatin1String("POST")) {
        NewEmptyStickyNote();
    } else if (command == QLatin1String("SETTING1")) {
        OpenSettings();
    }
    if (!m_unloaded)
        ResetLinkStyles();
}

void FrmMain::LabJump_Click()
{
    if (!m_app.state.MainWindowIdle)
        return;
    // The month items act as they are chosen; the panel follows once the menu closed.
    popUp(m_menus.MnuJumpDay, LabJump);
    RunUserAction(m_app, this, [this] { RefreshDayPanel(); });
    ResetLinkStyles();
}

void FrmMain::MnuToday_Click()
{
    m_calendar->setCurrentDate(m_app.clock->today());
}

void FrmMain::MnuMonth_Click(int month)
{
    const QDate target = MonthJumpDate(m_calendar->CurrentDate(), m_app.clock->today(), month);
    if (!target.isValid()) {
        // The selected day does not exist in that month (a 31st to April): stay where we are.
        QApplication::beep();
        return;
    }
    m_calendar->setCurrentDate(target);
}

void FrmMain::LabScaedule_Click()
{
    if (!m_app.state.MainWindowIdle)
        return;
    const QString command = popUp(m_menus.MnuEntry, LabScaedule);
    if (command == QLatin1String("SCHEDULE_INSERT"))
        NewSchedule(m_calendar->CurrentDate());
    else if (command == QLatin1String("TASK_INSERT"))
        NewTask(m_calendar->CurrentDate());
    ResetLinkStyles();
}

void FrmMain::LabMore_Click()
{
    if (!m_app.state.MainWindowIdle)
        return;
    const QDate day = m_calendar->CurrentDate();
    OpenList(day, day);
    ResetLinkStyles();
}

void FrmMain::LabHelp_Click()
{
    if (!m_app.state.MainWindowIdle)
        return;
    const QString command = popUp(m_menus.MnuHelp, LabHelp);
    if (command == QLatin1String("ONLINE"))
        OpenOnlineHelp();
    else if (command == QLatin1String("VERSION"))
        OpenVersion();
    ResetLinkStyles();
}

void FrmMain::OpenOnlineHelp()
{
    const QString appDir = m_app.programDir;
    const QString page = FindHelpPage(appDir);
    if (page.isEmpty()) {
        m_app.prompter->inform(this,
                               QStringLiteral("ヘルプのページが見つかりません。\n") +
                                   HelpPageCandidates(appDir).join(QLatin1Char('\n')),
                               PromptIcon::Warning);
        return;
    }
    // Starting a browser can take a moment; the pointer says so.
    QApplication::setOverrideCursor(Qt::BusyCursor);
    const bool opened = m_app.urlOpener && m_app.urlOpener->openUrl(QUrl::fromLocalFile(page));
    QApplication::restoreOverrideCursor();
    if (!opened) {
        m_app.prompter->inform(this, QStringLiteral("ブラウザを起動できませんでした。\nヘルプのページ: ") + page,
                               PromptIcon::Warning);
    }
}

void FrmMain::OpenVersion()
{
    MainWindowBusy busy(m_app.state);
    FrmVersion version(this);
    version.exec();
}

void FrmMain::LabYotei_Click(int index)
{
    if (!m_app.state.MainWindowIdle)
        return;
    const size_t row = static_cast<size_t>(index);
    if (LabYotei[row]->text().isEmpty())
        return;
    const QString kind = m_panelEntryData[row];
    if (kind == QLatin1String("1")) {
        ScheduleHandOver handOver;
        handOver.ScheduleEditMode = QStringLiteral("UPD");
        handOver.ScheduleEditId = m_panelEntryId[row];
        runScheduleEditor(handOver);
    } else if (kind == QLatin1String("2")) {
        TaskHandOver handOver;
        handOver.TaskEditMode = QStringLiteral("UPD");
        handOver.TaskEditId = m_panelEntryId[row];
        runTaskEditor(handOver);
    }
    ResetLinkStyles();
}

void FrmMain::LabYotei_MouseDown(int index)
{
    if (!m_app.state.MainWindowIdle)
        return;
    const QString command = popUp(m_menus.MnuScheduleEditMenu, LabYotei[static_cast<size_t>(index)]);
    if (command == QLatin1String("SCHEDULE_UPDATE"))
        LabYotei_Click(index);
    else if (command == QLatin1String("SCHEDULE_DELETE"))
        deletePanelEntry(index);
    ResetLinkStyles();
}

void FrmMain::deletePanelEntry(int index)
{
    const size_t row = static_cast<size_t>(index);
    if (LabYotei[row]->text().isEmpty())
        return;
    const int id = m_panelEntryId[row];
    Prompt question{QStringLiteral("削除してよろしいですか？"), PromptIcon::Question, PromptButtons::OkCancel,
                    PromptAnswer::Cancel, AppInfo::productTitle()};
    {
        MainWindowBusy busy(m_app.state);
        if (m_app.prompter->ask(this, question) != PromptAnswer::Ok)
            return;
    }
    RunUserAction(m_app, this, [this, id] {
        DatabaseConnection& db = m_app.db();
        db.BeginTrans();
        db.ExecuteSql(QStringLiteral("DELETE FROM TRNSCHTSK WHERE ID = ") + QString::number(id) + QStringLiteral(" "));
        db.CommitTrans();
        // The marks are rebuilt whole, and the panel after them, so the rows below move up.
        RefreshMonthMarks();
    });
}

void FrmMain::TrayIcon_Activated(QSystemTrayIcon::ActivationReason reason)
{
    // The right button shows the tray menu by itself (it is the icon's context menu).
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick)
        ShowCalendar();
}
