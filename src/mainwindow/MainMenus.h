#pragma once

#include <QString>

class QAction;
class QMenu;
class QWidget;

// The main window's six pop-up menus, each under its own name. Most items only leave their
// command word in the window's MenuCommand; the link that popped the menu up acts on the
// word once the menu has closed. The items that act at once (today, the months, the tray
// menu's items) are wired by the window itself.
struct MainMenus
{
    QMenu* MnuScheduleEditMenu = nullptr; // the panel's entry labels: edit, delete
    QMenu* MnuEntry = nullptr;            // "Schedule": new schedule, new task
    QMenu* MnuJumpDay = nullptr;          // "Jump": today and the twelve months
    QMenu* MnuSubMenu = nullptr;          // "Menu": list, day-offs, sticky note, settings
    QMenu* MnuHelp = nullptr;             // "Help": online help, version
    QMenu* MnuTaskMenu = nullptr;         // the tray icon's menu

    // The item of that name in any of the menus, or nullptr.
    QAction* item(const QString& name) const;
};

// Builds the menus as children of owner; items with a command word write it into
// menuCommand, which must live as long as the menus.
MainMenus BuildMainMenus(QWidget* owner, QString& menuCommand);
